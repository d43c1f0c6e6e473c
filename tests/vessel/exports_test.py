"""The vessel library exports the routines of its header and nothing else, and leaves no name of the engine to be
found elsewhere.

    exports_test.py NM LIBRARY HEADER EXPORT_LIST_OF_THE_ENGINE
"""

import re
import subprocess
import sys
from pathlib import Path


def names(nm, which, library):
    output = subprocess.run([nm, "-D", which, library], check=True, capture_output=True, text=True).stdout
    return {line.split()[-1].split("@")[0] for line in output.splitlines()}


def main():
    nm, library, header, engine_list = sys.argv[1:]
    declared = set(re.findall(r"^TARVANE_VESSEL_API [^;]*?\b(tarvane_\w+)\(", Path(header).read_text(), re.M))
    engine = set(re.findall(r"^TARVANE_(?:ROUTINE|VARIABLE)\((\w+)", Path(engine_list).read_text(), re.M))
    exported = names(nm, "--defined-only", library)
    borrowed = names(nm, "--undefined-only", library) & (engine | declared)
    faults = []
    if len(declared) < 7 or len(engine) < 100:
        faults.append("the lists are not what they were")
    if exported != declared:
        faults.append(f"not exported: {sorted(declared - exported)}; not in the header: {sorted(exported - declared)}")
    if borrowed:
        faults.append(f"looked for in other libraries: {sorted(borrowed)}")
    for fault in faults:
        print(fault)
    print(f"{len(exported)} names exported")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
