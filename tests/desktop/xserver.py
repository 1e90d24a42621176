"""An X server of its own, with real pointer and key events, and pictures of what it shows."""

import os

from desktop import Desktop


class XServer(Desktop):
    programs = Desktop.programs | {"Xvfb": "xvfb", "xdotool": "xdotool", "import": "imagemagick"}

    def __init__(self, results, user, size=(1280, 1024)):
        super().__init__(results, user)
        self.size = size
        reading, writing = os.pipe()
        # The server chooses a free number itself, and tells it when it is ready.
        self.start("Xvfb", "-displayfd", str(writing), "-ac", "-noreset", "-nolisten", "tcp",
                   "-screen", "0", f"{size[0]}x{size[1]}x24", pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as number:
            self.display = f":{number.readline().strip()}"

    def do(self, *command):
        """One xdotool call; what it prints, as words."""
        return self.ask("xdotool", *command, environment={"DISPLAY": self.display}).split()

    def move_to(self, x, y):
        self.do("mousemove", round(x), round(y))

    def move_by(self, dx, dy):
        # From where the pointer is, which a program may have placed.
        self.do("mousemove_relative", "--", round(dx), round(dy))

    def press_button(self, button):
        self.do("mousedown", button)

    def release_button(self, button):
        self.do("mouseup", button)

    def wheel(self, steps):
        self.do("click", "--repeat", abs(steps), "--delay", 20, 4 if steps > 0 else 5)

    def press(self, key):
        self.do("key", key)

    def type(self, text):
        self.do("type", "--delay", 30, text)

    def picture(self, path, window=None):
        crop = ["-crop", "{2}x{3}+{0}+{1}".format(*self.pixels(window)), "+repage"] if window else []
        self.ask("import", "-window", "root", *crop, path, environment={"DISPLAY": self.display})

    def pixels(self, window):
        """Where it is on the X server: left, top, width, height."""
        return window[1:]
