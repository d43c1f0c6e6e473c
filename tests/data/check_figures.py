"""The figures of data/sources against those that were found in public copies, data/sources/checks.

  check_figures.py SOURCES

- No figure differs from a found one by more than 1 % but those that checks/exceptions.csv lists, each with its
  reason; a line there that no figure needs is a fault, too.
- A row is `checked` when a named source, whose figures are in data/sources/checks, confirms every figure of it (SCOPE
  below), and then it is; its column `checks` names the sources. One from which the row was taken (checks/taken.csv)
  counts beside another one alone. A row that any source confirms is not called approximate. A source that contradicts
  a figure of a row confirms none of it, but where it is rounded, has a misprint or a blank.
- Each line of checks/corrections.csv has a decision, and the tables hold what it says. The lines that are not compared
  are printed with their reasons.
- Each row names the edition of its standard, or that its source does not state it.
"""

import csv
import sys
from pathlib import Path

TOLERANCE = 0.01
DISTANCES = ["spacing", "hub", "edge", "flats"]
FLANGE = ["outside", "thickness", "length", "hub", "neck", "bolt_circle", "hole", "bolts", "bolt"]
DECISIONS = {"changed", "kept", "added", "not shipped"}
COUNTS = {"named", "beside a named one", "not at all"}


def read(path):
    lines = [line for line in path.read_text(encoding="utf-8").splitlines()
             if line.strip() and not line.lstrip().startswith("#")]
    rows = list(csv.reader(lines, skipinitialspace=True))
    header = [name.strip() for name in rows[0]]
    return [dict(zip(header, (field.strip() for field in row))) for row in rows[1:]]


def temperatures(row):
    return [(float(name), float(row[name])) for name in row if name.lstrip("-").isdigit() and row[name]]


def on_line(points, x):
    """At x on the straight lines between points; None outside."""
    for (x0, y0), (x1, y1) in zip(points, points[1:]):
        if x0 <= x <= x1:
            return y0 + (y1 - y0) * (x - x0) / (x1 - x0)
    return points[0][1] if points and points[0][0] == x else None


class Comparison:
    """Found figures by the table, row and column of ours that they belong to."""

    def __init__(self):
        self.found = {}
        self.contradictions = []

    def add(self, table, row, column, ours, theirs, source):
        agree = abs(theirs / ours - 1.0) <= TOLERANCE
        if agree:
            self.found.setdefault((table, row, column), set()).add(source)
        else:
            self.contradictions.append((table, row, column, ours, theirs, source))

    def settle(self, exceptions):
        """What the reasons of the contradictions mean for the rest of their rows."""
        reasons = {(e["table"], e["row"], e["column"], e["source"]): e["reason"] for e in exceptions}
        for table, row, column, _, _, source in self.contradictions:
            reason = reasons.get((table, row, column, source), "")
            if "rounded" in reason and (table, row, column) in self.found:  # not alone
                self.found[table, row, column].add(source)
            elif "misprint" not in reason and "blank there" not in reason:
                for (other, place, _), sources in self.found.items():
                    if (other, place) == (table, row):
                        sources.discard(source)

    def confirming(self, table, row, columns):
        """For each column the sources that confirm it."""
        return [self.found.get((table, row, column), set()) for column in columns]


def compare_materials(tables, checks, result):
    ours = {row["reference"]: row for row in tables["materials_viii1"]}
    for theirs in checks["allowables"]:
        row = ours[theirs["reference"]]
        assert row["name"] == theirs["name"], theirs
        points = temperatures(row)
        for degrees, stress in temperatures(theirs):
            own = on_line(points, degrees)
            if own is not None:
                result.add("materials_viii1", row["reference"], "%g" % degrees, own, stress,
                           theirs["source"])


def compare_moduli(tables, checks, result):
    for row in tables["moduli"]:
        sources = {}
        for theirs in checks["moduli"]:
            if theirs["reference"] == row["reference"]:
                sources.setdefault(theirs["source"], []).append(
                    (float(theirs["temperature"]), float(theirs["modulus"])))
        for source, points in sources.items():
            for degrees, modulus in temperatures(row):
                found = on_line(sorted(points), degrees)
                if found is not None:
                    result.add("moduli", row["reference"], "%g" % degrees, modulus, found, source)


def compare_bolts(tables, checks, result):
    for row in tables["bolts"]:
        key = row["series"] + " " + row["diameter"]
        for theirs in checks["bolts"]:
            if theirs["units"] != row["units"] or float(theirs["diameter"]) != float(row["diameter"]):
                continue
            columns = ["root_area"] if theirs["series"] == row["series"] else []
            if theirs["series"] == row["series"] or (row["series"], theirs["series"]) == (
                    "UNC", "TEMA IMPERIAL"):
                columns += DISTANCES
            for column in columns:
                if theirs[column]:
                    result.add("bolts", key, column, float(row[column]), float(theirs[column]),
                               theirs["source"])


