"""The published examples, calculated."""
import json
import re
import subprocess
import tempfile
import tomllib
from pathlib import Path


class Figure:
    def __init__(self, entry, result):
        kind, number, name = re.fullmatch(r"(\w+)\[(\d+)\]\.(\w+)", entry["at"]).groups()
        value = result[kind][int(number)]["results"][name]
        if value is None:
            raise SystemExit(f"{entry['at']}: no value for {entry['what']}")
        self.what, self.published, self.within = entry["what"], entry["published"], entry["within"]
        self.value = value * entry.get("times", 1)
        self.deviation = 100 * (self.value / self.published - 1)

    def holds(self):
        return abs(self.deviation) <= self.within


class Example:
    def __init__(self, entry, folder, program):
        self.title, self.source, self.says = entry["title"], entry["source"], entry.get("says", "")
        self.name = Path(entry["file"]).stem
        self.input = (folder / entry["file"]).read_text("utf-8")
        with tempfile.TemporaryDirectory() as scratch:
            out = Path(scratch) / "result.json"
            run = subprocess.run([program, "run", folder / entry["file"], "--json", out], capture_output=True, text=True)
            if run.returncode not in (0, 1):
                raise SystemExit(f"{entry['file']}: status {run.returncode}: {run.stderr}")
            self.result = json.loads(out.read_text("utf-8"))
        self.figures = [Figure(figure, self.result) for figure in entry["figures"]]

    def components(self):
        for kind in ("flange", "shell", "external", "compression", "mdmt"):
            yield from self.result.get(kind, [])

    def drawings(self):
        for component in self.components():
            for drawing in component.get("drawings", []):
                if drawing["name"] in ("section", "chart"):
                    yield component["description"], drawing["svg"]


def examples(folder, program):
    with open(folder / "published.toml", "rb") as table:
        entries = tomllib.load(table)["example"]
    return [Example(entry, folder, program) for entry in entries]


def number(value, digits):
    return f"{value:.{digits}g}"


def page(example):
    lines = [f"# {example.title}", "", f"Source: {example.source}.", ""]
    if example.says:
        lines += [example.says, ""]
    lines += ["| figure | published | tarvane | deviation | bound |",
              "| --- | ---: | ---: | ---: | ---: |"]
    for figure in example.figures:
        lines.append(f"| {figure.what} | {number(figure.published, 10)} | {number(figure.value, 7)} | "
                     f"{figure.deviation:+.3f} % | {figure.within:g} % |")
    lines += ["", "The bound is that of a test: a deviation beyond it fails.", ""]
    lines += ["## Verdict", ""]
    for component in example.components():
        lines.append(f"- {component['description']}: **{component['verdict']}**; {component['says']}")
    lines += ["", f"## Input file `{example.name}.toml`", "", "```toml", example.input.rstrip(), "```", "", "## Drawing", ""]
    for description, svg in example.drawings():
        lines += [f'<figure class="drawing" markdown="0">{re.sub(chr(10) + "+", chr(10), svg.strip())}</figure>', ""]
    return "\n".join(lines) + "\n"


def index(all_examples):
    lines = ["# Published examples", "",
             "Worked examples of public sources, calculated when this site was built. The deviation is that of the figure",
             "furthest from the source; what the source did differently is said on the page.", "",
             "| example | figures | greatest deviation | verdict |", "| --- | ---: | ---: | --- |"]
    for example in all_examples:
        furthest = max((abs(figure.deviation) for figure in example.figures))
        lines.append(f"| [{example.title}]({example.name}.md) | {len(example.figures)} | {furthest:.3f} % | "
                     f"{example.result['verdict']} |")
    return "\n".join(lines) + "\n"
