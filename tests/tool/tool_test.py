"""Runs the command line tool as its users do and looks at its streams, exit statuses and files.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import csv
import fcntl
import html
import io
import json
import os
import pty
import re
import shlex
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest
from html.parser import HTMLParser

TOOL = os.path.abspath(os.environ["PLEXORAS"])
SET_PIPE_SIZE = 1031  # F_SETPIPE_SZ, which the module fcntl names from Python 3.10 on

OPENING = b'<!--dtc PlexorasDTC.DiagramDTC name="%s"\n-->'
CLOSING = b"<!--/dtc-->"
SPAN = re.compile(rb"<!--dtc PlexorasDTC.*?<!--/dtc-->", re.DOTALL)


def listed(value):
    """A value as the listings of get and expand show it, and as set --from reads it."""
    for character, escape in ((b"\\", b"\\\\"), (b"\r", b"\\r"), (b"\n", b"\\n"), (b"\t", b"\\t")):
        value = value.replace(character, escape)
    return value


def unlisted(text):
    return re.sub(rb"\\(.)", lambda found: {b"r": b"\r", b"n": b"\n", b"t": b"\t"}.get(found[1], found[1]), text)


class ToolTest(unittest.TestCase):
    """A temporary folder to run the tool in, with settings of its own."""

    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        hidden = ("NO_COLOR", "SOURCE_DATE_EPOCH")
        self.environment = {k: v for k, v in os.environ.items() if k not in hidden}
        self.environment.update(HOME=self.folder, XDG_CONFIG_HOME=self.path("config"), LC_ALL="C", TERM="xterm")

    def path(self, name):
        return os.path.join(self.folder, name)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def write(self, name, data):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "wb") as file:
            file.write(data)

    def files(self):
        return sorted(os.path.relpath(os.path.join(at, name), self.folder)
                      for at, _, names in os.walk(self.folder) for name in names)

    def run_tool(self, *arguments, tool=TOOL, stdin=b"", env=None, **more):
        more.setdefault("stdout", subprocess.PIPE)
        more.setdefault("stderr", subprocess.PIPE)
        return subprocess.run([tool, *arguments], input=stdin, cwd=self.folder, check=False,
                              env={**self.environment, **(env or {})}, timeout=60, **more)

    def done(self, *arguments, **more):
        """Standard output of a run that must succeed."""
        result = self.run_tool(*arguments, **more)
        self.assertEqual(result.returncode, 0, (arguments, result.stderr))
        return result.stdout

    def refused(self, status, message, *arguments, **more):
        """A run that must fail: nothing on standard output, and a message that holds `message`."""
        result = self.run_tool(*arguments, **more)
        self.assertEqual((result.returncode, result.stdout), (status, b""), (arguments, result.stderr))
        self.assertIn(message, result.stderr.decode(), arguments)

    def json(self, *arguments, status=0, **more):
        """The objects that a run with --json prints; standard error must stay empty."""
        result = self.run_tool(*arguments, "--json", **more)
        self.assertEqual((result.returncode, result.stderr), (status, b""), arguments)
        objects = [json.loads(line) for line in result.stdout.splitlines()]
        self.assertEqual([o["version"] for o in objects], [1] * len(objects), arguments)
        return objects

    def install_template(self, text):
        """Makes `text` the DIAGRAM.DAT of the installation folder that the settings name."""
        self.write("config/PlexorasDTC/settings", b"[Default]\nPATH=" + self.path("install").encode() + b"\n")
        self.write("install/DTC/DIAGRAM.DAT", text)


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


class Pages(ToolTest):
    def test_bytes_outside_controls_are_kept(self):
        pages = {
            "LF": (b"<html><body>\n<p>x</p>\n</body></html>\n", b"\n"),
            "CR LF": (b"<html><body>\r\n<p>x</p>\r\n</BODY></html>\r\n", b"\r\n"),
            "no last line end": (b"<p>a", b"\n"),
            "empty": (b"", b"\n"),
            "byte order mark, no UTF-8, NUL": (b"\xef\xbb\xbf<body>\n\xff\xfe\0\x1a\n</body>", b"\n"),
            "marks that are none": (b"<body><script>'<!--dtc X name=\"A\"-->'</script>\n"
                                    b"<style>/* <!--/dtc--> */</style><p title='<!--dtc X'>x</p>\n"
                                    b"<textarea><!--/dtc--></textarea></body>\n", b"\n"),
        }
        for name, (page, line_break) in pages.items():
            self.write("p.html", page)
            self.done("new", "p.html", "--name", "A")
            self.done("set", "p.html#A", "CAPTION=x\ny", "FontSize=9")
            self.done("publish", "p.html")
            (span,) = SPAN.findall(self.read("p.html"))
            self.assertEqual(SPAN.sub(b"", self.read("p.html")).replace(line_break, b""), page.replace(line_break, b""))
            ends = set(re.findall(rb"\r?\n", span.replace(b"x\ny", b"")))  # one line end in a value is the author's
            self.assertEqual(ends, {line_break}, name)

    def test_places_for_a_new_control(self):
        page = (b"<body><p>twice</p><p>twice</p><table><tr><td></td></tr></table><pre>\n</pre>\n"
                b"<p title='in a tag'></p><script>in_script()</script><style>in_style {}</style>\n"
                + OPENING % b"Old" + b"in text" + CLOSING + b"</body>")
        bad_place = "a control cannot stand at that place"
        cases = [
            ("--after", "twice", None), ("--after", "<td>", None), ("--before", "\n</pre>", None),
            ("--after", "</body>", None), ("--after", "nowhere", '"nowhere" is not in this page'),
            ("--after", "in a ", bad_place), ("--after", "<p ", bad_place), ("--before", "_script", bad_place),
            ("--before", " {}", bad_place), ("--after", "in t", bad_place), ("--after", "name=", bad_place),
        ]
        for option, text, message in cases:
            self.write("p.html", page)
            if message:
                self.refused(1, message, "new", "p.html", "--name", "A", option, text)
                self.assertEqual(self.read("p.html"), page)
                continue
            self.done("new", "p.html", "--name", "A", option, text)
            before, after = page.split(text.encode(), 1)
            head, tail = (before + text.encode(), after) if option == "--after" else (before, text.encode() + after)
            self.assertTrue(self.read("p.html").startswith(head), text)
            self.assertTrue(self.read("p.html").endswith(tail), text)
            self.done("publish", "p.html")

    def test_pages_that_cannot_be_read_are_left_alone(self):
        whole = OPENING % b"A" + CLOSING
        cases = [
            (b"<p>\n" + OPENING % b"A", ":2:1: error: this control is not closed"),
            (b'<!--dtc X name="A"', ":1:1: error: the comment that holds this control's state is not closed"),
            (b"\n " + CLOSING, ":2:2: error: this closing mark belongs to no control"),
            (whole + b"\n" + whole, ':3:1: error: the name "A" is taken by the control in line 1'),
            (whole.replace(b"Diagram", b"X"), ':1:1: error: control "A": there is no control "PlexorasDTC.XDTC"'),
            (whole.replace(b"-->", b'F="&bad;"\n-->', 1), ":2:4: error: this \"&\" begins no entity"),
            (whole.replace(b"-->", b'XmlStyle="junk"\n-->', 1), ':1:1: error: control "A": XmlStyle: 1:1: '),
        ]
        for page, message in cases:
            self.write("p.html", page)
            self.refused(1, "p.html" + message, "get", "p.html#A", "FontSize")
            self.refused(1, "p.html" + message, "set", "p.html#A", "FontSize=9")
            self.refused(1, "p.html" + message, "publish", "p.html")
            (row,) = self.json("publish", "p.html", status=1)
            told = "{file}:{line}:{column}: {severity}: {message}".format(**row["problems"][0])
            self.assertEqual(told[:len("p.html" + message)], "p.html" + message)
            self.assertEqual(self.read("p.html"), page)
        self.assertEqual(self.files(), ["p.html"])

    @unittest.skipIf(os.geteuid() == 0, "root may write everywhere")
    def test_read_only(self):
        self.write("ro/p.html", OPENING % b"A" + CLOSING)
        for mode, path in ((0o555, "ro"), (0o444, "ro/p.html")):
            os.chmod(self.path(path), mode)
            for arguments in (["publish", "ro"], ["set", "ro/p.html", "FontSize=9"]):
                self.refused(1, "ro/p.html: Permission denied", *arguments)
            os.chmod(self.path(path), 0o755)
        self.assertEqual(self.files(), ["ro/p.html"])


class Properties(ToolTest):
    def test_values_are_checked(self):
        self.done("new", "p.html", "--name", "A")
        self.done("new", "p.html", "--name", "B")
        before = self.read("p.html")
        cases = [
            ("FontSize=70000", "FontSize takes a whole number from -32768 to 32767"),
            ("FontSize=1.5", "FontSize takes a whole number"),
            ("xScaleMin=1,5", "xScaleMin takes a number"),
            ("xScaleMin=1e999", "xScaleMin takes a number"),
            ("HasLegend=maybe", "HasLegend takes True or False"),
            ("width=-1", "a size takes 0 to 32767 pixels"),
            ("name=1", "cannot name a control"),
            ("name=B", 'the name "B" is taken'),
            ("captoin=x", 'there is no property "captoin"; did you mean "CAPTION"?'),
            ("AppletID=x", 'there is no property "AppletID"'),
            ("Contents=<xml>", "XmlContents: 1:"),
            ("XmlStyle=<xml><FontSize>big</></>", "XmlStyle: 1:16: FontSize (Integer)"),
            ('CsvContents="a', "CsvContents: 1:1: the quoted field"),
        ]
        for assignment, message in cases:
            self.refused(1, message, "set", "p.html#A", "FontName=other", assignment)
        self.refused(1, "-:2:1: error: this line sets nothing", "set", "p.html#A", "--from", "-", stdin=b"ALT=x\nALT\n")
        self.refused(1, "-:1:1: error: \"\\\" must be followed", "set", "p.html#A", "--from", "-", stdin=b"ALT=\\q\n")
        self.refused(1, "p.html: which control? Write p.html#NAME; here are: A, B", "set", "p.html", "ALT=x")
        self.refused(1, 'no control "Q" (here are: A, B)\n', "get", "p.html#Q")
        self.refused(1, 'did you mean "FontSize"?', "get", "p.html#A", "--changed", "FontSiz")
        self.refused(1, "there is a control \"A\" already", "new", "p.html", "--name", "A")
        self.done("set", "p.html#A", "FontSize=9", "--dry-run")
        self.assertEqual(self.read("p.html"), before)

    def test_changes_make_a_fresh_control_into_this_one(self):
        self.done("new", "p.html", "--name", "A")
        self.assertEqual(self.done("get", "p.html#A", "--changed"), b"")
        self.done("set", "p.html#A", "DiagramType=4", "width=100", "visible=False", "WidthRatio=50",
                  "CAPTION=x\ny\\", "CsvContents=a,b\nx,1\n", "colTitle=a\tb", "RENDERER=", "HasLegend=false",
                  "xScaleMin=-0.5")
        changed = self.done("get", "p.html", "--changed")
        self.assertEqual(changed, b"width=100\nvisible=False\nDiagramType=4\nxScaleMin=-0.5\nHasLegend=False\n"
                         b"RENDERER=\nCAPTION=x\\ny\\\\\n"
                         b"Contents=<xml><rows>a<row>x</></><cols>a&tab;b<col>b</></><data><value>1</></></xml>\n"
                         b"WIDTH=50%\n")
        self.done("new", "q.html", "--name", "B")
        self.done("set", "q.html#B", "--from", "-", stdin=changed)
        self.assertEqual(self.done("get", "q.html", "--changed"), changed)
        self.assertEqual(self.done("get", "q.html", "CAPTION"), b"x\ny\\\n")
        self.assertEqual(self.done("get", "q.html", "CAPTION", "DiagramType"), b"CAPTION=x\\ny\\\\\nDiagramType=4\n")
        (page,) = self.json("get", "q.html", "--changed", "CAPTION")
        self.assertEqual(page["controls"][0]["properties"], {"CAPTION": "x\ny\\"})

    def test_keys_of_a_templates_own(self):
        self.done("new", "p.html", "--name", "A")
        self.refused(1, 'there is no property "MINE"', "set", "p.html", "MINE=1")
        self.done("set", "p.html", "--custom", "MINE=1", '#odd "key"/\'=x')
        self.done("set", "p.html", "MINE=2")
        self.assertEqual(self.done("get", "p.html", "--changed"), b"MINE=2\n#odd \"key\"/'=x\n")

    def test_json(self):
        self.assertEqual(self.json("new", "p.html", "--name", "A")[0]["outcome"], "written")
        (row,) = self.json("set", "p.html", "FontSize=12")
        self.assertEqual((row["page"], row["control"], row["outcome"]), ("p.html", "A", "unchanged"))
        for arguments in (["get", "none.html"], ["get", "p.html#B"], ["set", "p.html", "FontSize=big"],
                          ["new", "p.html", "--name", "A"], ["publish", "none.html"],
                          ["publish", "p.html", "-o", "p.html"]):
            (failure,) = self.json(*arguments, status=1)
            self.assertEqual(failure["problems"][0]["severity"], "error")
            self.assertIn(arguments[1].split("#")[0], failure["problems"][0]["message"])


class PublishedPage(HTMLParser):
    """The elements of a page and the parameters of its chart, as a browser reads them."""

    def __init__(self, page):
        super().__init__(convert_charrefs=True)
        self.elements, self.parameters, self.attributes = [], {}, {}
        self.feed(page.decode("latin-1"))
        self.close()

    def handle_starttag(self, tag, attrs):
        if tag == "param":
            self.parameters[dict(attrs)["name"]] = dict(attrs)["value"]
        else:
            self.elements.append(tag)
            self.attributes[tag] = dict(attrs)

    def handle_endtag(self, tag):
        self.elements.append("/" + tag)

    def handle_comment(self, data):
        self.elements.append("comment")


def unescaped(text):
    """A text of a style or contents document."""
    for entity, character in (("lt", "<"), ("gt", ">"), ("quot", '"'), ("apos", "'"), ("tab", "\t"), ("amp", "&")):
        text = text.replace(f"&{entity};", character)
    return text


class HostileValues(ToolTest):
    """What an author types reaches the reader as it is, and the page keeps its shape."""

    VALUES = [
        b"plain", b'"', b"'", b'"quoted"', b"''", b" blanks ", b"-->", b"--", b"---", b"-", b"--!>", b"<!--", b"<",
        b"</script", b"</plexoras-diagram>", b"<!--/dtc-->", b'<!--dtc PlexorasDTC.DiagramDTC name="A"\n-->',
        b"\0", bytes(range(1, 32)), bytes(range(127, 256)), b"\xff\xfe", b"\xc3(", b"\xed\xa0\x80", b"\xe2\x82\xac",
        b"$(X)", b"#(X)", b"$(CAPTION)", b"#(HTML ALT)", b"$([TEMPLATE])", b"$(\\CAPTION,a,b)", b"#(%TODAY)", b"$($(X)",
        b"\\$(", b"\\$(X)", b"\\#(", b"\\", b"a\\", b"a\\\n", b"$", b"$(", b"(", b")", b"#", b"#HALT", b"#INCLUDE X",
        b"a\n#DEFINE CAPTION b\nc", b"[TEMPLATE]", b"; x", b"$('#total').text(\"x\")", b"_VALUE", b"$(_VALUE)",
        b"$(ESCAPED)", b"$(_OPEN)X)", b"&", b"&amp;", b"&#36;(", b"&quot;", b"%41", b",", b"a=b", b"\t", b"\r\n\r\n",
        b"a\rb",
    ]
    PLAIN = ["CAPTION", "ALT", "MENU", "HASMENU"]  # custom properties, escaped by the template
    STYLE = ["FontName", "negativeForeColor"]

    def test_in_every_kind_of_property(self):
        def as_html(text):  # HTML itself reads CR LF and CR as LF
            return text.replace("\r\n", "\n").replace("\r", "\n")

        shape = None
        for value in self.VALUES:
            text = value.decode("latin-1")
            field = b'"' + value.replace(b'"', b'""') + b'"'
            settings = {name.encode(): value for name in self.PLAIN + self.STYLE + ["WIDTH"]}
            settings.update({b"USEMENU": b"Yes", b"CsvContents": b"c,%s\r\n%s,%s\r\n" % (field, field, field)})
            self.write("p.html", b"<body>" + OPENING % b"A" + CLOSING + b"</body>")
            lines = b"".join(name + b"=" + listed(each) + b"\n" for name, each in settings.items())
            self.done("set", "p.html", "--from", "-", stdin=lines)
            self.done("publish", "p.html")
            got = self.done("get", "p.html", "CAPTION", "FontName", "CsvContents").split(b"\n")
            self.assertEqual(got[:2], [b"CAPTION=" + listed(value), b"FontName=" + listed(value)])
            sheet = unlisted(got[2].split(b"=", 1)[1]).decode("latin-1")
            self.assertEqual(list(csv.reader(io.StringIO(sheet, newline=""))), [["c", text], [text, text]])

            page = PublishedPage(self.read("p.html"))
            shape = shape or page.elements
            self.assertEqual(page.elements, shape, value)
            read = {"CAPTION": page.parameters["Caption"], "ALT": page.parameters["Alt"],
                    "MENU": page.parameters["Menu"], "HASMENU": page.parameters["HasMenu"],
                    "WIDTH": page.attributes["plexoras-diagram"]["width"]}
            self.assertEqual({name: as_html(each) for name, each in read.items()}, dict.fromkeys(read, as_html(text)))
            style = page.parameters["XmlStyle"]
            for name in self.STYLE:
                (found,) = re.findall(f"<{name}>([^<]*)</>", style)
                self.assertEqual(unescaped(found), text, name)
            contents = re.findall("<(row|col|value)>([^<]*)</>", page.parameters["XmlContents"])
            self.assertEqual([unescaped(each) for _, each in contents], [text] * 3)

    def test_ten_megabytes(self):
        big = '"$(x)-->\\#(' * 900_000
        contents = f"<xml><rows><row>{big}</></><cols></><data></></xml>"
        for name, value, parameter in (("FontName", big, "XmlStyle"), ("colTitle", big, "XmlContents"),
                                       ("Contents", contents, "XmlContents")):
            self.write("p.html", OPENING % b"A" + CLOSING)
            self.done("set", "p.html", "--from", "-", stdin=f"{name}=".encode() + listed(value.encode()) + b"\n")
            self.done("publish", "p.html")
            (document,) = re.findall(f'<param name="{parameter}" value="([^"]*)">', self.read("p.html").decode())
            self.assertEqual(unescaped(html.unescape(document)).count(big), 1, name)


def document(corner, rows, columns, values):
    """A contents document; None among the rows is one without a label."""
    rows = "".join("<row/>" if row is None else f"<row>{row}</>" for row in rows)
    columns = "".join(f"<col>{column}</>" for column in columns)
    values = "".join(f"<value>{value}</>" for value in values)
    return f"<xml><rows>{corner}{rows}</><cols>{columns}</><data>{values}</></xml>".encode()


class Import(ToolTest):
    TABLE = b"a,b\n1,2\n"
    LABELLED = document("a", ["1"], ["b"], ["2"])

    def test_flags(self):
        plain = document("", [None, None], [], ["a", "b", "1", "2"])
        cases = [
            (self.TABLE, [], plain),
            (self.TABLE, ["--first-row", "--first-col"], self.LABELLED),
            (self.TABLE, ["--first-row"], document("", [None], ["a", "b"], ["1", "2"])),
            (self.TABLE, ["--first-col"], document("", ["a", "1"], [], ["b", "2"])),
            (self.TABLE, ["--first-row", "--no-first-row"], plain),
            (b"", [], b"<xml><cols/><rows/><data/></>"),
            (b"a\tb\r\n1\t2", ["--delimiter", "tab"], plain),
            (b"a\tb\r1\t2\r", ["--delimiter", "\\t"], plain),
            (b"a::b\n1::2\n", ["--delimiter", "::"], document("", [None] * 2, [], ["a", ":b", "1", ":2"])),
            (b"'a|'|b", ["--delimiter=pipe", "--qualifier", "'"], document("", [None], [], ["a|", "b"])),
            (b'"a b"x c', ["--delimiter", "blank", "--qualifier=doublequote"], document("", [None], [], ["a b", "c"])),
            (b"\xc3\xa9,<\t", [], document("", [None], [], ["\u00e9", "&lt;&tab;"])),
            ("\u00e9,b".encode("utf-16"), ["--encoding", "utf-16"], document("", [None], [], ["\u00e9", "b"])),
        ]
        for data, flags, expected in cases:
            self.write("d.csv", data)
            for result in (self.run_tool("import", "d.csv", *flags), self.run_tool("import", *flags, "-", stdin=data)):
                self.assertEqual((result.returncode, result.stdout, result.stderr), (0, expected, b""), flags)

    def test_standard_input_is_read_from_where_it_stands(self):
        self.write("d.csv", b"skip\n" + self.TABLE)
        with open(self.path("d.csv"), "rb", buffering=0) as file:
            file.seek(5)
            out = subprocess.run([TOOL, "import", "-", "--first-row", "--first-col"], stdin=file, check=True,
                                 stdout=subprocess.PIPE).stdout
        self.assertEqual(out, self.LABELLED)

    def test_guess(self):
        lines = b"".join(b"2024-01-%02d;%d,5;%d\r\n" % (day, day, day * 7) for day in range(1, 29))
        data = "day;caf\u00e9;b\r\n".encode("utf-16-le") + lines.decode().encode("utf-16-le")
        self.write("d.csv", b"\xff\xfe" + data)
        guessed = self.run_tool("import", "d.csv", "--guess")
        said = guessed.stderr.decode().splitlines()
        self.assertTrue(guessed.stdout.startswith(b"<xml><rows>day<row>2024-01-01</>"), guessed.stdout[:99])
        self.assertEqual([line.split(" ")[0] for line in said],
                         ["encoding", "delimiter", "qualifier", "first", "first", "the"])
        flags = said[-1].split(": ")[1].split()
        self.assertEqual(self.done("import", "d.csv", *flags), guessed.stdout)
        self.assertEqual(self.done("import", "-", "--guess", stdin=b"\xff\xfe" + data), guessed.stdout)

        quiet = self.run_tool("import", "d.csv", "--guess", "-q", "--no-first-row", "--delimiter", ",")
        self.assertEqual(quiet.stderr, b"")
        self.assertIn(b"<cols></>", quiet.stdout)
        self.assertIn(b"5;7</>", quiet.stdout)
        result = self.run_tool("import", "d.csv", "--guess", "--json")
        row = json.loads(result.stderr)
        self.assertEqual((row["delimiter"], row["first_row"], row["source"], len(row["choices"])),
                         (";", True, "d.csv", 5))
        self.assertEqual(result.stdout, guessed.stdout)

    def test_failures(self):
        os.mkdir(self.path("folder"))
        self.write("d.csv", b"a,b\n\n1,2\n")
        self.write("cut.csv", b"a\0b")
        self.write("zip.csv", b"PK\x03\x04\x14,\xff")
        cases = [
            (["none.csv"], "File not found: none.csv: "),
            (["folder"], "Path/File access error: folder: Is a directory"),
            (["d.csv", "--first-col"], "d.csv:2: "),
            (["cut.csv", "--encoding", "UTF-16LE"], "cut.csv: "),
            (["d.csv", "--encoding", "UTF-9"], ""),
            (["zip.csv", "--guess"], "zip.csv: this is no text: it begins as a spreadsheet or another ZIP archive "
                                     "does; save it as CSV"),
            (["d.csv", "--guess", "--encoding", "UTF-9"], ""),
        ]
        if os.geteuid() != 0:
            self.write("secret.csv", b"a")
            os.chmod(self.path("secret.csv"), 0)
            cases.append((["secret.csv"], "Path/File access error: secret.csv: Permission denied"))
        for arguments, message in cases:
            result = self.run_tool("import", *arguments)
            self.assertEqual((result.returncode, result.stdout), (1, b""), arguments)
            self.assertRegex(result.stderr.decode(), "(?m)^Cannot Import File: " + re.escape(message))
            result = self.run_tool("import", *arguments, "--json")
            self.assertEqual((result.returncode, result.stdout), (1, b""), arguments)
            self.assertIn("Cannot Import File: ", json.loads(result.stderr)["problems"][0]["message"])

    def test_warnings(self):
        cases = [
            (b"\xef\xbb\xbfa", [], b"d.csv:1: warning: the bytes are taken as they are, and they begin with the mark "
                                   b"of UTF-8; give --encoding UTF-8 or --guess\n"),
            (b"\xff\xfea\0", [], b"mark of UTF-16LE;"),
            (b"\xff\xfe\0\0", [], b"mark of UTF-32LE;"),
            (b"\xff\0", [], b"d.csv: warning: this is no text: it holds the control character 0x00 at offset 1;"),
            (b"\xe9", [], b"d.csv:1: warning: the bytes are taken as they are, and these are no UTF-8;"),
            (b"a", ["--qualifier", "quote"], b'd.csv: warning: no field can begin with the qualifier "quote"'),
        ]
        for data, flags, message in cases:
            self.write("d.csv", data)
            result = self.run_tool("import", "d.csv", *flags)
            self.assertEqual((result.returncode, result.stdout),
                             (0, b"<xml><rows><row/></><cols></><data><value>%s</></></xml>" % data))
            self.assertIn(message, result.stderr)
            direct = result.stderr
            result = self.run_tool("import", "d.csv", *flags, "--json")
            (warning,) = json.loads(result.stderr)["warnings"]
            self.assertIn(warning["message"].encode(), direct)
            (row,) = self.json("new", "p.html", "--name", "A", "-n", "--csv", "d.csv", *flags)
            self.assertEqual(row["data"]["warnings"], [warning])


class DataSources(ToolTest):
    TABLE = b"Region,Q1,Q2\nNorth,1,2\nSouth,3,4\n"
    LABELS = ["--first-row", "--first-col"]

    def source_of(self, target):
        names = ["DATASOURCE", "DATADELIMITER", "DATAQUALIFIER", "DATALABELS", "DATAENCODING"]
        (page,) = self.json("get", target)
        return {name: value for name, value in page["controls"][0]["properties"].items() if name in names}

    def test_data_are_stored_and_the_file_is_remembered(self):
        self.write("site/data/s.csv", self.TABLE)
        self.write("t.tab", b"'a\tb'\t1\n")
        self.done("new", "site/p.html", "--name", "A", "--csv", "site/data/s.csv", *self.LABELS, "CAPTION=x")
        self.assertEqual(self.done("get", "site/p.html", "Contents"),
                         self.done("import", "site/data/s.csv", *self.LABELS) + b"\n")
        self.assertEqual(self.done("get", "site/p.html", "CAPTION"), b"x\n")
        self.assertEqual(self.source_of("site/p.html"),
                         {"DATASOURCE": "data/s.csv", "DATALABELS": "first-row first-col"})

        self.assertNotIn(b"DATA", self.done("get", "site/p.html", "--changed"), "a copy has no file to follow")

        self.done("set", "site/p.html", "colTitle=quarter")
        result = self.run_tool("set", "site/p.html#A", "--csv", self.path("t.tab"), "--delimiter", "tab",
                               "--qualifier", "singlequote", "--encoding", "UTF-8", "DATALABELS=first-col")
        self.assertEqual(result.stderr, b'site/p.html: control "A": data imported, 1 property set\n')
        self.assertEqual(self.source_of("site/p.html"), {
            "DATASOURCE": "../t.tab", "DATADELIMITER": "tab", "DATAQUALIFIER": "singlequote",
            "DATALABELS": "first-col", "DATAENCODING": "UTF-8"})
        self.assertEqual(self.done("get", "site/p.html", "Contents"),
                         document("", [None], [], ["a&tab;b", "1"]).replace(b"<cols>", b"<cols>quarter") + b"\n")
        self.assertEqual(self.done("refresh", "site"), b"site/p.html#A: -1 column, 1 cell changed, labels changed\n")

        (row,) = self.json("set", "site/p.html", "--csv", "site/data/s.csv", "--guess")
        self.assertEqual((row["data"]["source"], row["data"]["delimiter"], row["outcome"]),
                         ("data/s.csv", ",", "written"))

    def test_what_cannot_be_read_again_is_not_remembered(self):
        self.write("s.csv", self.TABLE)
        os.mkfifo(self.path("pipe"))
        for name in ("-", "pipe"):
            self.done("new", "p.html", "--name", "A", "--csv", "s.csv")
            with subprocess.Popen(["sh", "-c", f"[ {name} = - ] || cat s.csv > pipe"], cwd=self.folder):
                result = self.run_tool("set", "p.html", "--csv", name, *self.LABELS, stdin=self.TABLE)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertIn(b"the data cannot be read again from ", result.stderr)
            self.assertEqual(self.source_of("p.html"), {})
            self.assertIn(b"<col>Q2</>", self.done("get", "p.html", "Contents"))
            page = self.read("p.html")
            os.remove(self.path("p.html"))
        self.write("pipe.html", page)
        self.done("set", "pipe.html", "DATASOURCE=pipe")
        self.assertIn(b"pipe: this is no file that holds data", self.run_tool("refresh", "pipe.html").stderr)

    def test_failures_leave_the_page_alone(self):
        self.done("new", "p.html", "--name", "A")
        before = self.read("p.html")
        self.write("bad.csv", b"a\n\nb\n")
        for arguments, message in (([], "File not found: none.csv"), (["--first-col"], "bad.csv:2: ")):
            file = "bad.csv" if arguments else "none.csv"
            self.refused(1, f"plexoras: error: Cannot Import File: {message}",
                         "set", "p.html", "--csv", file, *arguments)
            self.refused(1, "Cannot Import File: ", "new", "q.html", "--name", "B", "--csv", file, *arguments)
        self.assertEqual(self.read("p.html"), before)
        self.assertEqual(self.files(), ["bad.csv", "p.html"])

    def test_refresh(self):
        for name in ("a", "b"):
            self.write(f"site/{name}.csv", self.TABLE)
            self.done("new", f"site/{name}.html", "--name", "A", "--csv", f"site/{name}.csv", *self.LABELS)
        self.done("new", "site/b.html", "--name", "None")
        self.assertEqual(self.run_tool("refresh", "site").stderr, b"0 changed, 2 unchanged, 0 failed\n")
        self.assertEqual(self.done("refresh", "site", "--check"),
                         b"site/a.html#A: unchanged\nsite/b.html#A: unchanged\n")
        self.assertIn(b"site/b.html#None: no source\n", self.run_tool("refresh", "site", "-v").stderr)

        before = self.read("site/a.html"), self.read("site/b.html"), os.stat(self.path("site/a.html"))
        self.write("site/b.csv", b"Region,Q1,Q2\nNorth,1,5\nSouth,3,4\nWest,0,0\n")
        report = b"site/a.html#A: unchanged\nsite/b.html#A: +1 row, 1 cell changed\n"
        last = b"1 changed, 1 unchanged, 0 failed"
        for flags, status, end in ((["--check"], 1, b"; nothing was written"), (["-n"], 0, b"; nothing was written"),
                                   (["-n", "--check"], 1, b"; nothing was written"), ([], 0, b"")):
            self.assertEqual(self.read("site/b.html"), before[1])
            result = self.run_tool("refresh", "site", *flags)
            self.assertEqual((result.returncode, result.stdout, result.stderr), (status, report, last + end + b"\n"))
        after = os.stat(self.path("site/a.html"))
        self.assertEqual((after.st_ino, after.st_mtime_ns), (before[2].st_ino, before[2].st_mtime_ns))
        self.assertEqual(self.done("get", "site/b.html#A", "Contents"),
                         self.done("import", "site/b.csv", *self.LABELS) + b"\n")
        self.done("refresh", "site", "--check")

        # The same table in another form is no change; what an author has put in its place is.
        self.done("set", "site/a.html#A", "Contents=" + self.done("import", "site/a.csv", *self.LABELS).decode()
                  .replace("</><cols>", "</rows>\r\n<cols>"))
        self.done("set", "site/b.html#A", "CsvContents=Region,Q1,Q2\nNorth,1,5\n")
        rows = self.json("refresh", "site")
        self.assertEqual([(row["control"], row["outcome"], row["changes"]["rows_added"]) for row in rows],
                         [("A", "unchanged", 0), ("A", "changed", 2)])
        self.assertEqual(rows[1]["source"], "b.csv")
        empty = self.run_tool("refresh", "--json", "none")
        self.assertEqual((empty.returncode, json.loads(empty.stdout)["outcome"]), (1, "failed"))

    def test_a_bad_chart_among_good_ones(self):
        self.write("s.csv", self.TABLE)
        for name in "ABCDEF":
            self.done("new", "p.html", "--name", name, "--csv", "s.csv")
        for name, setting in zip("BCDE", ["DATASOURCE=none.csv", "DATALABELS=top", "DATAENCODING=UTF-9",
                                          "DATASOURCE=."]):
            self.done("set", f"p.html#{name}", setting)
        self.write("p.html", self.read("p.html") + b"\n" + OPENING.replace(b"Diagram", b"X") % b"G" + CLOSING)
        self.write("q.html", b'<!--dtc X name="A"')
        self.done("new", "r.html", "--name", "A", "--csv", "s.csv")
        self.write("s.csv", b"1,2,3\n")
        result = self.run_tool("refresh", "p.html", "q.html", "r.html")
        self.assertEqual(result.returncode, 1)
        changed = b": -2 rows, 3 cells changed\n"
        self.assertEqual(result.stdout, b"p.html#A" + changed + b"p.html#F" + changed + b"r.html#A" + changed)
        *problems, last = result.stderr.decode().splitlines()
        self.assertEqual(last, "3 changed, 0 unchanged, 6 failed")
        expected = [
            r'p\.html:\d+:1: error: control "B": Cannot Import File: File not found: none\.csv.*; put the file there',
            r'p\.html:\d+:1: error: control "C": DATALABELS takes first-row, .*, not "top"',
            r'p\.html:\d+:1: error: control "D": DATAENCODING: There is no encoding',
            r'p\.html:\d+:1: error: control "E": DATASOURCE: \.: this is no file that holds data',
            r'p\.html:\d+:1: error: control "G": there is no control',
            r"q\.html:1:1: error: ",
        ]
        self.assertEqual(len(problems), len(expected), problems)
        for problem, pattern in zip(problems, expected):
            self.assertRegex(problem, pattern)
        self.assertEqual(self.done("get", "r.html", "Contents"), document("", [None], [], "123") + b"\n")


class Publish(ToolTest):
    def test_same_bytes_and_untouched_files(self):
        self.done("new", "p.html", "--name", "A", "CAPTION=x")
        text = self.read("p.html")
        self.assertIn(b"1 written, 0 unchanged", self.run_tool("publish", "p.html", "-n").stderr)
        self.assertEqual(self.read("p.html"), text)
        self.assertIn(b"1 written, 0 unchanged", self.run_tool("publish", "p.html").stderr)
        text, first = self.read("p.html"), os.stat(self.path("p.html"))
        self.assertIn(b"0 written, 1 unchanged", self.run_tool("publish", "p.html").stderr)
        second = os.stat(self.path("p.html"))
        self.assertEqual((first.st_ino, first.st_mtime_ns), (second.st_ino, second.st_mtime_ns))
        self.write("q.html", text)
        self.done("publish", "p.html", "q.html", "-o", "out")
        self.assertEqual(self.read("out/p.html"), self.read("out/q.html"))
        self.assertNotIn(b"<!--dtc", self.read("out/p.html"))
        no_state = "this page was published without the state of its controls; work on the page that it was made from"
        for arguments in (["get", "out/p.html#A"], ["get", "out/p.html"], ["new", "out/p.html", "--name", "B"]):
            self.refused(1, f"out/p.html: {no_state}, or publish that with --keep-state", *arguments)
        for arguments in (["refresh", "out/p.html", "--check"], ["publish", "out/p.html"]):
            result = self.run_tool(*arguments)
            self.assertEqual((result.returncode, result.stderr.splitlines()[0].decode()),
                             (0, f"out/p.html:1:1: warning: {no_state}"))
            (row,) = self.json(*arguments)
            self.assertEqual([p["severity"] for p in row["problems"]], ["warning"])
        self.assertIn(b"0 errors and 0 warnings in 2 files, 2 of them published without state\n",
                      self.run_tool("check", "out").stderr)
        self.assertIn(b"1 written", self.run_tool("publish", "p.html", "-o", "out", "--keep-state").stderr)
        self.assertEqual(self.read("out/p.html"), text)

    def test_weight_of_a_chart(self):
        shutil.copytree(os.path.join(os.path.dirname(__file__), "../../examples/site"), self.path("site"))
        self.done("new", "site/p.html", "--name", "default")
        self.done("publish", "site", "-o", "out")
        own = {}
        for name in self.files():
            if not (name.startswith("out/") and name.endswith(".html")):
                continue
            for control, text in re.findall(rb"<!--published ([^>]*)-->(.*?)<!--/published-->", self.read(name), re.S):
                data = re.findall(rb'name="XmlContents" value="[^"]*"|<table>.*</table>', text, re.S)
                own[control.decode()] = len(text) - sum(map(len, data))
        self.assertIn("default", own)
        self.assertGreater(len(own), 6)
        self.assertEqual({name: size for name, size in own.items() if size >= 2048}, {})

    def test_mirror_of_a_site(self):
        self.done("new", "p.html", "--name", "A")
        page = self.read("p.html")
        for name, data in {"a.html": page, "sub/b.HTM": page, "plain.html": b"<p>", "x.bin": b"\0\r\n",
                           ".git/config": b"g", ".htaccess": b"h", "sub/empty.css": b""}.items():
            self.write("site/" + name, data)
        *rows, script, licences = self.json("publish", "site", "-o", "site/out")
        self.assertEqual((licences["target"], licences["outcome"]),
                         ("site/out/plexoras-diagram.LICENSES.txt", "copied"))
        self.assertEqual((script["target"], script["outcome"]), ("site/out/plexoras-diagram.js", "copied"))
        self.assertEqual(self.read(script["source"]), self.read(script["target"]))
        self.assertIn(b'<script defer src="../plexoras-diagram.js"></script>', self.read("site/out/sub/b.HTM"))
        self.assertEqual({r["source"]: r["outcome"] for r in rows}, {
            "site/.htaccess": "copied", "site/a.html": "written", "site/plain.html": "copied",
            "site/sub/b.HTM": "written", "site/sub/empty.css": "copied", "site/x.bin": "copied"})
        self.assertEqual({r["target"] for r in rows},
                         {"site/out/" + os.path.relpath(r["source"], "site") for r in rows})
        for row in rows:
            same = self.read(row["source"]) == self.read(row["target"])
            self.assertEqual(same, row["outcome"] == "copied", row)
        self.write("site/plexoras-diagram.js", b"of an earlier version")  # from publishing in place
        self.write("site/plexoras-diagram.LICENSES.txt", b"of an earlier version")
        self.assertEqual({r["outcome"] for r in self.json("publish", "site/", "-o", "site/out")}, {"unchanged"})
        result = self.run_tool("publish", "site/out", "-o", "site")
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr.decode(),
                         r'^site/a\.html:\d+:1: error: this page holds a state of control "A" that site/out/a\.html does not')
        self.assertEqual(self.read("site/a.html"), page)
        self.assertFalse(os.path.exists(self.path("site/out/.git")))
        self.refused(1, "would both be written to o/a.html", "publish", "site/a.html", "site/out/a.html", "-o", "o")
        self.refused(1, "x.bin: this is a file; name a folder", "publish", "site", "-o", "site/x.bin")

    def test_a_control_that_fails_keeps_its_text(self):
        self.install_template(b"[TEMPLATE]\n<p>$(CAPTION)\n#IFEQUAL CAPTION bad\n<p>#(%INC x)\n#ENDIF\n[PROPERTY]\n"
                              b"#DEFINE CAPTION x\n")
        captions = {b"A": b"good", b"B": b"bad", b"C": b"&lt;!--/dtc", b"D": b"fine"}
        pages = b"\n".join(OPENING.replace(b"\n", b'\nCAPTION="%s"\n') % pair + b"old" + CLOSING
                           for pair in captions.items())
        self.write("1.html", pages)
        self.write("2.html", OPENING % b"A" + CLOSING)
        result = self.run_tool("publish", "1.html", "2.html")
        self.assertEqual((result.returncode, result.stdout), (1, b""))
        lines = result.stderr.decode().splitlines()
        self.assertRegex(lines[0], r'^1\.html:4:1: error: control "B": ')
        self.assertRegex(lines[1], r'^1\.html:7:1: error: control "C": .* holds "<!--/dtc"')
        self.assertIn("DIAGRAM.DAT:4:4: error: %INC needs a whole number", result.stderr.decode())
        self.assertEqual(lines[-1], "3 controls on 2 pages: 1 written, 0 unchanged, 1 failed")
        texts = [span.split(b"-->", 1)[1] for span in SPAN.findall(self.read("1.html"))]
        self.assertEqual([b"old" in text for text in texts], [False, True, True, False])
        self.assertIn(b"<p>x", self.read("2.html"))

        rows = self.json("publish", "1.html", "2.html", status=1)
        self.assertEqual([row["outcome"] for row in rows], ["failed", "unchanged"])
        self.assertEqual([row["diagnostics"] != [] for row in rows], [True, False])
        self.assertEqual(rows[0]["diagnostics"][0]["line"], 4)

    def test_no_template(self):
        self.done("new", "p.html", "--name", "A", "CAPTION=x", "FontSize=9")
        self.done("publish", "p.html")
        before = self.read("p.html")
        os.mkdir(self.path("bare"))
        bare = shutil.copy(TOOL, self.path("bare/plexoras"))  # away from the template files that ship with it
        result = self.run_tool("publish", "p.html", tool=bare)
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr.decode(),
                         r'^p\.html:8:1: error: control "A": (.|\n)*no template file "DIAGRAM.DAT"')
        self.assertEqual(self.read("p.html"), before)
        self.assertEqual(self.run_tool("set", "p.html", "FontSize=8", tool=bare).returncode, 1)
        self.assertEqual(self.read("p.html"), before)

        self.write("s.csv", b"1\n")
        self.done("set", "p.html", "--csv", "s.csv")
        self.write("s.csv", b"2\n")
        before = self.read("p.html")
        result = self.run_tool("refresh", "p.html", tool=bare)
        self.assertEqual((result.returncode, result.stdout), (1, b""))
        self.assertIn(b'p.html:8:1: error: control "A": its template cannot be used: ', result.stderr)
        self.assertEqual(self.read("p.html"), before)

    def test_ctrl_c_between_pages(self):
        self.done("new", "p.html", "--name", "A")
        page = self.read("p.html")
        for number in range(200):
            self.write(f"site/{number:03}.html", page)
        with subprocess.Popen([TOOL, "publish", "site", "--json"], cwd=self.folder, env=self.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            fcntl.fcntl(process.stdout, SET_PIPE_SIZE, 4096)  # so that it cannot end before it is read
            first = process.stdout.readline()
            waiting, before = 0, -1
            while waiting != before:  # until the pipe is full: the signal comes in the middle of a write
                time.sleep(0.1)
                before, waiting = waiting, struct.unpack("i", fcntl.ioctl(process.stdout, termios.FIONREAD, b"1234"))[0]
            process.send_signal(signal.SIGINT)
            rest, errors = process.communicate(timeout=60)
        self.assertEqual((process.returncode, errors), (130, b""))
        rows = [json.loads(line) for line in [first, *rest.splitlines()]]
        script, licences = rows[-2:]  # that the pages published so far ask for
        self.assertEqual((script["outcome"], licences["outcome"]), ("copied", "copied"))
        del rows[-2:]
        self.assertLess(len(rows), 200)
        published = [row["source"] for row in rows]
        for number in range(200):
            name = f"site/{number:03}.html"
            self.assertEqual(self.read(name) != page, name in published, name)
        self.assertEqual(len(self.files()), 203, "no temporary file is left")

    def test_snapshots(self):
        self.done("new", "p.html", "--name", "A", "CAPTION=Ä $(X) --> & <b>")
        self.done("new", "p.html", "--name", "B", "DiagramType=99999")
        drawing = ("import json, sys\n"
                   "for line in sys.stdin:\n"
                   "    asked = json.loads(line)\n"
                   "    bad = '99999' in asked['settings']['XmlStyle']\n"
                   "    print(json.dumps({'error': 'XmlStyle: no such type'} if bad else {'svg':\n"
                   "        '<svg id=\"%s1\">%s</svg>' % (asked['prefix'], asked['languages'][0])}), flush=True)\n")
        nodes = [
            ("draws", f"exec {sys.executable} -c {shlex.quote(drawing)}", 1,
             [r'p\.html:\d+:1: warning: control "B": no picture: XmlStyle: no such type']),
            ("ends", "exit 1", 0, [r'control "%s": no picture: the program has ended; "node .*plexoras-render\.mjs" shows' % n
                                   for n in "AB"]),
            ("answers at once, and ends", "echo '{\"svg\": 1}'", 0,
             [r'control "%s": no picture: the program (has ended|answers no picture)' % n for n in "AB"]),
            ("does not speak JSON", "while read -r line; do echo hello; done", 0,
             [r'control "%s": no picture: the program answers no picture' % n for n in "AB"]),
            ("is no program", None, 0, [r"^plexoras: warning: pages are published without pictures: there is no program "
                                        r'"node"; install Node 18 or later']),
        ]
        for name, script, pictures, expected in nodes:
            shutil.rmtree(self.path("bin"), ignore_errors=True)
            os.mkdir(self.path("bin"))
            if script is not None:
                self.write("bin/node", f"#!/bin/sh\n{script}\n".encode())
                os.chmod(self.path("bin/node"), 0o755)
            path = {"PATH": self.path("bin")}
            result = self.run_tool("publish", "p.html", "-o", "out", "--snapshot", env=path)
            *warnings, last = result.stderr.decode().splitlines()
            self.assertEqual((result.returncode, len(warnings)), (0, len(expected)), (name, result.stderr))
            for warning, pattern in zip(warnings, expected):
                self.assertRegex(warning, pattern, name)
            self.assertEqual(", 1 picture drawn" in last, pictures == 1, last)
            page = self.read("out/p.html")
            self.assertEqual(page.count(b"<div data-stamp="), pictures, name)
            self.assertEqual(page.count(b"<table>"), 2, name)
            if pictures == 1:
                self.assertRegex(page, rb'<div data-stamp="([0-9a-f]{16})"><svg id="p\1-1">en</svg></div></div>\n<table>')
        self.refused(1, 'p.html#A: there is no picture: there is no program "node"', "image", "p.html#A", "-o", "a.svg",
                     env={"PATH": self.path("bin")})

    @unittest.skipUnless(shutil.which("node"), "needs Node")
    def test_snapshots_by_the_real_program(self):
        self.done("new", "p.html", "--name", "A", "CAPTION=Ä $(X) --> & <b>", "FontSize=13")
        self.done("new", "p.html", "--name", "B", "DiagramType=9")
        rows = self.json("publish", "p.html", "-o", "out", "--snapshot", "--keep-state")
        self.assertEqual([row["pictures"] for row in rows], [2, 0, 0], rows)
        page = self.read("out/p.html").decode()
        self.assertEqual(len(re.findall(r'<div data-stamp="[0-9a-f]{16}"><svg ', page)), 2)
        self.assertIn("Ä &#36;(X) --&gt; &amp; &lt;b&gt;", page)
        ids = re.findall(r' id="([^"]*)"', page)
        self.assertEqual(len(ids), len(set(ids)), ids)
        self.assertEqual(self.read("out/p.html"), page.encode())
        self.assertIn(b"0 written, 1 unchanged, 2 pictures", self.run_tool("publish", "p.html", "-o", "out",
                                                                           "--snapshot", "--keep-state").stderr)
        self.assertEqual(self.done("check", "out/p.html"), b"")
        self.done("set", "out/p.html#A", "FontSize=14")
        self.assertRegex(self.done("check", "out/p.html").decode(), r"^out/p\.html:\d+:42: warning: .*\[stale-picture\]")
        self.done("image", "p.html#A", "-o", "a.svg")
        svg = self.read("a.svg").decode()
        self.assertTrue(svg.startswith("<svg xmlns=") and svg.endswith("</svg>"), svg[:99])
        self.assertIn('width="480" height="320" viewBox="0 0 480 320"', svg)


if __name__ == "__main__":
    outcome = unittest.main(exit=False, verbosity=0).result
    failed = len(outcome.failures) + len(outcome.errors)
    print(f"{outcome.testsRun - failed} passed, {failed} failed, {len(outcome.skipped)} skipped")
    sys.exit(1 if failed else 0)
