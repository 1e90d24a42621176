#!/usr/bin/python3
"""cpu.py BUILD-DIR [ROUNDS]: processor time of the editor's window while a device inside its process turns its knobs."""

import contextlib
import subprocess
import sys
import time

from figures import Verdicts, display_and_server
from processor import Peer, print_and_judge, take_turns

build = sys.argv[1]
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 10
peers = {}
with contextlib.ExitStack() as stack:
    for kind in ("editor", "dials"):
        environment, server = stack.enter_context(display_and_server())
        program = subprocess.Popen([f"{build}/bin/ktz-bench-cpu", kind], env=environment, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, text=True)
        stack.callback(program.terminate)
        peers[kind] = Peer(program, program, server, environment)
    for peer in peers.values():
        if peer.source.stdout.readline() != "ready\n":
            sys.exit("cpu.py: a program did not come up")
    time.sleep(3)   # the splash slides for a second
    take_turns(peers, f"{build}/bin/ktz-bench-damage", rounds)
verdicts = Verdicts()
print_and_judge(f"cpu, native, {rounds} rounds: median (middle half)", peers, "editor", "dials", 1.5, verdicts)
sys.exit(verdicts.status())
