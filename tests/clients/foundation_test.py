"""Runs the foundation example and reads what it wrote with the parsers of the standard library.

    foundation_test.py PROGRAM FOLDER
"""

import configparser
import pathlib
import subprocess
import sys
import unittest
import xml.etree.ElementTree

PROGRAM, FOLDER = sys.argv[1], pathlib.Path(sys.argv[2])


class Foundation(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        FOLDER.mkdir(parents=True, exist_ok=True)
        for file in FOLDER.iterdir():
            file.unlink()
        cls.output = subprocess.run([PROGRAM, FOLDER], check=True, capture_output=True, text=True).stdout

    def elements(self, name):
        """Text of each element by its path below the root; repeated ones by their attribute."""
        found = {}

        def walk(node, path):
            if not len(node):
                found[path] = node.text
            for child in node:
                walk(child, path + "/" + child.attrib.get("case", child.tag))

        root = xml.etree.ElementTree.parse(FOLDER / name).getroot()
        self.assertEqual(root.tag, "FoundationInterface")
        for child in root:
            walk(child, child.tag)
        return found

    def section(self, name, section):
        ini = configparser.ConfigParser(interpolation=None)
        ini.optionxform = str
        with open(FOLDER / name, encoding="latin-1") as file:
            ini.read_file(file)
        self.assertEqual(
            ini.sections(),
            ["GENERAL", "EQUIPMENT DESIGN SOFTWARE INFORMATION", "UNITS", "EQUIPMENT PARAMETERS", "EQUIPMENT LOADS"],
        )
        return dict(ini[section])

    def test_tells_that_the_files_are_written(self):
        self.assertEqual(len(self.output.splitlines()), 2)
        self.assertEqual(
            sorted(file.name for file in FOLDER.iterdir()), ["drum.ini", "drum.xml", "tower.ini", "tower.xml"]
        )

    def test_xml_of_the_column(self):
        found = self.elements("tower.xml")
        for path, text in {
            "Equipment/CompanyName": "Hale & Sons <Vessels>",
            "Equipment/EquipmentName": "tower.tvn",
            "Equipment/EquipmentType": "Vertical Vessel",
            "Equipment/Diameter": "6.000",
            "Equipment/Height": "62.500",
            "Support/PointOfSupport": "1.250",
            "Support/BoltCircleDiameter": "7.125",
            "Support/NumberofAnchorBolts": "12.000",
            "Support/SizeofAnchorBolts": "0.125",
            "Loads/Empty/weight": "48200.000",
            "Loads/Operating/weight": "91350.500",
            "Loads/Test/weight": "152000.000",
            "Loads/Wind/#WShear": "9840.000",
            "Loads/Wind/#WMoment": "318000.000",
            "Loads/Earthquake/#EShear": "7310.250",
            "Loads/Earthquake/#EMoment": "287500.000",
        }.items():
            self.assertEqual(found[path], text, path)

    def test_xml_of_the_drum(self):
        found = self.elements("drum.xml")
        for path, text in {
            "Equipment/EquipmentName": "drum.tvn",
            "Equipment/EquipmentType": "Horizontal Vessel",
            "Equipment/MaterialType": "Stainless Steel",
            "Equipment/Length": "24.000",
            "Equipment/ShellDesignTemperature": "350.000",
            "Support/NumberofAnchorBolts": "4.000",
            "Support/SizeofAnchorBolts": "0.104",
            "Support/PointOfSupport": "4.500",
            "Support/SaddleLength": "6.000",
            "Support/SaddleWidth": "0.750",
            "Support/SaddleSupportDistance": "15.500",
            "Support/POSToCLDistance": "4.500",
            "Support/FrictionCoefficient": "0.450",
            "Loads/Empty/weight": "21700.000",
            "Loads/Operating/weight": "60400.000",
            "Loads/Test/weight": "73900.000",
            "Loads/Wind/#WPressure": "31.500",
            "Loads/Earthquake/#LoadFactor": "0.200",
        }.items():
            self.assertEqual(found[path], text, path)

    def test_ini_of_the_column(self):
        self.assertEqual(
            self.section("tower.ini", "EQUIPMENT PARAMETERS"),
            {
                "Name": "tower.tvn",
                "Diameter": "6.000",
                "Type": "Vertical Vessel",
                "Height": "62.500",
                "POS Elevation": "1.250",
                "Bolt Circle Diameter": "7.125",
                "Number of Anchor Bolts": "12.000",
                "Size of Anchor Bolts": "0.125",
            },
        )
        self.assertEqual(
            self.section("tower.ini", "EQUIPMENT LOADS"),
            {
                "Empty Weight": "48200.000",
                "Operating Weight": "91350.500",
                "Test Weight": "152000.000",
                "Wind Shear": "9840.000",
                "Wind Moment": "318000.000",
                "Earthquake Shear": "7310.250",
                "Earthquake Moment": "287500.000",
            },
        )
        self.assertEqual(
            self.section("tower.ini", "UNITS"),
            {"Length Unit": "Ft", "Temperature Unit": "deg F", "Force Unit": "lbs", "Pressure Unit": "lbs/sq f"},
        )

    def test_ini_of_the_drum(self):
        self.assertEqual(
            self.section("drum.ini", "EQUIPMENT PARAMETERS"),
            {
                "Name": "drum.tvn",
                "Type": "Horizontal Vessel",
                "Material": "Stainless Steel",
                "Length": "24.000",
                "Dist. Between Saddle Supports": "15.500",
                "Saddle Length": "6.000",
                "Saddle Width": "0.750",
                "Shell Design Temp": "350.000",
                "C.L. Elevation": "9.000",
                "POS To CL Dist": "4.500",
            },
        )
        self.assertEqual(
            self.section("drum.ini", "EQUIPMENT LOADS"),
            {
                "Empty Weight": "21700.000",
                "Operating Weight": "60400.000",
                "Test Weight": "73900.000",
                "Bundle Weight": "0.000",
                "Friction Coefficient": "0.450",
                "Wind Pressure": "31.500",
                "Earthquake Load Factor": "0.200",
            },
        )


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
