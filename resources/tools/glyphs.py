"""Reads a glyph sheet: a text file in which every glyph is a block of '#' and '.' rows.

The sheet opens with `key value` lines (family, pixels, ascent, descent, spacing, space; all sizes in font pixels, of
which `pixels` make one em). Each block starts with `glyph X` or `glyph U+XXXX`; `down n` after it says that the last n
rows lie below the baseline. Lines that begin with '# ' are comments.

Letters that have no block of their own are composed: a base letter and a mark (U+0300 and so on) that the sheet has.
"""

import unicodedata
from dataclasses import dataclass

COVERAGE = list(range(0x20, 0x7F)) + list(range(0xA0, 0x100))
MARKS = range(0x300, 0x370)
CEDILLA = 0x327


@dataclass
class Glyph:
    """Rows of a picture, top first; the last `down` of them lie below the baseline. `advance` includes the spacing."""

    rows: list
    down: int
    advance: int

    @property
    def top(self):
        """Rows above the baseline."""
        return len(self.rows) - self.down

    def ink(self):
        """Every black pixel as (x, y), y counted upwards from the baseline: y 0 stands on it."""
        return [
            (x, self.top - 1 - row) for row, text in enumerate(self.rows) for x, dot in enumerate(text) if dot == "#"
        ]


class Sheet:
    def __init__(self, path):
        self.values = {}
        self.glyphs = {}
        drawn = self._read(path)
        self.family = self.values["family"]
        self.pixels, self.ascent, self.descent, self.spacing, space = (
            int(self.values[key]) for key in ("pixels", "ascent", "descent", "spacing", "space")
        )
        for code, (rows, down) in drawn.items():
            width = max((len(row) for row in rows), default=0)
            self.glyphs[code] = Glyph([row.ljust(width, ".") for row in rows], down, width + self.spacing)
        self.glyphs[0x20] = self.glyphs[0xA0] = Glyph([], 0, space + self.spacing)
        for code in COVERAGE:
            if code not in self.glyphs:
                self.glyphs[code] = self._compose(code)
        for code in [code for code in self.glyphs if code in MARKS]:
            del self.glyphs[code]
        self._check(path)

    def _read(self, path):
        drawn, rows = {}, None
        with open(path, encoding="utf-8") as lines:
            for line in lines:
                words = line.split()
                if not words or (words[0] == "#" and rows is None):
                    continue
                if words[0] == "glyph":
                    code = int(words[1][2:], 16) if words[1].startswith("U+") else ord(words[1])
                    rows = []
                    drawn[code] = (rows, int(words[3]) if words[2:3] == ["down"] else 0)
                elif rows is None:
                    self.values[words[0]] = " ".join(words[1:])
                elif set(words[0]) <= {"#", "."}:
                    rows.append(words[0])
                else:
                    raise SystemExit(f"{path}: not a glyph row: {line.strip()}")
        return drawn

    def _compose(self, code):
        """The letter as base and mark; a soft hyphen as a hyphen; a spacing accent as its mark alone."""
        if code == 0xAD:
            return self.glyphs[ord("-")]
        parts = [ord(part) for part in unicodedata.normalize("NFKD", chr(code))]
        if len(parts) != 2 or any(part not in self.glyphs for part in parts):
            raise SystemExit(f"{self.family}: U+{code:04X} is not drawn and can't be composed")
        base, mark = parts
        if base == ord("i") and mark != CEDILLA:
            base = 0x131  # the accent takes the dot's place
        return self._join(self.glyphs[base], self.glyphs[mark], mark == CEDILLA)

    def _join(self, base, mark, below):
        rows, down = list(base.rows), base.down
        picture = [row for row in mark.rows if below or "#" in row] if rows else mark.rows
        width = max([len(row) for row in rows + picture])
        if below:
            rows += ["." * width] * (mark.down - down)
            picture, first, down = mark.rows[-mark.down :], len(rows) - mark.down, mark.down
        else:
            if len(rows) - down + 1 + len(picture) > self.ascent:
                rows = _squash(rows)
            gap = min(1, self.ascent - len(picture) - (len(rows) - down)) if rows else 0
            rows = ["." * width] * (len(picture) + gap) + rows
            if not base.rows:
                rows += ["." * width] * (self.ascent - len(rows))
            first = 0
        rows = _centred(rows, width)
        for index, row in enumerate(_centred(picture, width)):
            rows[first + index] = "".join("#" if "#" in dots else "." for dots in zip(rows[first + index], row))
        return Glyph(rows, down, width + self.spacing)

    def _check(self, path):
        for code, glyph in self.glyphs.items():
            if glyph.top > self.ascent or glyph.down > self.descent:
                raise SystemExit(f"{path}: U+{code:04X} is higher than the ascent or deeper than the descent")


def _squash(rows):
    """One row less, where two rows are alike, so that a capital makes room for its accent."""
    for index in range(len(rows) - 1):
        if rows[index] == rows[index + 1]:
            return rows[:index] + rows[index + 1 :]
    return rows


def _centred(rows, width):
    shift = (width - max((len(row) for row in rows), default=0)) // 2
    return [("." * shift + row).ljust(width, ".") for row in rows]
