"""Components, files, tabs and a server that is gone."""

import tomllib

from case import FLANGE, PageCase


class Files(PageCase):

    def test_components_come_and_go(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        paths = lambda: [node.get_attribute("data-path") for node in page.all(".node") if "[" in node.get_attribute("data-path")]
        self.assertEqual(paths(), ["flange[0]"])
        page.click("#adding button:nth-child(2)")
        page.settled()
        self.assertEqual(paths(), ["flange[0]", "shell[0]"])
        self.assertEqual(page.js("return document.activeElement.id"), "field-description")
        page.type("D", "24")
        page.type("t", "0.5")
        page.type("material", "SA-516 70")
        self.assertEqual(page.verdict(), "PASS", page.text("#faults"))
        page.click(".node[data-path='shell[0]'] + .remove")
        page.settled()
        self.assertEqual(paths(), ["flange[0]"])
        page.save()
        self.assertEqual(self.read("f.toml").decode().rstrip(), FLANGE.rstrip())

    def test_texts_of_the_document(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("document")
        page.type("project", "Condensate")
        page.type("revisions[0].revision", "A")
        # There is room for the next one, and one goes on typing in this.
        self.assertEqual(page.js("return document.activeElement.id"), "field-revisions-0-revision")
        self.assertTrue(page.all("[data-key='revisions[1].revision']"))
        page.type("revisions[0].date", "2026-01-31")
        page.save()
        document = tomllib.loads(self.read("f.toml").decode())["document"]
        self.assertEqual(document, {"project": "Condensate", "revisions": [{"revision": "A", "date": "2026-01-31"}]})
        self.assertIn(FLANGE.splitlines()[-1], self.read("f.toml").decode())
        self.no_complaints()

    def test_a_change_in_another_tab_is_no_clash(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("vessel")
        # As another tab does it, and at once an entry here that was meant for the text before.
        page.driver.execute_async_script('''
            const done = arguments[0], body = { document: sessionStorage.getItem('tarvane-document'),
                edits: [{ path: 'vessel.T', typed: '310' }] };
            fetch('/api/edit', { method: 'POST', body: JSON.stringify(body), headers: { 'Content-Type': 'application/json',
                'X-Tarvane': localStorage.getItem('tarvane-key') } }).then(() => {
                    const field = document.getElementById('field-P');
                    field.focus();
                    field.value = '170';
                    field.dispatchEvent(new Event('input', { bubbles: true }));
                    field.dispatchEvent(new KeyboardEvent('keydown', { key: 'Enter', bubbles: true, cancelable: true }));
                    done();
                });''')
        page.wait(lambda: "another tab" in page.text("#notices"), "the notice")
        page.settled()
        self.assertIn("vessel.P 170", page.text("#notices"))
        self.assertEqual((page.value("P"), page.value("T")), ("150", "310"))

    def test_a_change_on_disk_is_noticed(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        self.write("f.toml", FLANGE.replace("Go = 8.25", "Go = 8.50"))
        page.wait(lambda: "changed on disk" in page.text("#notices"), "the notice")
        page.type("Gi", "7.2")
        page.click("#save")
        page.wait(lambda: page.all("dialog"), "a question before the file is overwritten")
        self.assertIn(b"Go = 8.50", self.read("f.toml"))
        page.driver.find_element("xpath", "//dialog//button[.='Cancel']").click()
        page.driver.find_element("xpath", "//div[@id='notices']//button[.='Take the file on disk']").click()
        page.wait(lambda: page.value("Go") == "8.50", "the value on disk")
        self.assertEqual(page.value("Gi"), "7.19")
        page.wait(lambda: "changed on disk" not in page.text("#notices"), "the end of the notice")

    def test_what_did_i_change(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("vessel")
        page.type("P", "1500")
        self.assertEqual(page.verdict(), "FAIL")
        page.click("#changes")
        page.wait(lambda: page.all("dialog .changes"), "the changes")
        words = page.text("dialog")
        for each in ("150", "1500", "fail", "Lines of the file"):
            self.assertIn(each, words)
        page.picture("changes-1600")
        page.click("dialog .main")

    def test_downloads(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.driver.execute_cdp_cmd("Browser.setDownloadBehavior", {"behavior": "allow", "downloadPath": str(self.folder)})
        for title, name in (("Document (HTML)", "f.html"), ("Results (JSON)", "f.json")):
            page.click("#download")
            page.driver.find_element("xpath", f"//dialog//button[.='{title}']").click()
            page.wait(lambda: (self.folder / name).exists() and (self.folder / name).stat().st_size > 1000, name)
        self.assertIn(b"N1", self.read("f.html"))

    def test_a_second_tab(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        first = page.driver.current_window_handle
        page.driver.switch_to.new_window("tab")
        try:
            page.size(1600, 1000)
            # No token in its address: the key of the first one lets it in.
            page.driver.get(self.server.origin)
            page.wait(lambda: page.js("return !document.getElementById('open').disabled && document.querySelectorAll('#adding button').length > 0"), "the page")
            page.open("f.toml")
            page.choose("vessel")
            page.type("P", "1500")
            self.assertEqual(page.verdict(), "FAIL")
            page.driver.switch_to.window(first)
            page.wait(lambda: page.verdict() == "FAIL", "the change in the first tab")
            page.choose("vessel")
            self.assertEqual(page.value("P"), "1500")
        finally:
            for handle in page.driver.window_handles:
                if handle != first:
                    page.driver.switch_to.window(handle)
                    page.driver.close()
            page.driver.switch_to.window(first)

    def test_a_tab_without_the_key_is_told(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.js("localStorage.clear()")
        page.driver.get(self.server.origin)
        page.wait(lambda: "open the link" in page.text("#notices"), "what is to be done")
        self.assertEqual(page.verdict(), "")

    def test_a_file_that_can_not_be_read(self):
        self.write("f.toml", FLANGE + "Go = = 3\n")
        page = self.start("f.toml")
        self.assertEqual(page.verdict(), "INPUT AT FAULT")
        self.assertIn("Line 15", page.text("#fields"))
        self.assertEqual(page.js("return document.querySelectorAll('#fields input').length"), 0)

    def test_without_a_server_nothing_is_lost_silently(self):
        self.write("f.toml", FLANGE)
        page = self.start("f.toml")
        page.choose("flange[0]")
        # One request is lost: it is told, and sent again when asked.
        page.js('''const own = fetch;
            window.fetch = (path, ...rest) => {
                if (!path.endsWith('/api/edit')) return own(path, ...rest);
                window.fetch = own;
                return Promise.reject(new TypeError('lost'));
            };''')
        page.type("tg", "0.2", end="")
        page.keys("\n")
        page.wait(lambda: "flange[0].tg 0.2" in page.text("#notices"), "what was lost")
        self.assertIn("stale", page.find("#verdict").get_attribute("class"))
        page.driver.find_element("xpath", "//div[@id='notices']//button[.='Try again']").click()
        page.wait(lambda: page.text("#notices") == "" and "not saved" in page.text("#bar"), "the second try")
        page.settled()
        page.save()
        self.assertIn(b"tg = 0.2 ", self.read("f.toml"))
        self.server.stop()
        page.type("Go", "8.3", end="")
        page.keys("\n")
        page.wait(lambda: "does not answer" in page.text("#notices"), "what went wrong")
        self.assertIn("flange[0].Go 8.3", page.text("#notices"))
        self.assertIn("stale", page.find("#verdict").get_attribute("class"))
