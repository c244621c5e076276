#!/usr/bin/env python3
"""Writes the brush style library 'brush_pressure.ai', which holds the art style "TrillowStyle".

The file was composed from what is known of the native syntax; it has never been opened in the real host
(packaging/README.md says how to try it). Standard library only, the same bytes at every run.

  make_brush_library.py OUT.ai [--level ai9|ai9text|cs6] [--diameter 1.5]
                               [--variation 1.2] [--style TrillowStyle]

Levels:
  ai9      level 9 native data in a PDF 1.4 wrapper (default: what is shipped)
  ai9text  the same native data as bare text, without a PDF
  cs6      CS6 (16.0) native data, deflated, in a PDF 1.5 wrapper
"""
import argparse
import zlib

PAGE_W, PAGE_H = 595.2756, 841.8898            # A4 in points
LINE = (85.0, 420.5, 510.0, 420.5)             # the one sample path in the file
STAMP = "D:20120101120000"
EOL = "\r\n"
BRUSH_TOOL = "Adobe Calligraphic Brush Tool"
BLOCK = 65536


def num(v):
    return f"{v:.4f}".rstrip("0").rstrip(".")


def ps(text):
    return "(" + text.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)") + ")"


def chunks(text, width):
    """A plug-in object's long string: pieces joined by ' -', the last ends ' .'"""
    parts = [text[i:i + width] for i in range(0, len(text), width)] or [""]
    return [ps(p) + " -" for p in parts[:-1]] + [ps(parts[-1]) + " ."]


def non_printing(lines):
    return ["%AI5_Begin_NonPrinting", "Np"] + lines + ["%AI5_End_NonPrinting--"]


def plugin_object(tool, name, text, width):
    return ["%AI8_BeginPluginObject", ps(tool), ps(name)] + chunks(text, width) + ["%AI8_EndPluginObject"]


