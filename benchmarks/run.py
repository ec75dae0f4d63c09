#!/usr/bin/env python3
"""Measures Plexoras DTC beside others that do the same work, and prints tables of times and ratios.

Each suite (NAME_suite.py) makes its workloads with a fixed seed, checks that everybody makes the same of them, and then
measures everybody in one run.
"""

import argparse
import importlib
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
DOCUMENT = HERE.parent / "docs" / "benchmarks.md"
SUITES = ["template", "import", "table", "pages", "element"]
END = "<!-- end of measured -->\n"


def write_document(name, text):
    """Puts the tables of a suite between its marks in the document."""
    begin = f"<!-- measured by benchmarks/{name}_suite.py -->\n"
    before, mark, rest = DOCUMENT.read_text(encoding="utf-8").partition(begin)
    _, end, after = rest.partition(END)
    if not mark or not end:
        sys.exit(f"{DOCUMENT.name} lacks the lines between which the tables stand:\n{begin}{END}")
    DOCUMENT.write_text(f"{before}{begin}\n{text}\n\n{end}{after}", encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("bin_dir", type=pathlib.Path, help="where plexoras and the programs to compare it with are")
    parser.add_argument("--only", action="append", choices=SUITES, metavar="SUITE",
                        help=f"measure this suite alone, one of {', '.join(SUITES)}; may be given several times")
    parser.add_argument("--write", action="store_true", help="put the tables into docs/benchmarks.md")
    parser.add_argument("--work-dir", type=pathlib.Path, default=HERE.parent / "build" / "workloads", metavar="FOLDER",
                        help="where the workloads are made; they stay there (default: build/workloads)")
    options = parser.parse_args()
    for name in options.only or SUITES:
        suite = importlib.import_module(f"{name}_suite")
        text = suite.measure(options.bin_dir.resolve(), options.work_dir.resolve()).strip("\n")
        print(text, end="\n\n", flush=True)
        if options.write:
            write_document(name, text)


if __name__ == "__main__":
    main()
