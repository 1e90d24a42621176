#!/usr/bin/env python3
"""Fails when a file includes something that stands above its own floor of the house.

    check_includes.py ROOT          reads every source file below ROOT
    check_includes.py --self-test   proves that an arrow that points up, or sideways, is found
"""

import pathlib
import re
import sys
import tempfile

# What each folder may include besides itself. Programs that put everything together stand outside.
MAY_INCLUDE = {
    "app/common": [],
    "midi": ["app/common"],
    "midi/alsa": ["midi", "app/common"],
    "midi/mac": ["midi", "app/common"],
    "simulator/device": ["app/common"],
    "simulator/transports": ["simulator/device", "midi/alsa", "midi", "app/common"],
    "simulator/panel": ["simulator/device", "app/common"],
    "simulator/console": ["simulator/device", "simulator/transports", "app/common"],
    "device": ["midi", "app/common"],
    "connection": ["device", "app/common"],
    "file": ["device", "app/common"],
    "widgets": ["device", "app/common"],
    "style": ["widgets", "app/common"],
    "ctl": ["connection", "file", "device", "midi", "app/common"],
    "app": ["style", "widgets", "connection", "file", "device", "midi", "app/common"],
    # The one program that shows the simulator to people.
    "app/demo": ["app", "app/common", "simulator/device", "simulator/transports", "simulator/panel"],
}

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*"([^"]+)"')


def folder_of(path):
    """The folder of the house that a path from the root belongs to; None outside the house."""
    parts = pathlib.PurePosixPath(path).parent.parts
    for depth in (2, 1):
        if "/".join(parts[:depth]) in MAY_INCLUDE:
            return "/".join(parts[:depth])
    return None


def violations(root):
    found, files = [], 0
    for path in sorted(root.rglob("*")):
        if path.suffix not in (".h", ".cpp", ".mm"):
            continue
        name = path.relative_to(root).as_posix()
        folder = folder_of(name)
        if folder is None:
            continue
        files += 1
        allowed = [folder, *MAY_INCLUDE[folder]]
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            if not match or match[1].startswith("ui_"):
                continue
            target = folder_of(match[1])
            if target not in allowed:
                found.append(f"{name}:{number}: {folder} may not include {match[1]}")
    return found, files


def self_test():
    cases = {
        "device/Up.h": ('#include "widgets/CFrame.h"\n', True),
        "file/Sideways.cpp": ('#include "connection/CConnectionMonitor.h"\n', True),
        "midi/Platform.cpp": ('#  include "midi/alsa/CPortList_ALSA.h"\n', True),
        "style/NotFromTheRoot.h": ('#include "CJXStyle.h"\n', True),
        "widgets/Down.cpp": ('#include "device/CMemAPI.h"\n#include <QWidget>\n', False),
    }
    for name, (text, is_wrong) in cases.items():
        with tempfile.TemporaryDirectory() as root:
            path = pathlib.Path(root, name)
            path.parent.mkdir(parents=True)
            path.write_text(text, encoding="utf-8")
            if bool(violations(pathlib.Path(root))[0]) != is_wrong:
                sys.exit(f"self-test: {name} was judged wrongly")


def main():
    if sys.argv[1:] == ["--self-test"]:
        self_test()
        return
    found, files = violations(pathlib.Path(sys.argv[1]))
    print("\n".join(found) or f"{files} files, every include points down")
    sys.exit(1 if found or files == 0 else 0)


if __name__ == "__main__":
    main()
