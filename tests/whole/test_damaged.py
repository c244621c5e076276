"""A seeded share of damaged recordings and ink documents, read by the command and by the reference model."""
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import unittest
import xml.parsers.expat

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "reference_model"))
from compare import compare_values, load_json  # noqa: E402
from reference_model import form_of, read_file  # noqa: E402

PENWICK = os.environ["PENWICK"]
SEED = int(os.environ.get("PENWICK_SEED", 0)) or random.SystemRandom().randrange(1, 2**32)
SHARE = 2000 if "PENWICK_WHOLE" in os.environ else 60

RECORDING = bytes([1, 6, 3, 2, 4, 5, 17, 9, 1, 2, 3, 4, 5, 6, 7, 241, 3, 1]) + bytes(
    [97, 6, 1, 44, 1, 144, 100, 6, 1, 0, 15, 160, 101, 6, 236, 30, 0, 0, 194, 6, 17, 0, 1, 128,
     97, 6, 1, 54, 1, 164, 97, 6, 255, 251, 0, 3, 241, 3, 0, 241, 3, 1, 97, 6, 1, 244, 0, 2,
     119, 5, 1, 2, 3, 241, 3, 128, 97, 6, 0, 1, 0, 2, 97, 6, 0, 3, 0, 4])
DOCUMENT = b"""<ink><definitions><traceFormat id="f"/><brush id="b"><annotationXML/></brush>
<context id="c" brushRef="#b" traceFormatRef="#f"/></definitions><annotation type="t">T</annotation>
<tracegroup id="layer0"><trace contextRef="#c">10 20 0 512 -3 4 1,30 40 0 700 -3 4 9,50 60</trace>
<trace contextRef="#c">1 2,3 4</trace></tracegroup>
<tracegroup id="layer1"><trace contextRef="#c">7 8,9 10,11 12</trace></tracegroup></ink>
"""


def damaged(content, dice):
    """Cut, or with one byte changed; an ink document stays ASCII, so that it has one meaning."""
    place = dice.randrange(len(content))
    if content is RECORDING and dice.random() < 0.2:
        return content[:place]
    value = dice.choice((0, 255, content[place] + 1, content[place] - 1, content[place] ^ 1 << dice.randrange(8)))
    if content is DOCUMENT:
        value = value % 95 + 32
    return content[:place] + bytes([value & 255]) + content[place + 1:]


def is_well_formed(content):
    """The command's XML library also takes some documents that are not; the reference model takes none of them."""
    try:
        xml.parsers.expat.ParserCreate(namespace_separator=" ").Parse(content, True)
    except xml.parsers.expat.ExpatError:
        return False
    return True


class Damaged(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def read(self, file):
        done = subprocess.run([PENWICK, "ink", "-q", "--as", "inkml-subset" if file.suffix == ".kvo" else "pen", file],
                              capture_output=True, text=True, timeout=600, check=False)
        self.assertIn(done.returncode, (0, 1), done.stderr)
        return done.stdout if done.returncode == 0 else None

    def compared(self, content, name):
        """How many damaged files both have read."""
        dice = random.Random(SEED)
        both = 0
        for number in range(SHARE):
            file = self.folder / name
            file.write_bytes(damaged(content, dice))
            with self.subTest(seed=SEED, number=number, bytes=file.read_bytes()):
                found = self.read(file)
                if content is DOCUMENT and not is_well_formed(file.read_bytes()):
                    continue
                expected = read_file(str(file))
                self.assertEqual(found is not None, expected.complete)
                if found is not None:
                    due = form_of(str(file), expected)
                    self.assertEqual(list(compare_values(load_json(found), due, "ink", False)), [])
                    both += 1
        print(f"{name}: seed {SEED}, {SHARE} tried, {both} read by both")
        return both

    def test_recordings_are_read_as_the_reference_model_reads_them(self):
        self.assertGreater(self.compared(RECORDING, "a.pnx"), SHARE // 10)

    def test_ink_documents_are_read_as_the_reference_model_reads_them(self):
        self.assertGreater(self.compared(DOCUMENT, "a.kvo"), SHARE // 10)
