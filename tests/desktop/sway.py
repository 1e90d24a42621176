"""Sway, which tiles: the panel takes the whole screen, and the editor, whose size is its own, stands in front of it."""

import json
import os
import shutil
import time

from desktop import Window
from nested import Nested

CONFIGURATION = """xwayland disable
{screens}
output * background #405060 solid_color
default_border none
default_floating_border none
"""
SCREEN = "output X11-{number} resolution {width}x{height} position {left} 0 scale {scale}"


class Sway(Nested):
    programs = Nested.programs | {"sway": "sway"}

    def __init__(self, results, user, scales=(1,)):
        super().__init__(results, user, scales)
        folder = user / "sway"
        folder.mkdir(mode=0o700)
        configuration = folder / "configuration"
        width, height = self.SCREEN
        screens = "\n".join(SCREEN.format(number=number + 1, width=scale * width, height=scale * height,
                                          left=number * width, scale=scale) for number, scale in enumerate(scales))
        configuration.write_text(CONFIGURATION.format(screens=screens))
        as_user = []
        if os.geteuid() == 0:
            # It refuses to be root's.
            as_user = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"]
            user.chmod(0o711)
            shutil.chown(folder, "nobody")
        self.environment["SWAYSOCK"] = str(folder / "commands")
        self.start(*as_user, "sway", "--config", str(configuration),
                   environment={"DISPLAY": self.display, "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman",
                                "WLR_X11_OUTPUTS": str(len(scales)), "XDG_RUNTIME_DIR": str(folder),
                                "HOME": str(folder)})
        self.wait_for("sway", lambda: self.ask("swaymsg", "-t", "get_outputs"))
        self.enter()
        socket = next(path for path in folder.glob("wayland-*") if path.is_socket())
        self.environment["WAYLAND_DISPLAY"] = str(socket)

    # By a button of its own: while one of the X server's is down, all of the pointer's ways are told to the screen in
    # which it was pressed, and the pointer gets no further than that.

    def take(self):
        self.nudge()
        self.ask("swaymsg", "seat - cursor press button1")

    def let_go(self):
        self.nudge()
        self.ask("swaymsg", "seat - cursor release button1")

    def nudge(self):
        """Has sway take in where the pointer is: it may have put that off until the X server tells more."""
        for way in (1, -1):
            self.move_by(way, 0)
            time.sleep(0.05)

    def windows(self):
        windows = []

        def collect(node):
            if node.get("pid"):
                x, y = (node["rect"][side] + node["window_rect"][side] for side in ("x", "y"))
                windows.append(Window(node["name"], x, y, node["window_rect"]["width"], node["window_rect"]["height"]))
            for part in node["nodes"] + node["floating_nodes"]:
                collect(part)
        collect(json.loads(self.ask("swaymsg", "-t", "get_tree")))
        return windows
