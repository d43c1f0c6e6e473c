"""A compiler launcher: what another tree has compiled by the same command is not compiled again, its object is copied.
Whatever differs is compiled, and named in compiled.txt of the tree.

    built_before.py OTHER_TREE TREE FOLDER COMMAND...       FOLDER/: where the project is built in the tree
"""

import os
import pickle
import sys


def command_key(words, tree, folder):
    """The words without the compiler and dependency files; paths in the tree as they are from the project's folder."""
    kept, skip = [], False
    for word in words[next(i for i, word in enumerate(words) if word.startswith("-")) :]:
        if skip or word in ("-MF", "-MT", "-MQ"):
            skip = not skip
        elif word not in ("-MD", "-MMD"):
            kept.append(word.replace(f"{tree}/{folder}", "").removeprefix(folder))
    return "\0".join(kept)


def objects_of(tree, cache):
    if os.path.exists(cache):
        with open(cache, "rb") as file:
            return pickle.load(file)
    import json
    import shlex

    with open(f"{tree}/compile_commands.json", encoding="utf-8") as file:
        commands = json.load(file)
    objects = {}
    for entry in commands:
        words = shlex.split(entry["command"])
        objects[command_key(words, tree, "")] = os.path.join(entry["directory"], words[words.index("-o") + 1])
    with open(f"{cache}.{os.getpid()}", "wb") as file:
        pickle.dump(objects, file)
    os.replace(f"{cache}.{os.getpid()}", cache)
    return objects


def main():
    other, tree, folder, *command = sys.argv[1:]
    if "-o" in command:
        target = command[command.index("-o") + 1]
        made = objects_of(other, f"{tree}/built_before.pickle").get(command_key(command, tree, folder))
        if made and os.path.exists(made):
            if os.path.lexists(target):
                os.remove(target)
            os.symlink(made, target)
            if "-MF" in command:
                open(command[command.index("-MF") + 1], "w", encoding="utf-8").close()
            return
        with open(f"{tree}/compiled.txt", "a", encoding="utf-8") as log:
            log.write(f"{target}\n")
    os.execvp(command[0], command)


main()
