#!/usr/bin/python3
"""throughput.py BUILD-DIR [ROUNDS]: what the ring and the delivery thread cost, in messages decoded a second."""

import statistics
import subprocess
import sys

from figures import Verdicts, print_header, print_row, spread

MESSAGES = 1_000_000

build = sys.argv[1]
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 10
alone, ring, bare, lost, wrong = [], [], [], 0, 0
for turn in range(rounds):
    answer = subprocess.run([f"{build}/bin/ktz-bench-throughput", str(MESSAGES)], stdout=subprocess.PIPE,
                            text=True).stdout.split()
    alone.append(float(answer[0]) / 1000)
    ring.append(float(answer[1]) / 1000)
    bare.append(float(answer[2]) / 1000)
    lost += int(answer[3])
    wrong += int(answer[4])

print(f"throughput, {rounds} rounds of {MESSAGES} messages: median (middle half)")
print_header("decoded")
print_row("one thread", spread(alone, "k/s"))
print_row("ring and delivery", spread(ring, "k/s"))
print_row("two bare threads", spread(bare, "k/s"))
print_row("two bare threads / one", f"{statistics.median(bare) / statistics.median(alone):.2f}")
verdicts = Verdicts()
verdicts.at_least("ring and delivery / one thread", statistics.median(ring) / statistics.median(alone), 0.5)
verdicts.at_most("messages lost", lost, 0)
verdicts.at_most("messages in another place", wrong, 0)
sys.exit(verdicts.status())
