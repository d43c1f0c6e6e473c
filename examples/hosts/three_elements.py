"""A host in Python: one flange, one shell, one element under external pressure. Prints the bits of their results,
so that hosts in other languages can be compared with it, and the verdicts.

    three_elements.py [DATA_FOLDER]
"""

import struct
import sys

import tarvane

REQUEST = {
    "T": 300.0,
    "flange": [
        {
            "description": "NPS 12 cl. 150",
            "type": "weld neck",
            "P": 150.0,
            "Sfo": 20000.0,
            "Sfa": 20000.0,
            "bolting": "TEMA",
            "Sb": 25000.0,
            "Sa": 25000.0,
            "t": 1.19,
            "ci": 0.0625,
            "B": 12.0,
            "A": 19.0,
            "g0": 0.375,
            "g1": 1.19,
            "h": 3.25,
            "C": 17.0,
            "a": 0.875,
            "n": 12,
            "Fod": 15.0,
            "Fid": 12.0,
            "gasket": {"Go": 14.75, "Gi": 14.0, "m": 3.0, "y": 10000.0, "facing": "1a", "column": "II", "tg": 0.125},
            "rigidity": True,
            "chart": "CS-2",
        }
    ],
    "shell": [
        {
            "kind": "torispherical",
            "P": 50.0,
            "S": 20000.0,
            "Sa": 20000.0,
            "Sy": 33600.0,
            "Sy_cold": 38000.0,
            "D": 200.0,
            "L": 200.0,
            "r": 12.0,
            "t": 0.375,
            "ci": 0.0625,
        }
    ],
    "external": [
        {
            "kind": "cylinder",
            "P_external": 15.0,
            "D": 90.0,
            "t": 1.125,
            "ci": 0.125,
            "length": 636.0,
            "S": 20000.0,
            "Sy": 33600.0,
            "method": "stress",
            "chart": "CS-2",
        }
    ],
}


def show(element: str, results: tarvane.Results, names: list[str]) -> None:
    for name in names:
        print(element, name, struct.pack(">f", results[name]).hex().upper())


def main() -> None:
    vessel = tarvane.Vessel(data_folder=sys.argv[1] if len(sys.argv) > 1 else None)
    result = vessel.calculate(REQUEST)
    show("flange", result.flange[0].results, ["mawp", "map_nc"])
    show("shell", result.shell[0].results, ["t_req_raw", "mawp", "map_nc", "stress", "t_14f"])
    show("external", result.external[0].results, ["maep", "tca", "slen"])
    for component in result.components:
        governing = component.governing
        print(component.path, component.verdict, governing.id if governing else "")


if __name__ == "__main__":
    main()
