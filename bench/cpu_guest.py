#!/usr/bin/python3
"""cpu_guest.py RESULTS-DIR BUILD-DIR [ROUNDS]: in the guest, processor time under another sequencer client's reports.

The editor's eight knobs are turned by turns; qxgedit is told as many new values of the one volume that it shows.
"""

import contextlib
import functools
import subprocess
import sys
import time

from figures import Verdicts, display_and_server
from guest import USER, prepare, users
from processor import Peer, print_and_judge, take_turns

PATIENCE = 20   # seconds until a program has loaded everything, and the editor's splash has gone


def start_qxgedit(environment):
    running = subprocess.Popen(USER + ["qxgedit"], env=environment, stderr=subprocess.DEVNULL)
    time.sleep(PATIENCE)
    subprocess.run(["aconnect", "Synthesizer:2", "QXGEdit:0"], check=True)
    return running


build = sys.argv[2]
rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 10
folder = prepare(build, "ktz-jx-editor", "ktz-bench-source", "ktz-bench-damage", "ktz-bench-threads")


def measure(kinds):
    """kinds  {name: (what it is fed with, its command or what starts it)} of programs that run side by side."""
    peers = {}
    with contextlib.ExitStack() as stack:
        for name, (kind, command) in kinds.items():
            environment, server = stack.enter_context(display_and_server())
            environment = users(environment)
            source = subprocess.Popen(USER + [f"{folder}/ktz-bench-source", kind], env=environment,
                                      stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
            stack.callback(source.terminate)
            if source.stdout.readline() != "ready\n":
                sys.exit("cpu_guest.py: no source of reports")
            if callable(command):
                # It does not always survive a thousand messages a second.
                restart = functools.partial(command, environment)
                running = restart()
            else:
                running, restart = subprocess.Popen(USER + [command], env=environment), None
            peers[name] = Peer(running, source, server, environment, restart)
            stack.callback(lambda peer=peers[name]: peer.program.terminate())
        take_turns(peers, f"{folder}/ktz-bench-damage", rounds)
    return peers


peers = measure({"editor": ("device", f"{folder}/ktz-jx-editor"), "qxgedit": ("synthesizer", start_qxgedit)})
# Not beside the editor, whose device has the same name.
peers |= measure({"threads": ("device", f"{folder}/ktz-bench-threads")})
verdicts = Verdicts()
print_and_judge(f"cpu, {rounds} rounds: median (middle half)", peers, "editor", "qxgedit", 1, verdicts)
sys.exit(verdicts.status())
