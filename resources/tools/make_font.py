"""Turns a glyph sheet into a TrueType font: make_font.py SHEET FONT

At the sheet's own size every font pixel is exactly one device pixel, so that text is sharp without antialiasing.
"""

import sys

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import newTable
from fontTools.ttLib.tables import ttProgram

from glyphs import Sheet

UNITS = 128  # font units for one pixel

# Full pixels need no hints. A font without any instruction is hinted by guesswork in FreeType, so this one has some:
# they only set the scan conversion (dropout control off for every size), the last two push and drop a number.
PREPARATION = ["PUSHW[ ]", "0", "SCANCTRL[ ]", "PUSHB[ ]", "0", "SCANTYPE[ ]", "PUSHB[ ]", "0", "POP[ ]"]


def runs(glyph):
    """The ink as rectangles (x, y, width, height): runs of a row, joined with equal runs of the rows below."""
    found = []
    for row, text in enumerate(glyph.rows):
        column = 0
        while column < len(text):
            if text[column] == ".":
                column += 1
                continue
            width = len(text[column:]) - len(text[column:].lstrip("#"))
            above = next((r for r in found if (r[0], r[2], r[1] + r[3]) == (column, width, row)), None)
            if above:
                above[3] += 1
            else:
                found.append([column, row, width, 1])
            column += width
    return [(x, glyph.top - row - height, width, height) for x, row, width, height in found]


def outline(glyph):
    pen = TTGlyphPen(None)
    for x, y, width, height in runs(glyph):
        left, right, bottom, top = x * UNITS, (x + width) * UNITS, y * UNITS, (y + height) * UNITS
        pen.moveTo((left, bottom))
        for corner in ((left, top), (right, top), (right, bottom)):
            pen.lineTo(corner)
        pen.closePath()
    return pen.glyph()


def missing(sheet):
    """The box that stands for a character that the font doesn't have."""
    pen = TTGlyphPen(None)
    height = (sheet.ascent - sheet.descent) * UNITS
    for inset in (0, UNITS):
        box = [(inset, inset), (inset, height - inset), (4 * UNITS - inset, height - inset), (4 * UNITS - inset, inset)]
        pen.moveTo(box[0])
        for corner in box[1:] if inset == 0 else box[:0:-1]:
            pen.lineTo(corner)
        pen.closePath()
    return pen.glyph()


def build(sheet, path):
    codes = sorted(sheet.glyphs)
    names = {code: f"uni{code:04X}" for code in codes}
    font = FontBuilder(sheet.pixels * UNITS, isTTF=True)
    font.setupGlyphOrder([".notdef"] + list(names.values()))
    font.setupCharacterMap(names)
    pictures = {names[code]: outline(sheet.glyphs[code]) for code in codes}
    pictures[".notdef"] = missing(sheet)
    font.setupGlyf(pictures)
    advances = {names[code]: sheet.glyphs[code].advance for code in codes} | {".notdef": 4 + sheet.spacing}
    font.setupHorizontalMetrics(
        {name: (advance * UNITS, getattr(pictures[name], "xMin", 0)) for name, advance in advances.items()}
    )
    ascent, descent = sheet.ascent * UNITS, sheet.descent * UNITS
    font.setupHorizontalHeader(ascent=ascent, descent=-descent, lineGap=0)
    font.setupNameTable({"familyName": sheet.family, "styleName": "Regular", "fullName": sheet.family,
                         "psName": sheet.family.replace(" ", "") + "-Regular", "version": "Version 1.0",
                         "uniqueFontIdentifier": sheet.family + " 1.0"})
    font.setupOS2(fsType=0, sTypoAscender=ascent, sTypoDescender=-descent, sTypoLineGap=0, usWinAscent=ascent,
                  usWinDescent=descent, sxHeight=5 * UNITS, usWeightClass=400, fsSelection=0x40)
    font.setupPost(underlinePosition=-UNITS, underlineThickness=UNITS)
    font.setupHead(unitsPerEm=sheet.pixels * UNITS, created=0, modified=0)
    font.font["prep"] = newTable("prep")
    font.font["prep"].program = ttProgram.Program()
    font.font["prep"].program.fromAssembly(PREPARATION)
    font.font.recalcTimestamp = False
    font.save(path)


if __name__ == "__main__":
    build(Sheet(sys.argv[1]), sys.argv[2])
