import json
import os
import pathlib
import re
import subprocess

from command import CommandTest, ink, layer

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
COMMANDS = ["check", "convert", "info", "ink", "open", "packets", "rescue", "sheet", "view"]


class Usage(CommandTest):
    def assert_usage(self, words, text):
        before = self.files()
        self.penwick(*words)
        self.assertEqual(self.result.returncode, 2, self.errors)
        self.assertEqual(self.errors.count("\n"), 1)
        self.assertTrue(self.errors.startswith("penwick: "))
        self.assertIn(text, self.errors)
        self.assertEqual(self.files(), before)

    def test_help_is_given_for_everything(self):
        for words in (["--help"], ["open", "--help"], ["ink", "--help"],
                      ["convert", "--help"]):
            self.assert_done(*words)
            self.assertIn("Usage: penwick", self.out)
        self.penwick("--help")
        self.assertIn("open", self.out)
        self.assertIn("ink", self.out)

    def test_version(self):
        self.assert_done("--version")
        self.assertRegex(self.out, r"^penwick \d+\.\d+\.\d+\n$")

    def test_wrong_words(self):
        self.assert_usage([], "subcommand")
        self.assert_usage(["paint"], "paint")
        self.assert_usage(["open"], "FILE")
        self.assert_usage(["open", "a.pnx", "--nonsense"], "--nonsense")
        self.assert_usage(["ink", "a.pnx", "--as", "paper"], "paper")

    def test_one_output_for_several_files(self):
        self.assert_usage(["open", "a.pnx", "b.pnx", "-o", "c.svg"],
                          "-o takes one FILE; use --out-dir for several")

    def test_one_output_or_journal_for_a_folder(self):
        (self.folder / "a").mkdir()
        self.assert_usage(["open", "a", "-o", "c.svg"], "-o takes one FILE; use --out-dir for a folder")
        self.assert_usage(["open", "a", "--journal", "c"], "--journal takes one FILE")

    def test_two_rules_for_results_that_exist(self):
        self.assert_usage(["open", "a.pnx", "--force", "--on-conflict", "keep"],
                          "give --force or --on-conflict, not both")
        self.assert_usage(["convert", "a.pnx", "--on-conflict", "ask"],
                          "'ask' is not one of keep, replace, number")

    def test_jobs_and_limits_that_are_no_numbers(self):
        for number in ("0", "-1", "2.5", "many", "1001", ""):
            self.assert_usage(["open", "a.pnx", "--jobs", number],
                              f"'{number}' is not a number from 1 to 1000, such as 4")
        for number in ("0", "-1", "inf", "long"):
            self.assert_usage(["open", "a.pnx", "--time-limit", number],
                              f"'{number}' is not a number from 0.1 to 1000000, such as 60")

    def test_one_journal_for_several_files(self):
        self.assert_usage(["open", "a.pnx", "b.pnx", "--journal", "c"], "--journal takes one FILE")

    def test_an_output_and_a_folder(self):
        self.assert_usage(["open", "a.pnx", "-o", "a.svg", "--out-dir", "b"], "not both")

    def test_a_format_that_cannot_be_written(self):
        self.file("a.pnx")
        for words in (["-o", "a.dwg"], ["--format", "xls"]):
            self.assert_usage(["open", "a.pnx", *words], "is not a format that can be written; "
                                                         "choose one of svg, pdf, png, html, json")

    def test_an_output_that_does_not_tell_its_format(self):
        for name in ("a", "/dev/full"):
            self.assert_usage(["open", "a.pnx", "-o", name],
                              f"'{name}' has no ending that names a format; add one or give "
                              "--format (svg, pdf, png, html, json)")

    def test_a_name_and_a_format_that_contradict(self):
        self.assert_usage(["open", "a.pnx", "-o", "a.svg", "--format", "png"],
                          "'a.svg' does not fit --format png; leave one of them out")

    def test_an_ink_document_of_a_name_by_which_it_would_not_open(self):
        for name in ("a.svg", "a", "a.KVO"):
            self.assert_usage(["convert", "a.pnx", "-o", name],
                              "the name of an ink document ends in .kvo or .inkml, not in ")

    def test_empty_names(self):
        for words in (["open", ""], ["open", "a.pnx", "-o", ""], ["open", "a.pnx", "--out-dir", ""],
                      ["open", "a.pnx", "--journal", ""], ["ink", ""], ["ink", "a.pnx", "-o", ""]):
            self.assert_usage(words, "the name is empty")

    def test_a_file_whose_name_begins_with_a_dash(self):
        self.file("-a.pnx")
        self.assert_usage(["open", "-a.pnx"],
                          "'-a.pnx' looks like an option; write ./-a.pnx for the file")
        self.assert_done("open", "./-a.pnx")

    def test_every_option_is_in_the_man_page_and_the_completions(self):
        options = set()
        for command in COMMANDS:
            self.assert_done(command, "--help")
            options |= set(re.findall(r"--[a-z][a-z-]+", self.out))
        self.assertIn("--no-built-in-library", options)
        manual = (ROOT / "docs/penwick.1").read_text().replace("\\-", "-")
        fish = (ROOT / "cli/completions/penwick.fish").read_text().replace(" -l ", " --")
        texts = {"manual": manual, "fish": fish}
        for name in ("penwick.bash", "_penwick"):
            texts[name] = (ROOT / "cli/completions" / name).read_text()
        for name, text in texts.items():
            found = set(re.findall(r"--[a-z][a-z-]+", text))
            self.assertEqual(options - found, set(), name)
            self.assertEqual(found - options - {"--version"}, set(), name)

    def test_the_columns_of_json_are_documented(self):
        manual = (ROOT / "docs/penwick.1").read_text().replace("\\-", "-")
        page = (ROOT / "docs/json.md").read_text()
        self.file("a.pnx")
        self.file("a.kvo", ink("<definitions><brush id='b'><annotationXML/></brush>"
                               "<traceFormat id='f'/><context id='c' brushRef='#b' "
                               "traceFormatRef='#f'/></definitions>" + layer("")))
        for words in (["ink", "a.pnx"], ["ink", "a.kvo"],
                      ["open", "-q", "a.pnx", "-o", "-", "--format", "json"]):
            self.penwick(*words)
            for key in self.keys(json.loads(self.out)):
                self.assertRegex(page, rf"`{key}`|\"{key}\"")
        for column in ("x", "y", "z", "pressure", "tilt", "time"):
            self.assertRegex(manual, rf"\d {column}\b")
            self.assertRegex(page, rf"\| \d \| {column}\b")
        for limit in ("-3276.3 to 3277.2", "0.1 to 6553.9", "4294967295", "-128 to 127", "16383"):
            self.assertIn(limit, manual)
            self.assertIn(limit, page)

    def keys(self, value):
        if isinstance(value, list):
            return {key for one in value for key in self.keys(one)}
        if isinstance(value, dict):
            return set(value).union(*map(self.keys, value.values()))
        return set()

    def bash_completes(self, *words):
        line = " ".join(f"'{word}'" for word in words)
        script = (f"source '{ROOT}/cli/completions/penwick.bash'; compopt() {{ :; }}; "
                  f"COMP_WORDS=({line}); COMP_CWORD={len(words) - 1}; _penwick; "
                  "printf '%s\\n' \"${COMPREPLY[@]}\"")
        done = subprocess.run(["bash", "-c", script], cwd=self.folder, capture_output=True, text=True,
                              check=True)
        return sorted(done.stdout.split())

    def fish_completes(self, line):
        done = subprocess.run(["fish", "--no-config", "-c", f"source '{ROOT}/cli/completions/penwick.fish'; "
                               f"complete -C '{line}'"], cwd=self.folder, capture_output=True,
                              text=True, check=True, env=dict(os.environ, HOME=str(self.home)))
        return sorted(line.split("\t")[0] for line in done.stdout.splitlines())

    def recordings(self):
        for name in ("a.pnx", "b.PNX", "c.Eli", "d.kvo", "e.KVO", "f.txt", "g/h.pnx"):
            self.file(name)

    def test_bash_completes_commands_and_recordings(self):
        self.recordings()
        self.assertEqual(self.bash_completes("penwick", "open", ""),
                         ["a.pnx", "b.PNX", "c.Eli", "d.kvo", "g", "home"])
        self.assertEqual(self.bash_completes("penwick", "con"), ["convert"])

    def test_bash_completes_values_after_a_space_or_an_equals_sign(self):
        # An equals sign is a word of its own for bash.
        formats = ["html", "json", "pdf", "png", "svg"]
        for words in (["--format", ""], ["--format", "="], ["--format", "=", ""]):
            self.assertEqual(self.bash_completes("penwick", "open", *words), formats)
        for words in (["--format", "s"], ["--format", "=", "s"]):
            self.assertEqual(self.bash_completes("penwick", "open", *words), ["svg"])

    def test_fish_completes_commands_recordings_and_values(self):
        self.recordings()
        self.assertEqual(self.fish_completes("penwick "), COMMANDS)
        self.assertEqual(self.fish_completes("penwick open "),
                         ["a.pnx", "b.PNX", "c.Eli", "d.kvo", "g/", "home/"])
        self.assertEqual(self.fish_completes("penwick ink g/"), ["g/h.pnx"])
        self.assertEqual(self.fish_completes("penwick open --format=s"), ["--format=svg"])
        self.assertIn("f.txt", self.fish_completes("penwick open -o "))
