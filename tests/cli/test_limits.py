"""What the command says where the system gives it no more memory or files."""
import os
import resource
import subprocess

from command import CommandTest, PENWICK, coordinate, descriptor, stroke

KINDS = (["open", "-o", "-", "--format", "svg"], ["ink"], ["convert", "-o", "-"])


class Limits(CommandTest):
    def setUp(self):
        super().setUp()
        self.file("a.pnx", descriptor() + stroke(*[(i % 999, 10) for i in range(20000)]))

    def run_limited(self, kind, limit, *words):
        self.penwick(*words, preexec_fn=lambda: resource.setrlimit(kind, (limit, limit)))
        return self.result.returncode, self.out, self.errors

    def least_memory(self, *words):
        """In kilobytes: what the system needs to start the command, and what the work takes."""
        starts = self.least(lambda size: self.run_limited(
            resource.RLIMIT_AS, size * 1024, "--version")[0] == 0, 1000, 400000)
        works = self.least(lambda size: self.run_limited(
            resource.RLIMIT_AS, size * 1024, *words)[0] == 0, starts, 400000)
        return starts, works

    @staticmethod
    def least(works, low, high):
        while high - low > 100:
            middle = (low + high) // 2
            low, high = (low, middle) if works(middle) else (middle, high)
        return high

    def test_too_little_memory_is_said_in_one_line(self):
        for command, *words in KINDS:
            starts, works = self.least_memory(command, "a.pnx", *words)
            self.assertGreater(works - starts, 1000)
            for step in range(16):
                size = starts + 40 + (works - starts - 240) * step // 16
                status, out, errors = self.run_limited(resource.RLIMIT_AS, size * 1024, command, "a.pnx",
                                                       *words)
                self.assertEqual((status, out), (1, ""), (command, size))
                self.assertEqual(errors, "penwick: a.pnx: there is not enough memory\n",
                                 (command, size))

    def test_too_little_memory_costs_one_of_several_files_alone(self):
        self.file("large.pnx", descriptor() + 5 * stroke(*[(i % 999, 10) for i in range(20000)]))
        for name in ("b.pnx", "z.pnx"):
            self.file(name, descriptor() + stroke((0, 10), (100, 200)))

        def needed(name):
            return self.least(lambda size: self.run_limited(
                resource.RLIMIT_AS, size * 1024, "open", "-q", "--force", name)[0] == 0, 1000, 400000)
        small, large = needed("z.pnx"), needed("large.pnx")
        self.assertGreater(large - small, 4000)
        (self.folder / "large.svg").unlink()
        self.assertEqual(
            self.run_limited(resource.RLIMIT_AS, (small + large) // 2 * 1024, "open", "--force", "--jobs", "1",
                             "b.pnx", "large.pnx", "z.pnx")[::2],
            (1, "penwick: large.pnx: there is not enough memory\n"))
        self.assertTrue(self.out.endswith("2 drawn, 1 failed\n"), self.out)
        self.assertNotIn("large.svg", self.files())

    def test_too_few_files_for_a_process_are_said_for_each_file(self):
        self.file("b.pnx")
        self.assertEqual(
            self.run_limited(resource.RLIMIT_NOFILE, 4, "open", "-q", "a.pnx", "b.pnx"),
            (1, "", "".join(f"penwick: {name}: no process could be started for it (Too many open files); "
                            "try it alone\n" for name in ("a.pnx", "b.pnx"))))

    def test_too_few_files_are_said_in_one_line(self):
        for command, *words in KINDS:
            for limit in range(4, 10):
                self.assertEqual(self.run_limited(resource.RLIMIT_NOFILE, limit, command, "a.pnx", *words),
                                 (1, "", "penwick: a.pnx: too many files are open for this process; raise "
                                         "the limit with ulimit -n\n"))
            self.assertEqual(self.run_limited(resource.RLIMIT_NOFILE, 10, command, "a.pnx", *words)[0], 0)

    def test_the_files_that_may_be_open_hold_the_log_too(self):
        self.file("bad.pnx", b"\x02")
        self.run_limited(resource.RLIMIT_NOFILE, 10, "open", "bad.pnx", "--log-dir", "logs")
        self.assertIn("logs/orvo.log", self.files())

    def test_lists_any_number_of_packets_in_the_same_memory(self):
        self.file("small.pnx", descriptor() + coordinate(1, 1) * 1_000)
        self.file("large.pnx", descriptor() + coordinate(1, 1) * 1_000_000)
        peaks = [self.peak("packets", name) for name in ("small.pnx", "large.pnx")]
        # In kilobytes: the file alone has 6,000 more.
        self.assertLess(peaks[1] - peaks[0], 3_000)

    def test_reads_any_number_of_unknown_packets_in_the_same_memory(self):
        for name, count in (("small.pnx", 1_000), ("large.pnx", 300_000)):
            self.file(name, descriptor() + stroke((0, 10), (100, 200), (300, 10)) + (b"\x02\x3f" + bytes(61)) * count)
        for words in (["check"], ["open", "--force", "-o", "a.svg"], ["info"], ["convert", "--force", "-o", "a.kvo"]):
            command, *options = words
            small, large = (self.peak(command, name, *options) for name in ("small.pnx", "large.pnx"))
            # In kilobytes: the file alone has 18,900 more.
            self.assertLess(large - small, 3_000, command)

    def peak(self, *words):
        """The most memory in kilobytes of a command that is done."""
        process = subprocess.Popen([PENWICK, *words], cwd=self.folder, stdout=subprocess.DEVNULL,
                                   env={**os.environ, "HOME": str(self.home)})
        _, code, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(code)
        self.assertEqual(process.returncode, 0, words)
        return usage.ru_maxrss
