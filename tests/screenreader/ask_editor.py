"""Asks the demo what a screen reader asks, and does what one does: ask_editor.py DEMO FOLDER

Ends with status 0 only if every answer is the expected one, and every action has reached the device."""

import contextlib
import pathlib
import re
import subprocess
import sys

from gi.repository import GLib
import pyatspi

from reader import (child, do, editor_window, expect, hear, listening, press, running, say_that_somebody_listens, shows,
                    text, wait)

FIELDS = ["LED type", "CC number", "MIDI channel", "Maximum", "Minimum"]
RANGES = {"LED ring": (0, 127), "LED type": (0, 3), "CC number": (0, 127), "MIDI channel": (1, 16),
          "Maximum": (0, 127), "Minimum": (0, 127)}
CC_NUMBERS = [74, 71, 10, 7, 73, 72, 91, 93]
CHANGE = re.compile(r"received +F0 43 10 3E 18 05 02 03 ((?:[0-9A-F]{2} ){6})F7")


def check_tree(window):
    wait("the connection", lambda: shows(window[12], pyatspi.STATE_CHECKED))
    expect("the window's parts", [node.name for node in window],
           ["Close", "Minimise", "Keep in front", ""] + [f"Knob {number}" for number in range(1, 9)] + ["Online"])
    for number, cc in enumerate(CC_NUMBERS, 1):
        page = child(window, f"Knob {number}")
        expect(f"parts of knob {number}", [node.name for node in page], ["LED ring"] + FIELDS)
        led_type = "concave" if number == 3 else "ascent"
        expect(f"texts of knob {number}", [text(node) for node in list(page)[1:]], [led_type, str(cc), "1", "127", "0"])
        for node in page:
            value = node.queryValue()
            expect(f"range of {node.name}", (value.minimumValue, value.maximumValue), RANGES[node.name])
            expect(f"parts of {node.name}", node.childCount, 0)
        expect("the ring", page[0].description, "15 of 15 LEDs lit" if number == 3 else "0 of 15 LEDs lit")


def check_actions(window, log):
    """Everything that changes a setting, by the message that the device has got."""
    def heard():
        return [bytes.fromhex(match) for match in CHANGE.findall(log.read_text())]

    def reaches(what, settings):
        wait(f"{what} on the wire", lambda: heard() and heard()[-1] == bytes([6, *settings]))

    page = child(window, "Knob 7")
    led_type, cc, channel, highest, lowest = list(page)[1:]
    do(cc, "Increase")
    reaches("a step up", [92, 0, 127, 0, 0])
    do(cc, "Decrease")
    reaches("a step down", [91, 0, 127, 0, 0])
    channel.queryValue().currentValue = 16
    reaches("a channel", [91, 15, 127, 0, 0])
    highest.queryEditableText().setTextContents("100")
    reaches("a maximum as text", [91, 15, 100, 0, 0])
    led_type.queryEditableText().setTextContents("convex")
    reaches("an LED type as text", [91, 15, 100, 0, 3])
    do(lowest, "Increase")
    reaches("a minimum", [91, 15, 100, 1, 3])
    expect("the texts afterwards", [text(node) for node in list(page)[1:]], ["convex", "91", "16", "100", "1"])


def check_events(window):
    """What is told without being asked for."""
    told = []

    def tell(event):
        told.append((event.type.major, event.detail1, event.source.parent.name, event.source.name))

    def comes(what, major, page, name):
        wait(what, lambda: any((entry[0], entry[2], entry[3]) == (major, page, name) for entry in told))
        told.clear()

    with listening(tell, "object:state-changed:focused", "object:property-change:accessible-value",
                   "object:text-changed:insert"):
        do(child(window, "Knob 4"), "SetFocus")
        comes("the focus of a page", "state-changed", "KTZ-JX Editor", "Knob 4")
        press("Tab", "Tab")
        comes("the focus of a field", "state-changed", "Knob 4", "CC number")
        press("Up")
        comes("a value by key", "property-change", "Knob 4", "CC number")
        press("5")
        comes("typed text", "text-changed", "Knob 4", "CC number")
        press("Return")
        comes("the typed value", "property-change", "Knob 4", "CC number")
    expect("the typed value", text(child(child(window, "Knob 4"), "CC number")), "5")


