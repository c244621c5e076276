"""What the files are, read from their bytes: nothing of them is run here."""
import collections
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zipfile

import wine

# What Windows 7 itself has. A system function that only later releases know would keep the module
# from being loaded there without a word: those of the run time and of these programs, each looked up.
SYSTEM_LIBRARIES = {"kernel32.dll", "msvcrt.dll", "shell32.dll"}
SYSTEM_FUNCTIONS = set("""
    AcquireSRWLockExclusive AddVectoredExceptionHandler CloseHandle CreateEventA CreateFileW CreateHardLinkW
    CreateSemaphoreA DeleteCriticalSection DeleteFileW DuplicateHandle EnterCriticalSection
    FileTimeToSystemTime FindFirstVolumeW FindNextVolumeW FindVolumeClose FormatMessageA
    FormatMessageW FreeLibrary GetConsoleOutputCP GetConsoleScreenBufferInfo GetCurrentProcess
    GetCurrentProcessId GetCurrentThread GetCurrentThreadId GetDiskFreeSpaceExW GetFileAttributesW
    GetFileInformationByHandle GetFileSizeEx GetFileType GetFullPathNameW GetHandleInformation
    GetLastError GetModuleFileNameW GetModuleHandleA GetModuleHandleW GetProcAddress
    GetProcessAffinityMask GetProcessTimes GetStartupInfoA GetSystemTimeAdjustment
    GetSystemTimeAsFileTime GetTempFileNameW GetTempPathW GetThreadContext GetThreadPriority
    GetThreadTimes GetTickCount64 GetVolumeInformationW InitializeCriticalSection IsDBCSLeadByteEx
    IsDebuggerPresent LeaveCriticalSection LoadLibraryExW LoadLibraryW LocalFree MoveFileExW
    MultiByteToWideChar OpenProcess OutputDebugStringA OutputDebugStringW QueryPerformanceCounter
    QueryPerformanceFrequency RaiseException ReleaseSRWLockExclusive ReleaseSemaphore RemoveDirectoryW
    RemoveVectoredExceptionHandler ResetEvent ResumeThread RtlCaptureContext RtlLookupFunctionEntry
    RtlUnwindEx RtlVirtualUnwind SetConsoleOutputCP SetEndOfFile SetEvent SetFilePointer
    SetLastError SetProcessAffinityMask SetSystemTime SetThreadContext SetThreadPriority
    SetUnhandledExceptionFilter Sleep SleepConditionVariableSRW SuspendThread SwitchToThread TlsAlloc TlsFree TlsGetValue
    TlsSetValue TryEnterCriticalSection VirtualProtect VirtualQuery WaitForMultipleObjects
    WaitForSingleObject WakeAllConditionVariable WideCharToMultiByte __C_specific_handler
    """.split())

RESOURCE_SECTION = 2
VERSION_RESOURCE = 16

# The property list, written out by hand.
PROPERTY_LIST = bytes.fromhex("""
    01 00 00 00 00 00 04 00 00 00 45 42 44 41 64 6E
    69 6B 00 00 00 00 04 00 00 00 41 45 50 53 45 42
    44 41 73 72 76 69 00 00 00 00 04 00 00 00 02 00
    00 00 45 42 44 41 36 38 78 77 00 00 00 00 0C 00
    00 00 50 6C 75 67 69 6E 4D 61 69 6E 00 00 45 42
    44 41 6D 6E 69 70 00 00 00 00 10 00 00 00 6B 76
    6F 65 78 70 6F 72 74 66 69 6C 65 00 00 00
    """)


