"""Opens a recording for Inkscape: prints it as SVG.

Inkscape calls it with the file, or from its menu with --style, --pressure and --rescue, which are kept for the
files to come. What goes to standard error Inkscape shows in a dialog, so that is only ever sentences for a
person.
"""
import argparse
import json
import os
import pathlib
import shutil
import subprocess
import sys

INSTALLED = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\PenwickVectorFiles"
MISSING = ("Inkscape's extension for Penwick recordings needs the command penwick, which is not there. Install it, "
           "or put it beside the extension ({place}).")


def where_windows_has_it():
    """The folder that the installer has chosen, as a list; empty elsewhere."""
    if os.name != "nt":
        return []
    import winreg  # only Windows has it
    try:
        with winreg.OpenKey(winreg.HKEY_LOCAL_MACHINE, INSTALLED, 0,
                            winreg.KEY_READ | winreg.KEY_WOW64_64KEY) as key:
            return [winreg.QueryValueEx(key, "InstallLocation")[0]]
    except OSError:
        return []


def find_penwick():
    """The command that lies beside this file, or else the one that is installed."""
    beside = pathlib.Path(__file__).resolve().parent
    for folder in [str(beside), os.environ.get("PATH", ""), *where_windows_has_it()]:
        found = shutil.which("penwick", path=folder)
        if found:
            return found
    raise LookupError(MISSING.format(place=beside))


def sentences_of(said, file):
    """The errors and warnings, and what was lost where the recording is damaged, without the name of the command
    and that of the folder. What was drawn is for a terminal."""
    name = os.path.basename(file)
    for line in said.decode("utf-8", "replace").splitlines():
        summary, rescued, saved = line.rpartition("; rescued: ")
        if line.startswith("penwick: "):
            yield line.removeprefix("penwick: ").replace(file, name)
        elif rescued and summary.startswith(file):
            yield f"{name}: rescued: {saved}"


def place_of_options():
    home = pathlib.Path.home()
    usual = {"nt": home / "AppData/Roaming", "darwin": home / "Library/Application Support"}
    variable = "APPDATA" if os.name == "nt" else "XDG_CONFIG_HOME"
    system = sys.platform if sys.platform == "darwin" else os.name
    base = os.environ.get(variable) or usual.get(system, home / ".config")
    return pathlib.Path(base) / "penwick" / "inkscape.json"


def kept_options():
    """What was chosen in the menu, as far as it makes sense; anyone may have changed the file."""
    options = {"style": "outline", "pressure": 0.5, "rescue": True}
    try:
        kept = json.loads(place_of_options().read_text(encoding="utf-8"))
    except (OSError, ValueError):
        return options
    kept = kept if isinstance(kept, dict) else {}
    if kept.get("style") in ("outline", "centerline"):
        options["style"] = kept["style"]
    if isinstance(kept.get("pressure"), (int, float)) and 0 <= kept["pressure"] <= 1:
        options["pressure"] = float(kept["pressure"])
    if isinstance(kept.get("rescue"), bool):
        options["rescue"] = kept["rescue"]
    return options


def keep_options(given):
    place = place_of_options()
    place.parent.mkdir(parents=True, exist_ok=True)
    options = {"style": given.style, "pressure": float(given.pressure), "rescue": given.rescue == "true"}
    place.write_text(json.dumps(options) + "\n", encoding="utf-8")


def words():
    parser = argparse.ArgumentParser()
    parser.add_argument("--style")
    parser.add_argument("--pressure")
    parser.add_argument("--rescue")
    parser.add_argument("file", nargs="?")
    return parser.parse_known_args()[0]


def command_for(file):
    options = kept_options()
    return [find_penwick(), "open", file, "-o", "-", "--format", "svg", "--style", options["style"],
            "--pressure", str(options["pressure"]), *(["--rescue"] if options["rescue"] else [])]


def show(file):
    # Without this flag Windows would show an empty console for a moment.
    done = subprocess.run(command_for(file), stdin=subprocess.DEVNULL, capture_output=True, check=False,
                          creationflags=getattr(subprocess, "CREATE_NO_WINDOW", 0))
    said = "\n".join(sentences_of(done.stderr, file))
    if not said and done.returncode != 0:
        said = f"{os.path.basename(file)}: penwick ended with {done.returncode} and did not say why."
    if said:
        sys.stderr.buffer.write((said + "\n").encode("utf-8"))
    if done.returncode == 0:
        sys.stdout.buffer.write(done.stdout)
    return 1 if done.returncode else 0


def main():
    given = words()
    try:
        if given.file is not None:
            return show(os.path.abspath(given.file))
        keep_options(given)
        return 0
    except (LookupError, OSError, ValueError, TypeError) as error:
        print(error, file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
