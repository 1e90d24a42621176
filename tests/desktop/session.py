"""A musician's first minutes with the editor, on any desktop. What it did is seen in what the device received, in the
file that was saved, and in where the desktop says that the windows are."""

import math
import time

from demo import EDITOR, PANEL
from editor import FACTORY, FIELDS, PAGES, read_settings
from message_log import END, REQUEST_ALL, START
from report import wait_until
from wire import change

WIDTH, HEIGHT = 446, 680     # of the editor's window, in its own pixels
PIN, CLOSE = (72, 24), (24, 24)
EDIT_MENU, COPY_ITEM = (148, 28), (158, 40)
HELP_MENU, ABOUT_ITEM = (180, 28), (190, 56)
PASTE_ITEM = (20, 25)        # from where the context menu was asked for
BACKGROUND = (300, 26)       # where the window is taken hold of
ABOUT_VIEW = (34, 66)
MOVE = (60, 40)


class Session:
    def __init__(self, desktop, demo, report):
        self.desktop, self.demo, self.check = desktop, demo, report.check
        self.messages = demo.messages
        self.settings = [list(row) for row in FACTORY]
        self.expected = 21 if desktop.tells_windows else 14     # checks of a whole session

    # What the steps are made of.

    @staticmethod
    def is_editor(window):
        """A message box may have the same title."""
        return window.title == EDITOR and abs(window.width / window.height - WIDTH / HEIGHT) < 0.01

    def place(self):
        """Learns where the editor is."""
        self.window = self.desktop.wait_for(
            "the editor's window", lambda: next(filter(self.is_editor, self.desktop.windows()), None), 60)
        self.ratio = self.window.width / WIDTH

    def at(self, x, y):
        """A point of the editor's window, on the desktop."""
        return self.window.x + self.ratio * x, self.window.y + self.ratio * y

    def field(self, knob, name):
        """The centre of a field, from which a drag measures."""
        return self.at(PAGES[knob][0] + 8 + 36, PAGES[knob][1] + FIELDS[name] + 7)

    def ring(self, knob):
        return self.at(PAGES[knob][0] + 43, PAGES[knob][1] + 43)

    def receives(self, start, knob, text):
        """Checks that one message left the editor since then, with what the knob holds by now."""
        self.check(self.messages.receives(start, [change(knob, self.settings[knob])]), text,
                   self.messages.received(start))

    def step_up(self):
        """One step of the wheel at the fourth knob's CC number; the message that it has to cause."""
        self.desktop.move_to(*self.field(3, "cc"))
        self.desktop.wheel(1)
        self.settings[3][0] += 1
        return change(3, self.settings[3])

    def pull(self, x, y, dx, dy):
        """Drags from a point of the desktop, in steps as a hand does it."""
        self.desktop.move_to(x, y)
        self.desktop.take()
        for part in (4 * self.ratio / math.hypot(dx, dy), *(tenth / 10 for tenth in range(1, 11))):
            self.desktop.move_to(x + part * dx, y + part * dy)
            time.sleep(0.05)
        time.sleep(0.2)
        self.desktop.let_go()
        time.sleep(0.3)

    def choose(self, shot, places, keys):
        """Chooses from a menu by the pointer, or by keys where the menu does not come up at the window.

        places, keys  of the menu in the bar, and of the item."""
        for place, key in zip(places, keys):
            if self.desktop.tells_places:
                self.desktop.click(*self.at(*place))
            else:
                self.desktop.press(key)
            time.sleep(0.5)
            if place == places[0]:
                self.desktop.shot(shot)

    def others(self):
        """The windows beside the two that are always there."""
        return [window for window in self.desktop.windows() if window.title != PANEL and not self.is_editor(window)]

    def wait_for_box(self, text):
        """A question or a dialog, which has to be above the editor."""
        if not self.desktop.tells_windows:
            time.sleep(2)
            return
        box = wait_until(self.others, 15)
        if self.check(box, text):
            windows = self.desktop.windows()
            self.check(windows[-1] == self.others()[-1], "it is above the editor", windows)
        time.sleep(0.5)     # until it has drawn itself and has the keys

    # The steps.

    def connect(self):
        self.place()
        self.desktop.shot("splash")
        self.check(wait_until(lambda: REQUEST_ALL in self.messages.received(), 20), "the editor asks for everything")
        self.check(self.messages.received()[:1] == [START], "it starts the connection", self.messages.received()[:3])
        self.place()
        # The splash view takes no edits; how long it stays is the editor's affair.
        start = self.messages.now()

        def edits():
            self.step_up()
            return wait_until(lambda: self.messages.received(start), 0.5)
        wait_until(edits, 20)
        received = self.messages.received(start)
        self.check(received == [change(3, [8, *FACTORY[3][1:]])], "a step of the wheel reaches the device", received)
        self.settings[3][0] = 8
        self.desktop.shot("connected")

    def drag(self):
        start = self.messages.now()
        self.desktop.move_to(*self.field(1, "cc"))
        self.desktop.press_button(1)
        self.desktop.move_by(0, -10 * self.ratio)
        time.sleep(0.2)     # some desktops join a movement and a release that come together
        self.desktop.release_button(1)
        self.settings[1][0] = 71 + 10
        self.receives(start, 1, "a drag of 10 pixels is 10 steps")

    def menu(self):
        self.desktop.click(*self.ring(1))
        self.choose("menu", (EDIT_MENU, COPY_ITEM), ("alt+e", "c"))

    def context_menu(self):
        start = self.messages.now()
        x, y = self.ring(6)
        self.desktop.click(x, y, 3)
        time.sleep(0.5)
        self.desktop.shot("context-menu")
        self.desktop.click(x + self.ratio * PASTE_ITEM[0], y + self.ratio * PASTE_ITEM[1])
        self.settings[6] = list(self.settings[1])
        time.sleep(0.3)     # until the menu has gone
        self.receives(start, 6, "the menu's copy and the context menu's paste bring knob 2 to knob 7")

    def copy_and_paste(self):
        start = self.messages.now()
        for knob, key in ((2, "ctrl+c"), (7, "ctrl+v")):
            self.desktop.click(*self.ring(knob))
            self.desktop.press(key)
            time.sleep(0.3)     # a desktop takes notice of what is on the clipboard
        self.settings[7] = list(self.settings[2])
        self.receives(start, 7, "the keys bring knob 3 to knob 8")

    def save(self):
        self.desktop.click(*self.at(*PIN))
        self.desktop.press("ctrl+s")
        self.wait_for_box("the save dialog opens")
        self.desktop.shot("save-dialog")
        self.desktop.type(f"{self.desktop.home}/stage")
        time.sleep(0.3)
        self.desktop.press("Return")
        saved = self.desktop.home / "stage.CJX"
        self.check(wait_until(saved.exists, 10), "the dialog takes a name")
        self.check(read_settings(saved) == [tuple(row) for row in self.settings], "the file holds every knob",
                   read_settings(saved))
        if self.desktop.tells_windows:
            self.check(wait_until(lambda: not self.others(), 5), "the dialog closes")
        self.desktop.click(*self.at(*PIN))

    def move(self):
        before = self.window
        self.pull(*self.at(*BACKGROUND), *(self.ratio * way for way in MOVE))
        if self.desktop.tells_windows:
            self.place()
            self.check_place(before)
        else:
            self.window = before._replace(x=before.x + MOVE[0], y=before.y + MOVE[1])
        start = self.messages.now()
        self.step_up()
        self.receives(start, 3, "it works at its new place")

    def check_place(self, before):
        went = [round((now - then) / self.ratio) for now, then in
                ((self.window.x, before.x), (self.window.y, before.y))]
        # A desktop may count from the movement with which it has taken the window.
        self.check(all(abs(way - wanted) <= 5 for way, wanted in zip(went, MOVE)),
                   f"the window goes where it is dragged, {MOVE}", went)
        self.check([self.window.width, self.window.height] == [before.width, before.height], "its size stays",
                   self.window)

    def about(self):
        self.choose("help-menu", (HELP_MENU, ABOUT_ITEM), ("alt+h", "a"))
        time.sleep(1.5)
        self.desktop.shot("about")
        start = self.messages.now()
        self.step_up()
        self.settings[3][0] -= 1
        time.sleep(0.5)
        self.check(not self.messages.received(start), "the about view covers the pages", self.messages.received(start))
        self.desktop.click(*self.at(*ABOUT_VIEW))
        time.sleep(1.5)
        self.step_up()
        self.receives(start, 3, "it closes")

    def close(self):
        start = self.messages.now()
        self.desktop.click(*self.at(*CLOSE))
        self.wait_for_box("the editor asks about the changes")
        self.desktop.shot("question")
        self.desktop.press("alt+n")
        status = self.demo.status(20)
        self.check(status == 0, "it ends with status 0", status)
        self.check(self.messages.received(start) == [END], "the device hears of it", self.messages.received(start))
        self.check(self.demo.printed() == "", "it printed nothing", self.demo.printed())

    def steps(self):
        return (self.connect, self.drag, self.menu, self.context_menu, self.copy_and_paste, self.save, self.move,
                self.about, self.close)