class Ears:
    """What has come into view and where the focus has gone, in this order."""

    def __init__(self):
        self.told = []

    def tell(self, event):
        with contextlib.suppress(GLib.GError):  # it may have gone
            if event.detail1:
                self.told.append((event.type.minor, event.source.getRole(), event.source.name))

    def menu_opens(self):
        wait("a menu", lambda: any(entry[:2] == ("showing", pyatspi.ROLE_POPUP_MENU) for entry in self.told))

    def focus_comes_to(self, name):
        wait(f"the focus of {name}", lambda: any(entry[::2] == ("focused", name) for entry in self.told))

    def notices(self):
        return [name for kind, role, name in self.told if (kind, role) == ("showing", pyatspi.ROLE_NOTIFICATION)]


def by_shortcut(_window, _ears, letter):
    press(f"ctrl+{letter}")


def open_edit_menu(ears):
    press("F10")
    ears.focus_comes_to("Open")
    press("Right")
    ears.focus_comes_to("Copy")


def press_in_menu(ears, letter):
    ears.told.clear()
    press(letter)
    wait("the window after the menu", lambda: any(kind == "active" for kind, _role, _name in ears.told))


def by_edit_menu(_window, ears, letter):
    open_edit_menu(ears)
    press_in_menu(ears, letter)


def by_menu_key(_window, ears, letter):
    press("shift+F10")
    ears.menu_opens()
    press_in_menu(ears, letter)


