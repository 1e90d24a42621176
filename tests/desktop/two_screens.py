"""The session with two screens: the window is carried from the first to the second and back, and on the second one the
musician goes on as everywhere."""

import re
import time

from session import BACKGROUND, CLOSE, HEIGHT, Session, WIDTH

PLACE = (100, 80)       # for the window on the second screen, in its own pixels
SLACK = 5               # a desktop may count from the movement with which it has taken the window
# How far two renderings may be from each other; 1 is black from white. The skin is drawn for each ratio, fonts are not.
ALIKE = 0.02
ALIKE_IN_TEXT = 0.1
OPENINGS = 6            # of a box on the second screen: what a desktop tells meanwhile comes in no certain order


class TwoScreens(Session):
    def __init__(self, desktop, demo, report):
        super().__init__(desktop, demo, report)
        self.expected += 12 + 6 * OPENINGS

    def carry(self, screen, x, y):
        """Takes the window to a place on a screen, and learns what it has become there."""
        ratio = self.desktop.screens[screen].ratio
        start = self.at(*BACKGROUND)
        goal = x + ratio * BACKGROUND[0], y + ratio * BACKGROUND[1]
        self.pull(*start, goal[0] - start[0], goal[1] - start[1])
        self.place()
        self.check((self.window.width, self.window.height) == (ratio * WIDTH, ratio * HEIGHT),
                   f"the size is that of screen {screen + 1}", self.window)
        self.check(all(abs(is_at - wanted) <= SLACK * ratio for is_at, wanted in zip(self.window[1:3], (x, y))),
                   "what was taken hold of stays under the pointer", self.window)

    def carry_over(self):
        second = self.desktop.screens[1]
        self.carry(1, second.x + second.ratio * PLACE[0], second.ratio * PLACE[1])

    def carry_back(self):
        self.carry(0, *self.home)

    def picture(self, window, name):
        time.sleep(0.5)
        path = self.desktop.results / f"{name}.png"
        self.desktop.picture(path, window)
        return path

    def editor(self, name):
        """A picture of the editor, without the pointer and with the focus nowhere."""
        self.desktop.click(*self.at(*BACKGROUND))
        self.desktop.move_to(self.window.x - 8, self.window.y - 8)
        return self.picture(self.window, name)

    def question(self, name):
        """A picture of the box that asks about the changes, of which a part has been drawn anew: the keys' mark."""
        self.desktop.click(*self.at(*CLOSE))
        self.wait_for_box("a question opens")
        self.desktop.press("Tab")
        return self.dismissed(name)

    def dialog(self, name):
        """A picture of the dialog that asks for a file's name."""
        self.desktop.press("ctrl+s")
        self.wait_for_box("a file dialog opens")
        return self.dismissed(name)

    def dismissed(self, name):
        """A picture of the box that is open, which goes."""
        path = self.picture(self.others()[-1], name)
        self.desktop.press("Escape")
        self.desktop.wait_for("the box's end", lambda: not self.others())
        return path

    def difference(self, one, other):
        """Of two pictures, the second shrunk to the first one's size: 0 for none, 1 for black from white."""
        size = self.desktop.ask("identify", "-format", "%wx%h", one)
        shrunk = other.with_suffix(".shrunk.png")
        self.desktop.ask("convert", other, "-filter", "box", "-resize", f"{size}!", shrunk)
        # compare ends with 1 where there is a difference.
        told = self.desktop.ask("sh", "-c", f"compare -metric RMSE '{one}' '{shrunk}' null: 2>&1; true")
        return float(re.search(r"\((.*)\)", told)[1])

    def there_and_back(self):
        self.home = self.window[1:3]
        question = self.question("question-first")
        before = self.editor("editor-first")
        self.carry_over()
        difference = self.difference(before, self.editor("editor-second"))
        self.check(difference < ALIKE, "it shows the same on the second screen", difference)
        for number in range(OPENINGS):
            difference = self.difference(question, self.question(f"question-second-{number}"))
            self.check(difference < ALIKE_IN_TEXT, "a question is whole on the second screen", difference)
        first, *others = [self.dialog(f"dialog-{number}") for number in range(OPENINGS)]
        for other in others:
            difference = self.difference(first, other)
            self.check(difference < ALIKE, "a file dialog is always laid out the same", difference)
        self.carry_back()
        difference = self.difference(before, self.editor("editor-back"))
        self.check(difference == 0, "no pixel has changed on the first one", difference)

    def works(self):
        start = self.messages.now()
        self.step_up()
        self.receives(start, 3, "it works on the first screen again")

    def steps(self):
        first, *others, last = super().steps()
        return (first, self.there_and_back, self.carry_over, *others, self.carry_back, self.works, last)
