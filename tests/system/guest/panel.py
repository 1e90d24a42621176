"""The software device with its window, as a user starts it: an ordinary user's process."""

from editor import Editor

KNOB = (78, 150)   # the first one, in the window
PITCH = 128        # pixels from one knob to the next


class Panel(Editor):
    """It is looked at and ended as an editor is."""

    def launch(self, *arguments, **streams):
        return super().launch("--panel", *arguments, **streams)

    def turn(self, knob):
        """The wheel over one of the upper four knobs: five steps up."""
        self.display.do("mousemove", self.x + KNOB[0] + knob * PITCH, self.y + KNOB[1],
                        "click", "--repeat", 5, "--delay", 10, 4)

    def move_cable(self):
        """Pulls the cable, or puts it in again."""
        self.press("alt+u")

    def press(self, key):
        self.display.do("windowactivate", "--sync", self.window)
        self.display.press(key)

    def close(self, seconds=30):
        self.press("alt+F4")
        return self.status(seconds)
