"""Mutter without a screen, driven through its interface for remote desktops: the pointer moves by ways, not to places.

Natively it tells nobody where its windows are; they are in the middle of the screen. Its picture is for PipeWire's
clients alone, so there is none."""

import re
import time

try:
    from gi.repository import Gio, GLib
except ImportError:
    Gio = None      # missing() tells of it

from demo import EDITOR
from desktop import Desktop, Screen, Window
from x11 import x_windows

SIZE = (1280, 1024)
EDITOR_SIZE = (446, 680)
SETTINGS = "[org/gnome/mutter]\ncenter-new-windows=true\n"
NAME = "org.gnome.Mutter.RemoteDesktop"
BUTTONS = {1: 0x110, 3: 0x111}      # the kernel's codes
KEYS = {"ctrl": 0xFFE3, "alt": 0xFFE9, "shift": 0xFFE1, "Return": 0xFF0D, "Escape": 0xFF1B}
VERTICAL = 0


class Mutter(Desktop):
    screens = [Screen(0, *SIZE, 1)]
    programs = Desktop.programs | {"mutter": "mutter", "Xwayland": "xwayland", "xdotool": "xdotool",
                                   "import": "imagemagick", "xwininfo": "x11-utils", "xprop": "x11-utils"}

    @classmethod
    def missing(cls):
        return super().missing() + ([] if Gio else ["python3-gi"])

    def __init__(self, results, user, native=True):
        super().__init__(results, user)
        self.native = native
        self.tells_windows = not native
        settings = self.home / ".config" / "glib-2.0" / "settings"
        settings.mkdir(parents=True)
        (settings / "keyfile").write_text(SETTINGS)
        self.start("mutter", "--headless", "--wayland", "--virtual-monitor", f"{SIZE[0]}x{SIZE[1]}",
                   "--wayland-display", "wayland-test", *(["--no-x11"] if native else []),
                   environment={"GSETTINGS_BACKEND": "keyfile"})
        self.bus = Gio.DBusConnection.new_for_address_sync(
            self.environment["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.session = "/org/gnome/Mutter/RemoteDesktop"
        self.session = self.wait_for("mutter", self.create_session)
        self.call("Session", "Start")
        self.call("Session", "NotifyPointerMotionRelative", "(dd)", -SIZE[0], -SIZE[1])
        self.where = (0, 0)     # in the corner, wherever it was
        self.press("shift")     # a keyboard comes with its first key, which nobody gets
        self.environment["WAYLAND_DISPLAY"] = "wayland-test"
        if not native:
            log = results / "mutter.log"
            display = self.wait_for("mutter's X server",
                                    lambda: re.search(r"public X11 display (:\d+)", log.read_text()))
            authority = next(self.runtime.glob(".mutter-Xwaylandauth*"))
            self.environment |= {"DISPLAY": display[1], "XAUTHORITY": str(authority), "XDG_SESSION_TYPE": "wayland",
                                 "QT_QPA_PLATFORM": "xcb"}

    def call(self, interface, method, signature="()", *arguments):
        name = f"{NAME}.{interface}" if interface else NAME
        return self.bus.call_sync(NAME, self.session, name, method, GLib.Variant(signature, arguments), None,
                                  Gio.DBusCallFlags.NONE, 20000, None)

    def create_session(self):
        try:
            return self.call("", "CreateSession").unpack()[0]
        except GLib.Error:
            return None     # mutter is not there yet

    def windows(self):
        if not self.native:
            return x_windows(self.ask, self.environment["DISPLAY"])
        x, y = ((whole - part) // 2 for whole, part in zip(SIZE, EDITOR_SIZE))
        return [Window(EDITOR, x, y, *EDITOR_SIZE)]

    def move_to(self, x, y):
        x, y = round(x), round(y)
        self.move_by(x - self.where[0], y - self.where[1])

    def move_by(self, dx, dy):
        self.where = (self.where[0] + dx, self.where[1] + dy)
        self.call("Session", "NotifyPointerMotionRelative", "(dd)", dx, dy)

    def press_button(self, button):
        self.call("Session", "NotifyPointerButton", "(ib)", BUTTONS[button], True)

    def release_button(self, button):
        self.call("Session", "NotifyPointerButton", "(ib)", BUTTONS[button], False)

    def wheel(self, steps):
        self.call("Session", "NotifyPointerAxisDiscrete", "(ui)", VERTICAL, -steps)

    def press(self, key):
        codes = [KEYS.get(name) or ord(name) for name in key.split("+")]
        for code, state in [(code, True) for code in codes] + [(code, False) for code in reversed(codes)]:
            self.call("Session", "NotifyKeyboardKeysym", "(ub)", code, state)

    def type(self, text):
        for character in text:
            self.press(character)
            time.sleep(0.03)    # as a hand does it: what is typed opens and closes a list of names

    def picture(self, path, window=None):
        if not self.native:
            # Its X server has a picture of each window, none of the screen.
            self.ask("import", "-window", self.ask("xdotool", "getactivewindow").strip(), path)
