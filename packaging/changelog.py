#!/usr/bin/env python3
"""changelog.py CHANGELOG VERSION epoch | debian PACKAGE MAINTAINER | appstream: what packages say of this version.

The changelog is Markdown in the form of Keep a Changelog: "## [VERSION] - DATE", "### KIND", and lists. Its dates become
the times in a package, so that the same sources give the same package.

    epoch       seconds since 1970 of the version's day
    debian      every version up to this one as a Debian changelog
    appstream   the same as AppStream's <releases>

Ends with 1 when the version is not in the changelog.
"""

import datetime
import email.utils
import re
import sys
import textwrap
import xml.etree.ElementTree as xml


class Release:
    def __init__(self, version, date):
        self.version = version
        self.time = datetime.datetime.fromisoformat(date).replace(tzinfo=datetime.timezone.utc)
        self.changes = []   # (kind, [text])


def read(lines):
    """The releases, newest first; what is not released is left out."""
    releases, release = [], None
    for line in lines:
        heading = re.match(r"## \[([^]]+)\](?: - (\S+))?", line)
        if heading:
            release = Release(*heading.groups()) if heading[2] else None
            if release:
                releases.append(release)
        elif release is None:
            continue
        elif line.startswith("### "):
            release.changes.append((line[4:].strip(), []))
        elif line.startswith("- "):
            release.changes[-1][1].append(line[2:].strip())
        elif line.startswith("  ") and release.changes and release.changes[-1][1]:
            release.changes[-1][1][-1] += " " + line.strip()
    return releases


def plain(text):
    return text.replace("`", "")


def debian(releases, package, maintainer):
    for release in releases:
        yield f"{package} ({release.version}) stable; urgency=medium\n"
        for kind, texts in release.changes:
            yield f"  [ {kind} ]"
            for text in texts:
                yield textwrap.fill(plain(text), 76, initial_indent="  * ", subsequent_indent="    ")
            yield ""
        yield f" -- {maintainer}  {email.utils.format_datetime(release.time)}\n"


def appstream(releases):
    root = xml.Element("releases")
    for release in releases:
        element = xml.SubElement(root, "release", version=release.version, date=release.time.date().isoformat())
        description = xml.SubElement(element, "description")
        for kind, texts in release.changes:
            xml.SubElement(description, "p").text = kind + ":"
            items = xml.SubElement(description, "ul")
            for text in texts:
                xml.SubElement(items, "li").text = plain(text)
    xml.indent(root)
    return textwrap.indent(xml.tostring(root, encoding="unicode"), "  ").strip()


def main(name, version, form, *words):
    with open(name, encoding="utf-8") as file:
        releases = read(file)
    while releases and releases[0].version != version:
        releases.pop(0)
    if not releases:
        sys.exit(f"changelog.py: {name} does not know version {version}")
    if form == "epoch":
        print(int(releases[0].time.timestamp()))
    elif form == "debian":
        print("\n".join(debian(releases, *words)), end="")
    elif form == "appstream":
        print(appstream(releases))
    else:
        sys.exit(f"changelog.py: there is no form {form}")


if __name__ == "__main__":
    main(*sys.argv[1:])
