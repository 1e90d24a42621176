#!/usr/bin/python3
"""ctl_load.py RESULTS-DIR BUILD-DIR [ROUNDS]: in the guest, `ktz-jxctl load` with its check onto the USB device."""

import os
import statistics
import subprocess
import sys
import time

here = os.path.dirname(os.path.realpath(__file__))
system = os.path.join(here, "../tests/system/guest")
sys.path.insert(0, system)

from figures import CLEAN, Verdicts, print_header, print_row, spread
from guest import prepare
from report import wait_until
from wire import Device

results, build = sys.argv[1:3]
rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 10
folder = prepare(build, "ktz-jxctl", "ktz-jx-device", "ktz-bench-ctl-sequencer", "ktz-bench-ctl-core")
program = f"{folder}/ktz-jxctl"
for command in (["create", "ktz", "3", "Trellwick KTZ-JX"], ["plug", "ktz"]):
    subprocess.run([f"{system}/gadget", *command], check=True)
wait_until(lambda: "\tused" in subprocess.run([program, "ports"], capture_output=True, text=True).stdout, 30)
device = Device(f"{folder}/ktz-jx-device", "hw:0,0,2", results, "ctl-load")


def milliseconds(*command):
    begin = time.perf_counter()
    subprocess.run(command, env=CLEAN, check=True, stdout=subprocess.DEVNULL)
    return (time.perf_counter() - begin) * 1000


subprocess.run([program, "save", "/tmp/a.CJX"], check=True, stdout=subprocess.DEVNULL)
loads, starts, cores, conversations = [], [], [], []
for turn in range(rounds):
    subprocess.run([program, "--quiet", "set", f"all.max={turn % 100}"], check=True)
    first = device.now()
    loads.append(milliseconds(program, "load", "/tmp/a.CJX"))
    wait_until(lambda: device.since(first, "end"), 5)
    messages = device.since(first)
    conversations.append((messages[-1].time - messages[0].time) * 1000)
    starts.append(milliseconds(f"{folder}/ktz-bench-ctl-sequencer"))
    cores.append(milliseconds(f"{folder}/ktz-bench-ctl-core"))
device.end()

print(f"ctl_load, {rounds} rounds: median (middle half)")
print_header("time")
print_row("load with its check", spread(loads, "ms"))
print_row("of it start to end message", spread(conversations, "ms"))
print_row("opens the sequencer and ends", spread(starts, "ms"))
print_row("Qt Core's start", spread(cores, "ms"))
verdicts = Verdicts()
verdicts.at_most("load with its check, beside opening the sequencer, in s",
                 (statistics.median(loads) - statistics.median(starts)) / 1000, 1.1)
sys.exit(verdicts.status())