def flange_key(row):
    return " ".join(part for part in (row["class"], "%g" % float(row["size"]), row["series"]) if part)


def compare_flanges(tables, checks, result):
    ours = {flange_key(row): row for row in tables["flange_dimensions"]}
    for theirs in checks["flanges"]:
        row = ours.get(flange_key(theirs))
        if row is None:
            continue
        for column in FLANGE + ["slip_on_length", "slip_on_bore", "raised_face", "wall"]:
            if theirs[column] and row[column]:
                result.add("flange_dimensions", flange_key(row), column, float(row[column]),
                           float(theirs[column]), theirs["source"])


def compare_en(tables, checks, result):
    for row in tables["materials_en"]:
        for theirs in checks["materials_en"]:
            thickness = theirs["thickness"]
            holds = not thickness or (thickness.startswith("<=") and
                                      float(thickness[2:]) >= float(row["max_thickness"]))
            same_proof = theirs["proof"] == row["proof"] or (theirs["proof"], row["proof"]) == (
                "ReH", "Rp0.2")
            if (theirs["number"], theirs["standard"]) != (row["number"], row["standard"]):
                continue
            own = row.get(theirs["temperature"])
            if holds and same_proof and own:
                result.add("materials_en", row["key"], theirs["temperature"], float(own),
                           float(theirs["strength"]), theirs["source"])


def compare_charts(tables, checks, result):
    for theirs in checks["chart_points"]:
        for row in tables["chart_points"]:
            if (row["chart"], row["temperature"]) == (theirs["chart"], theirs["temperature"]) and float(
                    row["a"]) == float(theirs["a"]):
                result.add("chart_points", f"{row['chart']} {row['temperature']}", "%g" % float(row["a"]),
                           float(row["b"]), float(theirs["b"]), theirs["source"])


def compare_table_g(tables, checks, result):
    ours = {(float(row["do_t"]), float(row["l_do"])): row["a"] for row in tables["table_g"]}
    for theirs in checks["table_g"]:
        own = ours.get((float(theirs["do_t"]), float(theirs["l_do"])))
        if own:
            result.add("table_g", theirs["do_t"], theirs["l_do"], float(own), float(theirs["a"]),
                       theirs["source"])


def given(row, columns):
    return [column for column in columns if row.get(column)]


def by_temperature(row):
    return ["%g" % degrees for degrees, _ in temperatures(row)]


def ring(row):
    """A blind flange has the thickness of the ring, a metric bolt follows from its hole."""
    figures = [name for name in FLANGE if name != "bolt" or not row["class"].startswith("PN")]
    return given(row, figures) + (["blind"] if row["blind"] not in ("", row["thickness"]) else [])


# What the status of a row tells of: the figures by temperature; of a bolt and a flange all but the walls of
# the pipes.
SCOPE = [
    ("materials_viii1", lambda row: row["reference"], "status", by_temperature),
    ("moduli", lambda row: row["reference"], "status", by_temperature),
    ("materials_en", lambda row: row["key"], "status", by_temperature),
    ("bolts", lambda row: row["series"] + " " + row["diameter"], "status",
     lambda row: given(row, ["root_area"] + DISTANCES)),
    ("flange_dimensions", flange_key, "status", ring),
    ("flange_dimensions", flange_key, "face_status", lambda row: given(row, ["raised_face"])),
    ("flange_dimensions", flange_key, "slip_on_status",
     lambda row: given(row, ["slip_on_length", "slip_on_bore"])),
]


def enough(confirming, sources, taken):
    """Whether these confirm a figure: a named one, and another witness, which is a source of different origin, or the
    row itself where it was not taken from a source. All whose origin is not known count as one, for they may be the
    same."""
    origins = {sources[s]["where"].split()[0] if sources[s]["counts"] == "named" else None for s in confirming}
    return bool(origins - {None}) and len(origins) + (not taken) > 1


def taken_rows(tables, checks):
    """The rows that were taken from a source."""
    rows = set()
    keys = {table: key for table, key, _, _ in SCOPE}
    for line in checks["taken"]:
        table = line["table"]
        found = {key for key in map(keys[table], tables[table]) if line["row"] in ("*", key)}
        assert found, line
        rows |= {(table, key) for key in found}
    return rows


