"""What the measurements share: a display of their own, medians, and one way to print them."""

import contextlib
import os
import statistics
import subprocess
import tempfile

# Programs look alike on every machine: no desktop's settings, nobody's fonts size, no MIDI but what is measured.
CLEAN = {name: os.environ[name] for name in ("PATH", "HOME") if name in os.environ} | {"LANG": "C.UTF-8"}


@contextlib.contextmanager
def display():
    """An X server without a window manager; gives the environment for programs on it."""
    with display_and_server() as (environment, _):
        yield environment


@contextlib.contextmanager
def display_and_server():
    """The same, and the server's process."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1024x24", "-nolisten", "tcp",
                               "-noreset"],
                              pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(write_end)
    try:
        with os.fdopen(read_end) as number, tempfile.TemporaryDirectory() as runtime:
            yield CLEAN | {"DISPLAY": ":" + number.readline().strip(), "XDG_RUNTIME_DIR": runtime}, server
    finally:
        server.terminate()
        server.wait()


def print_header(*names):
    print_row("", *names)


def print_row(title, *figures):
    print(f"{title:>30}" + "".join(f"{figure:>24}" for figure in figures), flush=True)


def spread(values, unit):
    """Median and the two middle quarters, as text."""
    lower, middle, upper = statistics.quantiles(values, n=4)
    return f"{middle:.1f} {unit} ({lower:.1f}-{upper:.1f})"


class Verdicts:
    """Ratios against their targets; the exit status says whether all were reached."""

    def __init__(self):
        self.missed = 0

    def at_most(self, title, found, target):
        self.say(title, found, "at most", target, found <= target)

    def at_least(self, title, found, target):
        self.say(title, found, "at least", target, found >= target)

    def say(self, title, found, relation, target, reached):
        self.missed += not reached
        print(f"{'reached' if reached else 'MISSED':>8}  {title}: {found:.2f}, {relation} {target:.4g}", flush=True)

    def status(self):
        return 1 if self.missed else 0
