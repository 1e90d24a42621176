#!/usr/bin/env python3
"""Fails where the manual's table of keys and the window's shortcuts disagree.

    check_keys.py ROOT MANUAL
"""

import pathlib
import re
import sys

import manual_text

NAMES = {"CTRL": "Ctrl", "SHIFT": "Shift", "ALT": "Alt"}
# What the toolkit and the menus' mnemonics bring.
OF_TOOLKIT = {"Tab", "Shift+Tab", "Menu", "Space", "Alt+F", "Alt+E", "Alt+H"}


def shortcuts(root):
    constants = (root / "app/common/Constants.h").read_text(encoding="utf-8")
    found = set(re.findall(r'k_\w+Command = QStringLiteral\("([^"]+)"\)', constants))
    code = (root / "app/CMainWindowKeys.cpp").read_text(encoding="utf-8")
    for modifiers, key in re.findall(r"add\(((?:Qt::[A-Z]+ \| )*)Qt::Key_(\w+),", code):
        found.add("+".join([NAMES[name] for name in re.findall(r"Qt::(\w+)", modifiers)] + [key]))
    if "Qt::Key_1 + knob" in code:
        found |= {"Ctrl+1", "Ctrl+8"}
    return found


def mnemonics(root):
    constants = (root / "app/common/Constants.h").read_text(encoding="utf-8")
    return {f"Alt+{letter.upper()}" for letter in re.findall(r'k_\w+MenuString = QStringLiteral\("&(\w)', constants)}


root = pathlib.Path(sys.argv[1])
manual = manual_text.read(sys.argv[2])
table = manual[manual.index("{#keys"):]
table = table[:table.index("| In a field |")]
written = set(re.findall(r"\[\[(.+?)\]\]", table))
known = shortcuts(root)
mistakes = [f"not in the table of keys: {key}" for key in sorted(known - written)]
mistakes += [f"a key of the table does nothing: {key}" for key in sorted(written - known - OF_TOOLKIT)]
mistakes += [f"no menu has this key: {key}" for key in OF_TOOLKIT if key.startswith("Alt") and key not in mnemonics(root)]
if len(known) < 10:
    mistakes.append(f"too few shortcuts were found in the sources: {known}")
manual_text.end(mistakes)
