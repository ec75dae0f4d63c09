"""`plexoras publish`.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import fcntl
import json
import os
import re
import shlex
import shutil
import signal
import struct
import subprocess
import sys
import termios
import time
import unittest

from tool_case import CLOSING, OPENING, SPAN, TOOL, ToolTest, main

SET_PIPE_SIZE = 1031  # F_SETPIPE_SZ, which the module fcntl names from Python 3.10 on


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
    main()
