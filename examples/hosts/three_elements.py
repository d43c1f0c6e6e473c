"""A host in Python: one flange, one shell, one element under external pressure. Prints the bits of every
result, so that hosts in other languages can be held against it, and the reports."""

import struct
import sys

import tarvane

FLANGE = {
    "type": "weld neck",
    "P": 150.0,
    "T": 300.0,
    "Sfo": 20000.0,
    "Sfa": 20000.0,
    "Sb": 25000.0,
    "Sa": 25000.0,
    "t": 1.19,
    "ci": 0.0625,
    "B": 12.0,
    "A": 19.0,
    "Fod": 15.0,
    "Fid": 12.0,
    "Go": 14.75,
    "Gi": 14.0,
    "go": 0.375,
    "g1": 1.19,
    "h": 3.25,
    "C": 17.0,
    "a": 0.875,
    "bolts": 12,
    "m": 3.0,
    "y": 10000.0,
    "column": "II",
    "tg": 0.125,
    "rigidity": 1,
    "material": "SA-105",
    "bolt_material": "SA-193 B7",
    "description": "NPS 12 cl. 150",
    "chart": "CS-2",
}
HEAD = {
    "element": "torispherical",
    "P": 50.0,
    "T": 300.0,
    "S": 20000.0,
    "Sa": 20000.0,
    "Sy": 33600.0,
    "Sy_cold": 38000.0,
    "D": 200.0,
    "L": 200.0,
    "r": 12.0,
    "t": 0.375,
    "c": 0.0625,
}
CYLINDER = {
    "element": "cylinder",
    "P": 15.0,
    "T": 300.0,
    "D": 90.0,
    "t": 1.125,
    "c": 0.125,
    "length": 636.0,
    "S": 20000.0,
    "Fy": 33600.0,
    "case_2286": 1,
    "chart": "CS-2",
}


def show(element: str, name: str, value: float) -> None:
    print(element, name, struct.pack(">f", value).hex().upper())


def print_report(lines: list[tarvane.ReportLine]) -> None:
    for line in lines:
        print("|" + line.text)


def main() -> None:
    sys.stdout.reconfigure(encoding="latin-1")  # the report's single-byte characters
    engine = tarvane.Engine()

    flange = engine.flange(FLANGE)
    show("flange", "mawp", flange.mawp)
    show("flange", "map_nc", flange.map_nc)
    show("flange", "t_req", flange.t_req or 0.0)  # None here: the engine has 0.0
    for element, value in enumerate(flange.record, 1):
        show("flange", f"record{element}", value)
    print_report(flange.report)

    head = engine.shell(HEAD)
    for name in ("t_req", "t_req_raw", "mawp", "map_nc", "stress", "t_14f", "fail_ca"):
        show("shell", name, getattr(head, name))

    cylinder = engine.external(CYLINDER)
    for name in ("maep", "tca", "slen", "Do", "Fha", "fail_ca"):
        show("external", name, getattr(cylinder, name))
    print_report(cylinder.report)


if __name__ == "__main__":
    main()
