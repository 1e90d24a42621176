"""An X display of its own with a window manager, real pointer and key events, and pictures of what it shows."""

import mmap
import os
import struct
import subprocess
import tempfile
import zlib

from report import wait_until


class Display:
    NAME = ":7"

    def __init__(self, results, width=1280, height=1024):
        self.results = results
        self.shots = 0
        self.folder = tempfile.mkdtemp()
        self.log = open(os.path.join(results, "display.log"), "w")
        os.environ["DISPLAY"] = self.NAME
        self.start("Xvfb", self.NAME, "-ac", "-noreset", "-nolisten", "tcp", "-fbdir", self.folder,
                   "-screen", "0", f"{width}x{height}x24")
        if not wait_until(lambda: self.answers("getmouselocation"), 60):
            raise RuntimeError("the X server does not come up")
        self.start("openbox", "--sm-disable")
        if not wait_until(lambda: self.answers("get_num_desktops"), 60):   # asks the window manager
            raise RuntimeError("the window manager does not come up")
        with open(os.path.join(self.folder, "Xvfb_screen0"), "rb") as file:
            self.memory = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)

    def start(self, *command):
        subprocess.Popen(command, stdout=self.log, stderr=self.log, stdin=subprocess.DEVNULL)

    def answers(self, *command):
        return subprocess.run(["xdotool", *command], stdout=self.log, stderr=self.log).returncode == 0

    @staticmethod
    def do(*command):
        """One xdotool call; what it prints, as words. Nothing found gives no words."""
        run = subprocess.run(["xdotool", *map(str, command)], capture_output=True, text=True)
        return run.stdout.split()

    def windows(self, process):
        """The visible top-level windows of a process."""
        return self.do("search", "--onlyvisible", "--pid", process)

    def position(self, window):
        """(x, y, width, height) on the screen."""
        words = dict(word.split("=") for word in self.do("getwindowgeometry", "--shell", window))
        return tuple(int(words[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def press(self, key):
        self.do("key", key)

    def type(self, text):
        self.do("type", "--delay", 30, text)

    def click(self, x, y, button=1):
        self.do("mousemove", x, y, "click", button)

    def drag(self, x, y, dy):
        """Press at (x, y), one movement by dy, release."""
        self.do("mousemove", x, y, "mousedown", 1)
        self.do("mousemove_relative", "--", 0, dy)
        self.do("mouseup", 1)

    def away(self):
        """The pointer, where it is over nothing."""
        self.do("mousemove", 1279, 1023)

    def picture(self, x, y, width, height):
        """Rows of the screen as it is now, four bytes (blue, green, red, unused) a pixel, read from the X server."""
        header = struct.unpack_from(">25I", self.memory)   # of a picture in xwd's format: header, colours, pixels
        line = header[12]
        first = header[0] + 12 * header[19] + y * line + 4 * x
        return [self.memory[start:start + 4 * width] for start in range(first, first + height * line, line)]

    def shot(self, name, rectangle=(0, 0, 1280, 1024)):
        """Keeps a numbered picture in the results."""
        self.shots += 1
        path = os.path.join(self.results, f"{self.shots:02}-{name}.png")
        write_png(path, self.picture(*rectangle))


def write_png(path, rows):
    """rows as Display.picture gives them."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    width = len(rows[0]) // 4
    lines = bytearray()
    for row in rows:
        line = bytearray(3 * width)
        line[0::3], line[1::3], line[2::3] = row[2::4], row[1::4], row[0::4]
        lines += b"\0" + line   # no filter
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">2I5B", width, len(rows), 8, 2, 0, 0, 0))
                   + chunk(b"IDAT", zlib.compress(bytes(lines), 1)) + chunk(b"IEND", b""))
