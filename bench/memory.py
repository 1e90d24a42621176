#!/usr/bin/python3
"""memory.py BUILD-DIR [ROUNDS]: peak resident memory, in the editor's case after the splash has gone."""

import re
import statistics
import subprocess
import sys
import time

from figures import Verdicts, display, print_header, print_row, spread

SPLASH = 4.5   # seconds until it has gone, on a slow day

build = sys.argv[1]
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 10
programs = {"empty": f"{build}/bin/ktz-bench-empty", "editor": f"{build}/bin/ktz-jx-editor"}
peak = {name: [] for name in programs}


def peak_megabytes(process):
    with open(f"/proc/{process.pid}/status") as status:
        return int(re.search(r"VmHWM:\s*(\d+) kB", status.read())[1]) / 1024


with display() as environment:
    for turn in range(rounds):
        running = {name: subprocess.Popen([program], env=environment, stderr=subprocess.DEVNULL)
                   for name, program in programs.items()}
        time.sleep(SPLASH)
        for name, process in running.items():
            peak[name].append(peak_megabytes(process))
            process.terminate()
            process.wait()

print(f"memory, {rounds} rounds: median (middle half)")
print_header("peak resident")
for name in programs:
    print_row(name, spread(peak[name], "MiB"))
verdicts = Verdicts()
verdicts.at_most("editor / empty window", statistics.median(peak["editor"]) / statistics.median(peak["empty"]), 1.35)
sys.exit(verdicts.status())
