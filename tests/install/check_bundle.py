#!/usr/bin/env python3
"""check_bundle.py BUNDLE VERSION MIME-DEFINITION: whether a bundle is what a Mac's desktop needs."""

import os
import plistlib
import re
import struct
import subprocess
import sys
import zlib

MANUAL = "Contents/Resources/English.lproj/KTZ-JX_Editor_OperationManual.pdf"
# A picture's kind says points and density; the desktop asks for each of these.
PIXELS = {"icp4": 16, "icp5": 32, "icp6": 64, "ic07": 128, "ic08": 256, "ic09": 512,
          "ic11": 32, "ic12": 64, "ic13": 256, "ic14": 512}

failures = 0


def check(condition, text):
    global failures
    if not condition:
        print(f"FAIL: {text}", file=sys.stderr)
        failures += 1


def check_plist(bundle, version, mime):
    with open(os.path.join(bundle, "Contents/Info.plist"), "rb") as file:
        plist = plistlib.load(file)
    check(plist["CFBundlePackageType"] == "APPL", "it is an application")
    check(plist["CFBundleIdentifier"] == "org.ktzjx.Editor", "the identifier is the desktop's")
    check(plist["CFBundleShortVersionString"] == plist["CFBundleVersion"] == version, "the version is the project's")
    check(plist["LSAppNapIsDisabled"] is True, "the system does not slow the editor down while it is hidden")
    check(plist["NSHighResolutionCapable"] is True, "it is sharp on every screen")
    program = os.path.join(bundle, "Contents/MacOS", plist["CFBundleExecutable"])
    check(os.access(program, os.X_OK), f"the program is there: {program}")

    (exported,) = plist["UTExportedTypeDeclarations"]
    (document,) = plist["CFBundleDocumentTypes"]
    check(document["LSItemContentTypes"] == [exported["UTTypeIdentifier"]], "the document's type is the exported one")
    check(document["CFBundleTypeRole"] == "Editor" and document["LSHandlerRank"] == "Owner", "it opens its documents")
    tags = exported["UTTypeTagSpecification"]
    with open(mime, encoding="utf-8") as file:
        definition = file.read()
    check(f'pattern="*.{tags["public.filename-extension"][0]}"' in definition, "the suffix is the other desktops'")
    check(f'type="{tags["public.mime-type"][0]}"' in definition, "the MIME type is the other desktops'")
    check("public.xml" in exported["UTTypeConformsTo"], "a settings file is XML")
    for icon in (plist["CFBundleIconFile"], document["CFBundleTypeIconFile"]):
        check_icon(os.path.join(bundle, "Contents/Resources", icon))


def check_icon(path):
    with open(path, "rb") as file:
        data = file.read()
    magic, length = struct.unpack(">4sI", data[:8])
    check(magic == b"icns" and length == len(data), "the icon is an icns file of its own length")
    found, at = {}, 8
    while at < len(data):
        kind, length = struct.unpack(">4sI", data[at:at + 8])
        if length <= 8 or at + length > len(data):
            check(False, f"the icon's picture {kind} reaches beyond the file")
            return
        found[kind.decode("latin-1")] = picture_size(data[at + 8:at + length])
        at += length
    check(found == {kind: (pixels, pixels) for kind, pixels in PIXELS.items()}, f"the icon's pictures: {found}")


def picture_size(png):
    """Width and height of a whole PNG picture, or None."""
    if png[:8] != b"\x89PNG\r\n\x1a\n":
        return None
    size, at = None, 8
    while at + 12 <= len(png):
        length, kind = struct.unpack(">I4s", png[at:at + 8])
        body = png[at + 4:at + 8 + length]
        if struct.unpack(">I", png[at + 8 + length:at + 12 + length])[0] != zlib.crc32(body):
            return None
        if kind == b"IHDR":
            size = struct.unpack(">II", body[4:12])
        if kind == b"IEND":
            return size if at + 12 == len(png) else None
        at += 12 + length
    return None


def check_manual(bundle):
    """The program that stands in for the editor prints the manual that the editor would open from there."""
    (program,) = os.listdir(os.path.join(bundle, "Contents/MacOS"))
    found = subprocess.run([os.path.join(bundle, "Contents/MacOS", program)], capture_output=True, text=True)
    path = found.stdout.strip()
    check(found.returncode == 0 and os.path.isfile(path) and os.path.samefile(path, os.path.join(bundle, MANUAL)),
          f"the manual is found in the bundle: {path!r}")
    with open(os.path.join(bundle, MANUAL), "rb") as file:
        check(re.match(rb"%PDF-", file.read(5)), "the manual is a PDF document")


check_plist(*sys.argv[1:4])
check_manual(sys.argv[1])
sys.exit(1 if failures else 0)
