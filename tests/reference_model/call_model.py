"""Works out the calls that the plug-in makes on the host's suites.

Calls on the string and path suites are left out.  A call that may be missing (a
probe, the release of the access handle) is marked optional.
Handles are written "kind:number"; the comparison only asks that two names
stand for each other throughout, so the numbers need not agree.
"""

from art_model import SEGM, STYLE_NAME

CANT = 0x43414E54

FRAME_SUITES = [
    ("SP Access Suite", 3), ("SP Plug-ins Suite", 4), ("AI Notifier Suite", 3),
    ("AI Context Suite", 6), ("AI User Suite", 10), ("AI File Path Suite", 3),
    ("AI Folders Suite", 4)]
OWN_SUITES = [
    ("AI Unicode String Suite", 7), ("SP Blocks Suite", 2), ("AI File Format Suite", 12),
    ("AI Document Suite", 13), ("AI Text Frame Suite", 3), ("AI Art Suite", 16),
    ("AI Path Suite", 10), ("AI Matching Art Suite", 6), ("AI MdMemory Suite", 2),
    ("AI Application Suite", 2), ("AI Document List Suite", 7), ("AI Path Style Suite", 12),
    ("AI Layer Suite", 12), ("AI Real Bezier Suite", 3), ("AI TabletData Suite", 2),
    ("AI Art Style Suite", 6), ("AI Shape Construction Suite", 5), ("AI Runtime Suite", 11),
    ("AI Art Set Suite", 7)]
TEXT_ENGINE_WORDS = """
    ApplicationPaint CompFont CompFontClass CompFontClassSet CompFontComponent CompFontSet GlyphRun
    GlyphRunsIterator MojiKumi MojiKumiSet TextFrame TextFramesIterator TextLine TextLinesIterator
    TextResources ApplicationTextResources DocumentTextResources VersionInfo ArrayApplicationPaintRef
    ArrayReal ArrayBool ArrayInteger ArrayLineCapType ArrayFigureStyle ArrayLineJoinType
    ArrayWariChuJustification ArrayStyleRunAlignment ArrayAutoKernType ArrayBaselineDirection
    ArrayLanguage ArrayFontCapsOption ArrayFontBaselineOption ArrayFontOpenTypePositionOption
    ArrayUnderlinePosition ArrayStrikethroughPosition ArrayParagraphJustification ArrayArrayReal
    ArrayBurasagariType ArrayPreferredKinsokuOrder ArrayKinsokuRef ArrayMojiKumiRef ArrayMojiKumiSetRef
    ArrayTabStopsRef ArrayLeadingType ArrayFontRef ArrayGlyphID ArrayRealPoint ArrayRealMatrix
    CharFeatures CharInspector CharStyle CharStyles CharStylesIterator Find Font Glyph Glyphs
    GlyphsIterator Kinsoku KinsokuSet ParaFeatures Paragraph ParagraphsIterator ParaInspector ParaStyle
    ParaStyles ParaStylesIterator Spell Stories Story TabStop TabStops TabStopsIterator TextRange
    TextRanges TextRangesIterator TextRunsIterator WordsIterator""".split()
TEXT_ENGINE_SUITES = [("ATE %s Suite" % word, 101 if word in ("TextFrame", "DocumentTextResources") else 1)
                      for word in TEXT_ENGINE_WORDS]
ALL_SUITES = FRAME_SUITES + OWN_SUITES + TEXT_ENGINE_SUITES
BASIC = "SP Basic Suite"
VERSIONS = dict(ALL_SUITES, **{BASIC: 4})


class Call:
    __slots__ = ("suite", "function", "arguments", "result", "optional", "answers")

    def __init__(self, suite, function, arguments=None, result=0, optional=False, answers=()):
        self.suite, self.function = suite, function
        self.arguments = arguments or {}
        self.result = result            # None: not compared (a function without a result)
        self.optional = optional
        self.answers = answers          # the arguments that the host fills in

    def form(self):
        form = {"suite": self.suite, "version": VERSIONS[self.suite], "function": self.function,
                "arguments": self.arguments, "result": self.result}
        if self.optional:
            form["optional"] = True
        return form


def array(length, crc):
    return {"length": length, "checksum": crc}


def start_up():
    """The calls of the start-up message, suites first, the format last."""
    calls = [Call(BASIC, "AcquireSuite", {"name": name, "version": version}) for name, version in ALL_SUITES]
    calls += [
        Call("SP Plug-ins Suite", "GetPluginName", {"plugin": "plugin:1"}),
        Call("AI Notifier Suite", "AddNotifier",
             {"self": "plugin:1", "name": "kvoexportfile App Started Notifier",
              "type": "AI Application Started Notifier"}),
        Call("SP Access Suite", "AcquirePlugin", {"plugin": "plugin:1"}),
        Call("AI Runtime Suite", "GetAppMajorVersion", result=16),
        Call("AI Runtime Suite", "GetAppMinorVersion", result=0),
        Call("AI Runtime Suite", "GetAppMinorVersion", result=0),
        Call("AI File Format Suite", "AddFileFormat",
             {"self": "plugin:1", "name": "  Morva Penwick vector files",
              "title": " Morva Penwick vector files", "titleOrder": 0, "extension": "pnx,kvo",
              "options": 1, "extendedOptions": 0})]
    return calls


def shut_down():
    """Every acquired suite is given back once, in the order of acquiring."""
    return ([Call("SP Access Suite", "ReleasePlugin", optional=True)]
            + [Call(BASIC, "ReleaseSuite", {"name": name, "version": version}) for name, version in ALL_SUITES])


