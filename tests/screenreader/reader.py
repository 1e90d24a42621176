"""What the tests with a screen reader's eyes share: a client of the accessibility bus, and what it listens to."""

import contextlib
import subprocess
import sys
import time

import pyatspi
from gi.repository import Atspi, Gio, GLib

SECONDS = 20

# A busy machine may take longer than the 0.8 s after which an answer counts as none.
Atspi.set_timeout(SECONDS * 1000, SECONDS * 1000)


def hear():
    """The events that have come until now."""
    while GLib.MainContext.default().iteration(False):
        pass


def wait(what, condition):
    """The condition's first true value; the events that come meanwhile are heard."""
    end = time.monotonic() + SECONDS
    while time.monotonic() < end:
        hear()
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


@contextlib.contextmanager
def listening(told, *kinds):
    """Calls told with each event of these kinds."""
    pyatspi.Registry.registerEventListener(told, *kinds)
    try:
        yield
    finally:
        pyatspi.Registry.deregisterEventListener(told, *kinds)


@contextlib.contextmanager
def running(*command, **options):
    """A program that ends with the block."""
    with subprocess.Popen(command, **options) as process:
        try:
            yield process
        finally:
            process.terminate()


def child(above, name):
    return next((node for node in above if node is not None and node.name == name), None)


def editor_window():
    for application in pyatspi.Registry.getDesktop(0):
        window = child(application, "KTZ-JX Editor") if application is not None else None
        if window is not None and child(window, "Knob 8") is not None:
            return window
    return None


def shows(node, state=pyatspi.STATE_SHOWING):
    return node.getState().contains(state)


def text(node):
    return node.queryText().getText(0, -1)


def do(node, name):
    actions = node.queryAction()
    names = [actions.getName(index) for index in range(actions.nActions)]
    if name not in names or not actions.doAction(names.index(name)):
        sys.exit(f"{node.name} does not do {name}: {names}")


def press(*keys):
    subprocess.run(["xdotool", "key", *keys], check=True)
