#!/usr/bin/env python3
"""Makes the manual of every language, as a PDF document and as a page for a browser.

    make_manual.py --pictures FOLDER --font FILE --version TEXT --date YYYY-MM-DD --pdf FOLDER --html FOLDER MANUAL...

MANUAL is LANGUAGE/manual.md. The same sources give the same bytes, on every day and in every folder.
Exit status 1, with a line on standard error, when a manual has a mistake.
"""

import argparse
import datetime
import json
import logging
import os
import pathlib
import shutil
import sys

from fontTools import subset
from PIL import Image

import pages
import tagged_pdf

PDF_NAME = "KTZ-JX_Editor_OperationManual.pdf"
COLOURS = 128  # of a picture: more are not told apart in print

# Said of every document that is tagged at all.
IGNORED = "PDF/UA support is experimental"


class Complaints(logging.Handler):
    """What the layout complains of, such as a picture that is missing: each is a mistake."""

    def __init__(self):
        super().__init__(logging.WARNING)
        self.texts = []

    def emit(self, record):
        text = record.getMessage()
        if not text.startswith(IGNORED):
            self.texts.append(text)


def parse(arguments):
    parser = argparse.ArgumentParser(description="Makes the manual of every language.")
    for name in ("pictures", "font", "pdf", "html"):
        parser.add_argument(f"--{name}", type=pathlib.Path, required=True)
    for name in ("version", "date"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("manuals", type=pathlib.Path, nargs="+", metavar="MANUAL")
    return parser.parse_args(arguments)


def shrink_pictures(source, target):
    shutil.rmtree(target, ignore_errors=True)  # also of pictures that are no longer taken
    target.mkdir(parents=True)
    for path in sorted(source.glob("*.png")):
        with Image.open(path) as picture:
            small = picture.convert("RGB").quantize(COLOURS, method=Image.Quantize.MEDIANCUT, kmeans=2,
                                                    dither=Image.Dither.NONE)
            small.save(target / path.name, optimize=True)


def shrink_font(source, texts, target):
    """Only the characters that occur, so that a browser has little to load."""
    options = subset.Options(recalc_timestamp=False)
    font = subset.load_font(source, options)
    subsetter = subset.Subsetter(options)
    subsetter.populate(text="".join(texts))
    subsetter.subset(font)
    subset.save_font(font, target, options)


def make(options):
    about = json.loads((options.pictures / "pictures.json").read_text(encoding="utf-8"))
    options.html.mkdir(parents=True, exist_ok=True)
    shrink_pictures(options.pictures, options.html / "pictures")
    shutil.copy(pathlib.Path(__file__).parent.parent / "manual.css", options.html)

    texts = {path.parent.name: path.read_text(encoding="utf-8") for path in options.manuals}
    shrink_font(options.font, texts.values(), options.html / "headings.ttf")
    for language, text in texts.items():
        page = options.html / f"{language}.html"
        try:
            page.write_text(pages.page_of(text, about, options.version, options.date), encoding="utf-8")
        except pages.ManualError as mistake:
            raise pages.ManualError(f"{language}: {mistake}") from None
        (options.pdf / language).mkdir(parents=True, exist_ok=True)
        tagged_pdf.write(page, options.pdf / language / PDF_NAME)


def main():
    options = parse(sys.argv[1:])
    # The time that is written into fonts.
    day = datetime.datetime.fromisoformat(options.date).replace(tzinfo=datetime.timezone.utc)
    os.environ["SOURCE_DATE_EPOCH"] = str(int(day.timestamp()))
    complaints = Complaints()
    logging.getLogger("weasyprint").handlers = [complaints]
    logging.getLogger("fontTools").setLevel(logging.ERROR)  # the headings' font has no day of its own, on purpose
    try:
        make(options)
    except pages.ManualError as mistake:
        complaints.texts.append(str(mistake))
    for text in complaints.texts:
        print(f"make_manual: {text}", file=sys.stderr)
    return 1 if complaints.texts else 0


if __name__ == "__main__":
    os.umask(0o022)
    sys.exit(main())
