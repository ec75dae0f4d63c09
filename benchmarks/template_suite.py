"""The template engine beside GNU m4, cpp -traditional-cpp and ctemplate.

Makes one set of workloads in the syntax of each tool and checks that all tools make the same text of them before
anything is timed.
"""

import json
import subprocess
import sys

from measuring import (ROUNDS, aims_table, description, first_line, measured_run, package_version, ratio_text, table,
                       time_text)

VARIABLES = [f"FIELD_{i:02}" for i in range(1, 44)]
FRAGMENT_ROUNDS = 2_000
SECTION_LINES, SECTION_REFERENCES = 100_000, 3_000
CALLS = 100_000

# A workload is a list of lines; a line is text in which {NAME} marks a reference. The text suits every tool: no
# quotation marks (in which cpp expands nothing), no comment signs, no empty lines (which cpp drops).
WORDS = ("the harvest of every county is weighed at harbour and mill (as in former years), costs $4 a bushel; "
         "who sells early pays less for storage, and more for his patience").split()


def value(index, round_number):
    return f"{WORDS[index % len(WORDS)].strip('(),;$')} {index * 37 % 100} of {round_number % 10}"


def fragment_lines():
    lines = ["<section id={FIELD_01} class={FIELD_02} lang={FIELD_03}>"]
    for index in range(1, 79):
        if index % 2:
            lines.append(f"  <dt class=term>Entry {index} of the table of crops:</dt>")
        else:
            lines.append(f"  <dd>{{{VARIABLES[index // 2 + 2]}}} and <em>more</em> of it</dd>")
    lines.append("</section> <!-- {FIELD_42}, {FIELD_43} -->")
    return lines


