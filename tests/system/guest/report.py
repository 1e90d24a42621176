"""What the steps of the system test found: one line each, a sum at the end."""

import time
import traceback

START = time.monotonic()


class Report:
    def __init__(self):
        self.passed = 0
        self.failed = 0

    def check(self, condition, text, found=""):
        """One assertion. found says what was seen instead, for whoever reads a failure."""
        if condition:
            self.passed += 1
            self.say(f"ok      {text}")
        else:
            self.failed += 1
            self.say(f"FAILED  {text}" + (f": {found}" if found != "" else ""))
        return bool(condition)

    def step(self, function, *arguments):
        """Runs one step of the scenario. A step that can't go on fails, and the next one gets its turn."""
        self.say(f"        -- {function.__name__.replace('_', ' ')}")
        try:
            function(*arguments)
        except Exception as error:
            traceback.print_exc()
            self.check(False, function.__name__.replace("_", " "), error)

    def finish(self, expected):
        """Exit status of the scenario: 0 when nothing failed and no assertion was left out."""
        if self.passed + self.failed < expected:
            self.check(False, f"{expected} assertions", f"only {self.passed + self.failed} were made")
        self.say(f"{self.passed} passed, {self.failed} failed")
        return 1 if self.failed else 0

    @staticmethod
    def say(text):
        print(f"{time.monotonic() - START:7.2f}  {text}", flush=True)


def wait_until(condition, seconds, pause=0.05):
    """The first true result of condition(), or its last one when the time is over."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result or time.monotonic() > end:
            return result
        time.sleep(pause)
