"""A manual's Markdown as a page for a browser, from which the PDF is made too.

Beside Markdown with tables, attributes and definition lists:

    [[Ctrl+S]]                       a key
    ![Text](window.png){width=80mm}  a picture, alone in its paragraph, as wide as this; a class places it. Where the
                                     picture has callouts, the numbered list behind it explains each of them
    ![Text](ring:ascent/64)          the ring that an LED type shows at a value
"""

import html
import pathlib
import string
import xml.etree.ElementTree as ElementTree

import markdown
from markdown.inlinepatterns import InlineProcessor
from markdown.treeprocessors import Treeprocessor

PAGE = string.Template("""<!DOCTYPE html>
<html lang="$language">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>$title – $subtitle</title>
<meta name="author" content="The KTZ-JX Editor Developers">
<meta name="dcterms.created" content="$date">
<link rel="stylesheet" href="manual.css">
</head>
<body>
<header>
<h1>$title</h1>
<p class="subtitle">$subtitle</p>
<p class="figure"><span class="picture"><img src="pictures/window.png" alt="$cover"></span></p>
<p class="version">Version $version<br>$date</p>
</header>
<nav aria-label="$contents">
<h2 class="contents">$contents</h2>
<ul>
$chapters
</ul>
</nav>
<main>
$body
</main>
</body>
</html>
""")


class ManualError(Exception):
    """What is wrong with a manual, in a line."""


class KeyProcessor(InlineProcessor):
    def handleMatch(self, m, data):
        key = ElementTree.Element("kbd")
        key.text = markdown.util.AtomicString(m.group(1))
        return key, m.start(0), m.end(0)


class PictureProcessor(Treeprocessor):
    """Turns paragraphs of a picture into figures, with the callouts that the picture has."""

    def __init__(self, md, about):
        super().__init__(md)
        self.about = about

    def run(self, root):
        expected = None
        for element in root:
            if element.tag == "p" and len(element) == 1 and element[0].tag == "img" and not (element.text or "").strip():
                expected = self.make_figure(element)
            elif expected is not None:
                if element.tag != "ol" or len(element) != expected:
                    raise ManualError(f"a picture with {expected} callouts needs a list of as many items behind it")
                element.set("class", "legend")
                expected = None
        if expected is not None:
            raise ManualError(f"nothing explains the {expected} callouts of the last picture")
        for parent in root.iter():
            for index, child in enumerate(list(parent)):
                if child.tag == "img" and parent.get("class") != "picture":
                    parent[index] = self.wrapped(child)

    def name_of(self, image):
        """The picture's name, without what its file is called after."""
        source = image.get("src")
        if source.startswith("ring:"):
            led_type, value = source.removeprefix("ring:").split("/")
            image.set("class", "ring")
            return f"ring-{self.about['rings'][led_type][value]}"
        return pathlib.PurePosixPath(source).stem

    def wrapped(self, image):
        """The image in a box of its own, which is a figure to those who have it read to them."""
        name = self.name_of(image)
        if name not in self.about:
            raise ManualError(f"there is no picture {name}")
        if not image.get("alt"):
            raise ManualError(f"the picture {name} has no text for those who do not see it")
        image.set("src", f"pictures/{name}.png")
        box = ElementTree.Element("span", {"class": "picture"})
        box.tail, image.tail = image.tail, None
        if width := image.attrib.pop("width", None):
            box.set("style", f"width: {width}")
        box.append(image)
        return box

    def make_figure(self, paragraph):
        """None, or the number of callouts that have to be explained."""
        image = paragraph[0]
        about = self.about.get(self.name_of(image), {})
        paragraph.set("class", ("figure " + image.attrib.pop("class", "")).strip())
        paragraph[0] = box = self.wrapped(image)
        width, height = about.get("size", (1, 1))
        callouts = about.get("callouts", [])
        for number, (side, x, y) in enumerate(callouts, 1):
            callout = ElementTree.SubElement(box, "span", {"class": f"callout {side}", "aria-hidden": "true"})
            left, top = 100 * x / width, 100 * y / height
            callout.set("style", {
                "left": f"right: {100 - left:.2f}%; top: {top:.2f}%",
                "right": f"left: {left:.2f}%; top: {top:.2f}%",
                "top": f"left: {left:.2f}%; bottom: {100 - top:.2f}%",
            }[side])
            ElementTree.SubElement(callout, "b").text = str(number)
        if callouts:
            paragraph.set("class", paragraph.get("class") + " explained")
        return len(callouts) or None


class TableProcessor(Treeprocessor):
    """Scopes for the heads of tables; a first column in bold heads its row."""

    def run(self, root):
        for table in root.iter("table"):
            for cell in table.iter("th"):
                cell.set("scope", "col")
            for row in table.find("tbody"):
                first = row[0]
                if len(first) == 1 and first[0].tag == "strong" and not first.text and not first[0].tail:
                    first.tag = "th"
                    first.set("scope", "row")


class Extension(markdown.Extension):
    def __init__(self, about):
        super().__init__()
        self.about = about

    def extendMarkdown(self, md):
        md.inlinePatterns.register(KeyProcessor(r"\[\[(.+?)\]\]"), "key", 175)
        md.treeprocessors.register(PictureProcessor(md, self.about), "picture", 2)
        md.treeprocessors.register(TableProcessor(md), "table", 1)


def chapters_of(tokens):
    return "\n".join(f'<li><a href="#{token["id"]}">{token["name"]}</a></li>' for token in tokens)


def page_of(text, about, version, date):
    """The whole page. ManualError: what is wrong with the text."""
    md = markdown.Markdown(
        extensions=["tables", "attr_list", "def_list", "meta", "sane_lists", "toc", Extension(about)],
        extension_configs={"toc": {"toc_depth": "2-2"}}, output_format="html")
    body = md.convert(text)
    try:
        names = {name: html.escape(md.Meta[name][0])
                 for name in ("language", "title", "subtitle", "cover", "contents")}
    except KeyError as missing:
        raise ManualError(f"its head does not give {missing}") from None
    return PAGE.substitute(names, version=version, date=date, body=body, chapters=chapters_of(md.toc_tokens))
