#!/usr/bin/python3
"""startup.py BUILD-DIR [ROUNDS]: time from a program's start until its picture stands, without a device.

The programs take turns, so that whatever else the machine does meets all of them alike.
"""

import shutil
import statistics
import subprocess
import sys

from figures import Verdicts, display, print_header, print_row, spread

QUIET = 1000   # ms without large damage: longer than any pause while starting, shorter than the splash

build = sys.argv[1]
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 15
programs = {
    "empty": f"{build}/bin/ktz-bench-empty",
    "structure": f"{build}/bin/ktz-bench-structure",
    "editor": f"{build}/bin/ktz-jx-editor",
    "qxgedit": "qxgedit",
}
if not shutil.which("qxgedit"):
    sys.exit("startup.py: the comparison needs Debian's package qxgedit")

picture = {name: [] for name in programs}
processor = {name: [] for name in programs}
with display() as environment:
    for turn in range(rounds + 1):
        for name, program in programs.items():
            answer = subprocess.run([f"{build}/bin/ktz-bench-picture", str(QUIET), program], env=environment, check=True,
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout.split()
            if turn > 0:   # the first turn fills the disk cache
                picture[name].append(float(answer[0]))
                processor[name].append(float(answer[1]))

print(f"start-up, {rounds} rounds: median (middle half)")
print_header("picture stands", "own processor time")
for name in programs:
    print_row(name, spread(picture[name], "ms"), spread(processor[name], "ms"))
median = {name: statistics.median(picture[name]) for name in programs}
print_row("structure / empty window", f"{median['structure'] / median['empty']:.2f}")
verdicts = Verdicts()
verdicts.at_most("editor / empty window", median["editor"] / median["empty"], 1.6)
verdicts.at_most("editor / qxgedit", median["editor"] / median["qxgedit"], 0.33)
sys.exit(verdicts.status())
