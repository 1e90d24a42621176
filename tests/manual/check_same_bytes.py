#!/usr/bin/env python3
"""Makes the manual again, pictures and all, in another folder and another time zone, and fails on any other byte.

    check_same_bytes.py BUILD SOURCES FONT VERSION DATE PDF HTML AGAIN
"""

import filecmp
import os
import pathlib
import shutil
import subprocess
import sys

import manual_text

build, sources, font, version, date, pdf, html, again = sys.argv[1:]
again = pathlib.Path(again)
shutil.rmtree(again, ignore_errors=True)
environment = os.environ | {"TZ": "Pacific/Auckland", "LC_ALL": "C.UTF-8"}
subprocess.run([f"{build}/take_pictures", str(again / "pictures")], env=environment, check=True)
subprocess.run([sys.executable, "-B", f"{sources}/tools/make_manual.py", "--pictures", str(again / "pictures"),
                "--font", font, "--version", version, "--date", date, "--pdf", str(again / "pdf"),
                "--html", str(again / "html"), *map(str, sorted(pathlib.Path(sources).glob("*/manual.md")))],
               env=environment, check=True)

mistakes = []
for first, second in ((pathlib.Path(pdf), again / "pdf"), (pathlib.Path(html), again / "html")):
    names = [{path.relative_to(folder) for path in folder.rglob("*") if path.is_file()} for folder in (first, second)]
    if names[0] != names[1] or not names[0]:
        mistakes.append(f"other files: {names[0] ^ names[1]}")
    mistakes += [f"other bytes: {name}" for name in sorted(names[0] & names[1])
                 if not filecmp.cmp(first / name, second / name, shallow=False)]
manual_text.end(mistakes)
