"""What the suites of benchmarks share: running programs, and texts and tables of figures."""

import datetime
import os
import pathlib
import platform
import shutil
import subprocess
import sys
import textwrap

ROUNDS = 5  # how often everything is measured; the best counts


def measured_run(command, folder):
    """Runs a program with its output thrown away: its processor seconds, user and system, and its peak memory in
    bytes, which is never less than that of this program."""
    child = subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(child.pid, 0)
    child.returncode = os.waitstatus_to_exitcode(status)
    if child.returncode != 0:
        sys.exit(f"{command[0]} ended with status {child.returncode}")
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def time_text(seconds):
    for unit, size in (("s", 1), ("ms", 1e-3)):
        if seconds >= size:
            return f"{seconds / size:.3g} {unit}"
    return f"{seconds / 1e-6:.3g} µs"


def ratio_text(ratio):
    return f"{ratio:.2f}" if ratio < 10 else f"{ratio:.0f}"


def table(heads, rows):
    """A Markdown table. A head that begins with ">" is of a column of figures."""
    lines = ["| " + " | ".join(head.removeprefix(">") for head in heads) + " |",
             "|" + "|".join("---:" if head.startswith(">") else "---" for head in heads) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def aims_table(aims):
    """Of (aim, what was measured, whether that meets it)."""
    return table(["aim", ">measured", "met"],
                 [(aim, measured, "yes" if met else "no") for aim, measured, met in aims])


def first_line(*command):
    """The first line that a program prints, such as its version; empty when it is not there."""
    if shutil.which(command[0]) is None:
        return ""
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout.partition("\n")[0].strip()


def package_version(name, package):
    """"NAME VERSION" of what a Debian package installed."""
    return f"{name} {first_line('dpkg-query', '-W', '-f=${Version}', package)}".strip()


def processor_model():
    try:
        for line in pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
            if line.startswith("model name"):
                return line.split(":", 1)[1].strip()
    except OSError:
        pass
    return platform.processor() or platform.machine()


def description(compiler, peers):
    """When and on what a suite was measured, and beside whom."""
    text = (f"Measured on {datetime.date.today().isoformat()}: {processor_model()}, {os.cpu_count()} cores, "
            f"{platform.system()}, {compiler}. ")
    if peers:
        text += f"Peers: {'; '.join(peers)}. "
    return "\n".join(textwrap.wrap(text + f"Best of {ROUNDS} runs each, by turns.", 118))
