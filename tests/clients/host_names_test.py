"""What the modules for Fortran and C# repeat of the headers is as the headers have it: names and numbers of the flange
record and text, the calls of vessel.h with their arguments, its constants.

    host_names_test.py SOURCE_FOLDER
"""

import re
import sys
from pathlib import Path

# Symbols that differ by case alone have a name of their own in Fortran.
APART = {"Go": "go_gasket", "go": "go_hub", "A": "a_flange", "a": "a_bolt", "D": "d_long", "d": "d_short",
         "W": "w_bolts", "w": "w_nubbin", "DESIGNED_A": "designed_a_flange", "DESIGNED_a": "designed_a_bolt",
         "DESIGNED_Go": "designed_go_gasket", "DESIGNED_go": "designed_go_hub"}  # fmt: skip
# The first constant of each list of tarvane.h; what its names begin with in Fortran; what is added.
LISTS = (("ELEMENT", "at_", 0), ("INTEGRAL_WELD_NECK", "type_", 0), ("ANALYSE", "kind_", 0),
         ("TEMA_THREADS", "threads_", 0), ("SKETCH_1A", "", 0), ("NO_SPLIT", "", 0), ("ASME_VIII_1", "code_", 0),
         ("TEXT_MATERIAL", "slot_", 1))  # fmt: skip
FAULTS = []


def same(what, found, wanted):
    """Both are dictionaries or lists; what differs is a fault."""
    if found != wanted:
        missing = sorted(set(wanted) - set(found))
        more = sorted(set(found) - set(wanted))
        other = [name for name in found if isinstance(found, dict) and name in wanted and found[name] != wanted[name]]
        FAULTS.append(f"{what}: missing {missing}, not in the header {more}, others {other}")


def constants(header):
    return {name: int(number) for name, number in re.findall(r"\bTARVANE_(\w+) = (\d+)", header)}


def fortran_constants(text):
    found = {}
    for line in re.findall(r"(?m)^ *integer[^\n]*parameter[^\n]*:: ([^!\n]*)", text):
        found.update({name: int(number) for name, number in re.findall(r"(\w+) = (\d+)", line)})
    return found


def record(source):
    header = (source / "include/tarvane/tarvane.h").read_text()
    wanted = {}
    for first, prefix, added in LISTS:
        body = next(body for body in re.findall(r"enum \{(.*?)\};", header, re.S) if f"TARVANE_{first} =" in body)
        for name, number in constants(body).items():
            if name == "TEXT_LENGTH":
                continue
            plain = APART.get(name, name) if prefix == "at_" else name
            plain = re.sub(r"^TEXT_|_THREADS$" if prefix in ("slot_", "threads_") else "^$", "", plain)
            wanted[prefix + plain.lower()] = number + added
    same("fortran/record.inc", fortran_constants((source / "fortran/record.inc").read_text()), wanted)
    for example in [*source.glob("examples/hosts/*.f90"), source / "tests/clients/fortran_host.F90"]:
        for line in re.findall(r"(?m)^.*\b(?:record|text)\(\[?[0-9:]+.*$", example.read_text()):
            if "check(" not in line:
                FAULTS.append(f"{example.name} has a number in place of a name: {line.strip()}")


def kind(argument):
    """Of an argument in C: how it is passed."""
    if "*" in argument or "TARVANE_PROGRESS" in argument:
        return "address"
    return {"int32_t": "int32", "int64_t": "int64", "double": "double"}[argument.split()[0]]


def header_calls(header):
    calls = {}
    plain = re.sub(r"/\*.*?\*/", "", header, flags=re.S)
    for gives, name, arguments in re.findall(r"TARVANE_VESSEL_API ([^;(]*?)(\w+)\(([^;]*)\);", plain):
        words = [] if arguments.strip() == "void" else [kind(word.strip()) for word in arguments.split(",")]
        calls[name] = ["void" if gives.strip() == "void" else kind(gives.strip() + " "), *words]
    return calls