def section_lines():
    lines = []
    every = SECTION_LINES // SECTION_REFERENCES
    for index in range(SECTION_LINES):
        from_word = index * 7 % len(WORDS)
        words = [WORDS[(from_word + i) % len(WORDS)] for i in range(16)]
        if index % every == 0 and index // every < SECTION_REFERENCES:
            words[8] = "{" + VARIABLES[index // every % len(VARIABLES)] + "}"
        lines.append(f"<p>{index} " + " ".join(words) + "</p>")
    return lines


def arguments():
    return [f"{WORDS[i % len(WORDS)].strip('(),;$')} {i}" for i in range(CALLS)]


class Tool:
    """How a tool writes references, definitions, inclusions and calls."""

    def __init__(self, name, suffix, command, reference, define, include, macro, call, opening=()):
        self.name, self.suffix, self.command, self.opening = name, suffix, command, list(opening)
        self.reference, self.define, self.include = reference, define, include
        self.macro, self.call = macro, call

    def in_syntax(self, lines):
        marks = {name: self.reference.format(name) for name in VARIABLES}
        return [line.format_map(marks) for line in lines]

    def definitions(self, round_number):
        return [line for i, name in enumerate(VARIABLES) for line in self.define(name, value(i, round_number))]

    def workloads(self, fragment, section, call_arguments):
        """The main file of each workload, by its name."""
        rounds = []
        for round_number in range(FRAGMENT_ROUNDS):
            rounds += self.definitions(round_number) + [self.include]
        return {
            "fragment": rounds,
            "section": self.definitions(0) + self.in_syntax(section),
            "calls": [self.macro] + [self.call.format(argument) for argument in call_arguments],
        }


def tools(bin_dir):
    return [
        Tool("plexoras", "dat", [str(bin_dir / "plexoras"), "expand", "{}", "MAIN"], "$({})",
             lambda name, text: [f"#DEFINE {name} {text}"], "#INCLUDE FRAGMENT FROM fragment.dat",
             "#MACRO BOLD <b>$(_NAME)</b>", "#BOLD {}", ["[MAIN]"]),
        Tool("m4", "m4", ["m4", "{}"], "{}",
             lambda name, text: [f"define(`{name}', `{text}')dnl"], "include(`fragment.m4')dnl",
             "define(`BOLD', `<b>$1</b>')dnl", "BOLD({})"),
        Tool("cpp -traditional-cpp", "h", ["cpp", "-P", "-traditional-cpp", "{}"], "{}",
             lambda name, text: [f"#undef {name}", f"#define {name} {text}"], '#include "fragment.h"',
             "#define BOLD(text) <b>text</b>", "BOLD({})"),
    ]


def write_lines(path, lines, line_end="\n"):
    path.write_text("".join(line + line_end for line in lines), encoding="ascii", newline="")


def write_workloads(folder, all_tools):
    """Writes everything into `folder`; what each workload must come out as, as a list of lines."""
    fragment, section, call_arguments = fragment_lines(), section_lines(), arguments()
    engine = all_tools[0]
    values = [{name: value(i, r) for i, name in enumerate(VARIABLES)} for r in range(FRAGMENT_ROUNDS)]
    expected = {
        "fragment": [line.format_map(values[r]) for r in range(FRAGMENT_ROUNDS) for line in fragment],
        "section": [line.format_map(values[0]) for line in section],
        "calls": [f"<b>{argument}</b>" for argument in call_arguments],
    }

    for tool in all_tools:
        head = ["[FRAGMENT]"] if tool is engine else []
        write_lines(folder / f"fragment.{tool.suffix}", head + tool.in_syntax(fragment))
        for name, lines in tool.workloads(fragment, section, call_arguments).items():
            write_lines(folder / f"{name}_main.{tool.suffix}", tool.opening + lines)

    # The same in memory, for template_benchmark.
    in_ctemplate = {name: "{{" + name + "}}" for name in VARIABLES}
    crlf = "\r\n"
    write_lines(folder / "variables.txt", [f"{name}={text}" for name, text in values[0].items()])
    write_lines(folder / "arguments.txt", call_arguments)
    write_lines(folder / "section.text", engine.in_syntax(section), crlf)
    write_lines(folder / "calls.text", [engine.macro] + [engine.call.format(a) for a in call_arguments], crlf)
    write_lines(folder / "fragment.tpl", [line.format_map(in_ctemplate) for line in fragment], crlf)
    write_lines(folder / "section.tpl", [line.format_map(in_ctemplate) for line in section], crlf)
    (folder / "calls.tpl").write_bytes(b"{{#CALL}}<b>{{ARGUMENT}}</b>\r\n{{/CALL}}")
    write_lines(folder / "fragment.expected", expected["fragment"][:len(fragment)], crlf)
    write_lines(folder / "section.expected", expected["section"], crlf)
    write_lines(folder / "calls.expected", expected["calls"], crlf)
    return expected


def command_for(tool, workload):
    return [word.format(f"{workload}_main.{tool.suffix}") for word in tool.command]


def check_texts(folder, all_tools, expected):
    """Every tool must give the lines expected, however it ends them; cpp puts empty ones between."""
    for workload, lines in expected.items():
        for tool in all_tools:
            done = subprocess.run(command_for(tool, workload), cwd=folder, capture_output=True, check=False)
            if done.returncode != 0:
                sys.exit(f"{tool.name} failed on {workload}: {done.stderr.decode(errors='replace')[:500]}")
            given = [line for line in done.stdout.decode("ascii").replace("\r\n", "\n").split("\n") if line]
            if given != lines:
                wrong = next((i for i, (a, b) in enumerate(zip(given, lines)) if a != b), min(len(given), len(lines)))
                sys.exit(f"{tool.name} gives another text for {workload}, from line {wrong + 1} on:\n"
                         f"  given    {given[wrong:wrong + 1]}\n  expected {lines[wrong:wrong + 1]}")


def measure_processes(folder, all_tools, workloads):
    """The best time of each tool, by workload and tool. The tools take turns, so that all meet the same machine."""
    best = {}
    for _ in range(ROUNDS):
        for workload in workloads:
            for tool in all_tools:
                seconds, _ = measured_run(command_for(tool, workload), folder)
                best[workload, tool.name] = min(seconds, best.get((workload, tool.name), seconds))
    return best


def measure_in_memory(folder, bin_dir):
    """The best processor seconds of each benchmark of template_benchmark, and its context."""
    command = [str(bin_dir / "template_benchmark"), str(folder), "--benchmark_format=json", "--benchmark_min_time=0.2",
               f"--benchmark_repetitions={ROUNDS}", "--benchmark_enable_random_interleaving=true"]
    report = json.loads(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)
    best = {}
    for run in report["benchmarks"]:
        if run["run_type"] == "iteration":
            seconds = run["cpu_time"] / 1e3  # reported in milliseconds
            best[run["run_name"]] = min(seconds, best.get(run["run_name"], seconds))
    return best, report["context"]


def comparison_table(folder, in_memory, processes, all_tools):
    section_bytes = (folder / "section.text").stat().st_size
    fragment_bytes = (folder / "fragment.expected").stat().st_size
    fragment = f"{len(fragment_lines())} lines, {len(VARIABLES)} variables, {fragment_bytes / 1e3:.1f} kB out"
    section = f"{section_bytes / 1e6:.1f} MB, {SECTION_REFERENCES:,} references"
    groups = [(f"Fragment in memory: {fragment}", "fragment", 0),
              (f"Section in memory, first run of an object: {section}", "section first", section_bytes),
              (f"Section in memory, run again: {section}", "section again", section_bytes),
              (f"{CALLS:,} macro calls in memory", "calls", 0)]
    rows = [[(title, "Plexoras DTC" if tool == "engine" else tool, in_memory[f"{workload}/{tool}"], size)
             for tool in ("engine", "ctemplate")] for title, workload, size in groups]
    programs = [(f"Program: the fragment {FRAGMENT_ROUNDS:,} times, all variables set each time", "fragment"),
                (f"Program: {section}", "section"), (f"Program: {CALLS:,} macro calls", "calls")]
    for title, workload in programs:
        rows.append([(title, tool.name, processes[workload, tool.name], 0) for tool in all_tools])

    cells = []
    for group in rows:
        ours = group[0][2]
        for i, (title, tool, seconds, size) in enumerate(group):
            rate = f" ({size / seconds / 1e9:.2f} GB/s)" if size else ""
            cells.append((title if i == 0 else "", tool, time_text(seconds) + rate, ratio_text(seconds / ours)))
    return table(["workload", "tool", ">processor time", ">times ours"], cells)


def aims(folder, in_memory, processes):
    section_bytes = (folder / "section.text").stat().st_size
    fragment = in_memory["fragment/engine"] / in_memory["fragment/ctemplate"]
    rate = section_bytes / in_memory["section first/engine"] / 1e9
    calls = processes["calls", "cpp -traditional-cpp"] / processes["calls", "plexoras"]
    return [("fragment in memory: at most 0.3 of the time that ctemplate takes", f"{fragment:.2f}", fragment <= 0.3),
            ("section in memory, first run: 2 GB/s or more", f"{rate:.2f} GB/s", rate >= 2),
            ("macro calls: 4 times as fast as cpp -traditional-cpp", f"{calls:.2f} times", calls >= 4)]


def growth_table(in_memory):
    rows = []
    for name in sorted(in_memory):
        if name.startswith("linear/") and name.endswith("/100000"):
            what = name.split("/")[1]
            once, twice = in_memory[name], in_memory[f"linear/{what}/200000"]
            rows.append((what, time_text(once), time_text(twice), ratio_text(twice / once)))
    return table(["how many of what", ">100,000", ">200,000", ">ratio"], rows)


def measure(bin_dir, work_dir):
    """The tables, as Markdown."""
    folder = work_dir / "template"
    folder.mkdir(parents=True, exist_ok=True)
    all_tools = tools(bin_dir)
    expected = write_workloads(folder, all_tools)
    check_texts(folder, all_tools, expected)
    in_memory, context = measure_in_memory(folder, bin_dir)
    processes = measure_processes(folder, all_tools, expected)
    peers = [first_line("m4", "--version"), first_line("cpp", "--version"),
             package_version("ctemplate", "libctemplate-dev")]
    return "\n\n".join([description(context["compiler"], peers),
                        comparison_table(folder, in_memory, processes, all_tools),
                        aims_table(aims(folder, in_memory, processes)), growth_table(in_memory)])
