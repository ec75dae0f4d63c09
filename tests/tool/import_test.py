"""Delimited text: `plexoras import`, and charts that remember their file.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import json
import os
import re
import subprocess

from tool_case import CLOSING, OPENING, TOOL, ToolTest, main


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


if __name__ == "__main__":
    main()
