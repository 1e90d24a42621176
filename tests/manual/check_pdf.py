#!/usr/bin/env python3
"""Fails unless a manual is what a reader and a screen reader expect of a PDF document.

    check_pdf.py PDF PAGE

PAGE is the same manual for a browser.
"""

import re
import shutil
import subprocess
import sys
from html import unescape

import manual_text

try:
    import pikepdf
except ImportError:
    manual_text.skip("python3-pikepdf is missing")
for tool in ("pdfinfo", "pdffonts", "pdftotext"):
    if not shutil.which(tool):
        manual_text.skip(f"{tool} of poppler-utils is missing")

path, page = sys.argv[1:3]
html = manual_text.read(page)
mistakes = []


def expect(what, right):
    if not right:
        mistakes.append(f"{path}: {what}")


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def bookmarks(items):
    for item in items:
        yield item.title, item.destination is not None
        yield from bookmarks(item.children)


def elements(node):
    if isinstance(node, pikepdf.Array):
        for kid in node:
            yield from elements(kid)
    elif isinstance(node, pikepdf.Dictionary) and node.get("/Type") == "/StructElem":
        yield node
        yield from elements(node.get("/K", pikepdf.Array()))


def letters(text):
    return sum(character.isalnum() for character in text)


info = dict(re.findall(r"(?m)^([\w ]+?):\s+(.*)$", output("pdfinfo", path)))
expect(f"has {info['Pages']} pages, not 8 to 12", 8 <= int(info["Pages"]) <= 12)
expect(f"is not A4: {info['Page size']}", "A4" in info["Page size"])
expect("is not tagged", info["Tagged"] == "yes")

fonts = output("pdffonts", path).splitlines()[2:]
expect("has no fonts", len(fonts) >= 3)
for font in fonts:
    columns = font.split()
    expect(f"a font is not embedded, or only in part text: {font}", columns[-5:-2] == ["yes", "yes", "yes"])
expect("is not written in the font that it is made for", any("Liberation-Sans" in font for font in fonts))

text = re.sub(r"[\s\u00ad]+", " ", output("pdftotext", path, "-"))
headings = [re.sub(r"<[^>]*>", "", heading) for heading in re.findall(r"<h[23] [^>]*id=[^>]*>(.*?)</h[23]>", html)]
for heading in headings:
    expect(f"the text cannot be taken out of it: {heading}", heading in text)

# What is read aloud: every word of the page once, but for the heads of tables that go on over the page, and what only is
# seen: a picture's numbers.
aloud = letters("".join(re.findall(r'(?m)^\s*"(.*)"$', output("pdfinfo", "-struct-text", path))))
body = re.sub(r'<span class="callout.*?</span>', "", html[html.index("<body>"):], flags=re.S)
written = letters(unescape(re.sub(r"<[^>]*>", " ", body)))
expect(f"reads {aloud} letters aloud, and {written} are written", 0.99 * written < aloud < 1.02 * written)

with pikepdf.open(path) as pdf:
    language = re.search(r'<html lang="(\w+)">', html)[1]
    expect("does not say its language", pdf.Root.get("/Lang") == language)
    expect("does not show its title", pdf.Root.ViewerPreferences.get("/DisplayDocTitle", False))
    with pdf.open_outline() as outline:
        marks = list(bookmarks(outline.root))
    expect(f"its bookmarks are not its headings: {marks}", [title for title, _ in marks] == headings)
    expect("a bookmark leads nowhere", all(leads for _, leads in marks))
    found = list(elements(pdf.Root.StructTreeRoot.K))
    kinds = [str(element.S) for element in found]
    for kind in ("/H1", "/H2", "/H3", "/P", "/L", "/LI", "/Table", "/TH", "/TD", "/Link", "/Figure"):
        expect(f"nothing is tagged {kind}", kind in kinds)
    figures = [element for element in found if element.S == "/Figure"]
    expect(f"{len(figures)} pictures of {html.count('<img ')} are figures", len(figures) == html.count("<img "))
    expect("a picture has no words", all(str(element.get("/Alt", "")) for element in figures))
    expect("a table's head has no scope", all("/A" in element for element in found if element.S == "/TH"))
    links = [note for sheet in pdf.pages for note in sheet.get("/Annots", []) if note.get("/Subtype") == "/Link"]
    expect("has fewer links than the page", len(links) >= html.count("<a "))
manual_text.end(mistakes)
