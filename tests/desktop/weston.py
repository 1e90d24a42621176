"""Weston, natively or with its X server."""

import re

from desktop import Window
from nested import Nested
from x11 import x_windows

CONFIGURATION = """[core]
idle-time=0
[shell]
panel-position=none
background-color=0xff405060
locking=false
"""
VIEW = re.compile(r"View \d+ \((?P<role>[^,]*), .*?(?:window '(?P<title>.*?)' of \S*)?, 0x[0-9a-f]+\):\n"
                  r"\s+position: \((-?\d+), (-?\d+)\) -> \((-?\d+), (-?\d+)\)")


class Weston(Nested):
    """native  whether the editor is a client of weston itself, or else of its X server."""

    programs = Nested.programs | {"weston": "weston", "Xwayland": "xwayland", "xprop": "x11-utils"}

    def __init__(self, results, user, native=True, scale=1):
        super().__init__(results, user, (scale,))
        self.native = native
        # It does not tell its X clients where it puts their windows: they open a bar's menus where they think to be.
        self.tells_places = native
        configuration = user / "weston.ini"
        configuration.write_text(CONFIGURATION)
        options = [] if native else ["--xwayland"]
        width, height = self.SCREEN
        log = results / "weston-server.log"
        # --debug: it tells where its windows are.
        self.start("weston", "--backend=x11-backend.so", "--use-pixman", f"--width={width}", f"--height={height}",
                   f"--scale={scale}", f"--config={configuration}",
                   "--socket=wayland-test", "--debug", f"--log={log}", *options, environment={"DISPLAY": self.display})
        self.environment["WAYLAND_DISPLAY"] = "wayland-test"
        self.wait_for("weston", lambda: "background for output" in self.scene())
        self.enter()
        if not native:
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
