"""Pages of keys, results and checks, from `tarvane schema keys`."""
import html
import json
import re
import subprocess


def vocabulary(program):
    return json.loads(subprocess.run([program, "schema", "keys"], capture_output=True, text=True, check=True).stdout)


def anchors(words):
    """What a page may refer to: "flange.P", "flange.results.Wm1", "flange.checks.SHo"."""
    known = {}
    for kind in words["kinds"]:
        name, page = kind["name"], f"reference/{kind['name']}.md"
        for key in kind["keys"]:
            known[f"{name}.{key['name']}"] = f"{page}#{name}.{key['name']}"
        for part, label in (("results", "name"), ("checks", "id")):
            for entry in kind[part]:
                known.setdefault(f"{name}.{part}.{entry[label]}", f"{page}#{name}.{part}.{entry[label]}")
    return known


def cell(text):
    return html.escape(text, quote=False).replace("|", "&#124;").replace("*", "&#42;").replace("_", "&#95;")


def unit(entry):
    units = entry.get("units")
    if not units:
        return cell(entry["quantity"])
    return cell(", ".join(dict.fromkeys(units.values())))


def choices(entry):
    named, others = {}, []
    for choice in entry.get("choices", []):
        if choice["number"] in named:
            others.append(choice["name"])
        else:
            named[choice["number"]] = choice["name"]
    quoted = ", ".join(f'"{name}"' for name in named.values())
    also = ", ".join(f'"{name}"' for name in others)
    return quoted + (f"; also taken: {also}" if also else "")


def when(key):
    """When a key must be given, and when it is read at all."""
    required, read = key.get("required"), key.get("read")
    said = []
    if required is not None:
        words = required.get("words")
        said.append("required" + (f" when {words}" if words else " where it is read" if read else ""))
    if read and read.get("words"):
        said.append(f"read when {read['words']}")
    return cell("; ".join(said))


def default(key):
    if "required" in key and not key["required"].get("words"):
        return ""
    value = key["default"]
    for choice in key.get("choices", []):
        if choice["number"] == value:
            return cell(f'"{choice["name"]}"')
    if key["quantity"] == "flag":
        return "true" if value else "false"
    if key["quantity"] in ("text", "list of checks"):
        return ""
    return f"{value:.6g}" if isinstance(value, (int, float)) else cell(str(value))


def mark(address, shown):
    return f'<code id="{address}">{cell(shown)}</code>'


def kind_page(kind):
    name = kind["name"]
    lines = [f"# `[[{name}]]`: keys, results and checks", "",
             f"A file has up to {kind['most']} {kind['plural']}. `tarvane explain {name}.KEY` says the same of one key; "
             "units are those of US and SI files.", "", "## Keys", ""]
    sections = {}
    for key in kind["keys"]:
        sections.setdefault(key["section"], []).append(key)
    for section, keys in sections.items():
        lines += [f"### {section}", "", "| key | value | meaning | without it | when |", "| --- | --- | --- | --- | --- |"]
        for key in keys:
            meaning = cell(key["meaning"])
            if key.get("choices"):
                meaning += "<br>" + cell(choices(key))
            lines.append(f"| {mark(name + '.' + key['name'], key['name'])} | {unit(key)} | {meaning} | {default(key)} | "
                         f"{when(key)} |")
        lines.append("")
    if kind["second_names"]:
        pairs = ", ".join(f"`{other['name']}` for `{other['key']}`" for other in kind["second_names"])
        lines += [f"Second names: {pairs}.", ""]
    for table in kind["tables"]:
        names = ", ".join(f"`{key}`" for key in table["keys"])
        lines += [f"The table `{table['name']} = {{ ... }}` takes {names}, too.", ""]
    lines += ["## Results", "", "| result | unit | meaning |", "| --- | --- | --- |"]
    for result in kind["results"]:
        said = cell(result["label"])
        if result.get("meaning"):
            said += ": " + cell(result["meaning"])
        if result.get("choices"):
            said += "<br>" + cell(choices(result))
        lines.append(f"| {mark(name + '.results.' + result['name'], result['name'])} | {unit(result)} | {said} |")
    lines += ["", "## Checks", "",
              "A row that fails and **decides** fails the component; one that **warns** or **advises** does not.", "",
              "| check | paragraph | what is checked | asked | passes | force |", "| --- | --- | --- | --- | --- | --- |"]
    seen = set()
    for check in kind["checks"]:
        said = cell(check["label"] + (f", {check['case']}" if check.get("case") else ""))
        address = f"{name}.checks.{check['id']}"
        shown = mark(address, check["id"]) if address not in seen else f"<code>{check['id']}</code>"
        seen.add(address)
        force = check["force"] + (", can be waived" if check["waivable"] else "")
        passes = "demand not above limit" if check["operator"] == "<=" else "demand not below limit"
        lines.append(f"| {shown} | {cell(check.get('paragraph', ''))} | {said} | {cell(check['asked'])} | {passes} | {force} |")
    return "\n".join(lines) + "\n"


def index(words):
    lines = ["# Reference", "", "Generated from the tables that the library itself reads and checks by.", "",
             "| component | keys | results | checks |", "| --- | ---: | ---: | ---: |"]
    for kind in words["kinds"]:
        lines.append(f"| [`[[{kind['name']}]]`]({kind['name']}.md) | {len(kind['keys'])} | {len(kind['results'])} | "
                     f"{len(kind['checks'])} |")
    lines += ["", "`tarvane schema input` and `tarvane schema result` write the JSON Schemas of a request and of a result,",
              "`tarvane schema keys` these tables for programs.", ""]
    return "\n".join(lines)


def linked(text, known, place):
    """Names of the vocabulary in a procedure page become links; unknown ones are collected."""
    unknown = []

    def link(match):
        address = match.group(1)
        if address not in known:
            unknown.append(address)
            return match.group(0)
        shown = re.sub(r"^\w+\.(results\.|checks\.)?", "", address)
        return f"[`{shown}`]({place}{known[address]})"

    return re.sub(r"(?<!\[)`((?:flange|shell|external|mdmt)\.[A-Za-z_][\w.]*)`", link, text), unknown
