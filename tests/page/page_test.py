#!/usr/bin/python3
"""The page of `tarvane serve` as its users have it, in a headless Chromium.

page_test.py PROGRAM EXAMPLES SCRATCH [--pictures FOLDER] [--speed] [Design.test_name ...]
"""

import argparse
import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent))
from browser import SKIPPED, missing, start_driver
from case import use
from design_cases import Design  # noqa: F401
from everybody_cases import Everybody  # noqa: F401
from file_cases import Files  # noqa: F401
from result_cases import Results  # noqa: F401


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=lambda path: str(pathlib.Path(path).resolve()))
    parser.add_argument("examples")
    parser.add_argument("scratch")
    parser.add_argument("--pictures", help="a folder for pictures of the page")
    parser.add_argument("--speed", action="store_true", help="fail where an answer takes 100 ms: for a machine that is free")
    options, others = parser.parse_known_args()
    reason = missing()
    if reason:
        print(f"the page is not tested in a browser: {reason} (apt-get install chromium chromium-driver python3-selenium)")
        return SKIPPED
    if options.pictures:
        pathlib.Path(options.pictures).mkdir(parents=True, exist_ok=True)
    driver = start_driver()
    use(options, driver)
    try:
        return 0 if unittest.main(argv=[sys.argv[0], *others], exit=False, verbosity=2).result.wasSuccessful() else 1
    finally:
        driver.quit()


if __name__ == "__main__":
    sys.exit(main())
