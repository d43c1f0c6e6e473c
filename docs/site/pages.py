#!/usr/bin/env python3
"""Collects the pages of the site, and has mkdocs make it.

    pages.py SOURCE PROGRAM OUT [--only-pages]

SOURCE is the tree, PROGRAM a built tarvane, OUT the folder that receives `pages`, `mkdocs.yml` and `site`.
"""
import argparse
import json
import os
import posixpath
import re
import shutil
import subprocess
import sys
from pathlib import Path

import headers
import reference
import worked

# The navigation: pages in their order. What a glob finds beyond the named pages follows them.
ENGINEERS = ["input", "flanges", "shells", "metal_temperatures", "materials", "units", "checks", "vessel", "documents",
             "batch", "sweeps", "own_data", "serve", "not_literally", "report_guide"]
HOSTS = ["library", "hosts/cmake", "hosts/c", "hosts/cpp", "hosts/*", "python", "host-guide", "cluster", "data_files"]
CONTRIBUTORS = ["contributing", "architecture", "adding", "cases", "releasing", "changelog", "*"]


def sources(root):
    """Pages of the site, by their place there, and the files they come from."""
    pages = {}
    for path in sorted((root / "docs").glob("**/*.md")):
        pages[path.relative_to(root / "docs").as_posix()] = path
    for place, name in (("contributing.md", "CONTRIBUTING.md"), ("changelog.md", "CHANGELOG.md"),
                        ("python.md", "python/README.md"), ("index.md", "README.md")):
        if (root / name).exists():
            pages[place] = root / name
    return pages


def start(text):
    """Of the README what it is, the first run, and the guide."""
    return text[:text.index("### A vessel")] + text[text.index("## The guide"):text.index("## The library")]


def relink(text, path, place, places, root, faults):
    """Links between files of the tree become links between pages of the site."""
    def link(match):
        shown, target, anchor = match.group(1), match.group(2), match.group(3) or ""
        if re.match(r"[a-z]+:", target) or not target:
            return match.group(0)
        file = Path(os.path.normpath(path.parent / target))
        if file.is_dir() and file / "index.md" in places:
            file = file / "index.md"
        if file in places:
            return f"[{shown}]({posixpath.relpath(places[file], posixpath.dirname(place) or '.')}{anchor})"
        if not file.exists():
            faults.append(f"{path.relative_to(root)}: no {target}")
        return shown if "`" in shown else f"`{shown}`" if re.fullmatch(r"[\w./]+", shown) else shown

    return re.sub(r"(?<!!)\[([^\]\[]*(?:\[[^\]]*\][^\]\[]*)?)\]\(([^)#\s]*)(#[^)\s]*)?\)", link, text)


def fences(text):
    """The name of a file beside the language of a block is for the tests; the site shows it as the title."""
    text = re.sub(r"(?m)^```(\w+) (\S+)$", r'```\1 title="\2"', text)
    return re.sub(r"(?m)^```console$", "```text", text)


def title_of(text):
    return re.search(r"(?m)^# (.*)$", text).group(1).replace("`", "")


def tables_spaced(text):
    """A table or list right under a paragraph, as some viewers take it, needs an empty line here."""
    out, fenced, before = [], False, ""
    for line in text.split("\n"):
        if line.startswith("```"):
            fenced = not fenced
        starts_list = re.match(r"([-*]|\d+\.) ", line)
        if not fenced and starts_list and before and not re.match(r"\s|([-*]|\d+\.) ", before):
            out.append("")
        out.append(line)
        before = line
    return "\n".join(out)


