"""What `tarvane run` writes beside its report, of every example and golden input: the JSON is what the library finds,
with the texts of the document; it is as the schema says; the CSV has the checks and results of the JSON; the numbers
that are shown, in the text and on the page, are those of the JSON, rounded. With --tidy: tidy has nothing to say about
the page. With --pdf, of some of them, and with --all-pdf, of all: the PDF has the checks, the results and the tables of
the page.

    documents_test.py LIBRARY PROGRAM SOURCE [--tidy | --pdf | --all-pdf]
"""

import csv
import ctypes
import hashlib
import json
import re
import shutil
import struct
import subprocess
import sys
import tempfile
from collections import Counter
from html.parser import HTMLParser
from pathlib import Path

SKIPPED = 77
RESULTS_REPORT_DRAWINGS = 1 | 2 | 8
PDF_OF = ("loose_ring.toml", "shell_and_heads.toml", "vacuum_and_cold.toml")
KINDS = []  # of components, in the order of the library
HEADINGS = ["table", "component", "description", "id", "label", "case", "paragraph", "value", "operator", "limit",
            "unit", "ratio", "state", "force", "remark"]

try:
    import jsonschema
    import tomllib
except ImportError as missing:
    print(f"not run: {missing}")
    sys.exit(SKIPPED)


class Library:
    def __init__(self, path):
        self.calls = ctypes.CDLL(path)
        self.calls.tarvane_calculate.argtypes = [
            ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int32, ctypes.POINTER(ctypes.c_char_p)]
        self.handle = ctypes.c_void_p()
        if self.calls.tarvane_open(1, None, ctypes.byref(self.handle)) != 0:
            raise RuntimeError("the library does not open")

    def result(self, request):
        text = ctypes.c_char_p()
        self.calls.tarvane_calculate(
            self.handle, json.dumps(request).encode(), RESULTS_REPORT_DRAWINGS, ctypes.byref(text))
        return text.value


def single(number):
    """The single that a decimal of the JSON means."""
    return struct.unpack("f", struct.pack("f", number))[0]


mark = "."  # of the decimals in the file that is looked at


def is_rounded(shown, number):
    """Whether a text is a number, rounded to the decimals of the text."""
    decimals = len(shown.partition(mark)[2])
    return shown == f"{single(number):.{decimals}f}".replace(".", mark)


def by_kinds(text):
    """An input file with its components in the order of the kinds, in which a request as JSON has them: the metal
    temperatures that the vessel asks for are numbered in the order of the components."""
    head, *tables = re.split(r"^(?=\[)", text, flags=re.M)
    place = {f"[[{kind}]]": number for number, kind in enumerate(KINDS, start=1)}
    return head + "".join(sorted(tables, key=lambda table: place.get(table.partition("\n")[0].split("#")[0].strip(), 0)))


def components_of(result):
    for kind in KINDS:
        for place, component in enumerate(result.get(kind, ())):
            yield kind, place, component


def check_json(path, text, library, schema):
    result = json.loads(text)
    for fault in schema.iter_errors(result):
        yield f"the schema refuses {fault.json_path}: {fault.message}"
    source = path.read_bytes()
    request = tomllib.loads(source.decode())
    document = result.pop("document", {})
    if document.pop("input", None) != {"file": path.name, "sha256": hashlib.sha256(source).hexdigest()}:
        yield "another input file"
    if document != request.get("document", {}):
        yield f"other texts of the document: {document}"
    if json.dumps(result) != json.dumps(json.loads(library.result(request))):
        yield "another result than that of the library"


# ---- shown numbers ---------------------------------------------------------------------------------------

CHECKS = re.compile(r"^(Check +Paragraph .*\n)-+\n((?:.+\n)*)", re.M)
VERDICT = re.compile(r"^(?:PASS|FAIL)  ([a-z]+) ([0-9]+)\b", re.M)


def check_rows(heads, lines):
    """Demand, limit, ratio and state of each row under its heads. A remark may be in the place of the figures."""
    ends = [(heads.index(head) + len(head), width) for head, width in (("Demand", 10), ("Limit", 10), ("Ratio", 7))]
    state = heads.index("State")
    for line in lines:
        if not line.startswith("    ") and line[state:].strip():  # else a remark, or more of a label
            figures = [line[end - width:end].strip() for end, width in ends]
            compared = line[ends[0][0]:ends[1][0] - ends[1][1]].strip() in ("<=", ">=")
            words = not compared and re.search("[a-z]{2}", line[ends[0][0] - ends[0][1]:state])
            yield (*([""] * 3 if words else figures), line[state:].strip())


