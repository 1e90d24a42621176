#!/usr/bin/python3
"""flood.py BUILD-DIR [SECONDS]: the editor while a device inside its process reports 8,000 knob values a second."""

import subprocess
import sys

from figures import Verdicts, display

build = sys.argv[1]
seconds = sys.argv[2] if len(sys.argv) > 2 else "30"
with display() as environment:
    answer = subprocess.run([f"{build}/bin/ktz-bench-flood", seconds], env=environment, check=True,
                            stdout=subprocess.PIPE, text=True).stdout.split()
rate, repaints, shown, click, clicks = map(float, answer)

print(f"flood, {seconds} s, {clicks:.0f} clicks")
verdicts = Verdicts()
verdicts.at_least("knob values a second", rate, 7900)
verdicts.at_most("repaints of a knob in any one second", repaints, 60)
verdicts.at_most("ms from the last message until every final value shows", shown, 100)
verdicts.at_most("ms until the slowest click is taken", click, 100)
sys.exit(verdicts.status())
