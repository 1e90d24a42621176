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
    "openbox-800x600": (X11, {"size": (800, 600)}),
    "no-window-manager": (X11, {"manager": False}),
    "weston-native-1": (Weston, {}, WAYLAND),
    "weston-native-2": (Weston, {"scale": 2}, WAYLAND),
    "sway-1": (Sway, {}, WAYLAND),
    "sway-2": (Sway, {"scale": 2}, WAYLAND),
    "mutter-native": (Mutter, {}, WAYLAND),
    "mutter-xwayland": (Mutter, {"native": False}),
    "kde-light": (X11, {}, KDE),
    "kde-dark": (X11, {}, KDE_DARK),
    "gtk-light": (X11, {}, GTK),
    "gtk-dark": (X11, {}, GTK_DARK),
    "gtk-on-weston": (Weston, {}, WAYLAND, GTK),
}

# Not run, and why. In weston 10 an X program's window is not where the program was told: the menus of its bar open
# elsewhere. A context menu stays for a while, and the keys do not come back after it.
LEFT_OUT = {
    "weston-xwayland-1": "an X program's menus and keys go astray in weston 10; mutter-xwayland is run instead",
    "weston-xwayland-2": "as weston-xwayland-1",
    "kde-theme": "Debian 12 has no package of KDE's theme for Qt 6; kde-light and kde-dark are what Qt has itself",
    "two-screens": "there is no row yet with two screens of different ratio",
}
