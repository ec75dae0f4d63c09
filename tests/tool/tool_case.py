"""What the tests of the tool share: a folder to run it in, and looks at its streams, exit statuses and files.

The environment variable PLEXORAS names the tool. Nothing outside a temporary folder is read or written.
"""

import json
import os
import re
import subprocess
import sys
import tempfile
import unittest

TOOL = os.path.abspath(os.environ["PLEXORAS"])

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
        """Writes bytes, or a text as UTF-8."""
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "wb") as file:
            file.write(data if isinstance(data, bytes) else data.encode())

    def files(self):
        return sorted(os.path.relpath(os.path.join(at, name), self.folder)
                      for at, _, names in os.walk(self.folder) for name in names)

    def run_tool(self, *arguments, tool=TOOL, stdin=b"", env=None, **more):
        more.setdefault("stdout", subprocess.PIPE)
        more.setdefault("stderr", subprocess.PIPE)
        return subprocess.run([tool, *arguments], input=stdin, cwd=self.folder, check=False,
                              env={**self.environment, **(env or {})}, timeout=60, **more)

    def said(self, *arguments, typed="", status=0):
        """Standard output and standard error, as texts, of a run that must end with `status` (None: with any)."""
        result = self.run_tool(*arguments, stdin=typed.encode())
        output, talk = result.stdout.decode(), result.stderr.decode()
        if status is not None:
            self.assertEqual(result.returncode, status, output + talk)
        return output, talk

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


def main():
    outcome = unittest.main(module="__main__", exit=False, verbosity=0).result
    failed = len(outcome.failures) + len(outcome.errors)
    print(f"{outcome.testsRun - failed} passed, {failed} failed, {len(outcome.skipped)} skipped")
    sys.exit(1 if failed else 0)
