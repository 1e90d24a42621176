"""Sway, which tiles: the panel takes the whole screen, and the editor, whose size is its own, stands in front of it."""

import json
import os
import shutil

from desktop import Window
from nested import Nested

CONFIGURATION = """xwayland disable
output * resolution {width}x{height} scale {scale}
output * background #405060 solid_color
default_border none
default_floating_border none
"""


class Sway(Nested):
    programs = Nested.programs | {"sway": "sway"}

    def __init__(self, results, user, scale=1):
        super().__init__(results, user, scale)
        folder = user / "sway"
        folder.mkdir(mode=0o700)
        configuration = folder / "configuration"
        configuration.write_text(CONFIGURATION.format(width=self.inner[0], height=self.inner[1], scale=scale))
        as_user = []
        if os.geteuid() == 0:
            # It refuses to be root's.
            as_user = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"]
            user.chmod(0o711)
            shutil.chown(folder, "nobody")
        self.environment["SWAYSOCK"] = str(folder / "commands")
        self.start(*as_user, "sway", "--config", str(configuration),
                   environment={"DISPLAY": self.display, "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman",
                                "XDG_RUNTIME_DIR": str(folder), "HOME": str(folder)})
        self.wait_for("sway", lambda: self.ask("swaymsg", "-t", "get_outputs"))
        self.enter()
        socket = next(path for path in folder.glob("wayland-*") if path.is_socket())
        self.environment["WAYLAND_DISPLAY"] = str(socket)

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