class Go:
    """The calls of one "AI Go" message for one recording."""

    def __init__(self, recording, art, topmost_first=True):
        self.calls = []
        self._next = {"layer": 1, "group": 1, "path": 0, "set": 0}
        self._load_library()
        if recording.complete:
            self._build(art, topmost_first)

    def _call(self, *arguments, **keywords):
        self.calls.append(Call(*arguments, **keywords))

    def _new(self, kind):
        self._next[kind] += 1
        return "%s:%d" % (kind, self._next[kind])

    def _load_library(self):
        self._call("AI Path Style Suite", "ImportStyles",
                   {"filePath": "brush_pressure.ai", "document": "document:2"}, answers=("document",))
        self._call("AI Art Style Suite", "GetArtStyleByNameFromDocument",
                   {"style": "style:1", "name": "TrillowStyle", "document": "document:2"}, answers=("style",))

    def _build(self, art, topmost_first):
        mapping = art.mapping
        self._call("AI Art Style Suite", "AddNamedStyle",
                   {"style": "style:1", "name": STYLE_NAME, "unique": True, "namedStyle": "style:2"},
                   answers=("namedStyle",))
        self._call("AI Document Suite", "GetAIVersion", result=None, optional=True)
        self._call("AI Document Suite", "GetDocumentSetup")
        self._call("AI Document Suite", "SetDocumentRulerOrigin", {"origin": [0.0, 0.0]})
        self._call("AI Document Suite", "SetDocumentSetup",
                   {"width": mapping.width, "height": mapping.height})
        self._call("AI Layer Suite", "CountLayers", {"count": 1}, answers=("count",))
        self._call("AI Layer Suite", "GetFirstLayer", {"layer": "layer:1"}, answers=("layer",))
        self._make_current("layer:1")
        layers = []
        layer, group = "layer:1", "group:1"
        for number, paths in enumerate(art.layers, 1):
            if number > 1:
                self._call("AI Layer Suite", "CountLayers", {"count": number - 1}, answers=("count",))
                layer, group = self._new("layer"), self._new("group")
                self._call("AI Layer Suite", "InsertLayer",
                           {"reference": None, "paintOrder": 5, "layer": layer}, answers=("layer",))
                self._make_current(layer)
            names = []
            for path in paths:
                names.append(self._draw(path, layer, group))
                if path.refused:
                    self._alert()
                    return
            layers.append((layer, names))
        self._apply_style(layers, topmost_first)

    def _make_current(self, layer):
        self._call("AI Layer Suite", "SetCurrentLayer", {"layer": layer})
        self._call("AI Layer Suite", "SetLayerEditable", {"layer": layer, "editable": True})

    def _draw(self, path, layer, group):
        self._call("AI Art Suite", "GetFirstArtOfLayer", {"layer": layer, "art": group}, answers=("art",))
        name = self._new("path")
        self._call("AI Art Suite", "NewArt",
                   {"type": 2, "paintOrder": 3, "reference": group, "art": name}, answers=("art",))
        count = {"path": name, "count": path.kept}
        if path.refused:
            self._call("AI Path Suite", "SetPathSegmentCount", count, result=SEGM)
            return name
        self._call("AI Path Suite", "SetPathSegmentCount", count)
        self._call("AI Path Suite", "SetPathSegmentCount", count)
        self._call("AI Path Suite", "SetPathSegments",
                   {"path": name, "first": 0, "count": path.kept,
                    "segments": array(path.kept, path.segment_checksum())})
        self._call("AI Path Suite", "SetPathClosed", {"path": name, "closed": False})
        self._call("AI TabletData Suite", "SetTabletData",
                   {"path": name, "profiles": array(path.count, path.tablet_checksum()),
                    "count": path.count, "type": 0})
        return name

    def _alert(self):
        """A refused path ends the build as 'CANT', with one alert."""
        user = {"name": "AI User Suite", "version": 10}
        self._call(BASIC, "AcquireSuite", user)
        self._call("AI User Suite", "ErrorAlert", result=None)
        self._call(BASIC, "ReleaseSuite", user)

    def _apply_style(self, layers, topmost_first):
        self._call("AI Layer Suite", "CountLayers", {"count": len(layers)}, answers=("count",))
        for index, (layer, paths) in enumerate(reversed(layers)):
            self._call("AI Layer Suite", "GetNthLayer", {"index": index, "layer": layer}, answers=("layer",))
            self._call("AI Layer Suite", "LayerHasArt", {"layer": layer, "hasArt": bool(paths)},
                       answers=("hasArt",))
            if not paths:
                continue
            name = self._new("set")
            self._call("AI Art Set Suite", "NewArtSet", {"set": name}, answers=("set",))
            self._call("AI Art Set Suite", "LayerArtSet", {"layer": layer, "set": name})
            self._call("AI Art Set Suite", "CountArtSet", {"set": name, "count": len(paths)},
                       answers=("count",))
            for place, path in enumerate(reversed(paths) if topmost_first else paths):
                self._call("AI Art Set Suite", "IndexArtSet", {"set": name, "index": place, "art": path},
                           answers=("art",))
                self._call("AI Art Style Suite", "SetArtStyle", {"art": path, "style": "style:2"})


def whole_life(recording, art, topmost_first=True):
    """Start-up, one "AI Go", shut-down."""
    return start_up() + Go(recording, art, topmost_first).calls + shut_down()
