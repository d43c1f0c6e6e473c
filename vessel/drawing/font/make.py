#!/usr/bin/python3
"""Makes the font of the drawings and the table by which they measure text, both from one file of DejaVu Sans.

    vessel/drawing/font/make.py [DejaVuSans.ttf]

needs Debian's fonts-dejavu-core and python3-fonttools. Writes tarvane-drawing.ttf and LICENSE beside itself, and
font_data.cpp in the folder above. Its licence wants a name without those of the fonts that it is made from.
"""

import base64
import pathlib
import sys

from fontTools.subset import Options, Subsetter
from fontTools.ttLib import TTFont

HERE = pathlib.Path(__file__).resolve().parent
FAMILY = "Tarvane Drawing"
# Latin-1; Greek; signs of names, dimensions and charts.
LETTERS = [
    *range(0x20, 0x7F), *range(0xA0, 0x100), *(code for code in range(0x391, 0x3CA) if code not in (0x3A2, *range(0x3AA, 0x3B1))),
    *map(ord, "–—‘’“”•…€′″⁰⁴⁵⁶⁷⁸⁹⁻→−≤≥"),
]  # fmt: skip


def subset(path: str) -> tuple[TTFont, str]:
    """The font with the letters alone and a name of its own, and its licence."""
    font = TTFont(path, recalcTimestamp=False)
    names = font["name"]
    notice, licence, version = (names.getDebugName(number) for number in (0, 13, 5))
    options = Options(hinting=False, layout_features=[], glyph_names=False, notdef_outline=True, recalc_timestamp=False)
    options.drop_tables += ["GDEF", "GSUB", "GPOS", "kern", "FFTM", "MATH", "gasp"]
    cutter = Subsetter(options)
    cutter.populate(unicodes=LETTERS)
    cutter.subset(font)
    names.names = []
    postscript = FAMILY.replace(" ", "") + "-Regular"
    for number, text in ((1, FAMILY), (2, "Regular"), (3, f"{FAMILY} {version}"), (4, FAMILY), (5, version), (6, postscript)):
        names.setName(text, number, 3, 1, 0x409)
    # In letters of one byte.
    for number, text in ((0, notice), (13, licence)):
        names.setName(text, number, 1, 0, 0)
    return font, licence


def rows(items: list[str], indent: str = "    ", width: int = 100) -> str:
    """Items one after the other, in lines."""
    lines = [indent]
    for item in items:
        if len(lines[-1]) + len(item) + 2 > width:
            lines.append(indent)
        lines[-1] += (" " if lines[-1] != indent else "") + item + ","
    return "\n".join(lines)


def main() -> None:
    source = sys.argv[1] if len(sys.argv) > 1 else "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"
    font, licence = subset(source)
    file = HERE / "tarvane-drawing.ttf"
    font.save(file)
    (HERE / "LICENSE").write_text(
        f"tarvane-drawing.ttf is a part of DejaVu Sans under another name. The licence of that font:\n\n{licence.strip()}\n"
    )
    made = TTFont(file)
    letters = made.getBestCmap()
    widths = [f"{{{code:#06x}, {made['hmtx'][letters[code]][0]}}}" for code in sorted(letters)]
    text = base64.b64encode(file.read_bytes()).decode()
    parts = "\n".join(f'    "{text[at:at + 92]}"' for at in range(0, len(text), 92))
    (HERE.parent / "font_data.cpp").write_text(
        f"""// Made by font/make.py, as is font/tarvane-drawing.ttf.
#include "drawing/font.h"

namespace tarvane::vessel {{

// clang-format off
namespace {{

constexpr FontWidth WIDTHS[] = {{
{rows(widths)}
}};

constexpr std::string_view BASE64 =
{parts};

}} // namespace
// clang-format on

std::span<const FontWidth> font_widths() {{ return WIDTHS; }}

std::string_view font_base64() {{ return BASE64; }}

}} // namespace tarvane::vessel
"""
    )


if __name__ == "__main__":
    main()
