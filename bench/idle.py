#!/usr/bin/python3
"""idle.py RESULTS-DIR BUILD-DIR [ROUNDS]: in the guest, what the connected editor does while nobody does anything.

The editor, the empty window and qxgedit, a comparable editor, run side by side, and each round looks at all of them over
the same 30 seconds.
"""

import collections
import os
import re
import statistics
import subprocess
import sys
import time

from figures import Verdicts, display, print_header, print_row, spread
from guest import USER, prepare, users

SECONDS = 30
KEEPS = SECONDS / 2   # the editor asks the device every two seconds


def threads(process):
    """What each thread has done since its start: {name: (processor nanoseconds, wake-ups)}."""
    found = collections.defaultdict(lambda: (0, 0))
    for thread in os.listdir(f"/proc/{process.pid}/task"):
        folder = f"/proc/{process.pid}/task/{thread}"
        with open(f"{folder}/comm") as comm, open(f"{folder}/schedstat") as times, open(f"{folder}/status") as status:
            name = comm.read().strip()
            switches = int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", status.read(), re.MULTILINE)[1])
            before = found[name]
            found[name] = (before[0] + int(times.read().split()[0]), before[1] + switches)
    return found


class Watched:
    """Programs that run side by side, and what each does in the rounds."""

    def __init__(self, **programs):
        self.programs = programs
        self.processor = {name: [] for name in programs}
        self.wakes = {name: [] for name in programs}
        self.by_thread = {name: collections.defaultdict(list) for name in programs}   # of (milliseconds, wake-ups)

    def watch(self, rounds):
        for turn in range(rounds):
            before = {name: threads(process) for name, process in self.programs.items()}
            time.sleep(SECONDS)
            for name, process in self.programs.items():
                after = threads(process)
                for thread in after:
                    self.by_thread[name][thread].append(((after[thread][0] - before[name][thread][0]) / 1e6,
                                                         after[thread][1] - before[name][thread][1]))
                self.processor[name].append(sum(counts[turn][0] for counts in self.by_thread[name].values()))
                self.wakes[name].append(sum(counts[turn][1] for counts in self.by_thread[name].values()))
        for process in self.programs.values():
            process.terminate()

    def print_rows(self):
        for name in self.programs:
            print_row(name, spread(self.processor[name], "ms"), spread(self.wakes[name], ""))
            for thread, counts in sorted(self.by_thread[name].items()):
                milliseconds, times = (statistics.median(column) for column in zip(*counts))
                print_row(f"{name}: {thread}", f"{milliseconds:.1f} ms", f"{times:.0f}")


build = sys.argv[2]
rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 10
folder = prepare(build, "ktz-jx-editor", "ktz-jx-device", "ktz-bench-empty", "ktz-bench-threads")
with display() as environment:
    environment = users(environment)

    def start(*command):
        return subprocess.Popen(USER + [*command], env=environment, stderr=subprocess.DEVNULL)

    device = subprocess.Popen(USER + [f"{folder}/ktz-jx-device", "--keep-running"], env=environment,
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    time.sleep(2)
    programs = Watched(empty=start(f"{folder}/ktz-bench-empty"), qxgedit=start("qxgedit"),
                       editor=start(f"{folder}/ktz-jx-editor"))
    time.sleep(20)   # connected, the splash gone, nothing left to load
    programs.watch(rounds)
    # Not beside the editor: each would hear the answers to the other.
    structure = Watched(threads=start(f"{folder}/ktz-bench-threads"))
    time.sleep(5)
    structure.watch(rounds)
    device.stdin.close()
    device.terminate()
    keeps = sum("F0 43 10 3E 18 05 02 01 F7" in line and "received" in line for line in device.stdout)

print(f"idle, {rounds} rounds of {SECONDS} s, device connected ({keeps} keep messages): median (middle half)")
print_header("processor time", "wake-ups")
programs.print_rows()
structure.print_rows()   # the least that the editor's threads do
of = {name: statistics.median(times) for name, times in (programs.processor | structure.processor).items()}
print_row("its threads alone / qxgedit", f"{of['threads'] / of['qxgedit']:.2f}")
verdicts = Verdicts()
verdicts.at_least("keep messages", keeps, 2 * rounds * KEEPS)
verdicts.at_most("processor time, editor / qxgedit", of["editor"] / of["qxgedit"], 0.4)
beyond = statistics.median(programs.wakes["editor"]) - statistics.median(programs.wakes["empty"])
# For one keep: the threads that send it, receive the answer and deliver that, and the window, which hears of it.
verdicts.at_most("wake-ups beyond the empty window's for each keep", beyond / KEEPS, 4)
sys.exit(verdicts.status())
