"""Makes a plain SVG of a picture's source: make_svg.py PALETTE OUTPUT_FOLDER SHEET... -- SOURCE...

Three things are added to what SVG can say:
  {name}                                   a colour of the palette
  <include part="x.svg"/>                  what is in another source of the same folder
  <text font="Morlan GLT7 Bold" x= y=>     text as whole pixels of a glyph sheet; y is the baseline,
                                           anchor="start" (default), "middle" or "end" is what x means
"""

import re
import sys
from pathlib import Path
from xml.etree import ElementTree

from glyphs import Sheet
from make_font import runs

SVG = "{http://www.w3.org/2000/svg}"
ElementTree.register_namespace("", SVG[1:-1])
ElementTree.register_namespace("xlink", "http://www.w3.org/1999/xlink")


def read_palette(path):
    lines = [line.split() for line in path.read_text(encoding="utf-8").splitlines()]
    return dict(line for line in lines if len(line) == 2 and line[0] != "#")


def parse(path, palette):
    def colour(match):
        if match[1] not in palette:
            raise SystemExit(f"{path}: the palette has no colour {match[1]}")
        return palette[match[1]]

    return ElementTree.fromstring(re.sub(r"\{(\w+)\}", colour, path.read_text(encoding="utf-8")))


def text_path(element, sheets):
    """The text as one path of rectangles, with whatever other attributes the text had."""
    attributes = dict(element.attrib)
    sheet = sheets[attributes.pop("font")]
    glyphs = [sheet.glyphs[ord(letter)] for letter in element.text]
    width = sum(glyph.advance for glyph in glyphs) - sheet.spacing
    x, y = int(attributes.pop("x")), int(attributes.pop("y"))
    x -= {"start": 0, "middle": width // 2, "end": width}[attributes.pop("anchor", "start")]
    steps = []
    for glyph in glyphs:
        steps += [f"M{x + left} {y - bottom - h}h{w}v{h}h-{w}z" for left, bottom, w, h in runs(glyph)]
        x += glyph.advance
    return ElementTree.Element(SVG + "path", attributes | {"d": "".join(steps)})


def expand(element, folder, palette, sheets):
    for index, child in reversed(list(enumerate(element))):
        if child.tag == SVG + "text":
            element[index] = text_path(child, sheets)
        elif child.tag == SVG + "include":
            part = parse(folder / child.get("part"), palette)
            expand(part, folder, palette, sheets)
            element[index : index + 1] = list(part)
        else:
            expand(child, folder, palette, sheets)


def main(palette_path, output, *rest):
    split = rest.index("--")
    palette = read_palette(Path(palette_path))
    sheets = {sheet.family: sheet for sheet in map(Sheet, rest[:split])}
    for source in map(Path, rest[split + 1 :]):
        picture = parse(source, palette)
        expand(picture, source.parent, palette, sheets)
        ElementTree.ElementTree(picture).write(Path(output) / source.name, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
