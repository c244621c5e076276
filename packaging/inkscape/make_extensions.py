#!/usr/bin/env python3
"""Makes Inkscape's descriptions of the extension: make_extensions.py FOLDER

One for each ending, and one for the options, which have a place of their own in the menu: with options in the
others, Inkscape would ask before every file, and end where it runs without a display.
"""
import pathlib
import sys

PEN, INK = "application/x-penwick-recording", "application/inkml+xml"
ENDINGS = (("pnx", PEN, "Penwick pen recording"), ("eli", PEN, "Penwick pen recording"),
           ("kvo", INK, "Penwick ink document"), ("inkml", INK, "InkML ink document"))

DESCRIPTION = """<?xml version="1.0" encoding="UTF-8"?>
<inkscape-extension xmlns="http://www.inkscape.org/namespace/inkscape/extension">
  <name>Penwick (.{ending})</name>
  <id>org.penwick.input.{ending}</id>
  <dependency type="file" location="inx">penwick_inkscape.py</dependency>
  <input>
    <extension>.{ending}</extension>
    <mimetype>{mime}</mimetype>
    <filetypename>{kind} (*.{ending})</filetypename>
    <filetypetooltip>A drawing of the Penwick digital pen</filetypetooltip>
  </input>
  <script>
    <command location="inx" interpreter="python">penwick_inkscape.py</command>
  </script>
</inkscape-extension>
"""

OPTIONS = """<?xml version="1.0" encoding="UTF-8"?>
<inkscape-extension xmlns="http://www.inkscape.org/namespace/inkscape/extension">
  <name>Penwick Recordings</name>
  <id>org.penwick.options</id>
  <dependency type="file" location="inx">penwick_inkscape.py</dependency>
  <label>How recordings of the Penwick pen are opened from now on:</label>
  <param name="style" type="optiongroup" appearance="radio" gui-text="Lines">
    <option value="outline">as thick and thin as the pen was pressed</option>
    <option value="centerline">plain lines of one width, along the middle</option>
  </param>
  <param name="pressure" type="float" min="0" max="1" precision="2" gui-text="Pressure where the pen recorded none (0 to 1)">0.5</param>
  <param name="rescue" type="bool" gui-text="Open what can be saved of damaged recordings">true</param>
  <effect needs-document="false" needs-live-preview="false">
    <object-type>all</object-type>
    <effects-menu/>
    <menu-tip>Choose how recordings of the Penwick pen are opened</menu-tip>
  </effect>
  <script>
    <command location="inx" interpreter="python">penwick_inkscape.py</command>
  </script>
</inkscape-extension>
"""


def main():
    folder = pathlib.Path(sys.argv[1])
    for ending, mime, kind in ENDINGS:
        (folder / f"penwick_{ending}.inx").write_text(
            DESCRIPTION.format(ending=ending, mime=mime, kind=kind), encoding="utf-8")
    (folder / "penwick_options.inx").write_text(OPTIONS, encoding="utf-8")


if __name__ == "__main__":
    main()
