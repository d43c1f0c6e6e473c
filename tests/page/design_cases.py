"""A design from nothing, and what is typed."""

import pathlib
import tomllib

from case import FLANGE, PageCase


class Design(PageCase):

    def test_a_flange_from_nothing(self):
        page = self.start()
        page.new("empty")
        self.assertNotEqual(page.verdict(), "PASS")
        page.choose("vessel")
        page.type("P", "150")
        page.type("T", "300")
        page.click("#adding button")  # + Flange
        page.settled()
        self.assertEqual(page.verdict(), "INPUT AT FAULT")
        self.assertEqual(page.about("A"), "Required")
        page.pick("standard.class", "300 6", "class 300, NPS 6")
        page.pick("material", "SA-105", "SA-105")
        page.pick("bolt_material", "193 B7", "SA-193 B7")
        page.pick("gasket.type", "spiral stainless", "spiral wound, stainless")
        for key, text in (("Go", "8.25"), ("Gi", "7.19"), ("tg", "0.175")):
            page.type(key, text)
        self.assertEqual(page.verdict(), "PASS", page.text("#faults"))
        self.assertIn("class 300 NPS 6", page.about("C"))
        self.assertIn("SA-105", page.about("Sfo"))
        self.assertIn("spiral wound", page.about("m"))
        self.assertEqual(float(page.field("C").get_attribute("placeholder")), 10.62)

        pressure = 150
        while page.verdict() == "PASS":
            pressure *= 2
            self.assertLess(pressure, 10000)
            page.type("P", str(pressure))
        self.assertEqual(page.verdict(), "FAIL")
        failing = page.find("#checks .check.fail")
        name = failing.find_element("css selector", ".name").text
        self.assertIn(name.split(",")[0].lower(), page.text("#component-verdict").lower())
        self.assertGreater(float(failing.find_element("css selector", ".ratio").text), 1)
        paragraphs = [each.text for each in page.all("#checks .check.fail .paragraph")]
        self.assertIn("2-5", paragraphs)

        page.save_as("n1.toml")
        saved = self.read("n1.toml")
        values = tomllib.loads(saved.decode())
        self.assertEqual(values["vessel"], {"P": 150, "T": 300})
        [flange] = values["flange"]
        self.assertEqual(flange["P"], pressure)
        self.assertEqual(flange["standard"], {"class": 300, "size": 6})
        self.assertEqual(flange["material"], "SA-105")
        self.assertEqual(flange.get("Go", flange["gasket"].get("Go")), 8.25)
        # The program says the same of the file.
        said = self.run_program("n1.toml")
        self.assertEqual(said.returncode, 1, said.stdout[-500:])

        # Again, from the disk: one value is replaced, and nothing else.
        self.server.stop()
        self.start()
        page.open("n1.toml")
        self.assertEqual(page.verdict(), "FAIL")
        page.choose("flange[0]")
        self.assertEqual(page.value("P"), str(pressure))
        page.type("P", "151.50")
        self.assertEqual(page.verdict(), "PASS")
        page.save()
        self.assertEqual(self.read("n1.toml"), saved.replace(f"P = {pressure}".encode(), b"P = 151.50"))
        self.assertEqual(self.run_program("n1.toml").returncode, 0)
        self.no_complaints()

    def test_only_the_value_changes(self):
        text = "\ufeff" + FLANGE.replace("\n", "\r\n")
        before = self.write("crlf.toml", text)
        page = self.start("crlf.toml")
        page.choose("flange[0]")
        page.type("Go", "8.3")
        page.choose("vessel")
        page.type("P", "160.0")
        page.save()
        after = before.replace(b"Go = 8.25", b"Go = 8.3").replace(b"P = 150 ", b"P = 160.0 ")
        self.assertEqual(self.read("crlf.toml"), after)
        for _ in range(2):
            page.click("#undo")
            page.settled()
        page.save()
        self.assertEqual(self.read("crlf.toml"), before)
        page.click("#redo")
        page.settled()
        self.assertEqual(page.text("#saved"), "not saved")
        self.no_complaints()

    def test_modules(self):
        page = self.start()
        script = pathlib.Path(__file__).with_name("modules.js").read_text()
        wrong = page.driver.execute_async_script(
            f"const done = arguments[0]; (async () => {{ {script} }})().then(done, (error) => done([String(error.stack)]))")
        self.assertEqual(wrong, [])

    def test_what_is_typed_is_a_draft(self):
        from selenium.webdriver.common.keys import Keys
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        sequence = lambda: page.js("return document.getElementById('results').dataset.sequence")
        before = sequence()
        # Not finished: neither a pause nor Enter takes it.
        page.type("tg", "3.", end="")
        self.pause(0.6)
        self.assertEqual((sequence(), page.value("tg")), (before, "3."))
        page.type("tg", "3.", end=Keys.ENTER)
        self.assertIn("not a whole number or decimal", page.message("tg"))
        self.assertEqual(sequence(), before)
        # Escape brings the value of the file back.
        page.field("tg").send_keys(Keys.ESCAPE)
        self.assertEqual((page.value("tg"), page.message("tg"), sequence()), ("0.175", "", before))
        # A pause takes a number, with the text as it was typed.
        page.type("tg", "0.1750", end="")
        page.wait(lambda: sequence() != before, "the result after a pause")
        self.assertEqual(page.value("tg"), "0.1750")
        # Escape after that: what was there when the field was entered.
        page.field("tg").send_keys(Keys.ESCAPE)
        page.settled()
        self.assertEqual(page.value("tg"), "0.175")
        # A comma is told, and never read as something else.
        before = sequence()
        page.type("tg", "0,2", end=Keys.ENTER)
        self.assertIn("write 0.2", page.message("tg"))
        self.assertEqual(sequence(), before)
        # Leaving the field takes it; a unit of its own; what it comes to is shown.
        page.type("tg", "5 mm", end=Keys.TAB)
        page.settled()
        self.assertIn("= 0.19", page.about("tg"))
        self.assertNotEqual(sequence(), before)
        # Empty is no zero: the key goes.
        page.type("tg", "", end=Keys.ENTER)
        page.save()
        self.assertNotIn(b"tg", self.read("f.toml"))
        self.no_complaints()

    def test_a_decimal_comma_where_the_file_has_it(self):
        self.write("f.toml", FLANGE.replace("[vessel]", "decimal_comma = true\n\n[vessel]"))
        page = self.start("f.toml")
        page.choose("flange[0]")
        self.assertEqual(page.field("C").get_attribute("placeholder"), "10,62")
        page.type("tg", "0,2")
        self.assertEqual((page.verdict(), page.message("tg")), ("PASS", ""))
        page.save()
        self.assertIn(b"tg = 0.2 ", self.read("f.toml"))

    def test_a_unit_from_the_list(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        page.type("tg", "4")
        from selenium.webdriver.support.ui import Select
        Select(page.find("[data-key='tg'] select.unit")).select_by_visible_text("mm")
        page.settled()
        self.assertEqual(page.value("tg"), "4")
        self.assertIn("= 0.157", page.about("tg"))
        page.save()
        self.assertIn(b'tg = "4 mm"', self.read("f.toml"))

    def test_a_wrong_value_says_what_is_wrong(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        self.assertEqual(page.verdict(), "PASS")
        page.type("Go", "ten")
        self.assertEqual(page.verdict(), "INPUT AT FAULT")
        self.assertIn("ten", page.message("Go"))
        self.assertEqual(page.field("Go").get_attribute("aria-invalid"), "true")
        self.assertIn("Go", page.text("#faults"))
        # What was calculated before is grey and says so.
        self.assertIn("before the change", page.text("#results-title"))
        self.assertIn("stale", page.find("#results").get_attribute("class"))
        self.assertEqual(page.text(".node[data-path='flange[0]'] .unseen").strip(), "input faults")
        # The list leads to the field, from elsewhere too.
        page.choose("vessel")
        page.click("#faults button")
        page.settled()
        self.assertEqual(page.js("return document.activeElement.id"), "field-Go")
        page.type("Go", "8.25")
        self.assertEqual((page.verdict(), page.message("Go")), ("PASS", ""))
        self.no_complaints()

    def test_what_is_not_read_says_why(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        hidden = lambda key: page.js("return document.querySelector(`[data-key='${arguments[0]}']`).hidden", key)
        self.assertTrue(hidden("LjID"))
        self.assertFalse(hidden("g1"))
        page.click(".unused-choice input")
        self.assertFalse(hidden("LjID"))
        self.assertEqual(page.about("LjID"), "Not used: type weld neck")
        page.click(".unused-choice input")
        # A lap joint reads them, and needs them.
        page.select("type", "lap joint")
        self.assertFalse(hidden("LjID"))
        self.assertEqual(page.about("LjID"), "Required")
        page.click("#undo")
        page.settled()
        self.assertTrue(hidden("LjID"))
