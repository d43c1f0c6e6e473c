"""A server with files of its own, and the page in a headless Chromium."""

import base64
import contextlib
import os
import pathlib
import re
import shutil
import signal
import subprocess
import time

SKIPPED = 77


def missing():
    """What is not here and must be, in words; nothing where all is here."""
    try:
        import selenium  # noqa: F401
    except ImportError:
        return "no python3-selenium"
    if shutil.which("chromium") is None:
        return "no chromium"
    return "" if shutil.which("chromedriver") else "no chromium-driver"


class Server:
    """`tarvane serve` on a free port, over a folder."""

    def __init__(self, program, folder, file=None):
        command = [program, "serve", "--no-browser"]
        if file:
            command.insert(2, file)
        self.process = subprocess.Popen(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        said = []
        page = ""
        for line in self.process.stdout:
            said.append(line)
            found = re.search(r"open (\S+\.html) in a browser", line)
            if found:
                page = pathlib.Path(found.group(1)).read_text()
                break
        link = re.search(r"http://[^\s\"'<>]+#[^\s\"'<>]+", page)
        if not link:
            self.stop()
            raise RuntimeError("the server named no page: " + "".join(said))
        self.link = link.group()
        self.port = int(re.search(r":(\d+)/", self.link).group(1))
        self.origin = self.link.split("#")[0]

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        try:
            self.process.wait(10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.process.stdout.close()


def start_driver():
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service

    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which("chromium")
    for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--disable-gpu",
                     "--force-device-scale-factor=1"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)
    driver.set_script_timeout(60)
    return driver


class Page:
    """What a user does on the page, and what is to be seen there."""

    def __init__(self, driver, pictures=None):
        self.driver = driver
        self.pictures = pictures

    # ---- window ----

    def size(self, width, height=900):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def scheme(self, name):
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                    {"features": [{"name": "prefers-color-scheme", "value": name}]})

    def enter(self, link):
        self.driver.get(link)
        self.wait(lambda: self.js("return document.querySelectorAll('#adding button').length > 0"), "the page")
        self.settled()

    def picture(self, name):
        if not self.pictures:
            return
        shot = self.driver.execute_cdp_cmd("Page.captureScreenshot", {})
        pathlib.Path(self.pictures, name + ".png").write_bytes(base64.b64decode(shot["data"]))

    def complaints(self):
        """Errors of the console, such as a breach of the content security policy."""
        return [entry["message"] for entry in self.driver.get_log("browser")
                if entry["level"] == "SEVERE" and "/api/" not in entry["message"]]

    # ---- looking ----

    def js(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def wait(self, is_so, what, seconds=15):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            with contextlib.suppress(self.gone):
                if is_so():
                    return
            time.sleep(0.02)
        raise AssertionError(f"not there after {seconds} s: {what}; the page says: " +
                             " / ".join(self.text(part) for part in ("#verdict", "#notices", "#faults", "dialog")))

    @property
    def gone(self):
        from selenium.common.exceptions import NoSuchElementException, StaleElementReferenceException
        return NoSuchElementException, StaleElementReferenceException

    def settled(self):
        """No request is under way."""
        self.wait(lambda: self.js("""return document.getElementById('results').getAttribute('aria-busy') !== 'true' &&
            document.querySelector('.part.late[open]:not([hidden])') === null"""), "an answer")

    def find(self, selector):
        return self.driver.find_element("css selector", selector)

    def all(self, selector):
        return self.driver.find_elements("css selector", selector)

    def text(self, selector):
        return self.js("return document.querySelector(arguments[0])?.innerText ?? ''", selector)

    def verdict(self):
        return self.text("#verdict strong").replace("✓", "").replace("✗", "").replace("?", "").replace("!", "").strip()

    def value(self, key):
        return self.field(key).get_attribute("value")

    def message(self, key):
        return self.text(f"[data-key='{key}'] .message")

    def about(self, key):
        return self.text(f"[data-key='{key}'] .about")

    def entry(self, key):
        return "#field-" + re.sub(r"\W+", "-", key)

    def field(self, key):
        return self.find(self.entry(key))

    # ---- doing ----

    def click(self, selector):
        element = self.find(selector)
        self.js("arguments[0].scrollIntoView({block: 'center'})", element)
        element.click()

    def choose(self, path):
        self.click(f".node[data-path='{path}']")
        self.settled()

    def show(self, key):
        """Opens what a field is in."""
        self.js("""
            const row = document.querySelector(`[data-key='${arguments[0]}']`), box = row.closest('details');
            if (!box.open) box.querySelector('summary').click();
            if (row.hidden) box.querySelector('.more').click();
            row.scrollIntoView({block: 'center'});""", key)

    def type(self, key, text, end="\n"):
        """Types over what is there, and presses Enter unless told otherwise."""
        from selenium.webdriver.common.keys import Keys
        self.show(key)
        field = self.field(key)
        field.click()
        field.send_keys(Keys.CONTROL + "a", Keys.NULL)
        field.send_keys(text if text else Keys.DELETE)
        if end:
            field.send_keys(end)
            self.settled()

    def select(self, key, text):
        from selenium.webdriver.support.ui import Select
        self.show(key)
        Select(self.field(key)).select_by_visible_text(text)
        self.settled()

    def pick(self, key, words, title):
        """From a catalogue: the row of this title."""
        self.show(key)
        self.click(f"[data-key='{key}'] .pick")
        self.find("dialog input").send_keys(words)
        row = f"//dialog//button[.//span[@class='choice-title' and .='{title}']]"
        self.wait(lambda: self.driver.find_element("xpath", row).is_displayed(), f"{title} in the catalogue")
        time.sleep(0.3)  # what the words find, not what was there before
        self.driver.find_element("xpath", row).click()
        self.wait(lambda: not self.all("dialog"), "the end of the dialog")
        self.settled()

    def keys(self, *keys):
        from selenium.webdriver.common.action_chains import ActionChains
        chain = ActionChains(self.driver)
        for key in keys:
            chain.send_keys(key)
        chain.perform()

    def chord(self, modifier, key):
        from selenium.webdriver.common.action_chains import ActionChains
        ActionChains(self.driver).key_down(modifier).send_keys(key).key_up(modifier).perform()

    def new(self, kind, units="US"):
        from selenium.webdriver.support.ui import Select
        self.click("#new")
        Select(self.find("#new-units")).select_by_value(units)
        self.click(f"dialog [data-kind='{kind}']")
        self.wait(lambda: not self.all("dialog") and self.text("#file-name-shown") == "New file", "a new file")
        self.settled()

    def open(self, name):
        self.click("#open")
        row = f"//dialog//button[.//span[@class='choice-title' and .='{name}']]"
        self.wait(lambda: self.driver.find_element("xpath", row).is_displayed(), name)
        self.driver.find_element("xpath", row).click()
        self.wait(lambda: self.text("#file-name-shown") == name, name)
        self.settled()

    def save_as(self, name):
        self.click("#save-as")
        entry = self.find("dialog #file-name")
        entry.clear()
        entry.send_keys(name + "\n")
        self.wait(lambda: not self.all("dialog") and self.text("#file-name-shown") == name, f"{name} saved")
        self.wait_saved()

    def save(self):
        self.click("#save")
        self.wait_saved()

    def wait_saved(self):
        self.wait(lambda: self.js("return document.getElementById('saved').hidden"), "saved")


def scratch_folder(base, name):
    folder = os.path.join(base, name)
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    return folder