class Image:
    """A PE file, as far as it is asked about here."""

    def __init__(self, path):
        self.bytes = path.read_bytes()
        self.start = self.word(0x3C)
        self.time = self.word(self.start + 8)
        assert self.bytes[self.start:self.start + 4] == b"PE\0\0"
        self.machine, sections = struct.unpack_from("<HH", self.bytes, self.start + 4)
        self.symbols = self.word(self.start + 16)
        self.optional = self.start + 24
        size, self.flags = struct.unpack_from("<HH", self.bytes, self.start + 20)
        self.magic, = struct.unpack_from("<H", self.bytes, self.optional)
        self.subsystem, self.loading = struct.unpack_from("<HH", self.bytes, self.optional + 68)
        self.system = struct.unpack_from("<HH", self.bytes, self.optional + 48)
        self.sections = []
        for i in range(sections):
            name, _, address, length, place = struct.unpack_from(
                "<8sIIII", self.bytes, self.optional + size + 40 * i)
            self.sections.append((name.rstrip(b"\0").decode(), address, length, place))

    def word(self, offset):
        return struct.unpack_from("<I", self.bytes, offset)[0]

    def directory(self, index):
        return self.word(self.optional + 112 + 8 * index)

    def place(self, address):
        for _, start, length, place in self.sections:
            if start <= address < start + length:
                return address - start + place
        raise AssertionError(f"no section holds {address:#x}")

    def text(self, address):
        begin = self.place(address)
        return self.bytes[begin:self.bytes.index(b"\0", begin)].decode("ascii")

    def exports(self):
        table = self.place(self.directory(0))
        functions, names = self.word(table + 20), self.word(table + 24)
        place = self.place(self.word(table + 32))
        return functions, [self.text(self.word(place + 4 * i)) for i in range(names)]

    def imports(self):
        """{library: its functions}"""
        place, found = self.place(self.directory(1)), {}
        while self.word(place + 12):
            library = found.setdefault(self.text(self.word(place + 12)).lower(), set())
            entry = self.place(self.word(place) or self.word(place + 16))
            while (hint := self.word(entry)) != 0:
                library.add(self.text(hint + 2))
                entry += 8
            place += 20
        return found

    def resources(self):
        """{(type, id, language): bytes}"""
        root, found = self.place(self.directory(RESOURCE_SECTION)), {}

        def name(word):
            if not word & 0x80000000:
                return word
            place = root + (word & 0x7FFFFFFF)
            length, = struct.unpack_from("<H", self.bytes, place)
            return self.bytes[place + 2:place + 2 + 2 * length].decode("utf-16-le")

        def walk(offset, path):
            named, numbered = struct.unpack_from("<HH", self.bytes, root + offset + 12)
            for i in range(named + numbered):
                word, below = struct.unpack_from("<II", self.bytes, root + offset + 16 + 8 * i)
                if below & 0x80000000:
                    walk(below & 0x7FFFFFFF, (*path, name(word)))
                else:
                    address, size = struct.unpack_from("<II", self.bytes, root + below)
                    place = self.place(address)
                    found[(*path, name(word))] = self.bytes[place:place + size]

        walk(0, ())
        return found