def status_faults(tables, result, sources, taken):
    confirming = {}
    for table, key, column, scope in SCOPE:
        for row in tables[table]:
            figures = scope(row)
            if not figures:
                continue
            each = result.confirming(table, key(row), figures)
            from_source = (table, key(row)) in taken
            weak = [name for name, found in zip(figures, each) if not enough(found, sources, from_source)]
            status, place = row[column], f"{table}.csv: {key(row)}: {column}"
            if status == "checked" and weak:
                yield f"{place}: checked, but {'no other source' if from_source else 'no named source'} confirms " + \
                    ", ".join(weak)
            if status == "published" and not weak:
                yield f"{place}: published, but every figure of it is confirmed: checked"
            if status == "approximate" and all(each):
                yield f"{place}: approximate, but {', '.join(sorted(set().union(*each)))} confirm every figure of it"
            if status == "checked":
                confirming.setdefault((table, key(row)), set()).update(*each)
    for table, key in {table: key for table, key, _, _ in SCOPE}.items():
        for row in tables[table]:
            names = confirming.get((table, key(row)), set())
            if set(row["checks"].split()) != names:
                yield f"{table}.csv: {key(row)}: its column checks is not \"{' '.join(sorted(names))}\""


def exception_faults(exceptions, result):
    listed = {(e["table"], e["row"], e["column"], e["source"]): e for e in exceptions}
    used = set()
    for table, row, column, ours, theirs, source in result.contradictions:
        known = listed.get((table, row, column, source))
        if known is None or not known["reason"]:
            yield f"{table}.csv: {row}: {column}: {ours:g}, where {source} has {theirs:g}"
        used.add((table, row, column, source))
    for key in listed.keys() - used:
        yield f"exceptions.csv: {', '.join(key)}: there is no such contradiction"


def chart_point_key(row):
    return f"{row['chart']} {row['temperature']} {float(row['a']):g}"


# What tells the rows of a table apart.
KEYS = {"materials_viii2_class2": lambda row: row["reference"], "chart_points": chart_point_key,
        **{table: key for table, key, _, _ in SCOPE}}


def held(tables, table, where, column):
    """What a table has in a column of the row with this key, "none" where that is nothing. Of charts also the beginning
    of a key: CS-3 is any point of it."""
    key = KEYS[table]
    rows = [r for r in tables[table]
            if key(r) == where or (table == "chart_points" and key(r).startswith(where + " "))]
    if column == "rows":
        return "there" if rows else "none"
    if not rows:
        return "none"
    if column == "last temperature":
        return by_temperature(rows[0])[-1]
    return rows[0].get(column) or "none"


def same(a, b):
    try:
        return float(a.split()[0]) == float(b.split()[0])
    except ValueError:
        return a == b


def correction_faults(corrections, tables):
    for line in corrections:
        place = f"corrections.csv: {line['table']} {line['row']} {line['at']}"
        if line["decision"] not in DECISIONS or not line["reason"]:
            yield f"{place}: no decision with a reason"
        if not line["column"]:
            if not line["reason"].startswith("not compared: "):
                yield f"{place}: not compared, without a reason"
            continue
        for where in line["where"].split("; "):
            own = held(tables, line["table"], where, line["column"])
            if not same(own, line["now"]):
                yield f"{place}: {where} has {own}, the decision {line['now']}"
        if line["decision"] == "changed" and same(line["now"], line["was"]):
            yield f"{place}: changed, but it has what it had"
        if line["decision"] == "kept" and line["now"] != "none" and not same(line["now"], line["was"]):
            yield f"{place}: kept, but it has {line['now']} instead of {line['was']}"


# Of their rows that are not computed: a figure belongs to an edition, though the copies may not say to which.
def edition_faults(tables):
    for table, rows in tables.items():
        for number, row in enumerate(rows, 1):
            if table != "chart_points" and row["source"] != "computed" and not row.get("edition"):
                yield f"{table}.csv: row {number}: no edition"


def main():
    folder = Path(sys.argv[1])
    tables = {path.stem: read(path) for path in folder.glob("*.csv")}
    checks = {path.stem: read(path) for path in (folder / "checks").glob("*.csv")}
    result = Comparison()
    for compare in (compare_materials, compare_moduli, compare_bolts, compare_flanges, compare_en,
                    compare_charts, compare_table_g):
        compare(tables, checks, result)
    result.settle(checks["exceptions"])
    sources = {row["source"]: row for row in checks["sources"]}
    faults = [f"sources.csv: no source {source}" for name, rows in checks.items() for source in
              {row["source"] for row in rows if "source" in row} - sources.keys()
              if name not in ("corrections", "sources")]
    faults += [f"sources.csv: {name}: counts \"{row['counts']}\"" for name, row in sources.items()
               if row["counts"] not in COUNTS]
    faults += list(exception_faults(checks["exceptions"], result))
    faults += list(status_faults(tables, result, sources, taken_rows(tables, checks)))
    faults += list(correction_faults(checks["corrections"], tables))
    faults += list(edition_faults(tables))
    for line in checks["corrections"]:
        if not line["column"]:
            print(f"corrections.csv: {line['table']} {line['row']} {line['at']}: {line['reason']}")
    for fault in faults:
        print(fault)
    agreeing = sum(len(sources) for sources in result.found.values())
    print(f"{agreeing} found figures agree, {len(result.contradictions)} contradict, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
