"""Asks the demo what a screen reader asks, and does what one does: ask_editor.py DEMO FOLDER

Ends with status 0 only if every answer is the expected one, and every action has reached the device."""

import pathlib
import re
import subprocess
import sys
import time

from gi.repository import Gio, GLib
import pyatspi

FIELDS = ["LED type", "CC number", "MIDI channel", "Maximum", "Minimum"]
RANGES = {"LED type": (0, 3), "CC number": (0, 127), "MIDI channel": (1, 16), "Maximum": (0, 127),
          "Minimum": (0, 127)}
CC_NUMBERS = [74, 71, 10, 7, 73, 72, 91, 93]
CHANGE = re.compile(r"received +F0 43 10 3E 18 05 02 03 ((?:[0-9A-F]{2} ){6})F7")
SECONDS = 20


def wait(what, condition):
    """The condition's first true value; the events that come meanwhile are heard."""
    end = time.monotonic() + SECONDS
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        value = condition()
        if value:
            return value
        time.sleep(0.01)
    sys.exit(f"in vain: {what}")


def expect(what, actual, expected):
    if actual != expected:
        sys.exit(f"{what}: {actual!r}, expected {expected!r}")


def say_that_somebody_listens():
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    for name in ("IsEnabled", "ScreenReaderEnabled"):
        arguments = GLib.Variant("(ssv)", ("org.a11y.Status", name, GLib.Variant("b", True)))
        bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", arguments, None,
                      Gio.DBusCallFlags.NONE, SECONDS * 1000, None)


def child(above, name):
    return next((node for node in above if node is not None and node.name == name), None)


def editor_window():
    for application in pyatspi.Registry.getDesktop(0):
        window = child(application, "KTZ-JX Editor") if application is not None else None
        if window is not None and child(window, "Knob 8") is not None:
            return window
    return None


def text(node):
    return node.queryText().getText(0, -1)


def do(node, name):
    actions = node.queryAction()
    names = [actions.getName(index) for index in range(actions.nActions)]
    if name not in names or not actions.doAction(names.index(name)):
        sys.exit(f"{node.name} does not do {name}: {names}")


def check_tree(window):
    wait("the connection", lambda: window[12].getState().contains(pyatspi.STATE_CHECKED))
    expect("the window's parts", [node.name for node in window],
           ["Close", "Minimise", "Keep in front", ""] + [f"Knob {number}" for number in range(1, 9)] + ["Online"])
    for number, cc in enumerate(CC_NUMBERS, 1):
        page = child(window, f"Knob {number}")
        expect(f"parts of knob {number}", [node.name for node in page], ["LED ring 0"] + FIELDS)
        led_type = "concave" if number == 3 else "ascent"
        expect(f"texts of knob {number}", [text(node) for node in list(page)[1:]], [led_type, str(cc), "1", "127", "0"])
        for node in list(page)[1:]:
            value = node.queryValue()
            expect(f"range of {node.name}", (value.minimumValue, value.maximumValue), RANGES[node.name])
            expect(f"parts of {node.name}", node.childCount, 0)
        expect("what the ring can do", pyatspi.listInterfaces(page[0]), ["Accessible", "Component"])
        expect("the ring's LEDs", page[0].description, "15 of 15 LEDs lit" if number == 3 else "0 of 15 LEDs lit")


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
    for kind in ("object:state-changed:focused", "object:property-change:accessible-value",
                 "object:property-change:accessible-description", "object:text-changed:insert"):
        pyatspi.Registry.registerEventListener(
            lambda event: told.append((event.type.major, event.detail1, event.source.parent.name, event.source.name)),
            kind)

    def comes(what, major, page, name):
        wait(what, lambda: any((entry[0], entry[2], entry[3]) == (major, page, name) for entry in told))
        told.clear()

    do(child(window, "Knob 4"), "SetFocus")
    comes("the focus of a page", "state-changed", "KTZ-JX Editor", "Knob 4")
    subprocess.run(["xdotool", "key", "Tab", "Tab"], check=True)
    comes("the focus of a field", "state-changed", "Knob 4", "CC number")
    subprocess.run(["xdotool", "key", "Up"], check=True)
    comes("a value by key", "property-change", "Knob 4", "CC number")
    subprocess.run(["xdotool", "key", "5"], check=True)
    comes("typed text", "text-changed", "Knob 4", "CC number")
    subprocess.run(["xdotool", "key", "Return"], check=True)
    comes("the typed value", "property-change", "Knob 4", "CC number")
    expect("the typed value", text(child(child(window, "Knob 4"), "CC number")), "5")
    for keys, page in (("ctrl+c", "Knob 4"), ("ctrl+v", "Knob 5")):
        do(child(window, page), "SetFocus")
        comes("the focus of another page", "state-changed", "KTZ-JX Editor", page)
        subprocess.run(["xdotool", "key", keys], check=True)
        comes(f"what {keys} did", "property-change", "KTZ-JX Editor", page)
    expect("the descriptions", [child(window, page).description for page in ("Knob 4", "Knob 5")], ["", "pasted"])
    expect("the pasted value", text(child(child(window, "Knob 5"), "CC number")), "5")


