#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Builds the seven-segment font of the digital displays.

    make_digital_font.py OUTPUT.ttf

The font holds ten digits, a minus, a decimal point and a space. All lengths are in font units, 1000 to the em;
x runs to the right from the glyph's origin, y upwards from the baseline. A glyph is first built upright and then
slanted.

A display draws each digit right-aligned in a third of its width and the point right-aligned a little further
right. The sum of the right bearing and the slant is therefore the room in which the point stands, and it stands
left of its own origin: only so is the last point of a display still inside the display.
"""

import math
import sys

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen

FAMILY = "Vextral Digital"
VERSION = "1.000"
BUILD_TIME = 3786912000  # 2024-01-01, in seconds since 1904: the same file on every run

EM = 1000
ASCENT = 840
DESCENT = 160

HEIGHT = 610  # of a digit
WIDTH = 277  # of an upright digit
LEFT = 80  # bearing at the foot; the slant moves the head to the right
ADVANCE = 470
THICKNESS = 78
GAP = 17  # between two segments, across the mitre
CHAMFER = 27  # taken off the outer corners
SLANT = math.tan(math.radians(6.5))

POINT_LEFT = -106
POINT_SIZE = 62
POINT_ADVANCE = 140

SEGMENTS = {
    "zero": "abcdef",
    "one": "bc",
    "two": "abdeg",
    "three": "abcdg",
    "four": "bcfg",
    "five": "acdfg",
    "six": "acdefg",
    "seven": "abc",
    "eight": "abcdefg",
    "nine": "abcdfg",
    "hyphen": "g",
}
CHARACTERS = {
    " ": "space",
    "\u00a0": "space",
    "-": "hyphen",
    "\u2212": "hyphen",
    ".": "period",
    **{str(digit): name for digit, name in enumerate(list(SEGMENTS)[:10])},
}


def segment_outlines():
    """The seven outlines of an upright digit at x = 0, clockwise; a is the top, then clockwise, g the middle."""
    w, h, t = WIDTH, HEIGHT, THICKNESS
    m = h / 2
    k = GAP / math.sqrt(2)  # half a gap across a 45 degree mitre, measured along an edge
    outer, inner = (CHAMFER + k) / 2, (CHAMFER - k) / 2

    top = [
        (CHAMFER, h),
        (w - CHAMFER, h),
        (w - outer, h - inner),
        (w - t - k, h - t),
        (t + k, h - t),
        (outer, h - inner),
    ]
    upper_right = [
        (w, h - CHAMFER),
        (w, m + GAP / 2),
        (w - t / 2 - GAP / 2 + k, m + GAP / 2),
        (w - t, m + t / 2 + k),
        (w - t, h - t - k),
        (w - inner, h - outer),
    ]
    middle = [
        (t / 2 + k, m),
        (t + k, m + t / 2),
        (w - t - k, m + t / 2),
        (w - t / 2 - k, m),
        (w - t - k, m - t / 2),
        (t + k, m - t / 2),
    ]

    def mirrored(points, across, up):
        flipped = [(w - x if across else x, h - y if up else y) for x, y in points]
        return flipped if across == up else flipped[::-1]

    return {
        "a": top,
        "b": upper_right,
        "c": mirrored(upper_right, False, True),
        "d": mirrored(top, False, True),
        "e": mirrored(upper_right, True, True),
        "f": mirrored(upper_right, True, False),
        "g": middle,
    }


def point_outline():
    """A square with its corners cut, standing on the baseline, clockwise."""
    s, c = POINT_SIZE, POINT_SIZE * 0.22
    return [(0, c), (0, s - c), (c, s), (s - c, s), (s, s - c), (s, c), (s - c, 0), (c, 0)]


def slanted_glyph(outlines, left):
    pen = TTGlyphPen(None)
    for outline in outlines:
        placed = [(round(left + x + y * SLANT), round(y)) for x, y in outline]
        pen.moveTo(placed[0])
        for point in placed[1:]:
            pen.lineTo(point)
        pen.closePath()
    return pen.glyph()


def build_glyphs():
    outlines = segment_outlines()
    glyphs = {name: slanted_glyph([outlines[s] for s in lit], LEFT) for name, lit in SEGMENTS.items()}
    glyphs["period"] = slanted_glyph([point_outline()], POINT_LEFT)
    glyphs["space"] = TTGlyphPen(None).glyph()
    glyphs[".notdef"] = slanted_glyph([outlines["a"], outlines["d"]], LEFT)
    return glyphs


def build_font(path):
    glyphs = build_glyphs()
    order = [".notdef", "space", "hyphen", "period", *list(SEGMENTS)[:10]]
    builder = FontBuilder(EM, isTTF=True)
    builder.setupGlyphOrder(order)
    builder.setupCharacterMap({ord(character): name for character, name in CHARACTERS.items()})
    builder.setupGlyf(glyphs)
    advances = {name: POINT_ADVANCE if name == "period" else ADVANCE for name in order}
    # Read from the compiled glyphs: the bearings have to agree with the outlines' boxes.
    boxes = builder.font["glyf"]
    builder.setupHorizontalMetrics({name: (advances[name], getattr(boxes[name], "xMin", 0)) for name in order})
    builder.setupHorizontalHeader(ascent=ASCENT, descent=-DESCENT)
    builder.setupOS2(
        sTypoAscender=ASCENT,
        sTypoDescender=-DESCENT,
        sTypoLineGap=0,
        usWinAscent=ASCENT,
        usWinDescent=DESCENT,
        sCapHeight=HEIGHT,
        sxHeight=HEIGHT,
    )
    builder.setupNameTable(
        {
            "familyName": FAMILY,
            "styleName": "Regular",
            "uniqueFontIdentifier": f"{FAMILY} {VERSION}",
            "fullName": FAMILY,
            "psName": FAMILY.replace(" ", ""),
            "version": f"Version {VERSION}",
        }
    )
    builder.setupPost()
    builder.updateHead(created=BUILD_TIME, modified=BUILD_TIME)
    builder.font.recalcTimestamp = False
    builder.save(path)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__.strip())
    build_font(sys.argv[1])
