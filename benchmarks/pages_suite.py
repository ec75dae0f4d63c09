"""The property pages: how long an author waits for a page to load a chart and to apply."""

import json
import pathlib
import subprocess

from measuring import ROUNDS, aims_table, description, table, time_text

TEMPLATES = pathlib.Path(__file__).resolve().parent.parent / "share" / "DTC"
PAGES = [("styles", "Styles"), ("chart styles", "Chart Styles"), ("table styles", "Table Styles"), ("format", "Format")]
WORK = ["load", "apply", "make"]
LONGEST_WAIT = 1e-3  # seconds, for loading and applying


def measure_best(bin_dir):
    """The best processor seconds of each benchmark of pages_benchmark, and its context."""
    command = [str(bin_dir / "pages_benchmark"), str(TEMPLATES), "--benchmark_format=json",
               "--benchmark_min_time=0.1", f"--benchmark_repetitions={ROUNDS}",
               "--benchmark_enable_random_interleaving=true"]
    report = json.loads(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)
    best = {}
    for run in report["benchmarks"]:
        if run["run_type"] == "iteration":
            seconds = run["cpu_time"] / 1e6  # reported in microseconds
            best[run["run_name"]] = min(seconds, best.get(run["run_name"], seconds))
    return best, report["context"]


def measure(bin_dir, _work_dir):
    """The tables, as Markdown."""
    best, context = measure_best(bin_dir)
    rows = [[caption, *(time_text(best[f"{page}/{work}"]) for work in WORK)] for page, caption in PAGES]
    longest = max(best[f"{page}/{work}"] for page, _ in PAGES for work in ("load", "apply"))
    aims = [("every page loads and applies within 1 ms", time_text(longest), longest <= LONGEST_WAIT)]
    return "\n\n".join([description(context["compiler"], []),
                        table(["page", *(">" + work for work in WORK)], rows), aims_table(aims)])
