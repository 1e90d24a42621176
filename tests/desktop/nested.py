"""A Wayland desktop whose screens are windows of an X server, from which its keys and its pointer come."""

from desktop import Screen
from x11 import CHILD
from xserver import XServer


class Nested(XServer):
    """Screens beside each other, in the order of their windows' numbers.

    scales  each screen's: pixels of the X server in one of the desktop's own units."""

    programs = XServer.programs | {"xwininfo": "x11-utils"}
    SCREEN = (1280, 1024)   # in the desktop's units
    STRIP = 8               # pixels of the X server beside the desktop

    def __init__(self, results, user, scales=(1,)):
        self.scales = scales
        self.screens = [Screen(number * self.SCREEN[0], *self.SCREEN, 1) for number in range(len(scales))]
        self.edges = [sum(scales[:number]) * self.SCREEN[0] for number in range(len(scales) + 1)]
        super().__init__(results, user, (self.edges[-1] + self.STRIP, max(scales) * self.SCREEN[1]))
        self.scale = scales[0]      # of the screen under the pointer

    def enter(self):
        """Brings the pointer in from the strip: before that, a desktop that was slow to come knows only its ways."""
        self.spread()
        XServer.move_to(self, self.edges[-1] + self.STRIP // 2, 4)
        XServer.move_to(self, 4, 4)

    def spread(self):
        """Lays the screens' windows, which nobody manages, beside each other."""
        children = self.ask("xwininfo", "-root", "-children", environment={"DISPLAY": self.display})
        for window, edge in zip(sorted(CHILD.findall(children), key=lambda number: int(number, 16)), self.edges):
            self.do("windowmove", window, edge, 0)

    def on_server(self, x, y):
        """A point of the desktop: the scale of its screen, and the pixel of the X server."""
        screen = min(max(int(x // self.SCREEN[0]), 0), len(self.scales) - 1)
        scale = self.scales[screen]
        return scale, self.edges[screen] + scale * (x - self.screens[screen].x), scale * y

    def move_to(self, x, y):
        self.scale, *pixel = self.on_server(x, y)
        super().move_to(*pixel)

    def move_by(self, dx, dy):
        super().move_by(self.scale * dx, self.scale * dy)

    def pixels(self, window):
        scale, left, top = self.on_server(window.x, window.y)
        return left, top, scale * window.width, scale * window.height
