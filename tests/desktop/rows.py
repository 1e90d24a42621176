"""The desktops on which the session is run, each by its name."""

import pathlib

from mutter import Mutter
from sway import Sway
from weston import Weston
from x11 import X11

# What Qt brings for KDE itself. KDE's own theme for Qt 6 is no package of Debian 12.
KDE = {"QT_QPA_PLATFORMTHEME": "kde", "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true",
       "KDE_SESSION_VERSION": "5"}
KDE_DARK = KDE | {"XDG_CONFIG_DIRS": str(pathlib.Path(__file__).parent / "kde-dark")}
GTK = {"QT_QPA_PLATFORMTHEME": "gtk3"}
GTK_DARK = GTK | {"GTK_THEME": "Adwaita:dark"}
WAYLAND = {"QT_QPA_PLATFORM": "wayland"}

# (environment, plugin under /usr/lib, the package that brings it): without it Qt takes another silently.
PLUGINS = [(GTK, "*/qt6/plugins/platformthemes/libqgtk3.so", "qt6-gtk-platformtheme"),
           (GTK_DARK, "*/qt6/plugins/platformthemes/libqgtk3.so", "qt6-gtk-platformtheme"),
           (WAYLAND, "*/qt6/plugins/platforms/libqwayland-generic.so", "qt6-wayland")]

# (kind of desktop, its options, what the editor's environment holds besides...)
ROWS = {
    "openbox-96": (X11, {"dpi": 96}),
    "openbox-144": (X11, {"dpi": 144, "size": (1920, 1536)}),
    "openbox-192": (X11, {"dpi": 192, "size": (2560, 2048)}),
    "openbox-two-screens": (X11, {"scales": (1, 2)}),
    "openbox-800x600": (X11, {"size": (800, 600)}),
    "no-window-manager": (X11, {"manager": False}),
    "weston-native-1": (Weston, {}, WAYLAND),
    "weston-native-2": (Weston, {"scale": 2}, WAYLAND),
    "sway-1": (Sway, {}, WAYLAND),
    "sway-2": (Sway, {"scales": (2,)}, WAYLAND),
    "sway-two-screens": (Sway, {"scales": (1, 2)}, WAYLAND),
    "mutter-native": (Mutter, {}, WAYLAND),
    "mutter-xwayland": (Mutter, {"native": False}),
    "kde-light": (X11, {}, KDE),
    "kde-dark": (X11, {}, KDE_DARK),
    "gtk-light": (X11, {}, GTK),
    "gtk-dark": (X11, {}, GTK_DARK),
    "gtk-on-weston": (Weston, {}, WAYLAND, GTK),
}

# Not run, and why. Weston 10 puts an X program's window somewhere, with a frame around it, and never tells the program: a
# plain window of the toolkit with a menu bar stands at (807, 438) there, takes itself to be at (0, 0), and its first menu
# opens at (6, 19). So do the editor's. A context menu stays for a while, and the keys do not come back after it.
LEFT_OUT = {
    "weston-xwayland-1": "weston 10 tells no X program its place, so that menus go astray; mutter-xwayland is run",
    "weston-xwayland-2": "as weston-xwayland-1",
    "kde-theme": "Debian 12 has no package of KDE's theme for Qt 6; kde-light and kde-dark are what Qt has itself",
}
