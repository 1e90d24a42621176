"""A page as a tagged PDF document, the same bytes each time.

WeasyPrint lays the page out and tags its text, headings, lists, tables and links. What it leaves out is added before the
document is written: pictures as figures with their texts, the scopes of a table's heads, and the order of reading where
something is drawn late. Pictures keep their palettes.
"""

import hashlib
import io
import mimetypes
import re
import struct

import pikepdf
import pydyf
import weasyprint

import tag_tree

# Where the page is said to come from: the document names its pictures after this.
BASE = "https://manual.invalid/"

NUMBER = re.compile(rb"(\d+) 0 R")


def chunks_of(png):
    """Kind and data of each chunk."""
    place = 8
    while place < len(png):
        length, kind = struct.unpack_from(">I4s", png, place)
        yield kind, png[place + 8:place + 8 + length]
        place += length + 12


class Tags:
    """What WeasyPrint tagged, page by page: which element of the document became which of the structure."""

    def __init__(self, document):
        self.pages = []
        self._build = document.build_element_structure
        document.build_element_structure = self._note

    def _note(self, structure, element=None):
        if element is None:
            self.pages.append(structure)
        self._build(structure, element)

    def finish(self, document):
        order = {element: place for place, element in enumerate(document._html.etree_element.iter())}
        for structure in self.pages:
            places = {}
            for key, data in structure.items():
                if "element" not in data or key not in order:
                    continue
                item = data["element"]
                places[item.reference] = order[key]
                if item["S"] == "/LBody":
                    places[item["P"]] = order[key]
                describe(key, item)
            for data in structure.values():
                if "element" in data:
                    data["element"]["K"].sort(key=lambda kid: places.get(kid, -1))


def describe(element, item):
    """What the structure has to say of an element besides its kind."""
    if element.get("class") == "picture":
        item["S"] = "/Figure"
        item["Alt"] = pydyf.String(element.find("img").get("alt"))
    elif element.tag == "ol":
        item["A"] = pydyf.Dictionary({"O": "/List", "ListNumbering": "/Decimal"})
    elif element.tag == "th":
        scope = "/Row" if element.get("scope") == "row" else "/Column"
        item["A"] = pydyf.Dictionary({"O": "/Table", "Scope": scope})


def keep_palettes(pdf, folder):
    """Puts each PNG with a palette into the document as it is, instead of three bytes a pixel."""
    objects = {name: reference for item in pdf.objects
               if isinstance(item, pydyf.Dictionary) and isinstance(item.get("XObject"), pydyf.Dictionary)
               for name, reference in item["XObject"].items()}
    for path in sorted(folder.glob("pictures/*.png")):
        url = f"{BASE}pictures/{path.name}"
        reference = objects.get("i" + hashlib.md5(url.encode()).hexdigest())
        chunks = list(chunks_of(path.read_bytes()))
        if reference is None or b"PLTE" not in dict(chunks):
            continue
        image = pdf.objects[int(NUMBER.match(reference)[1])]
        palette = dict(chunks)[b"PLTE"]
        depth = dict(chunks)[b"IHDR"][8]
        image.extra["ColorSpace"] = pydyf.Array(
            ["/Indexed", "/DeviceRGB", len(palette) // 3 - 1, f"<{palette.hex()}>"])
        image.extra["BitsPerComponent"] = depth
        image.extra["DecodeParms"].update({"Colors": 1, "BitsPerComponent": depth})
        image.stream = [b"".join(data for kind, data in chunks if kind == b"IDAT")]


def write(page, target):
    """page: a file, with its style and pictures beside it."""

    def fetch(url):
        path = page.parent / url.removeprefix(BASE)
        return {"file_obj": path.open("rb"), "mime_type": mimetypes.guess_type(path)[0]}

    text = page.read_text(encoding="utf-8")
    document = weasyprint.HTML(string=text, base_url=BASE, url_fetcher=fetch).render(optimize_size=("fonts",))
    tags = Tags(document)

    def finish(rendered, pdf):
        tags.finish(rendered)
        keep_palettes(pdf, page.parent)

    plain = document.write_pdf(variant="pdf/ua-1", finisher=finish, identifier=hashlib.md5(text.encode()).hexdigest().encode())
    with pikepdf.open(io.BytesIO(plain)) as pdf:
        tag_tree.straighten(pdf)
        pdf.save(target, object_stream_mode=pikepdf.ObjectStreamMode.generate, compress_streams=True,
                 recompress_flate=False, linearize=False, static_id=True)