class TheModule(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.image = Image(wine.DIST / "kvoexportfile.aip")

    def test_is_a_64_bit_library(self):
        self.assertEqual(self.image.machine, 0x8664)
        self.assertEqual(self.image.magic, 0x20B)
        self.assertTrue(self.image.flags & 0x2000, "not a DLL")
        self.assertTrue(self.image.flags & 0x20, "cannot lie above 2 GB")
        self.assertEqual(self.image.subsystem, 2, "asks for a console")

    def test_exports_plugin_main_and_nothing_else(self):
        self.assertEqual(self.image.exports(), (1, ["PluginMain"]))

    def test_imports_only_what_windows_7_has(self):
        imports = self.image.imports()
        self.assertLessEqual(imports.keys(), SYSTEM_LIBRARIES)
        self.assertLessEqual(imports["kernel32.dll"], SYSTEM_FUNCTIONS)
        self.assertLessEqual(imports["shell32.dll"], {"SHGetFolderPathW"})

    def test_takes_no_index_of_thread_local_storage(self):
        self.assertNotIn("TlsAlloc", self.image.imports()["kernel32.dll"])

    def test_may_be_placed_anywhere_and_runs_no_data(self):
        high, anywhere, no_data = 0x20, 0x40, 0x100
        self.assertEqual(self.image.loading & (high | anywhere | no_data), high | anywhere | no_data)
        self.assertFalse(self.image.flags & 0x1, "has no relocations")
        self.assertIn(".reloc", [name for name, *_ in self.image.sections])

    def test_runs_on_windows_7(self):
        self.assertLessEqual(self.image.system, (6, 1))

    def test_has_the_property_list_byte_for_byte(self):
        self.assertEqual(len(PROPERTY_LIST), 110)
        self.assertEqual(self.image.resources()[("PIPL", 16000, 1033)], PROPERTY_LIST)

    def test_says_what_it_is(self):
        version = self.image.resources()[(VERSION_RESOURCE, 1, 1033)].decode("utf-16-le", "replace")
        for text in ("kvoexportfile.aip", "Penwick vector files",
                     "Opens Penwick pen recordings and ink documents", "0.1.0"):
            self.assertIn(text, version)

    def test_is_small_and_keeps_its_debug_symbols_apart(self):
        self.assertLess(len(self.image.bytes), 2 * 1024 * 1024)
        self.assertEqual(self.image.symbols, 0)
        # A name longer than eight characters shows as a number: only the link to the other file has one.
        long_names = [size for name, _, size, _ in self.image.sections if name.startswith("/")]
        self.assertEqual(long_names, [512])
        self.assertIn(b"kvoexportfile.aip.debug\0", self.image.bytes)
        apart = subprocess.run(
            ["x86_64-w64-mingw32-objdump", "--syms", wine.DIST / "debug/kvoexportfile.aip.debug"],
            capture_output=True, text=True, check=True).stdout
        self.assertIn("PluginMain", apart)

    def test_is_the_one_that_is_tested(self):
        self.assertEqual(self.image.bytes, wine.MODULE.read_bytes())
        self.assertEqual((wine.DIST / "penwick.exe").read_bytes(), wine.COMMAND.read_bytes())


class TheGuide(unittest.TestCase):
    PAGE = """# A *page*

Take `tea cup`, **not**
*Tea > Cup...* (see [below](#below), `*.cup`).

- one

    indented *code*

## Below

| you see | it means | do |
|---|---|---|
| `X` | nothing that a long sentence on tea could tell, however long it was | drink |
| `Y`, `Z` | tea | look [there](#below) |
"""
    TEXT = """A page
======

Take "tea cup", not
Tea > Cup... (see below, *.cup).

- one

    indented *code*

Below
-----

* X
    it means: nothing that a long sentence on tea could tell, however long it
      was
    do: drink

* Y, Z
    it means: tea
    do: look there
"""

    def test_is_made_of_a_page_without_its_marks(self):
        with tempfile.TemporaryDirectory() as folder:
            page = pathlib.Path(folder) / "page.md"
            page.write_text(self.PAGE)
            made = subprocess.run(
                [sys.executable, wine.ROOT / "packaging/windows/plain_text.py", page],
                capture_output=True, text=True, check=True).stdout
        self.assertEqual(made, self.TEXT)

    def test_has_every_word_of_the_page_and_none_of_its_marks(self):
        page = (wine.ROOT / "docs/illustrator.md").read_text()
        with zipfile.ZipFile(wine.DIST / "penwick-illustrator-cs6.zip") as archive:
            guide = archive.read("penwick/GUIDE.txt").decode("ascii")
        self.assertNotRegex(guide, r"`|\*\*|\*\w|\]\(|\n#|\n *\||---\|")

        def words(text):
            return collections.Counter(re.findall(r"\w+", text))

        # The first column of a table begins each entry and needs no name there.
        page = re.sub(r"^\|[^|\n]*(?=\|.*\n\|---)", "", page, flags=re.MULTILINE)
        self.assertFalse(words(re.sub(r"\]\([^)]*\)", "", page)) - words(guide))


class TheBuild(unittest.TestCase):
    """Built again, elsewhere and later, the files are the same byte for byte."""

    FILES = ("kvoexportfile.aip", "penwick.exe", "debug/kvoexportfile.aip.debug",
             "debug/penwick.exe.debug")
    def test_leaves_no_trace_of_the_folder_it_was_made_in(self):
        for name in self.FILES:
            with self.subTest(name):
                content = (wine.DIST / name).read_bytes()
                self.assertEqual(content.count(str(wine.ROOT).encode()), 0)

    def test_leaves_no_trace_of_the_time_it_was_made_at(self):
        for name in self.FILES:
            with self.subTest(name):
                self.assertEqual(Image(wine.DIST / name).time, 0)
        module = Image(wine.DIST / "kvoexportfile.aip")
        exports = module.place(module.directory(0))
        self.assertEqual(module.word(exports + 4), 0)

    def test_is_packed_alike_elsewhere_and_later(self):
        with tempfile.TemporaryDirectory() as folder:
            build, out = (pathlib.Path(folder) / name for name in ("build", "out"))
            shutil.copytree(wine.MODULE.parent, build / "bin")
            subprocess.run([wine.ROOT / "packaging/windows/pack", build, out], capture_output=True,
                           check=True)
            for name in ("penwick-illustrator-cs6-setup.exe", "penwick-illustrator-cs6.zip"):
                self.assertTrue((out / name).read_bytes() == (wine.DIST / name).read_bytes(), name)

    def test_leaves_no_assertions_in_the_xml_library(self):
        module = (wine.DIST / "kvoexportfile.aip").read_bytes()
        self.assertEqual(module.count(b"tinyxmlparser.cpp"), 0)


class TheCommand(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.image = Image(wine.DIST / "penwick.exe")

    def test_is_a_64_bit_console_program(self):
        self.assertEqual((self.image.machine, self.image.magic), (0x8664, 0x20B))
        self.assertEqual(self.image.subsystem, 3)

    def test_imports_only_what_windows_7_has(self):
        imports = self.image.imports()
        self.assertLessEqual(imports.keys(), SYSTEM_LIBRARIES)
        self.assertLessEqual(imports["kernel32.dll"], SYSTEM_FUNCTIONS)
        self.assertLessEqual(imports["shell32.dll"], {"SHGetFolderPathW", "ShellExecuteW"})

    def test_asks_for_long_names(self):
        manifest = self.image.resources()[(24, 1, 1033)]
        self.assertIn(b"<longPathAware", manifest)


class TheArchive(unittest.TestCase):
    def test_holds_the_files_that_are_installed_and_a_page_on_installing(self):
        with zipfile.ZipFile(wine.DIST / "penwick-illustrator-cs6.zip") as archive:
            self.assertIsNone(archive.testzip())
            held = {name.removeprefix("penwick/"): archive.read(name) for name in archive.namelist()}
        self.assertEqual(set(held), {"kvoexportfile.aip", "penwick.exe", "brush_pressure.ai",
                                     "place-brush-library.cmd", "INSTALL.txt", "GUIDE.txt",
                                     "LICENSE.txt", "THIRD-PARTY.txt", "signature.pnx"})
        self.assertEqual(held["kvoexportfile.aip"], wine.MODULE.read_bytes())
        self.assertEqual(held["penwick.exe"], wine.COMMAND.read_bytes())
        self.assertEqual(held["brush_pressure.ai"],
                         (wine.ROOT / "packaging/brush_pressure.ai").read_bytes())
        for name in ("INSTALL.txt", "GUIDE.txt", "place-brush-library.cmd"):
            lines = held[name].split(b"\n")
            self.assertGreater(len(lines), 10)
            self.assertTrue(all(line.endswith(b"\r") for line in lines[:-1]), name)
        for terms in (b"TinyXML", b"CLI11", b"zlib", b"winpthreads"):
            self.assertIn(terms.lower(), held["THIRD-PARTY.txt"].lower())


if __name__ == "__main__":
    unittest.main()
