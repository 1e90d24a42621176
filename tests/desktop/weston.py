"""A Wayland desktop: weston as one window of an X server, from which its keys and its pointer come."""

import re

from desktop import Window
from x11 import x_windows
from xserver import XServer

CONFIGURATION = """[core]
idle-time=0
[shell]
panel-position=none
background-color=0xff405060
locking=false
"""
VIEW = re.compile(r"View \d+ \((?P<role>[^,]*), .*?(?:window '(?P<title>.*?)' of \S*)?, 0x[0-9a-f]+\):\n"
                  r"\s+position: \((-?\d+), (-?\d+)\) -> \((-?\d+), (-?\d+)\)")


class Weston(XServer):
    """native  whether the editor is a client of weston itself, or else of its X server.
    scale   weston's, the same for all programs."""

    programs = XServer.programs | {"weston": "weston", "Xwayland": "xwayland", "xprop": "x11-utils",
                                   "xwininfo": "x11-utils"}

    def __init__(self, results, user, native=True, scale=1):
        super().__init__(results, user, (1280 * scale, 1024 * scale))
        self.native, self.scale = native, scale
        configuration = user / "weston.ini"
        configuration.write_text(CONFIGURATION)
        options = [] if native else ["--xwayland"]
        width, height = self.size
        log = results / "weston-server.log"
        # --debug: it tells where its windows are.
        self.start("weston", "--backend=x11-backend.so", "--use-pixman", f"--width={width // scale}",
                   f"--height={height // scale}", f"--scale={scale}", f"--config={configuration}",
                   "--socket=wayland-test", "--debug", f"--log={log}", *options, environment={"DISPLAY": self.display})
        self.environment["WAYLAND_DISPLAY"] = "wayland-test"
        self.wait_for("weston", lambda: "background for output" in self.scene())
        if native:
            self.environment["QT_QPA_PLATFORM"] = "wayland"
        else:
            inner = self.wait_for("weston's X server",
                                  lambda: re.search(r"listening on display (:\d+)", log.read_text()))
            self.environment |= {"DISPLAY": inner[1], "XDG_SESSION_TYPE": "wayland", "QT_QPA_PLATFORM": "xcb"}

    def scene(self):
        """What weston shows, told from the top."""
        return self.ask("weston-debug", "scene-graph")

    def windows(self):
        if not self.native:
            return x_windows(self.ask, self.environment["DISPLAY"])
        views = [view for view in VIEW.finditer(self.scene()) if view["title"] is not None]
        return [Window(view["title"], x, y, right - x, bottom - y)
                for view in reversed(views) for x, y, right, bottom in [map(int, view.groups()[2:])]]

    def move_to(self, x, y):
        super().move_to(self.scale * x, self.scale * y)

    def move_by(self, dx, dy):
        super().move_by(self.scale * dx, self.scale * dy)
