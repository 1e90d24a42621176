#!/usr/bin/python3
"""drag.py BUILD-DIR [ROUNDS]: from a movement of the pointer, button pressed, to the pixels that show it."""

import contextlib
import statistics
import subprocess
import sys
import time

from figures import Verdicts, display, print_header, print_row, spread

MOVES = 200
SPLASH = 4.5   # seconds until it has gone, on a slow day

build = sys.argv[1]
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 10
# A place in the window: the first knob's controller number; the handle of the slider at its middle.
programs = {
    "slider": (["ktz-bench-slider"], 51, 210),
    "placing slider": (["ktz-bench-slider", "--placing"], 51, 210),
    "editor": (["ktz-jx-editor"], 51, 207),
}
middle = {name: [] for name in programs}
late = {name: [] for name in programs}
unseen = 0
with contextlib.ExitStack() as stack:
    environments = {}
    for name, ((program, *options), _, _) in programs.items():
        environments[name] = stack.enter_context(display())
        running = subprocess.Popen([f"{build}/bin/{program}", *options], env=environments[name], stderr=subprocess.DEVNULL)
        stack.callback(running.terminate)
    time.sleep(SPLASH)
    for turn in range(rounds + 1):
        for name, (_, x, y) in programs.items():
            answer = subprocess.run([f"{build}/bin/ktz-bench-drag", str(x), str(y), str(MOVES)],
                                    env=environments[name], check=True, stdout=subprocess.PIPE, text=True)
            median, worst, unchanged = answer.stdout.split()
            unseen += int(unchanged)
            if turn > 0:   # the first turn loads what is used first
                middle[name].append(float(median))
                late[name].append(float(worst))

print(f"drag, {rounds} rounds of {MOVES} moves: median of the rounds (middle half)")
print_header("move to pixels", "99 of 100")
for name in programs:
    print_row(name, spread(middle[name], "ms"), spread(late[name], "ms"))
verdicts = Verdicts()
verdicts.at_most("moves without a change", unseen, 0)
verdicts.at_most("editor / slider", statistics.median(middle["editor"]) / statistics.median(middle["slider"]), 1.2)
verdicts.at_most("99 of 100, editor / slider", statistics.median(late["editor"]) / statistics.median(late["slider"]),
                 1.5)
sys.exit(verdicts.status())
