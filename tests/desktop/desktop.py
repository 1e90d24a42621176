"""What a session needs of a desktop. Each kind of desktop is a class in a file of its own."""

import collections
import os
import shutil
import subprocess
import time

from report import wait_until

# On the desktop, in the units in which the pointer is moved.
Window = collections.namedtuple("Window", "title x y width height")

# In the same units, its top at 0. ratio: of these units to a window's own pixels.
Screen = collections.namedtuple("Screen", "x width height ratio")

# A session bus that starts nothing by itself: what runs is what the test has started.
BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:path={path}</listen><auth>EXTERNAL</auth>
<policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
</policy>
</busconfig>
"""


class Desktop:
    """A user's folders, a session bus, and the processes of a desktop, which a derived class starts.

    programs  what it needs: {program: the Debian package that brings it}.
    screens   from the left; a derived class tells them."""

    programs = {"dbus-daemon": "dbus-daemon"}
    tells_windows = True    # to the test, at any time
    tells_places = True     # to programs, which open their menus by that

    def __init__(self, results, user):
        """results  where logs and pictures go.
        user     a folder for the user's home and runtime folders; it goes with the test."""
        self.results = results
        self.home = user / "home"
        self.runtime = user / "run"
        for folder in (self.home, self.runtime):
            folder.mkdir(mode=0o700)
        self.shots = 0
        self.environment = {"HOME": str(self.home), "XDG_RUNTIME_DIR": str(self.runtime), "LANG": "C.UTF-8",
                            "PATH": os.environ["PATH"], "NO_AT_BRIDGE": "1", "GIO_USE_VFS": "local",
                            "GSETTINGS_BACKEND": "memory", "QT_QPA_PLATFORMTHEME": "none"}
        self.start_bus()

    @classmethod
    def missing(cls):
        """The packages that are not there."""
        return sorted({package for program, package in cls.programs.items() if not shutil.which(program)})

    def start(self, *command, environment=None, **options):
        """A process that lasts as long as the desktop; its output goes into the log that is named like it."""
        name = os.path.basename(command[0])
        with open(self.results / f"{name}.log", "a") as log:
            return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                    env={**self.environment, **(environment or {})}, **options)

    def ask(self, *command, environment=None):
        """What a short program prints; nothing where it fails or hangs."""
        try:
            run = subprocess.run(list(map(str, command)), capture_output=True, text=True, timeout=20,
                                 env={**self.environment, **(environment or {})})
        except subprocess.TimeoutExpired:
            return ""
        return run.stdout if run.returncode == 0 else ""

    def start_bus(self):
        path = self.runtime / "bus"
        configuration = self.runtime / "bus.conf"
        configuration.write_text(BUS.format(path=path))
        self.start("dbus-daemon", f"--config-file={configuration}", "--nofork")
        self.wait_for("the session bus", path.exists)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={path}"

    @staticmethod
    def wait_for(what, condition, seconds=30):
        result = wait_until(condition, seconds)
        if not result:
            raise RuntimeError(f"in vain: {what}")
        return result

    def click(self, x, y, button=1):
        self.move_to(x, y)
        for act in (self.press_button, self.release_button):
            time.sleep(0.05)    # as a hand does it: a desktop may still be busy with where the pointer is
            act(button)

    def take(self):
        """Takes hold of what is under the pointer, and is perhaps going to another screen."""
        self.press_button(1)

    def let_go(self):
        self.release_button(1)

    def shot(self, name):
        """Keeps a numbered picture of the whole desktop in the results."""
        self.shots += 1
        self.picture(self.results / f"{self.shots:02}-{name}.png")

    # What each desktop has its own way for.

    def windows(self):
        """The program's windows from the lowest to the topmost."""
        raise NotImplementedError

    def move_to(self, x, y):
        raise NotImplementedError

    def move_by(self, dx, dy):
        raise NotImplementedError

    def press_button(self, button):
        """button  1 left, 3 right."""
        raise NotImplementedError

    def release_button(self, button):
        raise NotImplementedError

    def wheel(self, steps):
        """steps  away from the user; negative: towards the user."""
        raise NotImplementedError

    def press(self, key):
        """key  such as Return, ctrl+s."""
        raise NotImplementedError

    def type(self, text):
        raise NotImplementedError

    def picture(self, path, window=None):
        """window  where on the desktop; the whole of it if None."""
        raise NotImplementedError
