"""What the page shows of a result."""

import pathlib

from case import FLANGE, THIN_HEAD, PageCase, options
from scripts import NEWEST


class Results(PageCase):

    def test_a_check_that_is_not_made_is_no_pass(self):
        self.write("head.toml", THIN_HEAD)
        page = self.start("head.toml")
        page.choose("shell[0]")
        self.assertNotEqual(page.verdict(), "PASS")
        self.assertEqual(page.text("#component-verdict .open.not-made"), "1 check not made")
        self.assertIn("not made", page.text("#checks .check.not-made .mark"))
        # Waived: it passes, and says so beside the verdict.
        page.show("waive")
        page.click("[data-key='waive'] input[value='head_1_4f']")
        page.settled()
        self.assertEqual(page.verdict(), "PASS")
        self.assertEqual(page.text("#component-verdict .open.waived"), "1 check waived")
        self.assertIn("waived", page.text("#verdict"))
        page.save()
        self.assertIn(b'waive = ["head_1_4f"]', self.read("head.toml"))
        self.no_complaints()

    def test_the_drawing_is_in_the_font_that_its_texts_were_measured_with(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        loaded = lambda: page.js("return [...document.fonts].map((font) => font.family.replaceAll('\"', '') + ': ' + font.status)")
        page.wait(lambda: loaded() == ["Tarvane Drawing: loaded"], "the font")
        # Each text is as long as it was said to be, before a browser fits it into that length.
        differences = page.js("""return [...document.querySelectorAll('#drawing text')].map((text) => {
            const said = Number(text.getAttribute('textLength'));
            text.removeAttribute('textLength');
            return Math.abs(text.getComputedTextLength() - said) / said;
        })""")
        self.assertGreater(len(differences), 10)
        self.assertLess(max(differences), 0.01)
        self.no_complaints()

    def test_checks_are_worst_first(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        ratios = [float(text) for text in page.js(
            "return [...document.querySelectorAll('#checks > .checks > .check .ratio')].map((e) => e.textContent)")]
        self.assertGreater(len(ratios), 5)
        self.assertEqual(ratios, sorted(ratios, reverse=True))
        widths = page.js("""return [...document.querySelectorAll('#checks > .checks > .check')].map((e) =>
            e.querySelector('.fill').getBoundingClientRect().width / e.querySelector('.bar').clientWidth)""")
        for ratio, width in zip(ratios, widths):
            self.assertAlmostEqual(width, ratio / 1.5, delta=0.02)
        # The same rows with other figures are those of a page that is opened anew.
        rows = lambda: page.js("return document.getElementById('checks').innerText")
        before = rows()
        page.type("P", "151")
        after = rows()
        self.assertNotEqual(after, before)
        page.save()
        page.driver.refresh()
        page.wait(lambda: page.all(".node[data-path='flange[0]']"), "the page again")
        page.settled()
        page.choose("flange[0]")
        self.assertEqual(rows(), after)
        self.assertIn("UG-27", page.text("#calculation") + page.text("#checks"))
        self.assertIn("Gasket Reaction Diameter", page.text("#calculation"))

    def test_field_and_dimension_mark_each_other(self):
        from selenium.webdriver.common.keys import Keys
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        marked = lambda: page.js("return [...document.querySelectorAll('.dimension.marked')].map((e) => e.textContent)")
        page.show("A")
        page.field("A").click()
        self.assertEqual(marked(), ["A = Ø12.5"])
        # It stays marked in the drawing of the next answer.
        page.type("A", "12.6", end=Keys.ENTER)
        self.assertEqual(marked(), ["A = Ø12.6"])
        page.field("A").send_keys(Keys.ESCAPE)
        page.settled()
        self.assertEqual(marked(), ["A = Ø12.5"])
        # The other way: pointing marks the field, choosing goes there.
        page.js("""[...document.querySelectorAll('.dimension')].find((e) => e.textContent.startsWith('C = ')).focus()""")
        self.assertIn("marked", page.find("[data-key='C']").get_attribute("class"))
        self.assertEqual(marked(), [])
        page.keys(Keys.ENTER)
        self.assertEqual(page.js("return document.activeElement.id"), "field-C")

    def test_a_chart_under_vacuum(self):
        self.write("v.toml", pathlib.Path(options().examples, "v101.toml").read_text())
        page = self.start("v.toml")
        page.choose("shell[0]")
        self.assertTrue(page.find("#chart svg").is_displayed())
        self.assertFalse(page.all("#chart [style]"))
        page.choose("vessel")
        self.assertIn("MAWP", page.text("#summary"))
        self.assertTrue(page.find("#outline svg").is_displayed())
        page.picture("vessel-1600")
        self.no_complaints()

    def test_the_newest_answer_alone_is_shown(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("vessel")
        seen = page.driver.execute_async_script(NEWEST)
        # One request at a time; grey from the first entry on until the answer to the last one.
        self.assertEqual(seen["most"], 1)
        self.assertLess(seen["requests"], 6)
        self.assertTrue(all(seen["stale"]), seen)
        self.assertEqual(seen["shown"], [True])
        page.settled()
        self.assertNotIn("stale", page.find("#verdict").get_attribute("class"))
        self.assertEqual(page.value("P"), "1500")
        self.assertEqual(page.verdict(), "FAIL")
        page.save()
        self.assertIn(b"P = 1500 ", self.read("f.toml"))

    def test_metal_temperatures_of_the_vessel(self):
        self.write("v.toml", pathlib.Path(options().examples, "v101.toml").read_text())
        page = self.start("v.toml")
        implied = page.js("return [...document.querySelectorAll('.node .tag')].map((e) => e.closest('.node').dataset.path)")
        self.assertGreater(len(implied), 3)
        page.choose(implied[0])
        self.assertIn("MDMT of the vessel", page.text("#fields"))
        self.assertIn("metal temperature", page.text("#checks").lower())
        page.choose("vessel")
        page.type("MDMT", "")
        self.assertEqual(page.all(".node .tag"), [])
        self.no_complaints()

    def test_words_of_a_file_are_no_markup(self):
        bad = '<img src=x onerror=\\"document.title=1\\"><svg><script>1</script>&amp; \\" style=\\"color:red'
        self.write("f.toml", FLANGE.replace('"N1"', f'"{bad}"'))
        page = self.start("f.toml")
        page.choose("flange[0]")
        self.assertEqual(page.verdict(), "PASS")
        self.assertEqual(page.js("return document.querySelectorAll('#work img, #work script, #work [style*=color]').length"), 0)
        self.assertIn("<img src=x", page.text("#form-title"))
        self.no_complaints()