class Library:
    def __init__(self, level, style, brush, diameter, variation):
        self.cs6 = level == "cs6"
        self.style, self.brush = style, brush
        self.diameter, self.variation = diameter, variation
        self.width = 64 if self.cs6 else 70
        self.miter = "10" if self.cs6 else "4"

    # --- header comments -------------------------------------------------
    def header(self):
        x0, y0, x1, y1 = LINE
        box = f"{int(x0)} {int(y0 - .5)} {int(x1) + 1} {int(y1 + 1)}"
        hires = f"{num(x0)} {num(y0 - .5)} {num(x1)} {num(y1 + .5)}"
        version, full, fmt = ("16.0", "16.0.0", "12.0") if self.cs6 else ("9.0", "9.0", "5.0")
        out = ["%!PS-Adobe-3.0 ",
               f"%%Creator: Adobe Illustrator(R) {version}",
               f"%%AI8_CreatorVersion: {full}",
               "%%For: () ()",
               "%%Title: (brush_pressure.ai)",
               "%%CreationDate: 1/1/2012 12:00 PM"]
        if self.cs6:
            out.append("%%Canvassize: 16383")
        out += [f"%%BoundingBox: {box}", f"%%HiResBoundingBox: {hires}",
                "%%DocumentProcessColors: Black", f"%AI5_FileFormat {fmt}"]
        if self.cs6:
            out.append("%AI12_BuildNumber: 682")
        out += ["%AI3_ColorUsage: Color", "%AI7_ImageSettings: 0",
                "%%CMYKProcessColor: 1 1 1 1 ([Registration])"]
        if self.cs6:
            out.append(f"%AI3_Cropmarks: 0 0 {num(PAGE_W)} {num(PAGE_H)}")
        art_size = "14400 14400" if self.cs6 else f"{num(PAGE_W)} {num(PAGE_H)}"
        out += ["%AI3_TemplateBox: 297.5 420.5 297.5 420.5",
                "%AI3_TileBox: 0 0 595 842", "%AI3_DocumentPreview: None",
                f"%AI5_ArtSize: {art_size}",
                "%AI5_RulerUnits: 2", "%AI9_ColorModel: 2", "%AI5_ArtFlags: 0 0 0 1 0 0 1 0 0",
                "%AI5_TargetResolution: 800", "%AI5_NumLayers: 1",
                "%AI9_OpenToView: -40 880 1 1000 700 " +
                ("18 0 0 50 120 0 0 0 1 1 0 1 1 0 1" if self.cs6 else "26 0 1 10 60 0 0 1 1 1 0"),
                "%AI5_OpenViewLayers: 7", "%%PageOrigin:0 0",
                "%AI7_GridSettings: 72 8 72 8 1 0 0.8 0.8 0.8 0.9 0.9 0.9",
                "%AI9_Flatten: " + ("1" if self.cs6 else "0")]
        if self.cs6:
            out.append("%AI12_CMSettings: 00.MS")
        return out + ["%%EndComments"]

    # --- resources --------------------------------------------------------
    def brushes(self):
        lo, hi = self.diameter - self.variation, self.diameter + self.variation
        # 1, min/max diameter, min/max roundness, min/max angle,
        # what drives diameter / roundness / angle (2 = pressure), angle relative to
        text = f"1 {num(lo)} {num(hi)} 100 100 0 0 2 0 0 0"
        order = f" {BRUSH_TOOL}/ {self.brush}/"
        return (non_printing(plugin_object("Adobe Brush Manager Order", "Adobe Brush Manager Order", order, self.width)) +
                non_printing(plugin_object(BRUSH_TOOL, self.brush, text, self.width)))

    def plain(self):
        return ["0 1 0 0 0 Xy", f"0 J 0 j 1 w {self.miter} M []0 d", "0 XR"]

    def basic(self, name, builtin, body):
        visible = ["1 /Visible ,"] if self.cs6 else []
        return ["/BasicFilter :", f"{ps(name)} {0 if builtin else 1} 0 /Filter ,"] + visible + body + [";", " /Part ,"]

    def basic_with_dict(self, name, builtin, head, entries):
        visible = ["1 /Visible ,"] if self.cs6 else []
        opening = "/Dictionary : /NotRecorded ," if self.cs6 else "/Dictionary :"
        return (["/BasicFilter :", f"{ps(name)} {0 if builtin else 1} 0 /Filter ,"] + visible + head +
                [opening] + entries + ["; /Dict ;", " /Part ,"])

    def styles(self):
        visible = ["1 /Visible ,"] if self.cs6 else []
        text_type = "/UnicodeString" if self.cs6 else "/String"

        def paint(kind, ops, key):
            return [f"/{kind} : {ops[0]}"] + ops[1:] + ["/Def ; ", f" ({key}) ,"]

        brush = self.basic_with_dict(
            BRUSH_TOOL, False,
            [ps("Calligraphic Brush Tool.aip") + " /PluginFileName ,",
             ps("Calligraphic Brush") + " /Title ,", "2 /FillOrStroke ,"],
            paint("StrokeStyle", ["0 R", "0 0 0 1 K"] + self.plain() + ["1 0 Xd"], "StrokeStyle") +
            [f"/GObjRef : {ps(self.brush)} {ps(BRUSH_TOOL)} /PluginObject ; (Brush) ,",
             f"{ps(self.brush)} {text_type} (DisplayString) ,",
             f"{num(self.diameter)} /Real (Diameter) ,",
             f"{num(self.variation)} /Real (DiameterVariation) ,",
             "2 /Int (DiameterDependsOn) ,",
             "100 /Real (Roundness) ,", "0 /Real (RoundnessVariation) ,", "0 /Int (RoundnessDependsOn) ,",
             "0 /Real (Angle) ,", "0 /Real (AngleVariation) ,", "0 /Int (AngleDependsOn) ,",
             "0 /Int (AngleRelativeTo) ,"])
        conduit = self.basic("Conduit Filter", True, [])
        fill = self.basic_with_dict(
            "Fill Style Filter", True, [],
            paint("FillStyle", self.plain() + ["0 0 Xd"], "FillStyle") + ["0 /Bool (UseEvenOdd) ,"])
        blend = self.basic_with_dict(
            "Blend Style Filter", True, [],
            paint("BlendStyle", self.plain(), "BlendStyle"))
        named = (["/KnownStyle :", f"{ps(self.style)} /Name ,", "/ActiveStyle :", "/CompoundFilter :",
                  "(Chain Style Filter) 0 0 /Filter ,"] + visible +
                 ["/CompoundFilter :", "(Stack Style Filter) 0 0 /Filter ,"] + visible +
                 brush + conduit + fill + [";", " /Part ,"] + blend +
                 [";", "/Execution ;", " /Def ;"])
        default = (["/KnownStyle :", "([Default]) /Name ,", "/SimpleStyle :",
                    "0 O", "0 0 0 0 k", "0 R", "0 0 0 1 K"] + self.plain() + ["1 1 Xd", "/Paint ;", " /Def ;"])
        return non_printing(["%AI9_BeginArtStyles"] + named + default + ["%AI9_EndArtStyles"])

    def style_list(self):
        return non_printing(["%AI9_BeginArtStyleList", "([Default])", ps(self.style), "%AI9_EndArtStyleList"])

    def palette(self):
        if self.cs6:
            registration = ["1 1 1 1 ([Registration]) 0 Xs", "([Registration])", "Pc"]
            colours = ["0 0 0 0 k", "(White)", "Pc", "0 0 0 1 k", "(Black)", "Pc"]
        else:
            registration = ["1 1 1 1 ([Registration]) 0 Xs", "([Registration]) Pc"]
            colours = ["0 0 0 0 k", "(White) Pc", "0 0 0 1 k", "(Black) Pc"]
        return ["%AI5_BeginPalette", "0 0 Pb"] + registration + colours + ["PB", "%AI5_EndPalette"]

    def plugin_inventory(self):
        return non_printing(["%AI8_PluginGroupInfo",
                             f"{ps(BRUSH_TOOL)} (Adobe Calligraphic Brush Plugin) (Calligraphic Brush Tool.aip)"])

    def document_data(self):
        recorded = ["300 /Real (AI9 Output Rasterization Resolution) ,",
                    "150 /Real (AI9 Mesh Rasterization Resolution) ,",
                    "0 /Bool (AI9 paper simulation) ,"]
        not_recorded = ["0 /Bool (AI9 no overprint in composite) ,"]
        if self.cs6:
            top = 8192 - PAGE_H / 2
            recorded += ["16383 /Int (AIDocumentCanvasSize) ,",
                         "/Array :", "/Dictionary :",
                         "(Artboard 1) /UnicodeString (Name) ,", "1 /Real (PAR) ,",
                         "1 /Bool (IsArtboardDefaultName) ,",
                         f"{num(8192 - PAGE_W / 2)} {num(top)} /RealPoint", " (RulerOrigin) ,",
                         "0 /Int (DisplayMark) ,",
                         f"{num(PAGE_W)} 0 /RealPointRelToROrigin", " (PositionPoint2) ,",
                         f"0 {num(PAGE_H)} /RealPointRelToROrigin", " (PositionPoint1) ,",
                         "; ,", "; (ArtboardArray) ,"]
            not_recorded = ["1 /Int (LastArtboardID) ,"]
        body = (["/Document :", "/Dictionary :"] + recorded + ["; /Recorded ,", "/Dictionary : /NotRecorded ,"] +
                not_recorded + ["; /NotRecorded ,", ";"])
        return ["%AI9_BeginDocumentData"] + ["%_" + line for line in body] + ["%AI9_EndDocumentData"]

    def layer(self):
        x0, y0, x1, y1 = LINE
        if self.cs6:
            naming = ["%_/ArtDictionary :", "%_/XMLUID : (Layer_1) ; (AI10_ArtUID) ,", "%_;", "%_"]
        else:
            naming = ["%_/ArtDictionary :", "%_(Layer 1) /String (AIArtName) ,", "%_;", "%_"]
        return (["%AI5_BeginLayer", "1 1 1 1 0 0 1 0 79 128 255 0 50 0 Lb", "(Layer 1) Ln"] + naming +
                ["0 A"] + (["0 Xw"] if self.cs6 else []) + ["0 R", "0 0 0 1 K"] + self.plain() +
                [f"{num(x0)} {num(y0)} m", f"{num(x1)} {num(y1)} L", "S", "LB", "%AI5_EndLayer--"])

    def stream(self):
        setup = ["%%BeginProlog", "%%EndProlog", "%%BeginSetup"]
        if self.cs6:
            setup += self.plugin_inventory() + self.brushes() + self.styles() + self.palette() + self.style_list()
        else:
            setup += self.brushes() + self.styles() + self.palette() + self.style_list() + self.plugin_inventory()
        tail = ["%%PageTrailer", "gsave annotatepage grestore showpage", "%%Trailer", "%%EOF", ""]
        lines = self.header() + setup + self.document_data() + ["%%EndSetup"] + self.layer() + tail
        return EOL.join(lines).encode("ascii")

    # --- wrapper -----------------------------------------------------------
    def preamble(self):
        keep = [l for l in self.header() if l.startswith(("%%BoundingBox", "%%HiRes"))]
        return (EOL.join(keep) + EOL).encode("ascii")

    def pdf(self):
        stream, meta = self.stream(), (EOL.join(self.header()) + EOL).encode("ascii")
        if self.cs6:
            payload = b"%AI12_CompressedData" + zlib.compress(stream, 9)
            blocks = [(b, "") for b in (payload[i:i + BLOCK] for i in range(0, len(payload), BLOCK))]
            version, container, creator, extra = "1.5", 11, 16, "/RoundtripStreamType 1"
        else:
            plain = [stream[i:i + BLOCK] for i in range(0, len(stream), BLOCK)]
            blocks = [(zlib.compress(b, 9), "/Filter[/FlateDecode]") for b in plain]
            version, container, creator, extra = "1.4", 9, 9, ""
        blocks.insert(0, (self.preamble(), ""))
        x0, y0, x1, y1 = LINE
        content = zlib.compress(f"0 0 0 1 K 1 w 0 J 0 j 4 M []0 d\n{num(x0)} {num(y0)} m\n{num(x1)} {num(y1)} l\nS\n".encode())
        box = f"[0 0 {num(PAGE_W)} {num(PAGE_H)}]"
        art = f"[{num(x0)} {num(y0 - .5)} {num(x1)} {num(y1 + .5)}]"
        first = 9
        refs = "".join(f"/AIPrivateData{i + 1} {first + i} 0 R" for i in range(len(blocks)))
        objects = [
            ("<</Type/Catalog/Pages 2 0 R>>", None),
            ("<</Type/Pages/Kids[3 0 R]/Count 1>>", None),
            (f"<</Type/Page/Parent 2 0 R/MediaBox{box}/TrimBox{box}/ArtBox{art}/Rotate 0/LastModified({STAMP})"
             f"/Contents 4 0 R/Resources<</ProcSet[/PDF]>>/PieceInfo<</Illustrator 6 0 R>>>>", None),
            (f"<</Filter/FlateDecode/Length {len(content)}>>", content),
            (f"<</CreationDate({STAMP})/ModDate({STAMP})/Title(brush_pressure.ai)>>", None),
            (f"<</Private 7 0 R/LastModified({STAMP})>>", None),
            (f"<</CreatorVersion {creator}/ContainerVersion {container}/RoundtripVersion {creator}{extra}"
             f"/NumBlock {len(blocks)}/AIMetaData 8 0 R{refs}>>", None),
            (f"<</Length {len(meta)}>>", meta),
        ] + [(f"<</Length {len(data)}{filt}>>", data) for data, filt in blocks]
        out = bytearray(f"%PDF-{version}\r".encode() + b"%\xe2\xe3\xcf\xd3\r\n")
        offsets = []
        for n, (head, data) in enumerate(objects, 1):
            offsets.append(len(out))
            out += f"{n} 0 obj\r{head}".encode("ascii")
            if data is not None:
                out += b"stream\r\n" + data + b"\r\nendstream"
            out += b"\rendobj\r"
        start = len(out)
        out += f"xref\r\n0 {len(objects) + 1}\r\n0000000000 65535 f\r\n".encode()
        for off in offsets:
            out += f"{off:010d} 00000 n\r\n".encode()
        out += f"trailer\r\n<</Size {len(objects) + 1}/Root 1 0 R/Info 5 0 R>>\r\nstartxref\r\n{start}\r\n%%EOF\r\n".encode()
        return bytes(out)


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("out")
    ap.add_argument("--level", choices=["ai9", "ai9text", "cs6"], default="ai9")
    ap.add_argument("--style", default="TrillowStyle")
    ap.add_argument("--brush", default="Trillow Pressure Pen")
    ap.add_argument("--diameter", type=float, default=1.5)
    ap.add_argument("--variation", type=float, default=1.2)
    a = ap.parse_args()
    if not 0 <= a.variation <= a.diameter:
        ap.error("variation must lie between 0 and the diameter")
    lib = Library(a.level, a.style, a.brush, a.diameter, a.variation)
    data = lib.stream() if a.level == "ai9text" else lib.pdf()
    with open(a.out, "wb") as f:
        f.write(data)


if __name__ == "__main__":
    main()
