#!/usr/bin/env python3
"""What packaging/changelog.py makes of a changelog."""

import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "changelog.py"
CHANGELOG = """# Changelog

## [Unreleased]

### Added

- Not yet.

## [1.10.0] - 2026-03-01

### Added

- `one` & <two>, which
  goes on.

## [1.9.0] - 1970-01-02

### Fixed

- Three.
"""


def run(*arguments):
    with tempfile.NamedTemporaryFile("w", suffix=".md") as file:
        file.write(CHANGELOG)
        file.flush()
        return subprocess.run([sys.executable, "-B", SCRIPT, file.name, *arguments], capture_output=True, text=True)


class TestChangelog(unittest.TestCase):
    def test_epoch_is_the_versions_day(self):
        self.assertEqual(run("1.9.0", "epoch").stdout, "86400\n")

    def test_unknown_version_is_refused(self):
        for version in ("1.11.0", "Unreleased", "1.9"):
            result = run(version, "epoch")
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertIn(version, result.stderr)

    def test_debian_has_every_version_up_to_this_one(self):
        self.assertEqual(run("1.10.0", "debian", "package", "A <a@b.org>").stdout, """\
package (1.10.0) stable; urgency=medium

  [ Added ]
  * one & <two>, which goes on.

 -- A <a@b.org>  Sun, 01 Mar 2026 00:00:00 +0000

package (1.9.0) stable; urgency=medium

  [ Fixed ]
  * Three.

 -- A <a@b.org>  Fri, 02 Jan 1970 00:00:00 +0000
""")
        self.assertNotIn("1.10.0", run("1.9.0", "debian", "package", "A <a@b.org>").stdout)

    def test_appstream_has_versions_dates_and_texts(self):
        root = xml.fromstring(run("1.10.0", "appstream").stdout)
        self.assertEqual([(release.get("version"), release.get("date")) for release in root],
                         [("1.10.0", "2026-03-01"), ("1.9.0", "1970-01-02")])
        self.assertEqual([item.text for item in root.iter("li")], ["one & <two>, which goes on.", "Three."])


if __name__ == "__main__":
    unittest.main()