def shown_checks(shown):
    """Rows of the checks of each component, by its kind and place."""
    for verdict in VERDICT.finditer(shown):
        table = CHECKS.search(shown, verdict.end())
        following = VERDICT.search(shown, verdict.end())
        rows = []
        if table and not (following and following.start() < table.start()):
            rows = list(check_rows(table[1], table[2].splitlines()))
        yield verdict[1], int(verdict[2]) - 1, rows


def check_shown(result, found):
    for kind, place, component in components_of(result):
        rows = found.get((kind, place))
        if rows is None or len(rows) != len(component["checks"]):
            yield f"{kind} {place + 1}: {len(component['checks'])} checks, shown {rows}"
            continue
        for check, (demand, limit, ratio, state) in zip(component["checks"], rows):
            name = f"{kind} {place + 1}: {check['id']}"
            if "ratio" not in check:
                if demand or limit or ratio:
                    yield f"{name}: shown with figures"
                continue
            for number, text in ((check["demand"], demand), (check["limit"], limit), (check["ratio"], ratio)):
                if not is_rounded(text, number) and not (text == ">9999" and number > 9999):
                    yield f"{name}: {text} is shown for {number}"
            if state != check["state"] and not (state in ("warning", "advice") and check["state"] == "fail"):
                yield f"{name}: {state} is shown for {check['state']}"


def check_text(result, shown):
    found = {}
    for kind, place, rows in shown_checks(shown):
        found.setdefault((kind, place), rows)  # the verdict at the end names those that fail once more
    yield from check_shown(result, found)


# ---- the page --------------------------------------------------------------------------------------------


class Page(HTMLParser):
    """Texts of <pre>, of rows of tables, and of all else, below the last heading with an id."""

    def __init__(self, text):
        super().__init__()
        self.blocks, self.rows, self.texts = {}, [], {}
        self.heading, self.block, self.cells, self.quiet = "", None, None, 0
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        names = dict(attributes)
        if tag in ("h2", "h3") and "id" in names:
            self.heading = names["id"]
        elif tag == "pre":
            self.block = []
        elif tag == "tr":
            self.cells = []
        elif tag in ("td", "th") and self.cells is not None:
            self.cells.append("")
        elif tag in ("svg", "style"):
            self.quiet += 1

    def handle_endtag(self, tag):
        if tag == "pre":
            self.blocks.setdefault(self.heading, []).append("".join(self.block).splitlines())
            self.block = None
        elif tag == "tr":
            self.rows.append((self.heading, self.cells))
            self.cells = None
        elif tag in ("svg", "style"):
            self.quiet -= 1

    def handle_data(self, text):
        if self.quiet:
            return
        if self.block is not None:
            self.block.append(text)
        elif self.cells:
            self.cells[-1] += text
        self.texts[self.heading] = self.texts.get(self.heading, "") + text


def packed(text):
    """Without the white space by which lines are laid out."""
    return "".join(text.split())


def result_rows(block):
    """Label, number, and all text before the unit, of each row of a table of results. A value that is a text may begin
    before its column, and go on below."""
    symbol, end = block[0].index("Symbol"), block[0].index("Value") + len("Value")
    rows = []
    for line in block[1:]:
        text = line[:end]
        label = text[:symbol]
        if label.strip() and len(text) == end:
            rows.append([label, text.split()[-1], text])
        else:
            rows[-1][0] += " " + label
            rows[-1][2] += text
    return rows


def is_shown(text, value):
    if isinstance(value, bool):
        return text == ("yes" if value else "no")
    if isinstance(value, (int, float)):
        return re.fullmatch(rf"-?[0-9]+([{mark}][0-9]+)?", text) is not None and is_rounded(text, value)
    return packed(text).endswith(packed(value))