def by_pointer(window, ears, letter):
    ring = child(window, "Knob 4")[0].queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    subprocess.run(["xdotool", "mousemove", str(ring.x + ring.width // 2), str(ring.y + ring.height // 2), "click", "3"],
                   check=True)
    ears.menu_opens()
    press_in_menu(ears, letter)


def by_action(window, _ears, letter):
    """As a screen reader presses an item of a menu that is not open."""
    edit = next(item for item in window[3][0] if item.name == "Edit")
    do(child(edit[0], {"c": "Copy", "v": "Paste", "p": "Paste"}[letter]), "Press")


def check_notices(window):
    """What Copy and Paste did is told by whatever way, wherever the focus is, after all that comes with the end of a menu."""
    ears = Ears()

    def check(way, letter, sentence):
        ears.told.clear()
        way(window, ears, letter)
        wait(f"{sentence} {way.__name__}", ears.notices)
        shows(window)  # whatever was sent before the answer has come with it
        hear()
        expect(f"what is told {way.__name__}", ears.notices(), [sentence])
        expect(f"told last {way.__name__}", ears.told[-1][2], sentence)
        expect(f"in the window {way.__name__}",
               [node.name for node in window if node.getRole() == pyatspi.ROLE_NOTIFICATION], [sentence])

    with listening(ears.tell, "object:state-changed:showing", "object:state-changed:focused",
                   "object:state-changed:active", "window:activate"):  # the former is sent with the latter alone
        do(child(window, "Knob 4"), "SetFocus")
        ears.focus_comes_to("Knob 4")
        for way in (by_shortcut, by_edit_menu, by_menu_key, by_pointer, by_action):
            check(way, "c", "Knob 4 copied")
            check(way, "v" if way is by_shortcut else "p", "Knob 4 pasted")
        child(window, "Minimise").queryComponent().grabFocus()
        ears.focus_comes_to("Minimise")
        check(by_shortcut, "c", "Knob 4 copied")
        do(child(child(window, "Knob 5"), "CC number"), "SetFocus")
        ears.focus_comes_to("CC number")
        check(by_shortcut, "c", "Knob 5, CC number copied")
        check(by_shortcut, "c", "Knob 5, CC number copied")  # the same again


def check_about(window):
    """While a view covers the pages, they are not there to be read, reached or changed."""
    behind = [node for number in range(1, 9) for page in [child(window, f"Knob {number}")] for node in [page, *page]]
    field = child(child(window, "Knob 4"), "CC number")
    field_before = child(child(window, "Knob 5"), "CC number")
    told = []
    focused = []
    with (listening(lambda event: told.append((event.detail1, event.source)), "object:state-changed:showing"),
          listening(lambda event: focused.append((event.detail1, event.source)), "object:state-changed:focused")):
        expect("before", all(shows(node) for node in behind), True)
        do(child(next(item for item in window[3][0] if item.name == "Help")[0], "About"), "Press")
        view = wait("the about view", lambda: child(window, "KTZ-JX"))
        wait("its focus", lambda: (1, view) in focused)
        wait("that the pages are covered", lambda: {node for on, node in told if not on}.issuperset(behind))
        expect("behind the view", any(shows(node) for node in behind), False)
        do(field, "SetFocus")
        do(field, "Increase")
        field.queryValue().currentValue = 100
        expect("a field behind the view", text(field), "5")
        expect("the focus", focused[-1], (1, view))
        told.clear()
        do(child(view, "Close"), "Press")
        wait("that the pages are back", lambda: {node for on, node in told if on}.issuperset(behind))
        expect("afterwards", all(shows(node) for node in behind), True)
        wait("the focus where it was", lambda: (1, field_before) in focused)


def boxes_of(application):
    return [node for node in application
            if node is not None and node.getRole() in (pyatspi.ROLE_ALERT, pyatspi.ROLE_DIALOG)]


def answer_box(window, name, message):
    """What a box says has a name and is its label; it goes by Escape."""
    box = wait(f"the box {name}", lambda: boxes_of(window.getApplication()))[0]
    expect("the box", (box.name, shows(box)), (name, True))
    expect("its text", [node.name for node in box if node.getRole() == pyatspi.ROLE_LABEL], [message])
    wait("its keyboard", lambda: shows(box, pyatspi.STATE_ACTIVE))
    press("Escape")
    wait("its end", lambda: not boxes_of(window.getApplication()))


def check_boxes(window):
    """What a message box says to the eye; one without a title goes by its text."""
    ears = Ears()
    with listening(ears.tell, "object:state-changed:focused"):
        for letter, message in (
                ("r", "All parameters will be restored to their initial state.\r\nContinue?"),
                ("l", "All the current parameters will be restored to the factory settings.\r\nContinue?")):
            ears.told.clear()
            open_edit_menu(ears)
            press(letter)
            answer_box(window, message, message)
    press("ctrl+o")
    message = "The parameter is modified.\r\nSave?"
    answer_box(window, message, message)


def check_loss(window, panel):
    do(pyatspi.findDescendant(panel, lambda node: node.name == "Cable"), "Toggle")
    mark = child(window, "Online")
    wait("the loss", lambda: not shows(mark, pyatspi.STATE_CHECKED))
    message = "Lost the connection.\r\nPlease connect the device properly to the computer, and restart this editor."
    answer_box(window, message, message)


def main(demo, folder):
    log = pathlib.Path(folder) / "messages.log"
    say_that_somebody_listens()
    with (running("openbox", "--sm-disable", stderr=subprocess.DEVNULL), running(demo, "--log", log)):
        window = wait("the editor's window", editor_window)
        splash = wait("the splash", lambda: child(window, "KTZ-JX"))
        expect("the splash", (splash.getRoleName(), len(splash.description.splitlines())), ("dialog", 2))
        expect("the pages behind it", any(shows(child(window, f"Knob {number}")) for number in range(1, 9)), False)
        wait("the splash's end", lambda: child(window, "KTZ-JX") is None)
        check_tree(window)
        check_actions(window, log)
        subprocess.run(["xdotool", "search", "--name", "^KTZ-JX Editor$", "windowactivate"], check=True)
        wait("the keyboard", lambda: shows(window, pyatspi.STATE_ACTIVE))
        check_events(window)
        check_notices(window)
        check_about(window)
        check_boxes(window)
        check_loss(window, child(window.getApplication(), "KTZ-JX device"))


main(*sys.argv[1:])