def fortran_calls(text):
    calls = {}
    text = re.sub(r"&\s*\n\s*&?", "", text)
    for head, body in re.findall(r"(?m)^ *((?:function|subroutine) c_\w+\(.*)\n((?:(?!^ *end ).*\n)*)", text):
        shape, name, arguments, bound = re.match(r"(\w+) (\w+)\(([^)]*)\) *bind\(c, name='(\w+)'\)", head).groups()
        kinds = {}
        for type_, attributes, names in re.findall(r"(?m)^ *(type|character|integer|real)(\([^\n]*?) :: ([^\n]*)", body):
            by_value = ", value" in attributes
            if type_ == "type" and "c_funptr" not in attributes and not by_value:
                one = "address"
            elif type_ in ("type", "character") or not by_value and "intent" in attributes:
                one = "address"
            else:
                one = {"(c_int32_t)": "int32", "(c_int64_t)": "int64", "(c_double)": "double",
                       "(c_size_t)": "size"}[re.match(r"\(\w+\)", attributes)[0]]
            for each in re.findall(r"(\w+)(?:\(\*\))?", names):
                kinds[each] = one
        result = re.search(r"result\((\w+)\)", head)
        if bound != "strlen":
            calls[bound] = [kinds[result[1]] if shape == "function" else "void",
                            *(kinds[word.strip()] for word in arguments.split(",") if word.strip())]  # fmt: skip
    return calls


def csharp_calls(text):
    """Of overloads each must be as the header has it."""
    calls = {}
    for gives, name, arguments in re.findall(r"static extern (\w+) (\w+)\(([^)]*)\);", text):
        def one(word):
            plain = {"int": "int32", "long": "int64", "double": "double", "void": "void"}
            return "address" if "out " in word or "[" in word else plain.get(word.split()[0], "address")

        call = [one(gives), *(one(word.strip()) for word in re.split(r",(?![^\[]*\])", arguments) if word.strip())]
        if calls.setdefault(name, call) != call:
            FAULTS.append(f"csharp/Tarvane.cs: two forms of {name}")
    return calls


def vessel(source):
    header = (source / "include/tarvane/vessel.h").read_text()
    calls, numbers = header_calls(header), constants(header)
    if len(calls) < 18 or len(numbers) < 15:
        FAULTS.append("the header is not what it was")

    text = (source / "fortran/tarvane_vessel.f90").read_text()
    same("calls of tarvane_vessel.f90", fortran_calls(text),
         {name: call for name, call in calls.items() if name != "tarvane_schema"})  # fmt: skip
    wanted = {}
    for name, number in numbers.items():
        if name in ("NOTHING", "NULL", "FLAG", "NUMBER", "TEXT", "LIST", "OBJECT"):
            wanted[f"of_{name.lower()}"] = number
        elif name.startswith("WANT_"):
            wanted[name.lower()] = number
        else:
            wanted[f"tarvane_{name.lower()}"] = number
    same("constants of tarvane_vessel.f90", fortran_constants(text), wanted)

    text = (source / "csharp/Tarvane.cs").read_text()
    same("calls of Tarvane.cs", csharp_calls(text), calls)
    found = {name.upper(): int(number) for name, number in re.findall(r"(?m)^ +(\w+) = (\d+),? *(?://.*)?$", text)}
    found = {re.sub("STOPPED", "_STOPPED", re.sub("NODATA", "NO_DATA", name)): n for name, n in found.items()}
    wanted = {re.sub("^WANT_", "", name): number for name, number in numbers.items() if name != "VESSEL_ABI"}
    same("constants of Tarvane.cs", found, {**wanted, "VERDICTS": 0})
    same("ABI of Tarvane.cs", re.findall(r"Abi = (\d+);", text), [str(numbers["VESSEL_ABI"])])


record(Path(sys.argv[1]))
vessel(Path(sys.argv[1]))
for fault in FAULTS:
    print(fault)
print(f"{len(FAULTS)} faults")
sys.exit(1 if FAULTS else 0)
