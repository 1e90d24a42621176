"""A Wayland desktop that is one window of an X server, from which its keys and its pointer come."""

from xserver import XServer


class Nested(XServer):
    """scale  the desktop's, the same for all programs: pixels of the X server in one of its own units."""

    STRIP = 8   # pixels of the X server beside the desktop

    def __init__(self, results, user, scale=1):
        super().__init__(results, user, (1280 * scale + self.STRIP, 1024 * scale))
        self.scale = scale
        self.inner = (1280 * scale, 1024 * scale)

    def enter(self):
        """Brings the pointer in from the strip: before that, a desktop that was slow to come knows only its ways."""
        XServer.move_to(self, self.inner[0] + self.STRIP // 2, 4)
        XServer.move_to(self, 4, 4)

    def move_to(self, x, y):
        super().move_to(self.scale * x, self.scale * y)

    def move_by(self, dx, dy):
        super().move_by(self.scale * dx, self.scale * dy)
