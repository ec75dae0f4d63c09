"""Controls in pages: `plexoras new`, `get` and `set`.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import os
import re
import unittest

from tool_case import CLOSING, OPENING, SPAN, ToolTest, main


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


if __name__ == "__main__":
    main()
