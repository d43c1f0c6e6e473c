"""What another tree has compiled by the same command is not compiled again: a link to its object is laid ready in the
folder `built before` of a tree, for its compiler launcher built_before.sh. Both trees have their compile_commands.json."""

import json
import os
import shlex
from pathlib import Path


def command_key(words, tree, folder):
    """The words without the compiler; paths in the tree as they are from the project's folder."""
    begin = next(i for i, word in enumerate(words) if word.startswith("-"))
    return tuple(word.replace(f"{tree}/{folder}", "").removeprefix(folder) for word in words[begin:])


def objects_of(tree, folder=""):
    """By the key of its command each object, from the tree."""
    objects = {}
    for entry in json.loads(Path(tree, "compile_commands.json").read_text(encoding="utf-8")):
        words = shlex.split(entry["command"])
        made = Path(entry["directory"], words[words.index("-o") + 1])
        objects[command_key(words, tree, folder)] = made.relative_to(tree)
    return objects


def lay_ready(other, tree, folder):
    """`folder` with a slash at its end is where the project is built in the tree."""
    made = objects_of(other)
    for key, target in objects_of(tree, folder).items():
        if key in made and Path(other, made[key]).exists():
            link = Path(tree, "built before", target)
            link.parent.mkdir(parents=True, exist_ok=True)
            os.symlink(Path(other, made[key]), link)
