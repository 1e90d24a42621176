#!/usr/bin/env python3
"""Fails on links of the manual's pages that lead nowhere, pictures that are missing or without words, and files that no
page needs.

    check_links.py FOLDER
"""

import html.parser
import pathlib
import re
import sys

import manual_text


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.ids, self.links, self.files, self.mistakes = [], [], {"manual.css", "headings.ttf"}, []
        self.path = path
        self.language = None
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        if "id" in attrs:
            self.ids.append(attrs["id"])
        if tag == "html":
            self.language = attrs.get("lang")
        if tag == "a":
            self.links.append(attrs.get("href", ""))
        if tag in ("img", "link"):
            self.files.add(attrs.get("src") or attrs.get("href"))
        if tag == "img" and not attrs.get("alt"):
            self.mistakes.append(f"{self.path.name}: a picture without words: {attrs.get('src')}")


folder = pathlib.Path(sys.argv[1])
pages = [Page(path) for path in sorted(folder.glob("*.html"))]
mistakes = [] if len(pages) >= 2 else ["there are no pages"]
for page in pages:
    mistakes += page.mistakes
    mistakes += [f"{page.path.name}: twice the same anchor: {name}" for name in set(page.ids) if page.ids.count(name) > 1]
    if not page.language or len(page.links) < 10:
        mistakes.append(f"{page.path.name}: no language, or hardly a link")
    for link in page.links:
        if link.startswith("#"):
            right = link[1:] in page.ids
        elif re.match(r"\w+:", link):
            right = re.fullmatch(r"https://[\w.-]+(/\S*)?", link)  # whether it is there is not asked
        else:
            right = (folder / link.split("#")[0]).is_file()
        if not right:
            mistakes.append(f"{page.path.name}: leads nowhere: {link}")
    mistakes += [f"{page.path.name}: is missing: {name}" for name in page.files if not (folder / name).is_file()]

needed = {name for page in pages for name in page.files} | {page.path.name for page in pages}
there = {path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}
mistakes += [f"no page needs it: {name}" for name in sorted(there - needed)]
manual_text.end(mistakes)
