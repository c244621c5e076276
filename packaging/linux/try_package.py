#!/usr/bin/env python3
"""Tries the Debian package: try_package.py PACKAGE.deb

lintian looks at it; it is installed in a bare Debian, used there as a desktop uses it, and removed again, after
which nothing may be left; and Inkscape, without a display, opens recordings with its extension.
"""
import configparser
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree as xml

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SAMPLES = sorted(file for file in (ROOT / "samples").iterdir() if file.suffix in (".pnx", ".kvo", ".inkml"))
# What a desktop has besides the package itself.
DESKTOP = ("shared-mime-info", "desktop-file-utils", "libglib2.0-bin", "xdg-utils", "file")
# What the system itself writes when any package comes or goes.
SYSTEMS_OWN = re.compile(r"(proc|sys|dev|run|tmp|var/lib/dpkg|var/log|var/cache/(apt|debconf|ldconfig))(/|$)")
LABEL = "{http://www.inkscape.org/namespaces/inkscape}label"
MODE = "{http://www.inkscape.org/namespaces/inkscape}groupmode"
SVG = "{http://www.w3.org/2000/svg}"


def run(*words, **more):
    more.setdefault("check", True)
    done = subprocess.run([str(word) for word in words], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                          timeout=600, **{**more, "check": False})
    if more["check"] and done.returncode != 0:
        sys.exit(f"{' '.join(map(str, words))} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done


def demand(holds, *what):
    if not holds:
        sys.exit(" ".join(["failed:", *map(str, what)]))


def state_of(root):
    """Every file below the folder, with what it is and holds."""
    state = {}
    for folder, folders, files in os.walk(root):
        below = os.path.relpath(folder, root)
        folders[:] = [name for name in folders if not SYSTEMS_OWN.match(os.path.normpath(f"{below}/{name}"))]
        for name in folders + files:
            path = os.path.join(folder, name)
            about = os.lstat(path)
            content = os.readlink(path) if os.path.islink(path) else ""
            if os.path.isfile(path) and not content:
                content = hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()
            state[os.path.relpath(path, root)] = (about.st_mode, about.st_uid, content)
    return state


class BareDebian:
    def __init__(self, root):
        self.root = root
        self.drawings = root / "tmp/drawings"

    def run(self, *words, **more):
        environment = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "HOME": "/tmp/drawings/home", "LC_ALL": "C.UTF-8",
                       "DEBIAN_FRONTEND": "noninteractive"}
        return run("chroot", self.root, *words, env=environment, **more)

    def try_command(self):
        for sample in SAMPLES:
            self.run("penwick", "open", "-q", f"/tmp/drawings/{sample.name}", "-o", f"/tmp/drawings/{sample.name}.svg")
            made = xml.parse(self.drawings / f"{sample.name}.svg")
            demand(made.findall(f".//{SVG}path"), sample.name)

    def try_thumbnails(self):
        entry = configparser.RawConfigParser()
        entry.read(self.root / "usr/share/thumbnailers/penwick.thumbnailer")
        line = entry["Thumbnailer Entry"]["Exec"]
        for sample in SAMPLES:
            values = {"%i": f"/tmp/drawings/{sample.name}", "%o": "/tmp/drawings/small.png", "%s": "256"}
            self.run(*[values.get(word, word) for word in line.split()])
            demand((self.drawings / "small.png").read_bytes().startswith(b"\x89PNG"), sample.name)

    def try_double_click(self):
        """As the desktop entry says, with a browser that only notes what it is to show."""
        entry = configparser.RawConfigParser()
        entry.read(self.root / "usr/share/applications/penwick.desktop")
        browser = self.drawings / "browser"
        browser.write_text('#!/bin/sh\necho "$1" >/tmp/drawings/shown\n')
        browser.chmod(0o755)
        for sample in SAMPLES:
            (self.drawings / "shown").unlink(missing_ok=True)
            line = entry["Desktop Entry"]["Exec"].replace("%f", f"/tmp/drawings/{sample.name}")
            self.run("env", "BROWSER=/tmp/drawings/browser", *line.split())
            shown = (self.drawings / "shown").read_text().strip().removeprefix("file://")
            demand("<html" in (self.root / shown.lstrip("/")).read_text(), sample.name, "is shown as", shown)

    def try_kinds(self):
        for sample in SAMPLES:
            wanted = "application/x-penwick-recording" if sample.suffix == ".pnx" else "application/inkml+xml"
            for name in (sample.name, sample.stem):
                if name == sample.stem:
                    shutil.copy(sample, self.drawings / name)
                told = self.run("gio", "info", "-a", "standard::content-type", f"/tmp/drawings/{name}").stdout
                demand(told.split()[-1] == wanted, name, "is", told)
            told = self.run("xdg-mime", "query", "default", wanted).stdout
            demand(told.strip() == "penwick.desktop", wanted, "is opened by", told)

    def try_package(self, package):
        self.drawings.mkdir()
        before = state_of(self.root)
        shutil.copy(package, self.root / "tmp/penwick.deb")
        self.run("dpkg", "-i", "/tmp/penwick.deb")
        print(f"installed: {len(set(state_of(self.root)) - set(before))} new files and folders")
        for sample in SAMPLES:
            shutil.copy(sample, self.drawings)
        self.try_command()
        self.try_thumbnails()
        self.try_kinds()
        self.try_double_click()
        self.run("dpkg", "--purge", "penwick")
        after = state_of(self.root)
        other = sorted(name for name in before.keys() | after.keys() if before.get(name) != after.get(name))
        demand(not other, "removing the package left other files than before:", other)
        print(f"removed: all {len(before)} files and folders are as before")


