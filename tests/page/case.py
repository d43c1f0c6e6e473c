"""What the tests of the page share: files, and a page of a server of their own for each."""

import pathlib
import subprocess
import time
import unittest

from browser import Page, Server, scratch_folder

OPTIONS = None  # of the command line
DRIVER = None


def use(options, driver):
    global OPTIONS, DRIVER
    OPTIONS, DRIVER = options, driver


def options():
    return OPTIONS


FLANGE = """\
tarvane = 1                 # form of this file
units = "US"

[vessel]
P = 150                     # psig
T = 300

[[flange]]
description = "N1"
type = "weld neck"
standard = { class = 300, size = 6 }  # a comment that stays
material = "SA-105"
bolt_material = "SA-193 B7"
gasket = { type = "spiral wound, stainless", Go = 8.25, Gi = 7.19, tg = 0.175 }
"""
THIN_HEAD = """\
[[shell]]
P = 10
T = 200
S = 20000
Sa = 20000
t = 0.18
kind = "torispherical"
D = 100
L = 100
r = 7
"""


def many(components):
    """A vessel of so many components."""
    nozzles = (components - 3) // 2
    text = pathlib.Path(OPTIONS.examples, "v101.toml").read_text()
    head = text[:text.index("[[shell]]")]
    text = head + """
[[shell]]
description = "Shell"
kind = "cylinder"
D = 60
t = 0.625
tangent_length = 150
length = 160
elevation = 0

[[shell]]
description = "Top head"
kind = "elliptical"
on = "Shell"
end = "top"
t = 0.625

[[shell]]
description = "Bottom head"
kind = "elliptical"
on = "Shell"
end = "bottom"
t = 0.625
"""
    for i in range(nozzles):
        text += f"""
[[shell]]
description = "N{i} neck"
kind = "cylinder"
Do = 6.625
t = 0.432
length = 8
material = "SA-106 B"
elevation = {20 + 10 * i}

[[flange]]
description = "N{i} flange"
type = "weld neck"
standard = {{ class = 300, size = 6 }}
attached_to = "N{i} neck"
material = "SA-105"
gasket = {{ type = "spiral wound, stainless", Go = 8.25, Gi = 7.19, tg = 0.175 }}
"""
    return text + components_left(components - 3 - 2 * nozzles)


def components_left(number):
    return "".join(f"""
[[shell]]
description = "Boot {i}"
kind = "cylinder"
D = 20
t = 0.5
length = 20
elevation = 0
""" for i in range(number))


class PageCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(scratch_folder(OPTIONS.scratch, self.id().split(".")[-1]))
        self.page = Page(DRIVER, OPTIONS.pictures)
        self.page.size(1600, 1000)
        self.page.scheme("light")
        self.server = None

    def tearDown(self):
        if self.server:
            self.server.stop()
        DRIVER.get("about:blank")
        DRIVER.get_log("browser")

    def write(self, name, text):
        data = text if isinstance(text, bytes) else text.encode()
        (self.folder / name).write_bytes(data)
        return data

    def read(self, name):
        return (self.folder / name).read_bytes()

    def start(self, file=None):
        self.server = Server(OPTIONS.program, self.folder, file)
        self.page.enter(self.server.link)
        if file:
            self.page.wait(lambda: self.page.text("#file-name-shown") == file and self.page.all(".node"), file)
            self.page.settled()
        return self.page

    def run_program(self, name):
        return subprocess.run([OPTIONS.program, "run", name], cwd=self.folder, capture_output=True, text=True)

    def no_complaints(self):
        self.assertEqual(self.page.complaints(), [])

    def pause(self, seconds):
        time.sleep(seconds)
