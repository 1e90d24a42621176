"""What passed between the demo's editor and its device, as `ktz-jx-demo --log FILE` writes it."""

import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "system" / "guest"))

from report import wait_until                                             # noqa: E402
from wire import HEADER                                                   # noqa: E402

START = f"{HEADER} 00 F7"
KEEP = f"{HEADER} 01 F7"
END = f"{HEADER} 02 F7"
REQUEST_ALL = "F0 43 30 3E 18 05 02 00 7F F7"
LINE = re.compile(r"^ *\d+\.\d+ (received|sent) +((?:[0-9A-F]{2} ?)+)")


class MessageLog:
    def __init__(self, path):
        self.path = path

    def messages(self):
        """(direction, bytes) of everything so far, as the device saw it."""
        if not self.path.exists():
            return []
        return [(match[1], match[2].strip()) for match in map(LINE.match, self.path.read_text().splitlines()) if match]

    def now(self):
        return len(self.messages())

    def received(self, start=0):
        """What the editor sent since the given message, without the keep-alive."""
        return [data for direction, data in self.messages()[start:] if direction == "received" and data != KEEP]

    def sent(self, start=0):
        """What the device sent since the given message."""
        return [data for direction, data in self.messages()[start:] if direction == "sent"]

    def receives(self, start, expected, seconds=10):
        """Whether exactly these messages left the editor since then."""
        wait_until(lambda: len(self.received(start)) >= len(expected), seconds)
        return self.received(start) == expected
