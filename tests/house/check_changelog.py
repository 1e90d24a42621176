#!/usr/bin/env python3
"""Fails when CHANGELOG.md does not have the form that its readers expect, or does not know the project's version.

    check_changelog.py CHANGELOG VERSION

Its sections are "## [Unreleased]", then one a version with its day, the newest first; within one, changes stand in groups.
"""

import pathlib
import re
import sys

GROUPS = ["Added", "Changed", "Deprecated", "Removed", "Fixed", "Security"]


def faults(text, version):
    sections = re.findall(r"^## (.*)$", text, re.MULTILINE)
    if sections[:1] != ["[Unreleased]"]:
        yield "the first section is not [Unreleased]"
    versions = [re.fullmatch(r"\[(\d+\.\d+\.\d+)\] - (\d{4}-\d\d-\d\d)", section) for section in sections[1:]]
    if not all(versions):
        yield "a section is not [X.Y.Z] - YYYY-MM-DD"
    elif not versions or versions[0][1] != version:
        yield f"the newest version is not {version}, as the project says"
    elif [match[2] for match in versions] != sorted((match[2] for match in versions), reverse=True):
        yield "the newest version does not stand first"
    for group in re.findall(r"^### (.*)$", text, re.MULTILINE):
        if group not in GROUPS:
            yield f"{group} is none of {', '.join(GROUPS)}"


path, project_version = sys.argv[1:]
found = list(faults(pathlib.Path(path).read_text(encoding="utf-8"), project_version))
for fault in found:
    print(f"{path}: {fault}", file=sys.stderr)
sys.exit(1 if found else 0)
