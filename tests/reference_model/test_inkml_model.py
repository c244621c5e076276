"""The reference model of ink documents, against values worked out by hand."""

import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from inkml_model import InkDocument, inkml_form, whole_number


def ink(content):
    return InkDocument(("<ink>%s</ink>" % content).encode())


def points(text):
    document = ink("<tracegroup id='layer0'><trace contextRef='#c'>%s</trace></tracegroup>" % text)
    return [point.values() for point in document.points()]


def shape(document):
    return [[len(stroke.elements) for stroke in layer.elements] for layer in document.elements]


def brush(content):
    return ink("<definitions><brush id='b'>%s</brush></definitions>" % content).definitions.brushes


class Numbers(unittest.TestCase):
    def test_whole_numbers(self):
        for text, value in (("12", 12), ("-3.9", -3), ("1e+06", 1), (" \n+7x", 7), ("", 0), ("abc", 0), (".5", 0), ("+-5", 0),
                            ("4294967295", -1), ("2147483648", -2147483648), ("9" * 30, -1), ("-" + "9" * 30, 0)):
            self.assertEqual(whole_number(text), value, text)


class Traces(unittest.TestCase):
    def test_points(self):
        self.assertEqual(points("1 2 3 4 -5 6 7 8,9"), [[1, 2, 3, 4, -5, 6, 7], [9, 0, 0, 0, 0, 0, 0]])
        self.assertEqual(points("1 2,\n 3\t4"), [[1, 2, 0, 0, 0, 0, 0], [3, 4, 0, 0, 0, 0, 0]])
        self.assertEqual(points("<![CDATA[1\n2 3]]>"), [[1, 3, 0, 0, 0, 0, 0]])
        self.assertEqual(points("<!--1 2-->5"), [[1, 2, 0, 0, 0, 0, 0]])
        self.assertEqual(points("0 0 0 -1 0 0 4000000000"), [[0, 0, 0, 4294967295, 0, 0, 4000000000]])

    def test_what_is_left_out(self):
        document = ink("<tracegroup id='layer3'><trace>1</trace><trace contextRef=''/><trace contextRef=''>,</trace></tracegroup>"
                       "<tracegroup id='x'><trace contextRef=''>1</trace></tracegroup><traceGroup id='layer0'/>")
        self.assertEqual(shape(document), [[0], []])

    def test_annotations(self):
        document = ink("<annotation type='b'>1</annotation><annotation type='a'> x  y </annotation><annotation type='b'>2</annotation>"
                       "<annotation>3</annotation><annotation type='c'/><annotation type='d'><!--4--></annotation>")
        self.assertEqual(list(document.annotations.items()), [("a", "x y"), ("b", "2")])

    def test_boxes(self):
        document = ink("<tracegroup id='layer0'><trace contextRef=''>0 0 0 5 6 7 8,3 4</trace></tracegroup>")
        self.assertEqual(document.low.values(), [0, 0, 0, 0, 0, 0, 0])
        self.assertEqual(document.high.values(), [3, 4, 0, 0, 0, 0, 0])


class Definitions(unittest.TestCase):
    def test_brushes(self):
        one, = brush("<annotationXML><color>Red</color><width>3.5</width><antialiased>True</antialiased></annotationXML>")
        self.assertEqual(one, {"id": "b", "color": "Red", "width": 3, "height": 0, "transparency": 0, "antialiased": False,
                               "fittocurve": False, "ignorePressure": True, "pentip": ""})
        self.assertEqual(brush("<annotationXML><color>In</color></annotationXML><color>Sib</color>")[0]["color"], "Sib")
        self.assertTrue(brush("<annotationXML><x><ignorePressure>true</ignorePressure></x></annotationXML>")[0]["antialiased"])
        self.assertEqual(brush("<color>R</color>"), [])

    def test_contexts_end_at_the_first_that_fails(self):
        document = ink("<definitions><brush id='b'><annotationXML/></brush><traceFormat id='f'/><traceFormat/>"
                       "<context id='c' brushRef='#b' traceFormatRef='#f'/><context id='d' brushRef='b' traceFormatRef='#f'/>"
                       "<context id='e' brushRef='#b' traceFormatRef='#f'/></definitions>")
        self.assertEqual(document.definitions.form()["traceFormats"], [{"id": "f"}])
        self.assertEqual(document.definitions.contexts, [{"id": "c", "brush": "b", "traceFormat": "f"}])


class Roots(unittest.TestCase):
    def test_verdicts(self):
        for text, complete in (("<ink/>", True), ("<inkml/>", False), ("<a:ink xmlns:a='x'/>", False), ("<ink>", False),
                               ("<!--ink--><ink><tracegroup/></ink>", True)):
            self.assertEqual(InkDocument(text.encode()).complete, complete, text)
        self.assertEqual(shape(InkDocument(b"<!--ink--><ink><tracegroup/></ink>")), [])

    def test_form(self):
        self.assertEqual(list(inkml_form(ink(""))), ["kind", "complete", "bounds", "annotations", "definitions", "layers"])


if __name__ == "__main__":
    unittest.main()