def check_page(result, labels, page):
    """The page has every check and every result of the JSON."""
    found = {}
    for kind, place, component in components_of(result):
        name = f"{kind}-{place + 1}"
        found[kind, place] = [row for block in page.blocks.get(f"{name}-checks", ())
                              if block[0].startswith("Check ") for row in check_rows(block[0], block[1:])]
        # The heads of a table, and not a chart beside it.
        rows = [row for block in page.blocks.get(f"{name}-results", ())
                if block[0].startswith("Result ") for row in result_rows(block)]
        given = [(key, value) for key, value in component["results"].items() if value is not None]
        if len(rows) != len(given):
            yield f"{name}: {len(given)} results, on the page {len(rows)}"
            continue
        for (key, value), (label, number, text) in zip(given, rows):
            if not isinstance(value, str):
                text = number
            wanted = packed(labels[f"{kind}[{place}]", key].partition(", times ")[0])
            if not packed(label).lower().startswith(wanted.lower()) or not is_shown(text, value):
                yield f"{name}: {key}, {labels[f'{kind}[{place}]', key]}, {value} is {label.strip()}, {text} on the page"
        without = packed(page.texts.get(f"{name}-results", "")).lower()
        if ":allotherresults" in without:
            continue
        for key, value in component["results"].items():
            label = packed(labels[f"{kind}[{place}]", key]).partition(",times")[0].lower()
            design = label.rpartition(",")[2]
            if value is None and label not in without and f"allofthe{design}design" not in without:
                yield f"{name}: the page does not say that {key} has no value"
    yield from (f"page: {fault}" for fault in check_shown(result, found))
    for row in result.get("summary", ()):
        label = packed(labels["vessel", row["name"]]).lower()
        texts = [text for heading, cells in page.rows if cells and packed(cells[0]).lower() == label for text in cells[1:]]
        if row["value"] is not None and not any(is_shown(text.split(" ")[0], row["value"]) for text in texts):
            yield f"summary: {row['name']}, {row['value']} is {texts} on the page"


def check_tidy(file):
    run = subprocess.run(["tidy", "-quiet", "-errors", file], capture_output=True, text=True, check=False)
    if run.returncode != 0 or run.stderr.strip():
        yield f"tidy, status {run.returncode}: {run.stderr.strip()}"


def text_of_pdf(file, order):
    run = subprocess.run(["pdftotext", order, file, "-"], capture_output=True, text=True, check=True)
    return packed(run.stdout)


def check_pdf(file, page):
    """Every line of the tables of checks and of results, as often as the page has it, and every cell."""
    text = text_of_pdf(file, "-layout")
    wanted = Counter(packed(line) for heading, blocks in page.blocks.items()
                     if heading.endswith(("-checks", "-results")) for block in blocks for line in block if line.strip())
    if not wanted:
        yield "nothing to look for in the PDF"
    for line, times in wanted.items():
        if text.count(line) < times:
            yield f"the PDF has {text.count(line)} times, not {times} times: {line}"
    cells_in_turn = text_of_pdf(file, "-raw")
    for heading, cells in page.rows:
        for cell in cells:
            if packed(cell) not in cells_in_turn:
                yield f"the PDF does not have {cell!r} of {heading}"


# ---- CSV -------------------------------------------------------------------------------------------------


def rows_of(result):
    """The rows that the CSV must have, in any order: table, component, id, case, value, operator, limit, ratio, state."""
    for kind, place, component in components_of(result):
        path = f"{kind}[{place}]"
        for check in component["checks"]:
            yield ("check", path, check["id"], check.get("case", ""), check.get("demand"), check.get("operator", ""),
                   check.get("limit"), check.get("ratio"), check["state"])
        for name, value in component["results"].items():
            yield "result", path, name, "", value, "", None, None, ""
    for row in result.get("summary", ()):
        yield "result", "vessel", row["name"], "", row["value"], "", None, None, ""


def same_value(text, value):
    if isinstance(value, bool):
        return text == ("true" if value else "false")
    if isinstance(value, (int, float)):
        return text != "" and float(text) == value
    return text == (value or "")


def check_csv(result, content):
    if b"\n" in content.replace(b"\r\n", b""):
        yield "a line of the CSV does not end in CR LF"
    rows = list(csv.DictReader(content.decode().splitlines(keepends=True), strict=True))
    if not rows or list(rows[0]) != HEADINGS:
        yield f"the headings {list(rows[0]) if rows else None}"
        return
    expected = sorted(rows_of(result), key=lambda row: row[:4])
    rows.sort(key=lambda row: (row["table"], row["component"], row["id"], row["case"]))
    if len(rows) != len(expected):
        yield f"{len(rows)} rows in the CSV, not {len(expected)}"
        return
    labels = {"check": set(), "result": set()}
    for row, (table, path, name, case, value, operator, limit, ratio, state) in zip(rows, expected):
        if ((row["table"], row["component"], row["id"], row["case"], row["operator"], row["state"]) !=
                (table, path, name, case, operator, state)
                or not same_value(row["value"], value) or not same_value(row["limit"], limit)
                or not same_value(row["ratio"], ratio)):
            yield f"the CSV has {row} for {(path, name, value, limit, ratio, state)}"
        if value is None and table == "result" and not row["remark"]:
            yield f"the CSV does not say why {path}.{name} has no value"
        if not row["label"]:
            yield f"{path}.{name} has no label"
        labels[table].add(row["unit"])
    if result["units"] == "SI" and "psi" in labels["check"] | labels["result"]:
        yield "psi in a file in SI units"


