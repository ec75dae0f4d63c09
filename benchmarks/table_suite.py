"""The table editor with large tables: how long an author waits, and how the time grows with the table."""

import json
import subprocess

from measuring import ROUNDS, aims_table, description, ratio_text, table, time_text

CLICKS = 200  # insertions and deletions in one run of a benchmark
SHAPES = ["1000/100", "100000/1", "1/100000"]
TWICE = ["2000/100", "200000/1", "1/200000"]

# What is measured, what it is called, and how often the author does it in one run.
WORK = [("load", "load a document", 1),
        ("select_and_edit", "select and edit 1,000 cells", 1),
        ("insert_and_delete_rows", "insert or delete a row, on average over 100 of each", CLICKS),
        ("insert_and_delete_columns", "insert or delete a column, on average over 100 of each", CLICKS),
        ("get_document", "accept, and get the edited document", 1)]
LONGEST_WAIT = 0.1  # seconds; a shorter one is not noticed


def measure_best(bin_dir):
    """The best processor seconds of each benchmark of table_benchmark, and its context."""
    command = [str(bin_dir / "table_benchmark"), "--benchmark_format=json", "--benchmark_min_time=0.1",
               f"--benchmark_repetitions={ROUNDS}", "--benchmark_enable_random_interleaving=true"]
    report = json.loads(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)
    best = {}
    for run in report["benchmarks"]:
        if run["run_type"] == "iteration":
            seconds = run["cpu_time"] / 1e3  # reported in milliseconds
            best[run["run_name"]] = min(seconds, best.get(run["run_name"], seconds))
    return best, report["context"]


def shape_text(shape):
    rows, columns = shape.split("/")
    return f"{int(rows):,} × {int(columns):,}"


def measure(bin_dir, _work_dir):
    """The tables, as Markdown."""
    best, context = measure_best(bin_dir)
    rows, longest = [], 0
    for name, title, times in WORK:
        waits = [best[f"{name}/{shape}"] / times for shape in SHAPES]
        growths = [best[f"{name}/{twice}"] / best[f"{name}/{shape}"] for shape, twice in zip(SHAPES, TWICE)]
        rows.append([title, *map(time_text, waits), " / ".join(map(ratio_text, growths))])
        longest = max(longest, *waits)
    heads = ["100,000 cells", *(">" + shape_text(shape) for shape in SHAPES), ">with twice as many cells, times"]
    aims = [("nothing with 100,000 cells takes longer than 100 ms", time_text(longest), longest <= LONGEST_WAIT)]
    return "\n\n".join([description(context["compiler"], []), table(heads, rows), aims_table(aims)])
