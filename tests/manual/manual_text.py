"""What the tests of the manual share: its Markdown in blocks, and how a test ends."""

import pathlib
import re
import sys

SKIPPED = 77

HEADING = re.compile(r"^(#+) (.*?) \{(#[^}]*)\}$")
ITEM = re.compile(r"^(\d+\.|-) ")


def read(path):
    return pathlib.Path(path).read_text(encoding="utf-8")


def blocks_of(text):
    """(number of its first line, text in one line) of each paragraph, heading, item and row of a table."""
    blocks = []
    open_block = False
    for number, line in enumerate(text.splitlines(), 1):
        starts = line.startswith(("|", "#", "![")) or ITEM.match(line)
        if not line.strip():
            open_block = False
        elif open_block and not starts:
            blocks[-1][1] += " " + line.strip()
        else:
            blocks.append([number, line.strip()])
            open_block = True
    return blocks


def end(mistakes):
    for mistake in mistakes:
        print(mistake, file=sys.stderr)
    sys.exit(1 if mistakes else 0)


def skip(reason):
    print(f"SKIPPED: {reason}")
    sys.exit(SKIPPED)
