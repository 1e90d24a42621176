"""The editor as a musician runs it: an ordinary user's process, its window, what its pages show."""

import os
import re
import shutil
import subprocess
import time

from report import wait_until

HOME = "/run/ktz/home"   # in memory: nothing of the host's is there
PAGES = [(x, y) for y in (58, 341) for x in (23, 126, 229, 332)]
FIELDS = {"led": 104, "cc": 142, "ch": 180, "max": 218, "min": 256}   # top of each field in its page
FIELD_SIZE = (73, 15)
FACTORY = [(74, 0, 127, 0, 0), (71, 0, 127, 0, 0), (10, 0, 127, 0, 2), (7, 0, 127, 0, 0),
           (73, 0, 127, 0, 0), (72, 0, 127, 0, 0), (91, 0, 127, 0, 0), (93, 0, 127, 0, 0)]
CATEGORIES = {"cc": 1100, "ch": 1200, "max": 1300, "min": 1400, "led": 1500}
CLOSE_BUTTON = (24, 24)
BOX_PLACE = (0, 280, 446, 40)   # in the middle of the window, where every box covers something
ONLINE_MARK = (403, 6, 36, 20)
AS_USER = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--groups=audio"]


def make_home():
    os.makedirs(HOME, exist_ok=True)
    os.chmod(HOME, 0o700)
    subprocess.run(["chown", "nobody", HOME], check=True)
    # The session's message bus, where a login has it.
    subprocess.run([*AS_USER, "dbus-daemon", "--session", f"--address=unix:path={HOME}/bus", "--fork", "--nopidfile"],
                   check=True)


class Editor:
    def __init__(self, program, display, results, name):
        self.display = display
        self.name = name
        self.log = os.path.join(results, f"{name}.log")
        self.program = program
        self.started = time.monotonic()
        with open(self.log, "w") as log:
            self.process = self.launch(stdout=log)

    def launch(self, *arguments, **streams):
        """A start of the program by the user, in the home directory."""
        return subprocess.Popen(
            [*AS_USER, self.program, *arguments], stdin=subprocess.DEVNULL, stderr=subprocess.STDOUT, cwd=HOME,
            env={"DISPLAY": self.display.NAME, "HOME": HOME, "XDG_RUNTIME_DIR": HOME, "LANG": "C.UTF-8",
                 "PATH": "/usr/bin:/bin"}, **streams)

    def start_again(self, path, seconds=60):
        """A second start with a file: its status and what it printed."""
        second = self.launch(path, stdout=subprocess.PIPE, text=True)
        try:
            printed, _ = second.communicate(timeout=seconds)
        except subprocess.TimeoutExpired:
            second.kill()
            printed, _ = second.communicate()
        return second.returncode, printed

    def windows(self):
        return self.display.windows(self.process.pid)

    def wait_for_window(self, seconds=60):
        """Waits until the main window is on the screen and knows its place."""
        found = wait_until(lambda: self.windows() or self.process.poll() is not None, seconds)
        if not isinstance(found, list) or not found:
            raise RuntimeError(f"the editor shows no window, status {self.process.poll()}")
        self.window = found[0]
        self.x, self.y, self.width, self.height = self.display.position(self.window)

    def wait_until_ready(self, seconds=60):
        """Waits until the splash view has gone: the picture, seen without the pointer, no longer changes."""
        self.display.away()
        shown = time.monotonic()
        last, since = None, shown

        def quiet():
            nonlocal last, since
            picture, now = self.picture(0, 0, self.width, self.height), time.monotonic()
            if picture != last:
                last, since = picture, now
            return now - shown > 3 and now - since > 2
        if not wait_until(quiet, seconds, 0.1):
            raise RuntimeError("the picture does not come to rest")

    def picture(self, x, y, width, height):
        return self.display.picture(self.x + x, self.y + y, width, height)

    def shot(self, name):
        self.display.shot(f"{self.name}-{name}", (self.x, self.y, self.width, self.height))

    def field(self, knob, name):
        """What a field shows."""
        return self.picture(PAGES[knob][0] + 8, PAGES[knob][1] + FIELDS[name], *FIELD_SIZE)

    def fields(self):
        """What all pages show: {(knob, name): picture}."""
        return {(knob, name): self.field(knob, name) for knob in range(8) for name in FIELDS}

    def leds(self):
        """The LED rings of the eight knobs."""
        return [self.picture(x + 22, y + 22, 43, 43) for x, y in PAGES]

    def centre(self, knob, name):
        """Centre of a field's slider on the screen, where a drag measures from."""
        return self.x + PAGES[knob][0] + 8 + 36, self.y + PAGES[knob][1] + FIELDS[name] + 7

    def wait_for_box(self, seconds):
        """Waits for a second window; None when there is none in time."""
        found = wait_until(lambda: [window for window in self.windows() if window != self.window], seconds, 0)
        return found[0] if found else None

    def answer_box(self, key, seconds=20):
        """Presses a key in the box; true when it closes."""
        box = self.wait_for_box(seconds)
        if not box:
            return False
        wait_until(lambda: self.display.do("getactivewindow") == [box], seconds)
        self.display.press(key)
        return wait_until(lambda: box not in self.windows(), seconds)

    def choose_file(self, key, path, seconds=30):
        """Presses a menu key and types a path into the file dialog that opens; true when the dialog closes."""
        self.display.press(key)
        return self.type_into_dialog(path, seconds)

    def type_into_dialog(self, path, seconds=30):
        dialog = self.wait_for_box(seconds)
        if not dialog:
            return False
        wait_until(lambda: self.display.do("getactivewindow") == [dialog], seconds)
        self.display.type(path)
        self.display.press("Return")
        return wait_until(lambda: dialog not in self.windows(), seconds)

    def close(self, seconds=30):
        """Clicks the close button; the exit status, or None when the program goes on."""
        self.display.click(self.x + CLOSE_BUTTON[0], self.y + CLOSE_BUTTON[1])
        return self.status(seconds)

    def status(self, seconds):
        """The exit status, or None when the program goes on."""
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            return None

    def end(self):
        """Leaves nothing behind, however the step ended."""
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    def printed(self):
        with open(self.log) as log:
            return log.read()


def read_settings(path):
    """The eight knobs' settings in a file that the editor wrote, in the order in which they travel."""
    with open(path) as file:
        values = {int(key): int(value) for key, value in re.findall(r"<key(\d+)>(\d+)</key\d+>", file.read())}
    return [tuple(values.get(category + knob) for category in CATEGORIES.values()) for knob in range(8)]


def write_settings(path, settings, end=""):
    """A settings file as a musician might have it: each knob's values, and what stands behind the last of them."""
    with open(path, "w") as file:
        file.write('<!DOCTYPE KTZJXEditor>\n<parameters version="1.0">\n    <controlview>\n')
        for knob, values in settings.items():
            leaves = "".join(f"<key{category + knob}>{value}</key{category + knob}>"
                             for category, value in zip(CATEGORIES.values(), values))
            file.write(f"        <key{knob}>{leaves}</key{knob}>\n")
        file.write(f"{end}    </controlview>\n</parameters>\n")
    shutil.chown(path, "nobody")   # the user's own, who may save over it