def collect(root, program, out):
    pages_folder = out / "pages"
    shutil.rmtree(pages_folder, ignore_errors=True)
    pages = sources(root)
    texts, faults = {}, []
    words = reference.vocabulary(program)
    known = reference.anchors(words)
    examples = worked.examples(root / "docs" / "examples", program)
    places = {path: place for place, path in pages.items()}
    places[root / "docs" / "examples" / "index.md"] = "examples/index.md"
    for place, path in pages.items():
        text = path.read_text("utf-8")
        if place == "index.md":
            text = start(text)
        text = tables_spaced(fences(relink(text, path, place, places, root, faults)))
        if place.startswith("procedures/") or place == "not_literally.md":
            text, unknown = reference.linked(text, known, "../" * place.count("/"))
            faults += [f"{place}: no key, result or check {address}" for address in unknown]
        texts[place] = text
    texts["reference/index.md"] = reference.index(words)
    for kind in words["kinds"]:
        texts[f"reference/{kind['name']}.md"] = reference.kind_page(kind)
    for path in sorted((root / "include" / "tarvane").glob("*.h")):
        texts[f"headers/{path.stem}.md"] = headers.page(path.name, path.read_text("utf-8"))
    texts["examples/index.md"] = worked.index(examples)
    for example in examples:
        texts[f"examples/{example.name}.md"] = worked.page(example)
        faults += [f"{example.name}: {figure.what}: {figure.value:g}, published {figure.published:g}, "
                   f"{figure.deviation:+.3f} %, beyond {figure.within:g} %"
                   for figure in example.figures if not figure.holds()]
    for place, text in texts.items():
        (pages_folder / place).parent.mkdir(parents=True, exist_ok=True)
        # Formulas are wide, and a procedure has two headings.
        head = "---\nhide:\n  - toc\n---\n\n" if place.startswith("procedures/") else ""
        (pages_folder / place).write_text(head + text, "utf-8")
    shutil.copy(Path(__file__).parent / "style.css", pages_folder / "style.css")
    return texts, faults


def listed(texts, folder):
    """Pages of a folder in the order of its overview."""
    return [f"{folder}/{name}" for name in dict.fromkeys(re.findall(r"\]\((\w+)\.md\)", texts[f"{folder}/index.md"]))]


def navigation(texts):
    taken = {"index.md"}

    def group(names):
        found = []
        for name in names:
            pattern = re.compile(name.replace("*", "[^/]*") + r"\.md")
            for place in sorted(texts):
                if pattern.fullmatch(place) and place not in taken:
                    taken.add(place)
                    found.append({title_of(texts[place]): place})
        return found

    engineers, hosts = group(ENGINEERS), group(HOSTS)
    procedures = [{"Overview": "procedures/index.md"}]
    taken.add("procedures/index.md")
    procedures += group(listed(texts, "procedures") + ["procedures/*"])
    taken |= {"examples/index.md", "reference/index.md"}
    examples = [{"Overview": "examples/index.md"}] + group(listed(texts, "examples"))
    keys = [{"Overview": "reference/index.md"}] + group(listed(texts, "reference"))
    c_headers = group(["headers/vessel", "headers/tarvane", "headers/*"])
    return [{"Start": "index.md"}, {"For engineers": engineers}, {"Procedures": procedures},
            {"Published examples": examples}, {"For hosts": hosts},
            {"Reference": [{"Keys, results and checks": keys}, {"C headers": c_headers}]},
            {"For contributors": group(CONTRIBUTORS)}]


def configuration(texts, out):
    return {
        "site_name": "tarvane",
        "site_description": "Calculation engine of pressure vessels: guide, procedures, reference",
        "docs_dir": str(out / "pages"),
        "site_dir": str(out / "site"),
        "use_directory_urls": False,
        "theme": {"name": "material", "font": False, "language": "en", "palette": {"scheme": "default", "primary": "blue grey"},
                  "features": ["navigation.tabs", "navigation.top", "toc.follow"]},
        "extra": {"generator": False},
        "extra_css": ["style.css"],
        "plugins": ["search"],
        "markdown_extensions": ["tables", "attr_list", "md_in_html", {"toc": {"permalink": True, "toc_depth": 3}},
                                {"pymdownx.highlight": {"use_pygments": True}}, "pymdownx.superfences"],
        "nav": navigation(texts),
    }


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("source", type=Path)
    parser.add_argument("program", type=Path)
    parser.add_argument("out", type=Path)
    parser.add_argument("--only-pages", action="store_true")
    given = parser.parse_args()
    root, out = given.source.resolve(), given.out.resolve()
    texts, faults = collect(root, given.program.resolve(), out)
    # Any JSON is YAML.
    (out / "mkdocs.yml").write_text(json.dumps(configuration(texts, out), indent=1), "utf-8")
    for fault in faults:
        print("site:", fault, file=sys.stderr)
    if faults:
        return 1
    if given.only_pages:
        return 0
    # mkdocs and its theme are Debian's, for Debian's interpreter.
    made = subprocess.run(["/usr/bin/mkdocs", "build", "--strict", "--clean", "--quiet", "--config-file", out / "mkdocs.yml"])
    if made.returncode == 0:
        print(f"site: {len(texts)} pages; begin at {out / 'site' / 'index.html'}")
    return made.returncode


if __name__ == "__main__":
    sys.exit(main())
