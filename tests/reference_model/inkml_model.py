"""Reads an ink document (InkML) and works out what a reader of the subset makes of it.

Python's own XML parser builds the tree, so only well-formed files can be read, and
white space written as character references counts as plain white space.
Everything else follows the rules of the format: names are compared as they are, a
trace's text is its first child node, whatever that is, numbers are whole, and what
cannot be read is left out.
"""

import re
import xml.dom.minidom
import xml.parsers.expat

from ink_model import Point, Region, box_form

BLANKS = " \t\n\v\f\r"
NUMBER = re.compile(r"[ \t\n\v\f\r]*([+-]?\d+)")


def whole_number(text):
    """The number at the start of a text, its low 32 bits as a signed number; 0 without any."""
    match = NUMBER.match(text)
    value = int(match.group(1)) if match else 0
    value = max(-2 ** 63, min(2 ** 63 - 1, value)) & 0xFFFFFFFF
    return value - 2 ** 32 if value & 0x80000000 else value


def unsigned(text):
    return whole_number(text) & 0xFFFFFFFF


def squeezed(text):
    return re.sub("[ \t\n\v\f\r]+", " ", text).strip(" ")


class Node:
    """A child of an element: kind ("element", "text" or "other"), and the value by which it is found."""

    def __init__(self, kind, value, attributes=None, children=()):
        self.kind, self.value = kind, value
        self.attributes = attributes or {}
        self.children = list(children)

    def elements(self, name):
        return [child for child in self.children if child.kind == "element" and child.value == name]

    def first(self, value):
        """The first child of any kind with this value, or None."""
        return next((child for child in self.children if child.value == value), None)


def node_of(dom):
    """Texts of white space alone are no nodes; other texts are condensed, CDATA is not."""
    if dom.nodeType == dom.ELEMENT_NODE:
        attributes = {name: value for name, value in dom.attributes.items()}
        children = [node_of(child) for child in dom.childNodes]
        return Node("element", dom.tagName, attributes, [child for child in children if child])
    if dom.nodeType == dom.CDATA_SECTION_NODE:
        return Node("text", dom.data)
    if dom.nodeType == dom.TEXT_NODE:
        text = squeezed(dom.data)
        return Node("text", text) if text else None
    if dom.nodeType == dom.COMMENT_NODE:
        return Node("other", dom.data)
    return Node("other", "?" + getattr(dom, "target", "") + " " + getattr(dom, "data", ""))


def tokens(text, separator):
    return [token for token in text.split(separator) if token]


def point_of(token):
    pieces = (tokens(token, " ") + [""] * 7)[:7]
    return Point(*[float(whole_number(piece)) for piece in pieces[:3]], unsigned(pieces[3]),
                 whole_number(pieces[4]), whole_number(pieces[5]), unsigned(pieces[6]))


def first_text(parent, source, name):
    """The text of a brush property: in the parent's own first child of that name before the source's
    and those below it."""
    def inside(node):
        named = node.elements(name)
        texts = [child.value for child in named[0].children if child.kind == "text"] if named else []
        if texts:
            return texts[0]
        return None

    def walk(node):
        text = inside(node)
        if text is not None:
            return text
        for child in node.children:
            if child.kind == "element":
                text = walk(child)
                if text is not None:
                    return text
        return None

    text = inside(parent)
    if text is None:
        text = walk(source)
    return text or ""


