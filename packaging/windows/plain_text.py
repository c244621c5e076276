"""Makes a plain text of a Markdown page, for people who read it in an editor:

    python3 packaging/windows/plain_text.py PAGE.md >PAGE.txt

It takes the Markdown that the project's own pages use: headings, paragraphs, lists, tables, indented
code, emphasis, code and links. Each row of a table becomes an entry of its own.
"""
import pathlib
import re
import sys
import textwrap

WIDTH = 80
UNDERLINES = {1: "=", 2: "-"}
CODE = re.compile(r"`([^`]+)`")
LINK = re.compile(r"\[([^\]]+)\]\([^)]+\)")
EMPHASIS = re.compile(r"(\*{1,2})(\S(?:[^*]*\S)?)\1")


def plain(text):
    """The words of a paragraph without their marks. What is in code stays as it is; with blanks in it,
    it gets quotation marks, which show where it begins and ends."""
    kept = []

    def keep(match):
        kept.append(f'"{match[1]}"' if " " in match[1] else match[1])
        return f"\0{len(kept) - 1}\0"

    text = LINK.sub(r"\1", CODE.sub(keep, text))
    text = EMPHASIS.sub(r"\2", text)
    return re.sub("\0(\\d+)\0", lambda match: kept[int(match[1])], text)


def heading(line):
    marks, words = line.split(" ", 1)
    words = plain(words)
    return [words, UNDERLINES.get(len(marks), "-") * len(words)]


def cells(row):
    return [plain(cell.strip()) for cell in row.strip().strip("|").split("|")]


def wrapped(text, first, others):
    return textwrap.fill(text, WIDTH, initial_indent=first, subsequent_indent=others,
                         break_long_words=False, break_on_hyphens=False).splitlines()


def table(rows):
    """Each row's first cell on a line, the others below it after what their columns are called."""
    names = cells(rows[0])
    lines = []
    for row in rows[2:]:
        first, *others = cells(row)
        lines += ["", *wrapped(first, "* ", "  ")]
        for name, cell in zip(names[1:], others):
            lines += wrapped(f"{name}: {cell}", "    ", "      ")
    return lines[1:]


def converted(block):
    """The lines of a block, which is what stands between two blank lines."""
    if block[0].startswith("#"):
        return heading(block[0])
    if block[0].startswith("|"):
        return table(block)
    if block[0].startswith("    "):
        return block
    return plain("\n".join(block)).split("\n")


def text_of(page):
    blocks = [block.split("\n") for block in re.split(r"\n(?:[ \t]*\n)+", page.strip("\n"))]
    return "\n\n".join("\n".join(converted(block)) for block in blocks) + "\n"


if __name__ == "__main__":
    # Older editors on Windows take other characters for something else.
    sys.stdout.reconfigure(encoding="ascii")
    sys.stdout.write(text_of(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")))
