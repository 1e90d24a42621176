"""Whether the host let the guest run: a time measured in a machine that stood still means nothing."""

import os
import threading
import time

NAP = 0.01       # seconds
USUAL = 0.002   # a nap that ends later than this was held up


class Witness:
    """Sums up the delays of short naps on every processor, from construction to lost()."""

    def __init__(self):
        self.watching = True
        self.delays = dict.fromkeys(os.sched_getaffinity(0), 0)
        self.threads = [threading.Thread(target=self.watch, args=(cpu,), daemon=True) for cpu in self.delays]
        for thread in self.threads:
            thread.start()

    def watch(self, cpu):
        os.sched_setaffinity(0, {cpu})   # of this thread alone
        while self.watching:
            start = time.monotonic()
            time.sleep(NAP)
            late = time.monotonic() - start - NAP
            if late > USUAL:
                self.delays[cpu] += late

    def lost(self):
        """Seconds for which the processor that was held up most stood still."""
        self.watching = False
        for thread in self.threads:
            thread.join()
        return max(self.delays.values())
