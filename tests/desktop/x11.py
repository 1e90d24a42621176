"""A desktop on X: openbox, or no window manager at all."""

import re

from desktop import Screen, Window
from xserver import XServer

CHILD = re.compile(r"^ +(0x[0-9a-f]+) ", re.M)


def x_windows(ask, display):
    """The visible windows, from the lowest to the topmost.

    ask      runs a program and gives what it prints, as Desktop.ask() does."""
    environment = {"DISPLAY": display}
    stack = re.findall(r"0x[0-9a-f]+", ask("xprop", "-root", "_NET_CLIENT_LIST_STACKING", environment=environment))
    if not stack:
        # Without a window manager they are the root's own, some without a title, and told from the top.
        stack = CHILD.findall(ask("xwininfo", "-root", "-children", environment=environment))[::-1]
    return [window for window in (x_window(ask, environment, number) for number in stack) if window]


def x_window(ask, environment, number):
    facts = ask("xwininfo", "-id", number, environment=environment)
    if "Map State: IsViewable" not in facts:
        return None
    numbers = [int(re.search(rf"{name}: +(-?\d+)", facts)[1])
               for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
    title = re.search(r'Window id: \S+ "(.*)"', facts)
    return Window(title[1] if title else "", *numbers)


class X11(XServer):
    programs = XServer.programs | {"openbox": "openbox", "xprop": "x11-utils", "xwininfo": "x11-utils",
                                    "xrandr": "x11-xserver-utils"}

    def __init__(self, results, user, size=(1280, 1024), manager=True, dpi=None, scales=(1,)):
        """size     of a screen of scale 1.
        manager  whether a window manager runs.
        dpi      the resolution for which the desktop asks, as desktops on X say it; 192 is a ratio of 2.
        scales   of the screens from the left, as the toolkit is told them where they are not the same."""
        width, height = size
        super().__init__(results, user, (sum(scales) * width, max(scales) * height))
        self.environment["DISPLAY"] = self.display
        self.screens = [Screen(sum(scales[:number]) * width, scale * width, scale * height, scale * (dpi or 96) / 96)
                        for number, scale in enumerate(scales)]
        if len(scales) > 1:
            self.split()
        if dpi:
            self.ask("xprop", "-root", "-f", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER", f"Xft.dpi:\t{dpi}")
        if manager:
            self.start("openbox", "--sm-disable")
            self.wait_for("the window manager", lambda: self.do("get_num_desktops"))

    def split(self):
        """Makes monitors of the one screen that the server has."""
        factors = []
        for number, (left, width, height, ratio) in enumerate(self.screens):
            monitor = f"monitor-{number}"
            # The millimetres count for nothing here. The server's own output may be named once.
            self.ask("xrandr", "--setmonitor", monitor, f"{width}/{width // 4}x{height}/{height // 4}+{left}+0",
                     "none" if number else "screen")
            factors.append(f"{monitor}={ratio:g}")
        self.environment["QT_SCREEN_SCALE_FACTORS"] = ";".join(factors)

    def windows(self):
        return x_windows(self.ask, self.display)
