#!/usr/bin/env python3
"""Fails on words of the manual that hunspell does not know.

    check_spelling.py DICTIONARY WORDS... MANUAL

WORDS are files of words that are right all the same, one a line. Commands, keys and messages are not looked at.
"""

import re
import shutil
import subprocess
import sys

import manual_text

dictionary, *lists, manual = sys.argv[1:]
if not shutil.which("hunspell"):
    manual_text.skip("hunspell is missing")
if subprocess.run(["hunspell", "-d", dictionary, "-l"], input="", text=True, capture_output=True).returncode != 0:
    manual_text.skip(f"hunspell has no dictionary {dictionary}")


def unknown(text):
    run = subprocess.run(["hunspell", "-i", "utf-8", "-d", dictionary, "-l"], input=text, text=True, capture_output=True,
                         check=True)
    return {word.strip(".-") for word in run.stdout.split()} - {""}


text = manual_text.read(manual)
head, text = text.split("\n\n", 1)
text = re.sub(r"(?m)^\w+:", "", re.sub(r"(?m)^language:.*$", "", head)) + "\n\n" + text
for message in re.findall(r"(?m)^\| \*([^*].*?)\* \|", text):
    text = text.replace(message, "")
text = re.sub(r"`[^`]*`|\[\[.+?\]\]|\{[^}]*\}", " ", text)
text = re.sub(r"\]\([^)]*\)", "] ", text)
text = re.sub(r"[-–|*#_.>]{2,}|[|*#_>]", " ", text)
known = {word for name in lists for word in manual_text.read(name).split()}
found = unknown(text)
mistakes = [f"{manual}: {word}" for word in sorted(found - known)]
mistakes += [f"{word}: stands in a list of words, and nobody needs it" for word in
             sorted({word for word in manual_text.read(lists[-1]).split()} - found)]
if not unknown("xyzzyq"):
    mistakes.append("hunspell takes every word")
manual_text.end(mistakes)
