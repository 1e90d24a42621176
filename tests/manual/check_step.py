#!/usr/bin/env python3
"""Fails where two languages of the manual are not in step.

    check_step.py FIRST SECOND

Block by block they have the same headings, lists and tables, and in a block the same pictures, keys, commands, links and
words in italics. First it proves on planted faults that it would notice.
"""

import itertools
import re
import sys

import manual_text

# The keys of a German keyboard, by what an English one has in their places.
KEYS = {"Strg": "Ctrl", "Umschalt": "Shift", "Eingabe": "Return", "Leertaste": "Space", "Menü": "Menu", "Auf": "Up",
        "Ab": "Down", "Links": "Left", "Rechts": "Right", "Bild auf": "Page Up", "Bild ab": "Page Down", "Pos1": "Home",
        "Ende": "End"}


def keys_of(text):
    for keys in re.findall(r"\[\[(.+?)\]\]", text):
        yield "+".join(KEYS.get(key, key) for key in keys.split("+"))


def shape_of(block):
    """What a block has in every language."""
    heading = manual_text.HEADING.match(block)
    item = manual_text.ITEM.match(block)
    kind = "paragraph"
    if heading:
        kind = f"heading {heading[1]} {heading[3]}"
    elif item:
        kind = "item " + item[1]
    elif block.startswith("|"):
        kind = f"row of {block.count('|') - 1}"
    plain = re.sub(r"`[^`]*`", "", block)
    return (kind,
            sorted(re.findall(r"!\[[^]]*\]\(([^)]*)\)(\{[^}]*\})?", plain)),
            sorted(keys_of(plain)),
            sorted(re.findall(r"`([^`]*)`", block)),
            sorted(re.findall(r"(?<!!)\[[^]\[]*\]\(([^)]*)\)", block)),
            sorted(re.findall(r"(?<!\*)\*([^*\s][^*]*)\*(?!\*)", plain)))


def differences(first, second):
    found = []
    pairs = itertools.zip_longest(manual_text.blocks_of(first), manual_text.blocks_of(second), fillvalue=(0, "(nothing)"))
    for (line, block), (other_line, other) in pairs:
        if shape_of(block) != shape_of(other):
            found.append(f"line {line} and line {other_line} are not in step:\n  {block}\n  {other}")
            if shape_of(block)[0] != shape_of(other)[0]:
                return found  # all that follows is out of step too
    return found


def body(text):
    """Without its head, which is the page's own."""
    return text[text.index("\n\n"):]


def prove(first, second):
    """Plants faults into the second."""
    faults = {"heading": (r"(?m)^### .*\n", ""), "row": (r"(?m)^\| \*\*Convex.*\n", ""), "key": (r"\[\[F10\]\]", "[[F9]]"),
              "picture": (r"\(menu\.png\)", "(page.png)"), "command": (r"`ktz-jxctl watch`", "`ktz-jxctl show`"),
              "message": (r"\*Failed to save\.\*", "*Saving failed.*"), "link": (r"\(#lost\)", "(#demo)")}
    for name, (pattern, planted) in faults.items():
        broken, count = re.subn(pattern, planted, second, count=1)
        if count != 1 or not differences(first, broken):
            yield f"a planted fault is not noticed: {name}"


first, second = (body(manual_text.read(path)) for path in sys.argv[1:3])
manual_text.end([*differences(first, second), *prove(first, second)])