def try_in_bare_debian(package):
    depends = run("dpkg-deb", "-f", package, "Depends").stdout
    needed = [re.split(r"[ (|]", part.strip())[0] for part in depends.split(",")]
    hook = f'python3 -B "{pathlib.Path(__file__).resolve()}" --in-root "$1" "{package}"'
    made = run("mmdebstrap", "--quiet", "--variant=minbase", "--format=null", f"--include={','.join([*needed, *DESKTOP])}",
               f"--customize-hook={hook}", "bookworm", "/dev/null", check=False)
    # The hook's output comes among the messages.
    said = made.stdout + made.stderr
    demand(made.returncode == 0 and "removed:" in said, said)
    print(said.strip())


class Inkscape:
    """Inkscape of this system with the extension from the package, unpacked into a folder."""

    def __init__(self, folder, package):
        self.folder = folder
        run("dpkg-deb", "-x", package, folder / "package")
        (folder / "home/.config/inkscape").mkdir(parents=True)
        (folder / "home/.config/inkscape/extensions").symlink_to(folder / "package/usr/share/inkscape/extensions")
        self.environment = {"HOME": str(folder / "home"), "LC_ALL": "C.UTF-8",
                            "PATH": f"{folder}/package/usr/bin:/usr/bin:/bin"}

    def open(self, file):
        """What Inkscape saves of a recording, or None, and what it said."""
        made = self.folder / "made.svg"
        made.unlink(missing_ok=True)
        done = run("inkscape", file, "--export-type=svg", "-o", made, env=self.environment, check=False)
        return (xml.parse(made).getroot() if made.exists() else None), done.stderr

    def choose_options(self, file):
        """Has Inkscape run the entry of its menu; gives the file in which the options are kept."""
        run("xvfb-run", "-a", "inkscape", "--with-gui", "--batch-process", "--actions=org.penwick.options.noprefs", file,
            env=self.environment, check=False)
        return self.folder / "home/.config/penwick/inkscape.json"

    def drawn(self, file):
        return xml.fromstring(run("penwick", "open", "-q", file, "-o", "-", "--pressure", "0.5",
                                  env=self.environment).stdout.encode())


def layers_of(svg):
    """The layers with their names, and how many strokes each has."""
    return [(group.get(LABEL), len(group.findall(f".//{SVG}path"))) for group in svg.iter(f"{SVG}g")
            if group.get(MODE) == "layer"]


def try_in_inkscape(folder, package):
    inkscape = Inkscape(folder, package)
    other_names = {"lighthouse.pnx": ("ä drawing of mine.PNX", "lighthouse.eli")}
    count = 0
    for sample in SAMPLES:
        wanted = inkscape.drawn(sample)
        for name in (sample.name, *other_names.get(sample.name, ())):
            shutil.copy(sample, folder / name)
            opened, said = inkscape.open(folder / name)
            demand(opened is not None, name, "was not opened:", said)
            demand(layers_of(opened) == layers_of(wanted), name, "has other layers:", layers_of(opened))
            demand((opened.get("width"), opened.get("height")) == (wanted.get("width"), wanted.get("height")), name)
            count += 1
    (folder / "broken.pnx").write_bytes(b"x,y\n1,2\n")
    opened, said = inkscape.open(folder / "broken.pnx")
    demand(opened is None, "a broken recording was opened")
    demand("Traceback" not in said, said)
    demand(inkscape.choose_options(SAMPLES[0]).exists(), "Inkscape's menu kept no options")
    strays = [file for file in (folder / "package").rglob("*") if file.name in ("orvo.log", "__pycache__")]
    demand(not strays, strays)
    print(f"Inkscape opened {count} recordings with their layers, not the broken one, and kept its options")


def timed(what, function, *words):
    start = time.monotonic()
    function(*words)
    print(f"{what}: passed, {time.monotonic() - start:.0f} s", flush=True)


def main():
    if sys.argv[1] == "--in-root":
        BareDebian(pathlib.Path(sys.argv[2])).try_package(sys.argv[3])
        return
    package = pathlib.Path(sys.argv[1]).resolve()
    timed("lintian", run, "lintian", "--fail-on", "error,warning", package)
    timed("bare Debian", try_in_bare_debian, package)
    with tempfile.TemporaryDirectory() as folder:
        timed("Inkscape", try_in_inkscape, pathlib.Path(folder), package)


if __name__ == "__main__":
    main()
