"""A page for each public C header: its comments as text, its declarations as code."""
import html
import re


def blocks(text):
    """Comments that begin a line, each with the code that follows it."""
    found = []
    for part in re.split(r"(?m)^(?=/\*)", text):
        match = re.match(r"/\*(.*?)\*/\n?(.*)", part, re.S)
        if match:
            found.append((match.group(1), match.group(2)))
        elif part.strip():
            found.append(("", part))
    return found


def code(text):
    """Without the guard and what is for the compiler alone."""
    kept, depth = [], 0
    for line in text.splitlines():
        if re.match(r"#\s*(if|ifdef|ifndef)\b", line):
            depth += 1
        elif re.match(r"#\s*endif", line):
            depth = max(0, depth - 1)
        elif re.match(r"#\s*(else|elif|include)\b", line) or re.match(r"#\s*define TARVANE_\w+_H$", line):
            continue
        elif depth > 1 and (line.startswith("#") or line in ('extern "C" {', "}")):
            continue
        elif line in ('extern "C" {', "}"):
            continue
        else:
            kept.append(line)
    return re.sub(r"\n{3,}", "\n\n", "\n".join(kept)).strip()


def prose(comment):
    """Lines at the margin flow; indented ones are lists of arguments, and keep their lines."""
    lines = [re.sub(r"^\*\* ?", "", line.rstrip()) for line in comment.strip("\n").splitlines()]
    out, kept = [], []

    def close():
        while kept and not kept[-1]:
            kept.pop()
        if kept:
            indent = min(len(line) - len(line.lstrip()) for line in kept if line)
            # An empty line would end the block of HTML.
            text = "\n".join(html.escape(line[indent:], quote=False) or "&#32;" for line in kept)
            out.extend(["", f'<pre class="comment">{text}</pre>', ""])
            kept.clear()

    for line in lines:
        if line.startswith("  ") or (kept and not line):
            kept.append(line)
        else:
            close()
            out.append(html.escape(line.strip(), quote=False).replace("*", "&#42;").replace("_", "&#95;"))
    close()
    return "\n".join(out).strip("\n")


def page(name, text):
    lines = [f"# `tarvane/{name}`", ""]
    for number, (comment, declarations) in enumerate(blocks(text)):
        comment = comment.strip()
        comment = re.sub(r"^\*\* ", "", comment)
        named = re.match(r"([A-Za-z_]\w*(?:, \w+)*) - ", comment)
        section = re.match(r"-{2,} (.*?) -{2,}$", comment)
        if section:
            lines += [f"## {section.group(1)}", ""]
        elif named and number:
            lines += [f"### {named.group(1)}", "", prose(comment[named.end():]), ""]
        elif comment and number:
            lines += [prose(comment), ""]
        elif comment:
            said = re.sub(r"^\S+\.h - ", "", comment)
            lines += [prose(said[:1].upper() + said[1:]), ""]
        kept = code(declarations)
        if kept:
            lines += ["```c", kept, "```", ""]
    return "\n".join(lines)
