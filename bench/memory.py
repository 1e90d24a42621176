#!/usr/bin/python3
"""memory.py BUILD-DIR [ROUNDS]: peak resident memory, in the editor's case after the splash has gone."""

import collections
import re
import statistics
import subprocess
import sys
import time

from figures import Verdicts, display, print_header, print_row, spread

SPLASH = 4.5   # seconds until it has gone, on a slow day
RATIOS = ("1", "3")

build = sys.argv[1]
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 10
programs = {
    "empty": f"{build}/bin/ktz-bench-empty",
    "structure": f"{build}/bin/ktz-bench-structure",
    "editor": f"{build}/bin/ktz-jx-editor",
}


def start(program, environment, ratio):
    return subprocess.Popen([program], env=environment | {"QT_SCALE_FACTOR": ratio}, stderr=subprocess.DEVNULL)


def peak_megabytes(process):
    with open(f"/proc/{process.pid}/status") as status:
        return int(re.search(r"VmHWM:\s*(\d+) kB", status.read())[1]) / 1024


def end(process):
    process.terminate()
    process.wait()


def kind(name, anonymous):
    if name == "[heap]" or name.startswith("[stack"):
        return "heap" if name == "[heap]" else "stack"
    if name.startswith(("/SYSV", "/dev/", "/memfd")):
        return "shared with the X server"
    if not name or name.startswith("["):
        return "other anonymous memory"
    if anonymous:
        return "written pages of files"
    return "libraries and program" if ".so" in name or "/bin/" in name else "other files"


def resident(process):
    """MiB by kind."""
    found = collections.defaultdict(float)
    name = ""
    size = 0
    with open(f"/proc/{process.pid}/smaps") as mappings:
        for line in mappings:
            words = line.split()
            if not words[0].endswith(":"):
                name = words[5] if len(words) > 5 else ""
            elif words[0] == "Rss:":
                size = int(words[1]) / 1024
            elif words[0] == "Anonymous:":
                own = int(words[1]) / 1024
                found[kind(name, True)] += own
                found[kind(name, False)] += size - own
    return found


def budget(program, environment, ratio):
    """The fullest of many looks at a starting program, in a run of its own since looking slows it down."""
    process = start(program, environment, ratio)
    fullest = {}
    until = time.monotonic() + SPLASH
    while time.monotonic() < until:
        now = resident(process)
        if sum(now.values()) > sum(fullest.values()):
            fullest = now
        time.sleep(0.01)
    end(process)
    return fullest


verdicts = Verdicts()
with display() as environment:
    for ratio in RATIOS:
        peak = {name: [] for name in programs}
        for turn in range(rounds):
            running = {name: start(program, environment, ratio) for name, program in programs.items()}
            time.sleep(SPLASH)
            for name, process in running.items():
                peak[name].append(peak_megabytes(process))
                end(process)
        print(f"memory at ratio {ratio}, {rounds} rounds: median (middle half)")
        print_header("peak resident")
        for name in programs:
            print_row(name, spread(peak[name], "MiB"))
        times_empty = {name: statistics.median(peak[name]) / statistics.median(peak["empty"]) for name in programs}
        print_row("structure / empty window", f"{times_empty['structure']:.2f}")
        if ratio == "1":
            verdicts.at_most("editor / empty window", times_empty["editor"], 1.3)
        else:
            print_row("editor / empty window", f"{times_empty['editor']:.2f}")
        budgets = {name: budget(program, environment, ratio) for name, program in programs.items()}
        print_header(*(f"{name}'s budget" for name in programs))
        for part in sorted(budgets["editor"], key=lambda part: -budgets["editor"][part]):
            print_row(part, *(f"{budgets[name].get(part, 0):.1f} MiB" for name in programs))
sys.exit(verdicts.status())
