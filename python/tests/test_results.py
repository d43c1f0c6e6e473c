"""Results as attributes, frames and HTML."""

import copy
import html
import math
import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path
from unittest import mock

import tarvane
from test_tarvane import CYLINDER, RING, SOURCE, VACUUM, VESSEL

try:
    import pandas
except ImportError as missing:
    pandas = None
    print(f"not run: frames ({missing})")


class Attributes(unittest.TestCase):
    def setUp(self):
        self.result = tarvane.run({"flange": [RING], "shell": [CYLINDER], "external": [VACUUM]})

    def test_every_result_is_an_attribute_of_its_component(self):
        for component in self.result.components:
            for name in component.results:
                of = component
                try:
                    for part in name.split("."):
                        of = getattr(of, part)
                    self.assertEqual(of, component.results[name])
                except tarvane.NoValue:
                    self.assertIsNone(component.results.get(name))
            self.assertLess({"passed", *(name.partition(".")[0] for name in component.results)}, set(dir(component)))

    def test_no_result_has_the_name_of_something_else(self):
        taken = set(vars(self.result.flange[0])) | set(dir(tarvane.Component))
        for kind in VESSEL.schema("keys")["kinds"]:
            self.assertEqual({result["name"].partition(".")[0] for result in kind["results"]} & taken, set())

    def test_checks_of_all_components_know_theirs(self):
        self.assertEqual(self.result.checks, [check for c in self.result.components for check in c.checks])
        self.assertEqual({check.component for check in self.result.checks}, {"flange[0]", "shell[0]", "external[0]"})
        worst = next(check for check in self.result.checks if check.id == self.result.governing.check)
        self.assertEqual(worst.component, self.result.governing.component)
        self.assertEqual({check.label for check in self.result.checks if check.id == "bolt_area"}, {"bolt area"})

    def test_copies_keep_attributes_labels_and_frames(self):
        other = copy.deepcopy(self.result)
        self.assertEqual(other.flange[0].mawp, self.result.flange[0].mawp)
        self.assertEqual(other._repr_html_(), self.result._repr_html_())


class Frames(unittest.TestCase):
    def setUp(self):
        self.result = tarvane.run({"flange": [RING], "shell": [CYLINDER]})

    @unittest.skipIf(pandas is None, "no pandas")
    def test_results(self):
        frame = self.result.to_frame()
        self.assertEqual(len(frame), sum(len(list(c.results)) for c in self.result.components))
        self.assertEqual(frame["value"].dtype, float)
        rows = frame[frame.component == "flange[0]"].set_index("name")
        flange = self.result.flange[0]
        self.assertEqual((rows.value["mawp"], rows.unit["mawp"]), (flange.mawp, "psig"))
        self.assertEqual((rows.unit["Wm1"], rows.label["Wm1"]), ("lbf", "Bolt load, operating"))
        self.assertTrue(math.isnan(rows.value["t_req"]))
        self.assertEqual(rows.why["t_req"], "kind analyse")
        self.assertEqual(rows.choice["mawp_by"], flange.mawp_by)
        self.assertEqual(len(flange.to_frame()), len(rows))

    @unittest.skipIf(pandas is None, "no pandas")
    def test_checks(self):
        frame = self.result.to_frame("checks")
        self.assertEqual(list(frame.component), [check.component for check in self.result.checks])
        self.assertEqual(list(frame.id), [check.id for check in self.result.checks])
        for name in ("demand", "limit", "ratio"):
            self.assertEqual(frame[name].dtype, float)
            given = [math.nan if getattr(c, name) is None else getattr(c, name) for c in self.result.checks]
            self.assertEqual(repr(list(frame[name])), repr([float(value) for value in given]))

    def test_without_pandas_it_is_said(self):
        with mock.patch.dict(sys.modules, pandas=None), self.assertRaisesRegex(ImportError, "needs pandas"):
            self.result.to_frame()
        with self.assertRaisesRegex(ValueError, "'results' or 'checks'"):
            self.result.to_frame("inputs")


class Html(unittest.TestCase):
    def parsed(self, result):
        text = result._repr_html_()
        return xml.fromstring(text.replace("<br>", "<br/>")), text  # well formed as it is, but for that

    def test_verdict_summary_checks_and_drawings_are_there(self):
        if sys.version_info < (3, 11):
            self.skipTest("a TOML file needs Python 3.11")
        result = tarvane.run(SOURCE / "examples" / "v101.toml")
        page, text = self.parsed(result)
        self.assertIn(html.escape(result.says), text)
        summary, checks = page.findall("table")
        self.assertEqual(len(summary.findall("tbody/tr")), len(result.summary))
        self.assertIn("229.458", "".join(summary.itertext()))
        self.assertIn("psig", "".join(summary.itertext()))
        self.assertEqual(len(checks.findall("tbody/tr")), len(result.checks))
        drawings = [svg for c in result.components for svg in c.drawings.values()]
        self.assertGreater(len(drawings), 5)
        self.assertEqual(list(result.drawings), ["outline"])
        for svg in [*drawings, *result.drawings.values()]:
            self.assertIn(svg[svg.index("<svg"):], text)

    def test_colours_say_no_more_than_the_verdict(self):
        for t, verdict in ((1.125, "pass"), (0.5, "fail")):
            result = tarvane.run({"shell": [{**CYLINDER, "t": t}]}, drawings=False)
            self.assertEqual(result.verdict, verdict)
            _, text = self.parsed(result)
            colours = set(re.findall(r'<b style="color:(#\w+)">(\w[\w ]*)</b>', text))
            self.assertIn(({"pass": "#1a7f37", "fail": "#cf222e"}[verdict], verdict), colours)
        with mock.patch.dict(result.__dict__, verdict="other"):
            self.assertNotIn("#1a7f37", result._repr_html_().partition("</p>")[0])

    def test_texts_of_the_user_are_no_html(self):
        result = tarvane.run({"shell": [{**CYLINDER, "description": "<script>&"}]}, drawings=True)
        _, text = self.parsed(result)
        self.assertNotIn("<script>", text)
        self.assertIn("&lt;script&gt;&amp;", text)


@unittest.skipIf(sys.version_info < (3, 11), "a TOML file needs Python 3.11")
class Files(unittest.TestCase):
    def test_a_path_gives_what_the_program_gives(self):
        """Every number, verdict and word of its JSON, for each example and golden input."""
        program = os.environ.get("TARVANE_PROGRAM")
        if not program:
            print("not run: files by the program: TARVANE_PROGRAM names none")
            self.skipTest("no TARVANE_PROGRAM")
        compared = 0
        for file in sorted([*(SOURCE / "examples").glob("*.toml"), *(SOURCE / "tests/golden").glob("*.toml")]):
            with tempfile.TemporaryDirectory() as folder:
                path = Path(folder, "result.json")
                subprocess.run([program, "run", "--json", path, file], capture_output=True, check=False)
                wanted = tarvane._vessel.read_json(path.read_bytes()) if path.exists() else None
            try:
                told = tarvane.run(file).to_dict()
            except (tarvane.InputError, tarvane.EngineStopped) as error:
                self.assertIsNone(wanted, (file, error))
                continue
            self.assertIsNotNone(wanted, file)
            for each in (told, wanted):
                each.pop("document", None)
            self.assertEqual(repr(told), repr(wanted), file)
            compared += 1
        self.assertGreater(compared, 50)


if __name__ == "__main__":
    unittest.main()
