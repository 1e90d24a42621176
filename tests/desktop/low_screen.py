"""The session on a screen that is lower than the editor's window, which comes up with its top on it."""

from session import FIELDS, HEIGHT, Session

MARGIN = (12, 400)      # where the window is taken hold of, since its top leaves the screen
FAR = 300
LAST_KNOB, LOWEST = 7, "min"


class LowScreen(Session):
    def __init__(self, desktop, demo, report):
        super().__init__(desktop, demo, report)
        self.expected += 5

    @staticmethod
    def fits(desktop):
        return desktop.screens[0].height < HEIGHT * desktop.screens[0].ratio

    def hidden(self):
        """How much of the window is below the screen's edge; negative: how far the window's end is above it."""
        return round(self.window.y + self.window.height - self.desktop.screens[0].height)

    def keys_to_the_lowest_field(self):
        self.desktop.press("ctrl+8")
        for _ in FIELDS:
            self.desktop.press("Tab")
        start = self.messages.now()
        self.desktop.press("Up")
        self.settings[LAST_KNOB][3] += 1
        self.receives(start, LAST_KNOB, "the keys go to the lowest field of the last knob")
        self.place()
        field = self.field(LAST_KNOB, LOWEST)[1]
        self.check(field < self.desktop.screens[0].height < self.window.y + self.window.height,
                   "the window follows them, no further than it has to", self.window)
        self.desktop.shot("keys-to-the-lowest-field")

    def lowest_row(self):
        self.pull(*self.at(*MARGIN), 0, -FAR)
        self.place()
        self.check(self.hidden() == 0, "the window goes up as far as it takes to show its end", self.window)
        self.desktop.shot("lowest-row")
        start = self.messages.now()
        self.desktop.move_to(*self.field(LAST_KNOB, LOWEST))
        self.desktop.wheel(1)
        self.settings[LAST_KNOB][3] += 1
        self.receives(start, LAST_KNOB, "the lowest field of the last knob takes a step")
        self.pull(*self.at(*MARGIN), 0, self.window.height - self.desktop.screens[0].height)
        self.place()
        self.check(self.window.y == 0, "the window comes back", self.window)

    def steps(self):
        first, *others = super().steps()
        return (first, self.keys_to_the_lowest_field, self.lowest_row, *others)
