"""The site of the documents: it builds without a warning, its links resolve, it loads nothing from elsewhere; the commands
of the documents run; the procedures name what there is.

    site_test.py SOURCE PROGRAM DATA SCRATCH
"""
import html.parser
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import urllib.parse
from pathlib import Path

sys.dont_write_bytecode = True
ROOT, PROGRAM, DATA, SCRATCH = (Path(argument).resolve() for argument in sys.argv[1:5])
sys.path.insert(0, str(ROOT / "docs" / "site"))
sys.path.insert(0, str(Path(__file__).parent))
import commands
import headers
import reference
import worked

FAULTS = []


def expect(holds, what):
    if not holds:
        FAULTS.append(what)


# ---- links ----------------------------------------------------------------------------------------------------------


class PageParser(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.links, self.loads, self.ids, self.titles = [], [], set(), []
        self.in_title = False

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        if given.get("id"):
            self.ids.add(given["id"])
        if tag == "a" and given.get("href"):
            self.links.append(given["href"])
        elif tag == "link" and given.get("href") and given.get("rel") != "canonical":
            self.loads.append(given["href"])
        elif given.get("src"):
            self.loads.append(given["src"])
        self.in_title = tag == "title"

    def handle_data(self, text):
        if self.in_title:
            self.titles.append(text)
            self.in_title = False


def parsed(path):
    parser = PageParser()
    parser.feed(path.read_text("utf-8"))
    return parser


def site_faults(site):
    """Links that lead nowhere, and what a page would load from another place."""
    pages = {path.resolve(): parsed(path) for path in site.rglob("*.html") if path.name != "404.html"}
    faults = []
    for path, page in pages.items():
        place = path.relative_to(site.resolve())
        if not "".join(page.titles).strip():
            faults.append(f"{place}: no title")
        for load in page.loads:
            if re.match(r"(\w+:)?//", load):
                faults.append(f"{place}: loads {load}")
        for link in page.links + page.loads:
            if re.match(r"(\w+:|//)", link):
                continue
            target, _, anchor = link.partition("#")
            file = path if not target else Path(os.path.normpath(path.parent / urllib.parse.unquote(target)))
            if file.is_dir():
                file = file / "index.html"
            if not file.exists():
                faults.append(f"{place}: no {link}")
            elif anchor and file in pages and urllib.parse.unquote(anchor) not in pages[file].ids:
                faults.append(f"{place}: no place {link}")
    for style in site.rglob("*.css"):
        for load in re.findall(r"(?:url\(|@import)\s*[\"']?((?:https?:)?//[^\"')]+)", style.read_text("utf-8")):
            faults.append(f"{style.name}: loads {load}")
    return faults, len(pages)


def test_links_are_judged():
    with tempfile.TemporaryDirectory() as folder:
        site = Path(folder)
        (site / "a.html").write_text('<title>a</title><p id="x"><a href="b.html#y"></a><a href="#x"></a>')
        (site / "b.html").write_text('<title>b</title><a href="c.html"></a><img src="//elsewhere/i.png"><p id="y">')
        expect(site_faults(site)[0] == ["b.html: loads //elsewhere/i.png", "b.html: no c.html"], "links are not judged")
        (site / "b.html").write_text("<p>")
        expect(sorted(site_faults(site)[0]) == ["a.html: no place b.html#y", "b.html: no title"], "places are not judged")


# ---- the site -------------------------------------------------------------------------------------------------------


def test_site():
    out = SCRATCH / "site"
    shutil.rmtree(out, ignore_errors=True)
    out.mkdir(parents=True)
    with_mkdocs = shutil.which("mkdocs", path="/usr/bin") is not None and \
        subprocess.run(["/usr/bin/python3", "-c", "import mkdocs, pymdownx; import importlib.metadata as m; "
                        "m.distribution('mkdocs-material')"], capture_output=True).returncode == 0
    made = subprocess.run([sys.executable, "-B", ROOT / "docs" / "site" / "pages.py", ROOT, PROGRAM, out,
                           *([] if with_mkdocs else ["--only-pages"])], capture_output=True, text=True)
    expect(made.returncode == 0, f"pages.py: status {made.returncode}: {made.stderr}")
    expect(made.stderr == "", f"warnings: {made.stderr}")
    if made.returncode != 0:
        return
    if not with_mkdocs:
        print("the site itself is not built: Debian's mkdocs and mkdocs-material are not installed")
        return
    faults, count = site_faults(out / "site")
    FAULTS.extend(faults)
    expect(count > 60, f"{count} pages")
    print(f"site: {count} pages")


def test_deviations():
    entry = {"what": "x", "at": "shell[0].t", "published": 2.0, "within": 0.5}
    result = {"shell": [{"results": {"t": 2.009}}]}
    expect(worked.Figure(entry, result).holds(), "a deviation of 0.45 % is within 0.5 %")
    result["shell"][0]["results"]["t"] = 2.011
    expect(not worked.Figure(entry, result).holds(), "a deviation of 0.55 % is beyond 0.5 %")
    result["shell"][0]["results"]["t"] = 1.989
    expect(not worked.Figure(entry, result).holds(), "a deviation of -0.55 % is beyond 0.5 %")
    examples = worked.examples(ROOT / "docs" / "examples", PROGRAM)
    expect(8 <= len(examples) <= 20, f"{len(examples)} examples")
    for example in examples:
        for figure in example.figures:
            expect(figure.holds(), f"{example.name}: {figure.what}: {figure.deviation:+.3f} %")
            expect(figure.within <= 2.5, f"{example.name}: {figure.what}: a bound of {figure.within} %")
    drawn = sum(1 for example in examples if list(example.drawings()))
    expect(drawn >= len(examples) - 1, f"{drawn} of {len(examples)} examples have a drawing")
    listed = {example.name for example in examples}
    expect(listed == {path.stem for path in (ROOT / "docs" / "examples").glob("*.toml")} - {"published"},
           "each file of docs/examples is an example")
    print(f"examples: {len(examples)}, {sum(len(example.figures) for example in examples)} figures")


# ---- procedures -----------------------------------------------------------------------------------------------------


def test_procedures():
    known = reference.anchors(reference.vocabulary(PROGRAM))
    engine = "\n".join(path.read_text("latin-1") for path in (ROOT / "engine").rglob("*.h"))
    engine += "\n".join(path.read_text("latin-1") for path in (ROOT / "engine").rglob("*.cpp"))
    pages = [path for path in sorted((ROOT / "docs" / "procedures").glob("*.md")) if path.name != "index.md"]
    index = (ROOT / "docs" / "procedures" / "index.md").read_text("utf-8")
    expect(len(pages) >= 20, f"{len(pages)} procedures")
    for path in pages:
        text = path.read_text("utf-8")
        rows = dict(re.findall(r"(?m)^\| (\w+) \| (.*) \|$", text))
        for row in ("paragraphs", "engine", "keys", "results", "checks"):
            expect(rows.get(row), f"{path.name}: no {row}")
        expect("\n## Limits\n" in text, f"{path.name}: no limits")
        expect(f"({path.name})" in index, f"{path.name}: not in the index")
        for routine in re.findall(r"`(\w+)`", rows.get("engine", "")):
            expect(re.search(rf"\b{routine}\b", engine), f"{path.name}: no routine {routine}")
        _, unknown = reference.linked(text, known, "")
        FAULTS.extend(f"{path.name}: no {address}" for address in unknown)
    _, unknown = reference.linked("`flange.P` `flange.nothing` `flange.checks.SHo`", known, "")
    expect(unknown == ["flange.nothing"], "unknown names are not seen")
    print(f"procedures: {len(pages)}")


def calculated(text, name="claim.toml"):
    file = SCRATCH / name
    file.write_text(text, "utf-8")
    out = SCRATCH / "claim.json"
    out.unlink(missing_ok=True)
    run = subprocess.run([PROGRAM, "run", file, "--json", out], capture_output=True, text=True, encoding="utf-8")
    result = json.loads(out.read_text("utf-8")) if out.exists() else {}
    component = next((result[kind][0] for kind in ("flange", "external", "mdmt") if result.get(kind)), {"results": {}})
    return component, run.stdout + run.stderr


def test_claims():
    """What the page on the engine's report says, figure by figure: it must show each, and each must be so."""
    page = (ROOT / "docs" / "not_literally.md").read_text("utf-8")

    def golden(name):
        return (ROOT / "tests" / "golden" / f"{name}.toml").read_text("utf-8")

    def claim(text, result, shown):
        expect(shown in page, f"not_literally.md: {shown} is not on the page")
        component, _ = calculated(text)
        value = component["results"].get(result)
        digits = len(shown.partition(".")[2])
        expect(value is not None and abs(value - float(shown)) <= 0.51 * 10 ** -digits, f"{result}: {value}, not {shown}")
        return component

    ring = claim(golden("split_ring_one"), "mawp", "131.75")
    expect(any(check["id"] == "STa" and check["state"] == "fail" for check in ring["checks"]), "the split ring is not overstressed")
    for name, mawp, rated in (("weld_neck_viii1", "200.67", "162.39"), ("loose_slip_on_viii1", "274.89", "117.98"),
                              ("blind_full_face_en13445", "6339", "203.59")):
        claim(golden(name), "mawp", mawp)
        claim(golden(name), "rated_pressure", rated)

    cover = claim(golden("channel_cover"), "deflection", "0.078")
    expect(cover["results"]["mawp"] == 0.07 and cover["results"]["mawp_by"] == "deflection of the cover", "channel cover")
    thick = re.sub(r"(?m)^t = .*", "t = 2.5", golden("channel_cover"))
    cover = claim(thick, "rated_pressure", "282.87")
    failed = [check["id"] for check in cover["checks"] if check["state"] == "fail" and check["force"] == "decides"]
    expect(cover["results"]["mawp"] == 0.02 and not failed, f"a thick channel cover fails by {failed}")
    expect(cover["verdict"] == "pass", "a thick channel cover does not pass")

    component, text = calculated(golden("weld_neck_viii1"))
    expect("No rigidity calculation possible" in text and component["results"]["J_operating"] > 0.0, "rigidity")

    hub = (ROOT / "docs" / "examples" / "e4_16_1_flange.toml").read_text("utf-8")
    for h, V in (("0.08", "0.51"), ("0.05", "1.02"), ("0.03", "0.90")):
        claim(re.sub(r"(?m)^h = .*", f"h = {h}", hub), "V", V)
    stress = {h: calculated(re.sub(r"(?m)^h = .*", f"h = {h}", hub))[0]["results"]["SHo"] for h in (0.05, 0.08)}
    expect(stress[0.05] < 0.75 * stress[0.08], f"hub stresses {stress}")

    def mdmt(curve, tg, tables):
        return f'units = "US"\n[[mdmt]]\ncurve = "{curve}"\ntg = {tg}\nci = 0\ncurve_tables = {tables}\n'

    claim(mdmt("C", 0.55, "false"), "T_curve", "-32.1")
    claim(mdmt("C", 0.55, "true"), "T_curve", "-27.2")
    warmer = [calculated(mdmt("A", 3, tables))[0]["results"]["T_curve"] for tables in ("false", "true")]
    expect(1.75 < warmer[0] - warmer[1] < 1.85, f"curve A at 3 in.: {warmer}")

    external = (ROOT / "docs" / "examples" / "external_cylinders.toml").read_text("utf-8").split("\n[[external]]")
    by_table = external[0] + "\n[[external]]" + external[1]
    claim(by_table, "A", "0.000191")
    claim(by_table.replace("table_g = true", ""), "A", "0.000214")
    expect("12.4 % apart" in calculated(by_table)[1], "factors A are not compared")

    for name, line in (("weld_neck_viii2", "143070/@0 ##"), ("external_loads_viii2", "(31.2-2*@3)) +#")):
        expect(line in page and line in calculated(golden(name))[1], f"{name}: no {line}")


def test_headers():
    text = "/*\n** x.h - what it is.\n*/\n#ifndef TARVANE_X_H\n#define TARVANE_X_H\n\n" \
           "/*\n** CALL - does it.\n**   a  given\n*/\nvoid CALL(int a);\n\n#endif\n"
    page = headers.page("x.h", text)
    expect("What it is." in page and "### CALL" in page and "void CALL(int a);" in page and "TARVANE_X_H" not in page,
           f"page of a header: {page}")
    for path in (ROOT / "include" / "tarvane").glob("*.h"):
        page = headers.page(path.name, path.read_text("utf-8"))
        for function in re.findall(r"(?m)^TARVANE_(?:VESSEL_)?API .*?(\w+)\(", path.read_text("utf-8")):
            expect(f"{function}(" in page, f"{path.name}: {function} is not on its page")


# ---- commands -------------------------------------------------------------------------------------------------------


def test_commands_are_judged():
    expect(commands.variants("a [-o F] x|y") == ["a x", "a y", "a -o F x", "a -o F y"], "variants")
    runner = commands.Runner(ROOT, PROGRAM, DATA, SCRATCH / "judged")
    runner.follow(commands.Page("wrong", "`tarvane rum FILE` `tarvane run FILE --htm F`\n```\nmake install\n./configure\n"
                                         "$ tarvane explain nothing_like_it\ntarvane run FILE\n```\n"))
    expect(len(runner.faults) == 5 and runner.count == 2, f"commands are not judged: {runner.count}, {runner.faults}")


def test_commands():
    runner = commands.Runner(ROOT, PROGRAM, DATA, SCRATCH / "commands")
    names = ["README.md", "CONTRIBUTING.md", "python/README.md"]
    names += sorted(path.relative_to(ROOT).as_posix() for path in (ROOT / "docs").rglob("*.md"))
    for name in names:
        runner.follow(commands.Page(name, (ROOT / name).read_text("utf-8")))
    FAULTS.extend(runner.faults)
    expect(runner.count > 40, f"{runner.count} commands")
    print(f"commands: {runner.count} were run")
    for reason, listed in runner.left_out.items():
        print(f"not run here: {reason}:")
        for command in dict.fromkeys(listed):
            print(f"    {command}")


def main():
    SCRATCH.mkdir(parents=True, exist_ok=True)
    os.environ["TARVANE_DATA"] = str(DATA)
    for name, test in list(globals().items()):
        if name.startswith("test_"):
            test()
    for fault in FAULTS:
        print("fault:", fault)
    return 1 if FAULTS else 0


if __name__ == "__main__":
    sys.exit(main())
