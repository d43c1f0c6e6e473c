"""A sweep in Python: the MAWP of a flange over its thickness.

    sweep.py FILE.toml
"""

import sys

import tarvane

file = sys.argv[1]
thicknesses = [1.0 + 0.05 * step for step in range(11)]

table = tarvane.sweep(file, {"flange[0].t": thicknesses, "flange[0].P": 150.0},
                      results=["flange[0].results.mawp", "flange[0].passed"])
rows = zip(thicknesses, table["flange[0].results.mawp"], table["flange[0].passed"], table["reason"])
for t, mawp, passed, reason in rows:
    print(f"{t:6.3f} {mawp:9.2f} {'pass' if passed else 'fail'} {reason or ''}".rstrip())
