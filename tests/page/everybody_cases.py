"""Keyboard, names of controls, widths, colours, speed."""

import os
import pathlib
import socket
import statistics

from case import FLANGE, PageCase, many, options
from scripts import CONTRAST, TIMES


class Everybody(PageCase):

    def test_by_keyboard_alone(self):
        from selenium.webdriver.common.keys import Keys
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        focused = lambda: page.js("return document.activeElement.id || document.activeElement.dataset.path || document.activeElement.className")
        page.js("document.activeElement.blur()")
        page.keys(Keys.TAB)
        self.assertEqual(focused(), "skip")
        page.keys(Keys.ENTER)
        self.assertEqual(focused(), "form")
        # Each stop on the way to a field can be seen.
        for _ in range(60):
            page.keys(Keys.TAB)
            ring = page.js("""const s = getComputedStyle(document.activeElement);
                return s.outlineStyle !== 'none' && parseFloat(s.outlineWidth) >= 2""")
            self.assertTrue(ring, focused())
            if focused() == "field-P":
                break
        self.assertEqual(focused(), "field-P")
        page.keys("1500", Keys.ENTER)
        page.settled()
        page.wait(lambda: page.verdict() == "FAIL", "FAIL")
        page.wait(lambda: "FAIL" in page.text("#said"), "the verdict for those who listen")
        self.assertEqual(focused(), "field-P")
        page.chord(Keys.CONTROL, "z")
        page.wait(lambda: page.verdict() == "PASS", "undo")
        page.chord(Keys.CONTROL, "y")
        page.wait(lambda: page.verdict() == "FAIL", "redo")
        page.chord(Keys.CONTROL, "s")
        page.wait_saved()
        self.assertIn(b"P = 1500", self.read("f.toml"))
        # Through the tree by arrows, and into a picker and out of it.
        page.js("document.querySelector('.node').focus()")
        page.keys(Keys.ARROW_DOWN, Keys.ARROW_DOWN)
        self.assertEqual(focused(), "head")
        page.js("document.querySelector(`[data-key='material'] .pick`)?.focus()")
        page.keys(Keys.ENTER)
        page.wait(lambda: page.all("dialog .choices button"), "the catalogue")
        page.keys(Keys.ARROW_DOWN)
        self.assertEqual(page.js("return document.activeElement.closest('.choices') !== null"), True)
        page.keys(Keys.ESCAPE)
        page.wait(lambda: not page.all("dialog"), "the end of the dialog")
        self.assertEqual(focused(), "pick")

    def test_every_control_has_a_name(self):
        self.write("v.toml", pathlib.Path(options().examples, "v101.toml").read_text())
        page = self.start("v.toml")
        for path in ("vessel", "document", "head", "shell[0]", "flange[0]"):
            page.choose(path)
            nameless = page.js("""return [...document.querySelectorAll('input, select, button, [role=button]')].filter((e) =>
                !(e.getAttribute('aria-label') || e.textContent.trim() || e.labels?.length)).map((e) => e.outerHTML)""")
            self.assertEqual(nameless, [])
            doubled = page.js("""const ids = [...document.querySelectorAll('[id]')].map((e) => e.id);
                return ids.filter((id, i) => ids.indexOf(id) !== i)""")
            self.assertEqual(doubled, [])

    def test_widths_and_colours(self):
        self.write("v.toml", pathlib.Path(options().examples, "v101.toml").read_text())
        page = self.start("v.toml")
        for name, path, pressure in (("vacuum", "shell[0]", None), ("flange", "flange[0]", None), ("failing", "flange[0]", "1500")):
            page.scheme("light")
            page.size(1600, 1000)
            page.choose(path)
            if pressure:
                page.type("P", pressure)
                self.assertEqual(page.verdict(), "FAIL")
            for scheme in ("light", "dark"):
                page.scheme(scheme)
                for width, height in ((1600, 1000), (1024, 768), (420, 800)):
                    page.size(width, height)
                    for tab in ("tree", "form", "results") if width < 760 else ("all",):
                        if width < 760:
                            page.click(f"#tabs [data-tab='{tab}']")
                        at = (scheme, name, width, tab)
                        self.assertLessEqual(page.js("return document.documentElement.scrollWidth"), width, at)
                        self.assertEqual(page.js(CONTRAST), [], at)
                        page.picture(f"{name}-{width}-{tab}-{scheme}")
                        if name == "failing" and width >= 760:
                            page.js("document.querySelector('#checks-part').scrollIntoView()")
                            page.picture(f"{name}-{width}-checks-{scheme}")
                            page.js("document.querySelector('#results').scrollTop = 0")

    def test_typing_to_result(self):
        self.write("many.toml", many(20))
        page = self.start("many.toml")
        page.choose("flange[3]")
        self.assertGreaterEqual(len(page.all(".node[data-path*='[']")), 20)
        self.assertEqual(page.verdict(), "PASS", page.text("#faults"))
        idle = [socket.create_connection(("127.0.0.1", self.server.port)) for _ in range(32)]
        try:
            page.show("t")
            for _ in range(4):
                times = page.driver.execute_async_script(TIMES)
                whole, served = (statistics.median(each[i] for each in times) for i in (0, 1))
                print(f"typing to result, 20 components, 32 idle connections: median {whole:.0f} ms, {served:.0f} ms of it "
                      f"the server; load of the processors {os.getloadavg()[0]:.1f}", flush=True)
                if whole < 100 or not options().speed:
                    break
        finally:
            for connection in idle:
                connection.close()
        self.assertEqual(page.verdict(), "PASS")
        self.no_complaints()
        if options().speed:
            self.assertLess(whole, 100)
