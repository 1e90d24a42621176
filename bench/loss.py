#!/usr/bin/python3
"""loss.py RESULTS-DIR BUILD-DIR [MESSAGES [BURSTS]]: in the guest, what an ordinary user's editor misses."""

import subprocess
import sys

from figures import Verdicts, display
from guest import USER, prepare, users

build = sys.argv[2]
messages = sys.argv[3] if len(sys.argv) > 3 else "240000"
bursts = sys.argv[4] if len(sys.argv) > 4 else "10"
program = prepare(build, "ktz-bench-loss") + "/ktz-bench-loss"
verdicts = Verdicts()
with display() as environment:
    for title, arguments, expected in ((f"{messages} at 4,000 a second", ["steady", messages, "4000"], int(messages)),
                                       (f"{bursts} bursts of 760 while stopped", ["burst", "760", bursts],
                                        760 * int(bursts))):
        answer = subprocess.run(USER + [program] + arguments, env=users(environment), check=True,
                                stdout=subprocess.PIPE, text=True).stdout.split()
        sent, refused, received, gaps = map(int, answer)
        print(f"{title}: {sent} sent, {refused} refused by the sequencer, {received} received", flush=True)
        verdicts.at_least("sent", sent, expected)
        verdicts.at_most("lost", sent - received, 0)
        verdicts.at_most("gaps in a knob's values", gaps, 0)
sys.exit(verdicts.status())
