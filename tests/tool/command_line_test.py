"""The command line itself, and `plexoras expand`, as their users see them.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import os
import pty
import signal

from tool_case import ToolTest, main


class CommandLine(ToolTest):
    def test_wrong_usage(self):
        self.done("new", "p.html", "--name", "A")
        before = self.read("p.html")
        cases = [
            (["publsh"], 'there is no command "publsh"; did you mean "publish"?'),
            (["zzz"], 'there is no command "zzz"\n'),
            (["--frob"], "command is required"),
            (["get"], "PAGE[#NAME] is required"),
            (["get", "p.html", "--frob"], "not expected: --frob"),
            (["new", "p.html"], "--name is required"),
            (["new", "p.html", "--name", "a b"], '"a b" cannot name a control'),
            (["new", "p.html", "--name", "1"], "cannot name a control"),
            (["new", "p.html", "--name", "B", "--after", "x", "--before", "y"], "not both"),
            (["new", "p.html", "--name", "B", "--after", ""], "--after: must not be empty"),
            (["new", "p.html", "--name", "B", "FontSize"], '"FontSize" sets nothing; write PROPERTY=VALUE'),
            (["set", "p.html"], "nothing to set; write PROPERTY=VALUE"),
            (["set", "p.html", "=1"], '"=1" sets nothing'),
            (["set", "p.html", "--first-row"], "--first-row requires --csv"),
            (["set", "p.html", "--csv", "-", "--from", "-"], "standard input is read once: --from or --csv"),
            (["import"], "FILE is required"),
            (["import", "x.csv", "--first-row=maybe"], "--first-row: takes no value, or true or false"),
            (["import", "x.csv", "--delimiter", ""], "--delimiter: must not be empty"),
            (["publish", "p.html", "-o", ""], "--output: must not be empty"),
            (["publish", "p.html", "--keep-state"], "--keep-state requires --output"),
            (["publish", "p.html", "--color", "blue"], "auto"),
            (["expand", "x.dat", "S", "-D", "X"], '-D takes NAME=VALUE, not "X"'),
            (["expand", "x.dat", "S", "--nesting", "0"], "range"),
            (["expand", "x.dat", "S", "--", "-D"], "not expected: -D"),
        ]
        for arguments, message in cases:
            self.refused(2, message, *arguments)
        self.assertEqual(self.read("p.html"), before)

    def test_help_begins_with_examples(self):
        self.assertEqual(self.run_tool().stdout, self.run_tool("--help").stdout)
        self.assertRegex(self.done("--version"), rb"^plexoras \d+\.\d+\.\d+\n$")
        commands = ["new", "get", "set", "page", "describe", "image", "import", "refresh", "publish", "expand", "check"]
        for command in commands:
            self.assertIn(f"  {command} ", self.done("--help").decode())
            text = self.done(command, "-h").decode()
            self.assertRegex(text, rf"(?s)^[^\n]+\.\n\nExamples:\n  plexoras {command} .*\n\nUsage: .*--json")

    def test_standard_output_that_cannot_be_written(self):
        self.write("big.dat", b"[S]\n" + b"x" * 300_000 + b"\n")
        for arguments in (["expand", "big.dat", "S"], ["--help"], ["--version"], ["expand", "big.dat", "S", "--json"]):
            with open("/dev/full", "wb") as full:
                result = self.run_tool(*arguments, stdout=full)
            self.assertEqual(result.returncode, 1, arguments)
            self.assertIn(b"standard output cannot be written", result.stderr)

        reading, writing = os.pipe()
        os.close(reading)  # the reader is gone before the tool begins; no message then
        result = self.run_tool("expand", "big.dat", "S", stdout=writing, restore_signals=False)
        os.close(writing)
        self.assertEqual((result.returncode, result.stderr), (-signal.SIGPIPE, b""))

    def test_colours(self):
        red = b"\x1b["
        cases = [  # on a terminal?, environment, option, coloured?
            (True, {}, [], True),
            (True, {"NO_COLOR": ""}, [], True),
            (True, {"NO_COLOR": "1"}, [], False),
            (True, {"TERM": "dumb"}, [], False),
            (True, {}, ["--color=never"], False),
            (False, {}, [], False),
            (False, {"NO_COLOR": "1"}, ["--color=always"], True),
        ]
        for on_terminal, env, option, coloured in cases:
            ours, theirs = pty.openpty() if on_terminal else os.pipe()
            self.run_tool("publish", "none", *option, env=env, stderr=theirs)
            os.close(theirs)
            text = os.read(ours, 1000)
            os.close(ours)
            self.assertIn(b"none", text)
            self.assertEqual(red in text, coloured, (on_terminal, env, option, text))


class Expand(ToolTest):
    TEMPLATE = rb"""[TEXT]
hello $(X)
[FAIL]
first
  #INCLUDE BAD
