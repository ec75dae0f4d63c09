"""The import of delimited text beside libcsv, Python's csv module and a plain copy of the file.

All make the same document of the same files, which is checked byte for byte before anything is timed.
"""

import filecmp
import multiprocessing
import pathlib
import random
import re
import subprocess
import sys

from measuring import ROUNDS, aims_table, description, first_line, measured_run, package_version, ratio_text, table

FILE_BYTES = 100_000_000
WORDS = ("the harvest of every county is weighed at harbour and mill as in former years, Smith & Sons pay $4 a bushel; "
         "it's less for storage, <more> for patience").split()


def number_fields(dice):
    """Whole numbers of one to six digits, and as many with two places."""
    return ([str(dice.randrange(10 ** dice.randrange(1, 7))) for _ in range(100_000)] +
            [f"{dice.uniform(-1_000, 100_000):.2f}" for _ in range(100_000)])


def text_fields(dice):
    """One to nine words, some of them with a comma or a character to escape."""
    return ['"' + " ".join(dice.choices(WORDS, k=dice.randrange(1, 10))) + '"' for _ in range(100_000)]


WORKLOADS = {  # name: title, what makes its fields, fields of a line, options of `plexoras import`
    "numbers": ("Numbers", number_fields, 10, []),
    "text": ("Quoted text", text_fields, 6, ["--qualifier", '"']),
}


def write_workload(path, make_fields, line_fields):
    dice = random.Random(1995)
    fields = make_fields(dice)
    left = FILE_BYTES
    with open(path, "w", encoding="ascii", newline="") as file:
        while left > 0:
            text = "".join(",".join(dice.choices(fields, k=line_fields)) + "\r\n" for _ in range(2_000))
            left -= file.write(text)


def write_workloads(folder):
    """Done by another process: a program that is started counts the memory of the one that starts it as its own."""
    folder.mkdir(parents=True, exist_ok=True)
    makers = [multiprocessing.Process(target=write_workload, args=(folder / f"{name}.csv", make_fields, line_fields))
              for name, (_, make_fields, line_fields, _) in WORKLOADS.items()]
    for maker in makers:
        maker.start()
    for maker in makers:
        maker.join()
        if maker.exitcode != 0:
            sys.exit("the workloads could not be made")


def importers(bin_dir, options):
    """The commands that make a document, without the file, by their names; ours is the first."""
    return {
        "plexoras import": [str(bin_dir / "plexoras"), "import", *options],
        "libcsv": [str(bin_dir / "import_libcsv")],
        "Python's csv module": [sys.executable, str(pathlib.Path(__file__).with_name("import_python.py"))],
    }


def check_documents(folder, bin_dir):
    """Everybody must make the same document. Its size, by workload."""
    sizes = {}
    for name, (_, _, _, options) in WORKLOADS.items():
        expected, given = folder / f"{name}.xml", folder / f"{name}.given"
        for i, (who, command) in enumerate(importers(bin_dir, options).items()):
            path = given if i else expected
            with open(path, "wb") as file:
                subprocess.run(command + [f"{name}.csv"], cwd=folder, stdout=file, check=True)
            if not filecmp.cmp(path, expected, shallow=False):
                sys.exit(f"{who} makes another document of {folder / name}.csv: compare {given} and {expected}")
        sizes[name] = expected.stat().st_size
        expected.unlink()
        given.unlink()
    return sizes


def measure_all(folder, bin_dir):
    """The least processor time and the greatest memory of everybody, by workload and name, taking turns."""
    best = {}
    for _ in range(ROUNDS):
        for name, (_, _, _, options) in WORKLOADS.items():
            commands = importers(bin_dir, options) | {"a plain copy (cat)": ["cat"]}
            for who, command in commands.items():
                seconds, memory = measured_run(command + [f"{name}.csv"], folder)
                before = best.get((name, who), (seconds, memory))
                best[name, who] = min(seconds, before[0]), max(memory, before[1])
    return best


def comparison_table(folder, sizes, best):
    rows = []
    for name, (title, _, _, _) in WORKLOADS.items():
        file_bytes = (folder / f"{name}.csv").stat().st_size
        title += f": {file_bytes / 1e6:.0f} MB, a document of {sizes[name] / 1e6:.0f} MB"
        ours = best[name, "plexoras import"][0]
        for who, (seconds, memory) in ((w, figures) for (n, w), figures in best.items() if n == name):
            # What a copy takes is less than what the measuring program has.
            share = "–" if "copy" in who else f"{memory / 1e6:.0f} MB ({memory / sizes[name]:.2f})"
            rows.append((title, who, f"{seconds * 1e3:.0f} ms ({file_bytes / seconds / 1e9:.2f} GB/s)",
                         ratio_text(seconds / ours), share))
            title = ""
    return table(["workload", "by", ">processor time", ">times ours", ">peak memory (of the document)"], rows)


def aims(sizes, best):
    found = []
    for name, least in (("numbers", 2.2), ("text", 1.8)):
        title = WORKLOADS[name][0].lower()
        seconds, memory = best[name, "plexoras import"]
        ratio = best[name, "libcsv"][0] / seconds
        found.append((f"{title}: {least} times as fast as libcsv", f"{ratio:.2f} times", ratio >= least))
        limit = 1.1 * sizes[name] + 16 * 2 ** 20
        found.append((f"{title}: memory of at most 1.1 times the document and 16 MiB",
                      f"{memory / 1e6:.0f} of {limit / 1e6:.0f} MB", memory <= limit))
    return found


def measure(bin_dir, work_dir):
    """The tables, as Markdown."""
    folder = work_dir / "import"
    write_workloads(folder)
    sizes = check_documents(folder, bin_dir)
    best = measure_all(folder, bin_dir)
    compiler = re.sub(r" \(.*\)", "", first_line("g++", "--version"))
    peers = [package_version("libcsv", "libcsv-dev"), first_line(sys.executable, "--version"),
             first_line("cat", "--version")]
    return "\n\n".join([description(compiler, peers), comparison_table(folder, sizes, best),
                        aims_table(aims(sizes, best))])
