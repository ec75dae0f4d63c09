"""The element that draws published charts, in Chromium, beside the drawing library alone with the same data."""

import json
import pathlib
import subprocess
import textwrap

from measuring import aims_table, description, ratio_text, table

PROGRAM = pathlib.Path(__file__).resolve().parent / "element.mjs"
LOADS = [("one", "one chart of 12 rows"), ("twenty", "20 charts of 12 rows")]
MOST_BYTES = 256 * 1024  # of the zipped script
MOST_LOADING = 1000      # milliseconds until 20 charts are drawn
MOST_FRAME = 34          # two frames of 60 a second


def kib_text(size):
    return f"{size / 1024:.1f} KiB"


def loads_table(report):
    rows = []
    for name, title in LOADS:
        ours, plain = (report[name][who]["best"] for who in ("ours", "plain"))
        rows.append([title, f"{ours:.0f} ms", f"{plain:.0f} ms", ratio_text(plain / ours),
                     str(report[name]["ours"]["scripts"])])
    return table(["page", ">drawn after", ">library alone", ">times ours", ">scripts fetched"], rows)


def moves_table(report):
    def times(move):
        return f"{move['median']:.1f} / {move['p95']:.1f} ms"

    return table(["10,000 rows", ">first drawing", ">hover", ">library alone", ">pan", ">library alone"],
                 [[f"{move['type']}, {move['series']} series", f"{move['ours']['ends']:.0f} ms",
                   times(move["ours"]["hover"]), times(move["plain"]["hover"]),
                   times(move["ours"]["pan"]), times(move["plain"]["pan"])] for move in report["moves"]])


def measure(_bin_dir, _work_dir):
    """The tables, as Markdown."""
    report = json.loads(subprocess.run(["node", str(PROGRAM)], stdout=subprocess.PIPE, check=True).stdout)
    script, twenty = report["script"], report["twenty"]["ours"]
    worst = {kind: max(move["ours"][kind]["p95"] for move in report["moves"]) for kind in ("hover", "pan")}
    aims = [
        ("the script is at most 256 KiB zipped", kib_text(script["gzip"]), script["gzip"] <= MOST_BYTES),
        ("20 charts are drawn within 1 s", f"{twenty['best']:.0f} ms", twenty["best"] <= MOST_LOADING),
        ("20 charts fetch the script once", str(twenty["scripts"]), twenty["scripts"] == 1),
        *((f"10,000 rows: 95 of 100 frames last at most two sixtieths of a second, {kind}",
           f"{time:.1f} ms", time <= MOST_FRAME) for kind, time in worst.items()),
    ]
    weight = f"The script has {kib_text(script['raw'])}, {kib_text(script['gzip'])} zipped."
    return "\n\n".join([description(report["browser"], [f"Apache ECharts {report['library']}, SVG"]),
                        "\n".join(textwrap.wrap(weight, 118)), loads_table(report), moves_table(report),
                        aims_table(aims)])
