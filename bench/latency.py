#!/usr/bin/python3
"""latency.py RESULTS-DIR BUILD-DIR [ROUNDS]: in the guest, from a sequencer client's call to the editor's code."""

import statistics
import subprocess
import sys

from figures import Verdicts, display, print_header, print_row, spread
from guest import USER, prepare, users

MESSAGES = 2128   # two seconds, after those that are not counted

build = sys.argv[2]
rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 10
program = prepare(build, "ktz-bench-latency") + "/ktz-bench-latency"
kinds = {"bare": "bare loop", "delivery": "delivery thread", "memory": "decoded, there",
         "queued": "bare loop, queued call",
         "painted": "the same, repainting", "window": "repaint request", "fading": "while repainting"}
medians = {kind: [] for kind in kinds}
late = {kind: [] for kind in kinds}   # than which 99 of 100 were earlier
with display() as environment:
    for turn in range(rounds + 1):
        for kind in kinds:
            run = subprocess.run(USER + [program, kind, str(MESSAGES)], env=users(environment),
                                 stdout=subprocess.PIPE, text=True)
            if run.returncode != 0:
                sys.exit(f"latency.py: {kind} lost messages: {run.stdout}")
            if turn > 0:   # the first turn fills the disk cache
                median, _, _, worst = map(float, run.stdout.split())
                medians[kind].append(median)
                late[kind].append(worst)

print(f"latency, {rounds} rounds of {MESSAGES} messages: median of the rounds' medians (middle half)")
print_header("after the sender's call", "99 of 100")
for kind, title in kinds.items():
    print_row(title, spread(medians[kind], "us"), spread(late[kind], "us"))
ratio = {kind: statistics.median(medians[kind]) / statistics.median(medians["bare"]) for kind in kinds}
for kind in ("memory", "queued", "painted", "fading"):
    print_row(f"{kinds[kind]} / bare", f"{ratio[kind]:.2f}")
# What a Qt program can reach that repaints as much and does nothing else.
print_row("99 of 100 of the same, repainting / bare", f"{statistics.median(late['painted']) / statistics.median(medians['bare']):.1f}")
verdicts = Verdicts()
verdicts.at_most("delivery thread / bare loop", ratio["delivery"], 1.75)
verdicts.at_most("repaint request / bare loop", ratio["window"], 3.2)
verdicts.at_most("99 of 100 while repainting / bare loop's median",
                 statistics.median(late["fading"]) / statistics.median(medians["bare"]), 20)
sys.exit(verdicts.status())