# ---- all files -------------------------------------------------------------------------------------------


def run(program, path, folder, *names):
    """The files of these names that a run writes, by name; its result in any case, and its output."""
    files = {name: folder / f"out.{name}" for name in ("json", *names)}
    arguments = [argument for name, file in files.items() for argument in (f"--{name}", file)]
    ended = subprocess.run([program, "run", path, "--plain", *arguments], capture_output=True, check=False)
    if ended.returncode not in (0, 1):
        raise RuntimeError(f"status {ended.returncode}: {ended.stderr.decode()}")
    return files, ended


def check_results(path, program, folder, library, schema):
    global mark
    mark = "," if tomllib.loads(path.read_text(encoding="utf-8")).get("decimal_comma") else "."
    copy = folder / path.name
    copy.write_text(by_kinds(path.read_text(encoding="utf-8")), encoding="utf-8")
    files, ended = run(program, copy, folder, "csv", "html")
    text = files["json"].read_text(encoding="utf-8")
    result = json.loads(text)
    if (ended.returncode == 0) != (result["verdict"] == "pass"):
        yield f"status {ended.returncode} for the verdict {result['verdict']}"
    yield from check_json(copy, text, library, schema)
    yield from check_text(result, ended.stdout.decode())
    table = files["csv"].read_bytes()
    yield from check_csv(result, table)
    labels = {(row["component"], row["id"]): row["label"]
              for row in csv.DictReader(table.decode().splitlines(keepends=True)) if row["table"] == "result"}
    yield from check_page(result, labels, Page(files["html"].read_text(encoding="utf-8")))


def need(*programs):
    for program in programs:
        if shutil.which(program) is None:
            print(f"not run: {program} is not installed")
            sys.exit(SKIPPED)


def way_of(mode, files, program, folder):
    """The files to look at, and the check of one of them."""
    if mode == "--tidy":
        need("tidy")
        return files, lambda path: check_tidy(run(program, path, folder, "html")[0]["html"])
    if mode in ("--pdf", "--all-pdf"):
        need("weasyprint", "pdftotext")

        def of_pdf(path):
            made, ended = run(program, path, folder, "html", "pdf")
            if b"weasyprint: " in ended.stderr:
                yield f"weasyprint says: {ended.stderr.decode()}"
            yield from check_pdf(made["pdf"], Page(made["html"].read_text(encoding="utf-8")))

        return [path for path in files if mode == "--all-pdf" or path.name in PDF_OF], of_pdf
    schema = json.loads(subprocess.run([program, "schema", "result"], capture_output=True, check=True).stdout)
    jsonschema.Draft202012Validator.check_schema(schema)
    validator, library = jsonschema.Draft202012Validator(schema), Library(sys.argv[1])
    return files, lambda path: check_results(path, program, folder, library, validator)


def main():
    program, source = sys.argv[2], Path(sys.argv[3])
    keys = json.loads(subprocess.run([program, "schema", "keys"], capture_output=True, check=True).stdout)
    KINDS.extend(kind["name"] for kind in keys["kinds"])
    files = sorted([*source.glob("examples/*.toml"), *source.glob("tests/golden/*.toml")])
    faults = [] if len(files) >= 80 else [f"only {len(files)} input files"]
    with tempfile.TemporaryDirectory() as folder:
        files, check = way_of("".join(sys.argv[4:]), files, program, Path(folder))
        for path in files:
            faults += [f"{path.name}: {fault}" for fault in check(path)]
    for fault in faults[:100]:
        print(fault)
    print(f"{len(files)} input files, {len(faults)} faults")
    sys.exit(1 if faults or not files else 0)


if __name__ == "__main__":
    main()
