#!/usr/bin/python3
"""ctl.py BUILD-DIR [ROUNDS]: how long ktz-jxctl takes to show a file, from its start to its end, and its memory."""

import statistics
import subprocess
import sys
import tempfile
import time

from figures import CLEAN, Verdicts, print_header, print_row, spread

build = sys.argv[1]
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 100


def peak_megabytes(command):
    said = subprocess.run([f"{build}/bin/ktz-bench-ctl-peak", *command], env=CLEAN, capture_output=True, check=True).stdout
    return int(said) / 1024


with tempfile.NamedTemporaryFile("w", suffix=".CJX") as file:
    file.write('<!DOCTYPE KTZJXEditor>\n<parameters version="1.0">\n    <controlview>\n')
    for knob in range(8):
        file.write(f"        <key{knob}>\n")
        for setting in (1100, 1200, 1300, 1400, 1500):
            file.write(f"            <key{setting + knob}>1</key{setting + knob}>\n")
        file.write(f"        </key{knob}>\n")
    file.write("    </controlview>\n</parameters>\n")
    file.flush()
    programs = {
        "/bin/true": ["/bin/true"],
        "Qt Core's start": [f"{build}/bin/ktz-bench-ctl-core"],
        "opens the sequencer": [f"{build}/bin/ktz-bench-ctl-sequencer"],
        "ktz-jxctl show FILE": [f"{build}/bin/ktz-jxctl", "show", file.name],
    }
    took = {name: [] for name in programs}
    peak = {name: [] for name in programs}
    for turn in range(rounds):
        for name, command in programs.items():
            begin = time.perf_counter()
            process = subprocess.Popen(command, env=CLEAN, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            status = process.wait()
            took[name].append((time.perf_counter() - begin) * 1000)
            if status != 0:
                sys.exit(f"{name} ends with {status}")
            peak[name].append(peak_megabytes(command))

print(f"ctl, {rounds} rounds: median (middle half)")
print_header("from start to end", "peak resident")
for name in programs:
    print_row(name, spread(took[name], "ms"), spread(peak[name], "MiB"))
verdicts = Verdicts()
median = {name: statistics.median(values) for name, values in took.items()}
verdicts.at_most("show FILE / /bin/true and Qt Core's start",
                 median["ktz-jxctl show FILE"] / (median["/bin/true"] + median["Qt Core's start"]), 3)
verdicts.at_most("peak memory in MiB", max(peak["ktz-jxctl show FILE"]), 12)
sys.exit(verdicts.status())