[BAD]
before
	#DEFINE N #(%INC x\
y)
[INNER]
out=$([BROKEN])!
[BROKEN]
#DEFINE BROKEN kept
#DEFINE N $([)
[MISSING]
#INCLUDE X FROM none.dat
after
[FOREVER]
#MACRO M #M x
#M y
[SELF]
$(LOOP)
[VARIABLES]
#DEFINE B '  $(X)\n	'
#DEFINE C x
#DEFINE C ''
[HALT]
a
#HALT
b
"""
    FAILURE = (b"Template Build Internal Error\nAn error occured near \r\n"
               b"first\r\n  #INCLUDE BAD\r\nbefore\r\n\t#DEFINE N #(%INC x\\\r\ny)\r\n")
    WHERE = (b't.dat:8:12: error: %INC needs a whole number, not "xy" (error 13)\n'
             b"  \t#DEFINE N #(%INC x\\\n  \t          ^\n"
             b"t.dat:5:3: note: included from here\n")

    def setUp(self):
        super().setUp()
        self.write("t.dat", self.TEMPLATE)

    def test_streams_and_status(self):
        inner = b"Template Build Internal Error\nAn error occured near \r\n#DEFINE BROKEN kept\r\n#DEFINE N $([)\r\n"
        missing = b"<!-- ERROR: NO TEMPLATE FILE %s-->\r\n"
        cases = [  # arguments, status, standard output, how standard error begins, and all of it with -q
            (["t.dat", "TEXT"], 0, b"hello \r\n", b"", b""),
            (["t.dat", "TEXT", "-DX=1", "-D", "X=a=b"], 0, b"hello a=b\r\n", b"", b""),
            (["t.dat", "NONE"], 0, b"", b"", b""),
            (["t.dat", "HALT"], 0, b"a\r\nb\r\n", b"", b""),
            (["t.dat", "FAIL"], 1, b"", self.FAILURE + self.WHERE, self.FAILURE),
            (["t.dat", "FAIL", "--variables"], 1, b"", self.FAILURE + self.WHERE, self.FAILURE),
            (["t.dat", "INNER"], 0, b"out=kept!\r\n", inner + b't.dat:14:11: error: "["', inner),
            (["t.dat", "MISSING"], 0, missing % b"none.dat" + b"after\r\n", b"t.dat:16:1: warning: no template", b""),
            (["none.dat", "S"], 0, missing % b"none.dat", b"none.dat: warning: no template", b""),
            (["", "S"], 0, missing % b"", b"", b""),
            ([".", "S"], 0, missing % b".", b".: warning: no template", b""),
            (["t.dat", "VARIABLES", "--variables", "-D", "X=a\r\nb"], 0,
             b"X\ta\\r\\nb\nB\t  a\\r\\nb\\\\n     \nC\t\n", b"", b""),
        ]
        for arguments, status, output, begin, quiet in cases:
            result = self.run_tool("expand", *arguments)
            self.assertEqual((result.returncode, result.stdout), (status, output), arguments)
            self.assertEqual(result.stderr[:len(begin)], begin, arguments)
            result = self.run_tool("expand", "-q", *arguments)
            self.assertEqual((result.returncode, result.stdout, result.stderr), (status, output, quiet), arguments)

    def test_what_never_ends_is_stopped(self):
        for arguments in (["FOREVER"], ["SELF", "-D", "LOOP=$(LOOP)x"], ["SELF", "-D", "LOOP=$([SELF])$(LOOP)"]):
            result = self.run_tool("expand", "t.dat", *arguments)
            self.assertEqual((result.returncode, result.stdout), (1, b""))
            self.assertRegex(result.stderr, rb"error: Out of (stack|string) space.*\(error (28|14)\)")

    def test_json(self):
        (failure,) = self.json("expand", "t.dat", "FAIL", status=1)
        (place,) = failure["diagnostics"]
        self.assertEqual((failure["ok"], failure["text"]), (False, ""))
        self.assertEqual([place[k] for k in ("file", "line", "column", "severity", "number", "section")],
                         ["t.dat", 8, 12, "error", 13, "BAD"])
        (variables,) = self.json("expand", "t.dat", "VARIABLES", "--variables")
        self.assertEqual(variables["variables"], [{"name": "B", "value": "  \\n     "}, {"name": "C", "value": ""}])

    def test_the_date_can_be_fixed(self):
        self.write("d.dat", b"[D]\n%TODAY is #(%TODAY)\n")
        first = self.done("expand", "d.dat", "D", env={"SOURCE_DATE_EPOCH": "86400"})
        self.assertEqual(first, b"%TODAY is 01/02/70\r\n")
        self.refused(1, "SOURCE_DATE_EPOCH", "expand", "d.dat", "D", env={"SOURCE_DATE_EPOCH": "soon"})


if __name__ == "__main__":
    main()
