"""The demo as a user starts it: the editor, and a device inside the same program."""

import subprocess

from message_log import MessageLog

EDITOR = "KTZ-JX Editor"
PANEL = "KTZ-JX device"


class Demo:
    def __init__(self, program, desktop):
        self.messages = MessageLog(desktop.results / "messages.log")
        self.output = desktop.results / "demo.log"
        with open(self.output, "w") as log:
            self.process = subprocess.Popen([program, "--log", self.messages.path], stdin=subprocess.DEVNULL,
                                            stdout=log, stderr=log, cwd=desktop.home, env=desktop.environment)

    def status(self, seconds):
        """Its exit status; None when it goes on."""
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            return None

    def printed(self):
        return self.output.read_text()
