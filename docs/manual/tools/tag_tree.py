"""Straightens a tagged document's tags, so that whatever reads it aloud says each word once, where it belongs.

WeasyPrint marks an element's content as a whole, with that of the elements inside marked again. Here each mark ends where
the next begins, and goes on behind it; lines, grounds and the feet of pages become artifacts, which are not read; a link's
place on the page and its text know of each other.
"""

import pikepdf

TEXT = {"TJ", "Tj", "'", '"', "Do"}
PAINT = {"f", "F", "f*", "B", "B*", "b", "b*", "S", "s", "sh"}


def instruction(operator, *operands):
    return pikepdf.ContentStreamInstruction(list(operands), pikepdf.Operator(operator))


class Page:
    """One page's content, rewritten piece by piece."""

    def __init__(self, parents, notes):
        self.parents = list(parents)  # of each mark: the element that it belongs to
        self.notes = notes            # of links that are still to come, in the order of their marks
        self.content = []
        self.marks = []               # the new parents
        self.order = {}               # of each element: its new marks, and the elements inside, as they come
        self.open = []                # the elements around a place, and what each is marked as there
        self.piece = []

    def finish_piece(self):
        operators = {str(step.operator) for step in self.piece}
        element, kind = self.open[-1] if self.open else (None, "/NonStruct")
        # What is put before or behind an element's text, such as an item's number, has no kind of its own.
        if operators & TEXT and kind != "/NonStruct":
            number = len(self.marks)
            self.marks.append(element)
            self.order.setdefault(element.objgen, (element, []))[1].append(number)
            self.surround("BDC", element.S, pikepdf.Dictionary(MCID=number))
        elif operators & (TEXT | PAINT):
            self.surround("BMC", pikepdf.Name.Artifact)
        else:
            self.content += self.piece
        self.piece = []

    def surround(self, operator, *operands):
        self.content += [instruction(operator, *operands), *self.piece, instruction("EMC")]

    def read(self, steps):
        for step in steps:
            operator = str(step.operator)
            if operator == "BDC":
                self.finish_piece()
                element = self.parents[int(step.operands[1].MCID)]
                if step.operands[0] == "/Link":
                    self.join(element, next(self.notes))
                self.open.append((element, str(step.operands[0])))
            elif operator == "EMC":
                self.finish_piece()
                inner, _ = self.open.pop()
                for outer, _ in self.open:
                    self.order.setdefault(outer.objgen, (outer, []))[1].append(inner)
            else:
                self.piece.append(step)
        self.finish_piece()

    @staticmethod
    def join(element, note):
        """note   the number of a link's place in the parent tree, and its reference."""
        entry, reference = note
        element.S = pikepdf.Name.Link
        element.K.append(reference)
        entry(element)

    def arrange(self):
        """Gives each element its new marks, between the elements inside."""
        for element in {item.objgen: item for item in self.parents}.values():
            kids = [kid for kid in element.K if isinstance(kid, pikepdf.Dictionary)]
            marks = self.order.get(element.objgen, (element, []))[1]
            if any(isinstance(mark, int) for mark in marks):
                kids = interleaved(element, kids, marks)
            element.K = pikepdf.Array(kids)


def interleaved(element, kids, marks):
    arranged, left = [], {kid.objgen: kid for kid in kids}
    for mark in marks:
        if isinstance(mark, int):
            arranged.append(mark)
        else:
            kid = left.pop(child_above(element, mark), None)
            arranged += [kid] if kid is not None else []
    return arranged + list(left.values())


def child_above(element, inner):
    """What stands between an element and one somewhere inside, right below the first; None if it is not inside."""
    while "/P" in inner and inner.P.objgen != element.objgen:
        inner = inner.P
    return inner.objgen if "/P" in inner else None


def prune(element):
    """Takes out what has become empty. true: the element itself has."""
    if element.get("/Type") != "/StructElem":
        return False
    element.K = pikepdf.Array(
        [kid for kid in element.K if not (isinstance(kid, pikepdf.Dictionary) and prune(kid))])
    return len(element.K) == 0


def straighten(pdf):
    numbers = pdf.Root.StructTreeRoot.ParentTree.Nums
    places = {int(numbers[place]): place + 1 for place in range(0, len(numbers), 2)}

    def entry_at(place):
        def enter(element):
            numbers[place] = element

        return enter

    notes = iter([(entry_at(places[key]), numbers[places[key]]) for key in sorted(places) if key >= len(pdf.pages)])
    for number, sheet in enumerate(pdf.pages):
        page = Page(numbers[places[number]], notes)
        page.read(pikepdf.parse_content_stream(sheet))
        page.arrange()
        sheet.Contents = pdf.make_stream(pikepdf.unparse_content_stream(page.content))
        numbers[places[number]] = pdf.make_indirect(pikepdf.Array(page.marks))
    for top in pdf.Root.StructTreeRoot.K:
        prune(top)
