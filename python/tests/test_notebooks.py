"""The notebooks, executed cell by cell as a notebook does, without its server."""

import ast
import atexit
import json
import os
import tempfile
import unittest
from pathlib import Path

NOTEBOOKS = sorted((Path(__file__).parents[2] / "examples" / "notebooks").glob("*.ipynb"))

try:
    SETTINGS = tempfile.TemporaryDirectory()  # of matplotlib, which wants a folder of its own
    atexit.register(SETTINGS.cleanup)
    os.environ.setdefault("MPLCONFIGDIR", SETTINGS.name)
    import matplotlib

    matplotlib.use("Agg")  # no window
    import matplotlib.pyplot as plt
    import numpy
except ImportError as missing:
    plt = None
    print(f"not run: notebooks ({missing})")


def executed(notebook):
    """Its variables, and by cell what the value of the last line shows."""
    variables, shown = {"__name__": "__main__"}, {}
    for cell in notebook["cells"]:
        if cell["cell_type"] != "code":
            continue
        body = ast.parse("".join(cell["source"]), cell["id"]).body
        last = body.pop() if body and isinstance(body[-1], ast.Expr) else None
        exec(compile(ast.Module(body, []), cell["id"], "exec"), variables)
        if last is not None:
            value = eval(compile(ast.Expression(last.value), cell["id"], "eval"), variables)
            html = getattr(value, "_repr_html_", None)
            shown[cell["id"]] = html() if html else repr(value)
    return variables, shown


class Notebooks(unittest.TestCase):
    def test_outputs_are_not_kept(self):
        self.assertTrue(NOTEBOOKS)
        for path in NOTEBOOKS:
            notebook = json.loads(path.read_text("utf-8"))
            self.assertEqual((notebook["nbformat"], len({cell["id"] for cell in notebook["cells"]})),
                             (4, len(notebook["cells"])))  # fmt: skip
            for cell in notebook["cells"]:
                self.assertFalse(cell.get("outputs") or cell.get("execution_count"), path)

    @unittest.skipIf(plt is None, "no matplotlib or numpy")
    def test_every_notebook_runs(self):
        for path in NOTEBOOKS:
            with self.subTest(path.name):
                executed(json.loads(path.read_text("utf-8")))

    @unittest.skipIf(plt is None, "no matplotlib or numpy")
    def test_required_thickness(self):
        (path,) = [path for path in NOTEBOOKS if path.name == "required_thickness.ipynb"]
        variables, shown = executed(json.loads(path.read_text("utf-8")))
        self.assertIn("<svg", shown["analysed"])
        self.assertIn("radial flange stress", shown["analysed"])
        required, given = variables["t_req"], variables["T_GIVEN"]
        self.assertEqual(len(required), len(variables["pressures"]))
        found = required[variables["pressures"] <= variables["bolts"]]
        self.assertEqual(len(found), 57)
        self.assertTrue((numpy.diff(found) >= 0.0).all() and found[0] < given < found[-1])
        curve = variables["axes"].lines[0]
        self.assertTrue(numpy.array_equal(curve.get_ydata(), required, equal_nan=True))
        self.assertTrue((curve.get_xdata() == variables["pressures"]).all())
        self.assertEqual(variables["axes"].get_xlabel(), "design pressure [psig]")
        # The example file is the same flange.
        self.assertAlmostEqual(variables["mawp"], 396.95, places=2)


if __name__ == "__main__":
    unittest.main()
