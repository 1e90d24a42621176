"""The desktops on which the session is run, each by its name."""

from weston import Weston
from x11 import X11

ROWS = {
    "openbox-96": (X11, {"dpi": 96}),
    "openbox-144": (X11, {"dpi": 144, "size": (1920, 1536)}),
    "openbox-192": (X11, {"dpi": 192, "size": (2560, 2048)}),
    "openbox-800x600": (X11, {"size": (800, 600)}),
    "no-window-manager": (X11, {"manager": False}),
    "weston-native-1": (Weston, {}),
    "weston-native-2": (Weston, {"scale": 2}),
}
