"""Processor time of programs that take turns under the same reports, and of each one's X server."""

import contextlib
import statistics
import subprocess
import time

from figures import print_header, print_row, spread

RATES = (100, 300, 1000)   # reports a second, of all knobs together
SETTLE = 1                 # seconds until everything that is loaded at its first use has been
SECONDS = 4


def used(process):
    """Seconds that all threads of a process have used since its start, those that have ended too."""
    return time.clock_gettime((~process.pid << 3) | 2)   # clock_getcpuclockid(), to the nanosecond


class Peer:
    """A program on a display of its own, and the source that feeds it: a process that takes orders by lines.

    restart starts a program that may end under the load once more; without it an end is an error.
    """

    def __init__(self, program, source, server, environment, restart=None):
        self.program, self.source, self.server, self.environment = program, source, server, environment
        self.restart = restart
        self.ends = 0
        self.own = {rate: [] for rate in RATES}      # milliseconds of processor time in a second
        self.servers = {rate: [] for rate in RATES}
        self.painted = {}                            # (rectangles, megapixels) a second
        self.refused = {rate: 0 for rate in RATES}   # reports for which the program's queue had no room

    def under_load(self, rate, work):
        """Calls work while the reports come, once they have come for a while; again if the program did not last."""
        while True:
            self.source.stdin.write(f"{rate * (SETTLE + SECONDS + 1)} {rate}\n")
            self.source.stdin.flush()
            time.sleep(SETTLE)
            with contextlib.suppress(ProcessLookupError):
                result = work()
            self.refused[rate] += int(self.source.stdout.readline())
            if self.program.poll() is None:
                return result
            if self.restart is None:
                raise RuntimeError(f"{self.program.args[-1]} has ended, status {self.program.returncode}")
            self.ends += 1
            self.program = self.restart()

    def measure(self, rate):
        def work():
            before = used(self.program), used(self.server), time.monotonic()
            time.sleep(SECONDS)
            after = used(self.program), used(self.server), time.monotonic()
            return [(now - then) / (after[2] - before[2]) * 1000 for now, then in zip(after[:2], before[:2])]
        own, server = self.under_load(rate, work)
        self.own[rate].append(own)
        self.servers[rate].append(server)

    def count_painted(self, counter, rate):
        """In a turn of its own, since counting costs the X server time."""
        def work():
            return subprocess.run([counter, str(SECONDS)], env=self.environment, check=True, stdout=subprocess.PIPE,
                                  text=True).stdout.split()
        rectangles, pixels = map(int, self.under_load(rate, work))
        self.painted[rate] = rectangles / SECONDS, pixels / SECONDS / 1e6


def take_turns(peers, counter, rounds):
    for rate in RATES:
        for peer in peers.values():
            peer.count_painted(counter, rate)
    for _ in range(rounds):
        for rate in RATES:
            for peer in peers.values():
                peer.measure(rate)


def print_and_judge(title, peers, editor, other, target, verdicts):
    print(title)
    print_header("processor time a second", "its X server's", "painted a second", "reports refused")
    for rate in RATES:
        for name, peer in peers.items():
            rectangles, megapixels = peer.painted[rate]
            print_row(f"{name} at {rate} a second", spread(peer.own[rate], "ms"), spread(peer.servers[rate], "ms"),
                      f"{rectangles:.0f}, {megapixels:.2f} Mpx", str(peer.refused[rate]))
    for name, peer in peers.items():
        if peer.ends:
            print(f"{name} ended {peer.ends} times under the load and was started again")
    for rate in RATES:
        mine, others = peers[editor], peers[other]
        verdicts.at_least(f"{editor} paints at {rate} a second, rectangles", mine.painted[rate][0], 1)
        verdicts.at_least(f"{other} paints at {rate} a second, rectangles", others.painted[rate][0], 1)
        verdicts.at_most(f"reports refused by {editor} at {rate} a second", mine.refused[rate], 0)
        verdicts.at_most(f"processor time at {rate} a second, {editor} / {other}",
                         statistics.median(mine.own[rate]) / statistics.median(others.own[rate]), target)
