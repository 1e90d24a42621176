#!/usr/bin/python3
"""package.py: how large the installed editor is, built as musicians install it and stripped."""

import collections
import pathlib
import subprocess
import sys
import tempfile

from figures import Verdicts, print_header, print_row

root = pathlib.Path(__file__).resolve().parent.parent
for step in (["cmake", "--preset", "package", "-DKTZ_BENCH=OFF"], ["cmake", "--build", "--preset", "package"]):
    subprocess.run(step, cwd=root, check=True, stdout=subprocess.DEVNULL)
sizes = collections.defaultdict(int)
with tempfile.TemporaryDirectory() as prefix:
    subprocess.run(["cmake", "--install", root / "build/package", "--prefix", prefix, "--strip"], check=True,
                   stdout=subprocess.DEVNULL)
    for file in pathlib.Path(prefix).rglob("*"):
        if file.is_file() and not file.is_symlink():
            place = file.relative_to(prefix)
            sizes[str(place if place.parts[0] == "bin" else place.parent)] += file.stat().st_size

print("package, installed and stripped")
print_header("size")
for place, size in sorted(sizes.items(), key=lambda each: -each[1]):
    print_row(place, f"{size:,} bytes")
verdicts = Verdicts()
verdicts.at_least("programs", sum(place.startswith("bin/") for place in sizes), 1)
manual = sum(size for place, size in sizes.items() if "/manual" in place)
verdicts.at_most("MB (a million bytes) without the manual", (sum(sizes.values()) - manual) / 1e6, 2.2)
verdicts.at_most("MB, the manual", manual / 1e6, 0.8)
sys.exit(verdicts.status())
