"""The far end of the cable: the software device, every message that passed, and commands to it."""

import collections
import os
import re
import subprocess
import threading

HEADER = "F0 43 10 3E 18 05 02"
KINDS = {f"{HEADER} 00": "start", f"{HEADER} 01": "keep", f"{HEADER} 02": "end", f"{HEADER} 03": "change",
         f"{HEADER} 04": "value", "F0 43 30 3E 18 05 02 00": "request"}

# time is in seconds of the device program's clock.
Message = collections.namedtuple("Message", "time to_device kind data")

LINE = re.compile(r"^ *(?P<time>\d+\.\d+) (?P<direction>received|sent) +(?P<data>[0-9A-F]{2}(?: [0-9A-F]{2})*)\b")


def change(knob, settings):
    """The message that carries one knob's settings (CC number, channel, maximum, minimum, LED type)."""
    return f"{HEADER} 03 " + " ".join(f"{value:02X}" for value in (knob, *settings)) + " F7"


class Device:
    def __init__(self, program, port, results, name):
        self.messages = []
        self.log = open(os.path.join(results, f"{name}.log"), "w")
        self.process = subprocess.Popen([program, "--raw", port, "--keep-running"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, bufsize=1)
        ready = self.process.stdout.readline()
        self.log.write(ready)
        if not ready.startswith("ready"):
            raise RuntimeError(f"the device does not start: {ready}")
        threading.Thread(target=self.read, daemon=True).start()

    def read(self):
        for line in self.process.stdout:
            self.log.write(line)
            self.log.flush()
            match = LINE.search(line)
            if match:
                data = match["data"]
                self.messages.append(Message(float(match["time"]), match["direction"] == "received",
                                             KINDS.get(data[:23], "other"), data))

    def command(self, text):
        self.log.write(f"> {text}\n")
        self.process.stdin.write(text + "\n")

    def since(self, number, *kinds):
        """Messages to the device from the given one on; all kinds when none is named."""
        return [message for message in self.messages[number:]
                if message.to_device and (not kinds or message.kind in kinds)]

    def sent_since(self, number):
        """How many messages the device has sent from the given one on."""
        return sum(not message.to_device for message in self.messages[number:])

    def now(self):
        """Number of the next message."""
        return len(self.messages)

    def quit(self):
        """Ends the program; its exit status."""
        self.command("quit")
        return self.process.wait(10)

    def end(self):
        """Leaves nothing behind, however the step ended."""
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
