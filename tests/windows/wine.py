"""Running Windows programs under Wine, and where things lie there."""
import os
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BUILD = pathlib.Path(os.environ["PENWICK_BUILD"])
DIST = ROOT / "dist"
MODULE = BUILD / "bin/kvoexportfile.aip"
COMMAND = BUILD / "bin/penwick.exe"
NATIVE = ROOT / "build/test/bin/penwick"
# One sample shows what the plug-in refuses.
SAMPLES = sorted(file for ending in ("pnx", "kvo", "inkml")
                 for file in (ROOT / "samples").glob("*." + ending)
                 if file.name != "other-program.inkml")
RUNNER = ROOT / "tools/under-wine"
DRIVE = ROOT / "build/wine/drive_c"


def wine(*words, cwd=None, check=False, **more):
    """Runs a Windows program; its output is bytes."""
    return subprocess.run([str(RUNNER), *map(str, words)], cwd=cwd, check=check,
                          capture_output=True, timeout=240, **more)


def penwick(*words, cwd=None):
    return wine(COMMAND, *words, cwd=cwd)


def native(*words, cwd=None):
    """Runs the native command, which neither finds nor leaves anything in the user's own folders."""
    home = {name: value for name, value in os.environ.items() if not name.startswith("XDG_")}
    home["HOME"] = str(BUILD / "home")
    return subprocess.run([str(NATIVE), *map(str, words)], cwd=cwd, env=home, check=False,
                          capture_output=True, timeout=240)


def windows_path(path):
    """The Windows name of a file of this machine."""
    path = pathlib.Path(path)
    if path.is_relative_to(DRIVE):
        return "C:\\" + str(path.relative_to(DRIVE)).replace("/", "\\")
    return "Z:" + str(path).replace("/", "\\")


def folder_named_by(variable):
    """The folder of this machine behind a variable of Windows' environment, such as TEMP."""
    told = wine("cmd", "/c", f"echo %{variable}%", check=True).stdout.decode().strip()
    assert told.startswith("C:\\"), told
    return DRIVE / told[3:].replace("\\", "/")


def local_app_data():
    return folder_named_by("LOCALAPPDATA")