def check_reports(window, panel):
    """A thousand values that the device reports: a few are told, and the last one soon."""
    ring = child(window, "Knob 3")[0]
    told = []

    def hear(event):
        if event.source == ring:
            told.append(ring.name)  # the event itself does not say

    pyatspi.Registry.registerEventListener(hear, "object:property-change:accessible-name")
    dials = [node for group in panel for node in group if node.getRole() == pyatspi.ROLE_DIAL]
    dial = dials[2].queryValue()
    start = time.monotonic()
    for number in range(1001):
        dial.currentValue = number % 128
    lasted = time.monotonic() - start
    last = f"LED ring {1000 % 128}"
    wait("the last report", lambda: told and told[-1] == last)
    late = time.monotonic() - start - lasted
    expect("the ring", (ring.name, ring.description), (last, "9 of 15 LEDs lit"))
    print(f"1,001 reports in {lasted:.1f} s: {len(told)} told, the last one {late:.1f} s later")
    if len(told) > 5 * (lasted + late) + 2 or late > 2:
        sys.exit("too many, or too late")


def check_loss(window, panel):
    do(pyatspi.findDescendant(panel, lambda node: node.name == "Cable"), "Toggle")
    mark = child(window, "Online")
    wait("the loss", lambda: not mark.getState().contains(pyatspi.STATE_CHECKED))
    boxes = wait("the message", lambda: [node for node in window.getApplication() if node.getRole() == pyatspi.ROLE_ALERT
                                         or node.getRole() == pyatspi.ROLE_DIALOG])
    texts = [node.name for node in boxes[0]]
    if not any(name.startswith("Lost the connection.") for name in texts):
        sys.exit(f"the message says {texts}")


def main(demo, folder):
    log = pathlib.Path(folder) / "messages.log"
    say_that_somebody_listens()
    window_manager = subprocess.Popen(["openbox", "--sm-disable"], stderr=subprocess.DEVNULL)
    editor = subprocess.Popen([demo, "--log", log])
    try:
        window = wait("the editor's window", editor_window)
        splash = wait("the splash", lambda: child(window, "KTZ-JX"))
        expect("the splash", (splash.getRoleName(), len(splash.description.splitlines())), ("dialog", 2))
        wait("the splash's end", lambda: child(window, "KTZ-JX") is None)
        check_tree(window)
        check_actions(window, log)
        subprocess.run(["xdotool", "search", "--name", "^KTZ-JX Editor$", "windowactivate"], check=True)
        wait("the keyboard", lambda: window.getState().contains(pyatspi.STATE_ACTIVE))
        check_events(window)
        panel = child(window.getApplication(), "KTZ-JX device")
        check_reports(window, panel)
        check_loss(window, panel)
    finally:
        for process in (editor, window_manager):
            process.terminate()
            process.wait()


main(*sys.argv[1:])
