#!/usr/bin/env python3
"""Fails where the manual's index of messages and the sources disagree: a text that is shown and not explained, or
explained and shown nowhere.

    check_messages.py ROOT MANUAL...

Messages are what the boxes of the editor's windows say, what its programs print, and why ktz-jxctl gives up.
"""

import pathlib
import re
import sys

import manual_text

LITERAL = re.compile(r'"((?:[^"\\]|\\.)*)"')
FOLDERS = ("app", "file", "connection", "style", "widgets", "device")  # of whatever opens boxes

# Texts of three words and more that are no messages.
NO_MESSAGES = {
    "Shows this text.": "help",
    "Shows the version.": "help",
    "A settings file to open.": "help",
    "Writes every message to a file.": "help",
    "Shows and changes the settings of a KTZ-JX.": "help",
    "The KTZ-JX Editor with a simulated device, which needs no MIDI.": "help",
    "The device alone, as a client of the ALSA sequencer with so many ports, 1 to 3: ktz-jx-device --panel.": "help",
    "ktz-jx-demo: --device %s\\n": "wrong use",
    "needs a number from 1 to 3": "wrong use",
    "opens no file, which is the editor's": "wrong use",
    "needs the ALSA sequencer, without which this was built": "wrong use",
    "The editor is closing.": "an answer on the session bus, which nobody shows",
    "could not connect to display": "read, not shown",
    "Failed to create wl_display": "read, not shown",
}


def plain(literal):
    text = literal.replace("\\r\\n", " ").replace("\\n", " ").replace('\\"', '"')
    text = re.sub(r"%\d|%s", "...", text)
    return " ".join(text.replace("ktz-jx-editor: ", "").split())


def joined(code):
    """Literals that the compiler joins, as one."""
    return re.sub(r'"\s*\n\s*"', "", code)


def in_boxes(root):
    constants = joined((root / "app/common/Constants.h").read_text(encoding="utf-8"))
    section = re.search(r"// Messages\n(.*?)\n// ", constants, re.S)[1]
    texts = {name: plain(literal) for name, literal in
             re.findall(r'QString (k_\w+) =\s*QStringLiteral\("((?:[^"\\]|\\.)*)"', section)}
    for path in sources(root):
        for call in re.findall(r"CMessageBox::\w+\((.*?)\);", path.read_text(encoding="utf-8"), re.S):
            for name in re.findall(r"\bk_\w+", call):
                if name not in texts and not name.endswith("Title"):
                    raise SystemExit(f"{path}: {name} is in a box, and no message of Constants.h")
    return set(texts.values())


def sources(root):
    return [path for folder in FOLDERS for path in sorted((root / folder).rglob("*.cpp"))]


def printed(root):
    """Every text of three words and more in what starts and ends the window's programs."""
    texts = set()
    for path in sorted([*(root / "app").glob("*.cpp"), *(root / "app/demo").glob("*.cpp")]):
        code = re.sub(r"(?:^|\s)//.*|'\\?\"'|^#include.*", "", joined(path.read_text(encoding="utf-8")), flags=re.M)
        texts |= {plain(literal) for literal in LITERAL.findall(code)
                  if len(re.findall(r"[A-Za-z]{2,}", literal)) > 2 and literal.count(" ") > 1
                  and literal not in NO_MESSAGES}
    return texts


def of_ctl(root):
    code = joined("".join(path.read_text(encoding="utf-8") for path in sorted((root / "ctl").glob("C*.cpp"))))
    return {plain(literal) for literal in
            re.findall(r'failed\(\s*CtlStatus::\w+,\s*QStringLiteral\("((?:[^"\\]|\\.)*)"', code)}


def explained(manual):
    index = manual[manual.index("{#messages"):]
    index = index[:index.index("\n## ")]
    return set(re.findall(r"(?m)^\| \*(.+?)\* \|", index))


root = pathlib.Path(sys.argv[1])
groups = {"in a box": in_boxes(root), "printed": printed(root), "of ktz-jxctl": of_ctl(root)}
shown = set().union(*groups.values())
mistakes = [f"no message {name} was found in the sources" for name, texts in groups.items() if not texts]
for path in sys.argv[2:]:
    there = explained(manual_text.read(path))
    mistakes += [f"{path}: not explained: {text}" for text in sorted(shown - there)]
    mistakes += [f"{path}: shown nowhere: {text}" for text in sorted(there - shown)]
manual_text.end(mistakes)