class Definitions:
    def __init__(self):
        self.formats, self.brushes, self.contexts = [], [], []

    def read(self, node):
        self.formats += [one.attributes["id"] for one in node.elements("traceFormat")
                         if "id" in one.attributes]
        for one in node.elements("brush"):
            self._read_brush(one)
        for one in node.elements("context"):
            if not self._read_context(one.attributes):
                return

    def _read_brush(self, node):
        source = node.first("annotationXML")
        if "id" not in node.attributes or source is None:
            return
        texts = {name: first_text(node, source, name)
                 for name in ("color", "width", "height", "transparency", "fittocurve", "ignorePressure", "pentip")}
        self.brushes.append({
            "id": node.attributes["id"], "color": texts["color"], "width": unsigned(texts["width"]),
            "height": unsigned(texts["height"]), "transparency": unsigned(texts["transparency"]),
            "antialiased": texts["ignorePressure"] in ("True", "true"),
            "fittocurve": texts["fittocurve"] in ("True", "true"),
            "ignorePressure": True, "pentip": texts["pentip"]})

    def _read_context(self, attributes):
        brush, form = attributes.get("brushRef", "#"), attributes.get("traceFormatRef", "#")
        good = ("id" in attributes and brush[:1] == "#" and form[:1] == "#"
                and brush[1:] in [one["id"] for one in self.brushes] and form[1:] in self.formats)
        if good:
            self.contexts.append({"id": attributes["id"], "brush": brush[1:], "traceFormat": form[1:]})
        return good

    def form(self):
        return {"traceFormats": [{"id": one} for one in self.formats], "brushes": self.brushes,
                "contexts": self.contexts}


def annotations_of(node):
    found = {}
    for one in node.elements("annotation"):
        if "type" in one.attributes and one.children and one.children[0].kind == "text":
            found[one.attributes["type"]] = one.children[0].value
    return dict(sorted(found.items(), key=lambda item: item[0].encode("utf-8")))


def first_corner(corner):
    """What the corner of an empty layer or document becomes: one at the origin counts as equal to the
    corner that is there, and its other five fields are not taken. (No pen recording has one there.)"""
    return Point() if corner.x == 0 and corner.y == 0 else corner.copy()


class InkRegion(Region):
    def append_region(self, region):
        first = not self.elements
        super().append_region(region)
        if first:
            self.low, self.high = first_corner(region.low), first_corner(region.high)


class InkDocument(InkRegion):
    """The expected document: layers of strokes of points, definitions, annotations and verdict."""

    def __init__(self, data):
        super().__init__()
        self.size = len(data)
        self.complete = False
        self.reason = self.offset = None
        self.annotations = {}
        self.definitions = Definitions()
        try:
            tree = xml.dom.minidom.parseString(data)
        except xml.parsers.expat.ExpatError as error:
            self.reason, self.offset = str(error), 0
            return
        nodes = [node_of(child) for child in tree.childNodes]
        root = next((node for node in nodes if node and node.value == "ink"), None)
        if root is None:
            self.reason, self.offset = "there is no root named ink", 0
            return
        self._read(root)
        self.complete = True

    def _read(self, root):
        definitions = root.first("definitions")
        if definitions is not None:
            self.definitions.read(definitions)
        for group in root.elements("tracegroup"):
            self.append_region(self._layer(group))
        self.annotations = annotations_of(root)

    def _layer(self, group):
        layer = InkRegion()
        layer.annotations = {}
        if not group.attributes.get("id", "").startswith("layer"):
            return layer
        for trace in group.elements("trace"):
            if trace.children and "contextRef" in trace.attributes:
                stroke = InkRegion()
                for token in tokens(trace.children[0].value, ","):
                    stroke.append_point(point_of(token))
                layer.append_region(stroke)
        layer.annotations = annotations_of(group)
        return layer

    def strokes(self):
        return [stroke for layer in self.elements for stroke in layer.elements]

    def points(self):
        return [point for stroke in self.strokes() for point in stroke.elements]


def read_ink_document(path):
    with open(path, "rb") as file:
        return InkDocument(file.read())


def inkml_form(document):
    """The ink document in the JSON form of `penwick ink`."""
    return {
        "kind": "inkml",
        "complete": document.complete,
        "bounds": box_form(document),
        "annotations": document.annotations,
        "definitions": document.definitions.form(),
        "layers": [{
            "bounds": box_form(layer),
            "annotations": layer.annotations,
            "strokes": [{"bounds": box_form(stroke),
                         "points": [point.values() for point in stroke.elements]}
                        for stroke in layer.elements]}
            for layer in document.elements]}
