#!/usr/bin/env python3
"""Runs the benchmarks of a build and writes docs/benchmarks.md. Standard library only."""

import argparse
import collections
import datetime
import json
import os
import pathlib
import platform
import re
import shutil
import statistics
import subprocess
import tempfile
import time

import builds

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs/benchmarks.md"
REPETITIONS = 9
SCANS = 6400  # number of scans in a run of programs/scan_bench.cpp
EXAMPLES = "valve filling_station gate_iec gate_letters filling_line temperature_control lift".split()

Figure = collections.namedtuple("Figure", "best spread allocations")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def table(header, rows):
    lines = ["| " + " | ".join(header) + " |", "|---|" + "---:|" * (len(header) - 1)]
    lines += ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join(lines)


def where(build):
    """Where and when the figures of a section were measured."""
    model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    cache = (build / "CMakeCache.txt").read_text()
    compiler = re.search(r"CMAKE_CXX_COMPILER:\w+=(.*)", cache)[1]
    flags = re.search(r"CMAKE_CXX_FLAGS_RELEASE:\w+=(.*)", cache)[1]
    return (
        f"*{datetime.date.today().isoformat()}, load {os.getloadavg()[0]:.1f} when started;"
        f" {model[1] if model else platform.machine()}, {os.cpu_count()} cores;"
        f" {platform.system()} {platform.release()}, {' '.join(platform.libc_ver())};"
        f" {output(compiler, '--version').splitlines()[0]}, `{flags}`.*"
    )


def measured(program):
    """The best of several repetitions for each benchmark, and how far their median is off."""
    options = ["format=json", "min_time=0.01", f"repetitions={REPETITIONS}", "enable_random_interleaving=true"]
    report = json.loads(output(program, *(f"--benchmark_{option}" for option in options)))
    runs = collections.defaultdict(list)
    for run in report["benchmarks"]:
        if run["run_type"] == "iteration":
            runs[run["run_name"].split("/repeats:")[0]].append(run)
    figures = {}
    for name, repetitions in runs.items():
        times = [run["cpu_time"] for run in repetitions]
        best = min(times)
        spread = statistics.median(times) / best - 1
        figures[name] = Figure(best, spread, repetitions[0].get("allocations", 0))
    return figures


def spent(*command):
    """Seconds of processor and of clock that a command takes, and bytes of memory at most."""
    begin = time.monotonic()
    process = subprocess.Popen(command)
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        raise SystemExit(f"{command[0]} failed")
    seconds = time.monotonic() - begin
    return usage.ru_utime + usage.ru_stime, seconds, usage.ru_maxrss * 1024


def beside(figures, operation, part, other, columns):
    """A table of `operation`: `columns` of the figures of `part` and `other`, by heading."""
    rows = []
    for name, figure in figures.items():
        family, operator, what, whose = name.split("|")
        if what == operation and whose == part:
            second = figures[f"{family}|{operator}|{what}|{other}"]
            label = family + (f" (`{operator}`)" if operator else "")
            rows.append([label, *(column(figure, second) for column in columns.values())])
    return table(["", *columns], sorted(rows))


AGAINST_HASH_TABLE = {
    "ns": lambda plugin, by_hand: f"{plugin.best:,.0f}",
    "by hand, ns": lambda plugin, by_hand: f"{by_hand.best:,.0f}",
    "ratio": lambda plugin, by_hand: f"{plugin.best / by_hand.best:.2f}",
    "spread": lambda plugin, by_hand: f"{plugin.spread:.0%}",
    "allocations / by hand": lambda *both: " / ".join(f"{one.allocations:.0f}" for one in both),
}
WITHOUT_HOST = {
    "ns": lambda whole, host: f"{whole.best:,.0f}",
    "host, ns": lambda whole, host: f"{host.best:,.0f}",
    "plugin, ns": lambda whole, host: f"{whole.best - host.best:,.0f}",
    "spread": lambda whole, host: f"{whole.spread:.0%}",
    "allocations of the host": lambda whole, host: f"{host.allocations:.0f}",
    "of the plugin": lambda whole, host: f"{whole.allocations - host.allocations:.0f}",
}


def operators(build):
    figures = measured(build / "bin/operator_bench")
    parts = [
        "The time of each operation on a call of one operator of every family. *host* is the share"
        " of its host: the questions that the operation puts to it are recorded, and put to the same"
        " host without the plugin. *plugin* is the rest. The host has its answers ready, so that its"
        " share is small; a compiler's is larger. It counts these answers only: reading the tree, names"
        " of types, formatting of messages, letter case and the digest that names the state of an edge"
        " detection are the host's library too, and count as the plugin's."
        f" The best of {REPETITIONS} runs, interleaved; *spread* is how far the median of the whole"
        " operation is above its best. A difference of a few nanoseconds means nothing. Allocations are"
        " those of one call; a test keeps the plugin's from rising unnoticed.",
        "### Registry and look-ups",
        "By hand is a hash table of the C++ library that compares with `strcasecmp`, filled with the"
        " same names, and with program units handed to the host. Names match in any letter case.",
        beside(figures, "registry", "plugin", "by hand", AGAINST_HASH_TABLE),
    ]
    for operation, title in [
        ("check, accepted", "`check` of a right call"),
        ("check, refused", "`check` of a call with a wrong number of parameters"),
        ("generate", "`generate`"),
        ("staticCode", "`staticCode`"),
    ]:
        parts += [f"### {title}", beside(figures, operation, "all", "host", WITHOUT_HOST)]
    return parts


def translation(build):
    velc = build / "bin/velc"
    rows = []
    with tempfile.TemporaryDirectory() as folder:
        target = f"{folder}/out.c"
        runs = [spent(velc, "translate", ROOT / "examples/valve.st", "-o", target) for _ in range(20)]
        start_up = min(seconds for _, seconds, _ in runs)
        for calls in (1_000, 10_000, 100_000, 1_000_000):
            source = f"{folder}/{calls}.st"
            pathlib.Path(source).write_text(output(ROOT / "bench/make_program.py", str(calls)))
            runs = [spent(velc, "translate", source, "-o", target) for _ in range(5)]
            processor = min(run[0] for run in runs)
            spread = statistics.median(run[0] for run in runs) / processor - 1
            memory = max(run[2] for run in runs)
            rows.append(
                [
                    f"{calls:,}",
                    f"{processor:.3f}",
                    f"{spread:.0%}",
                    f"{calls / processor:,.0f}",
                    f"{memory / 2**20:,.0f}",
                    f"{memory / calls:,.0f}" if calls >= 100_000 else "",
                ]
            )
    return [
        "One PROGRAM of as many calls of operators, twenty kinds mixed evenly"
        " (`bench/make_program.py`), from source to C file on one core: the best of 5 runs."
        f" The smallest example takes {start_up * 1000:.0f} ms by the clock, start-up included.",
        table(["calls", "processor, s", "spread", "calls a second", "memory, MiB", "bytes a call"], rows),
    ]


def instructions(program):
    """Of a scan as velc translates it and by hand; none without valgrind."""
    if shutil.which("valgrind") is None:
        return None
    with tempfile.NamedTemporaryFile() as profile:
        profiler = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={profile.name}"]
        output(*profiler, program, "--once")
        text = output("callgrind_annotate", "--inclusive=yes", "--threshold=100", profile.name)
    counts = re.findall(r"([\d,]+) \([^)]*\)\s+\S*:(\w+_)?scan( |$)", text, re.MULTILINE)
    by_origin = {}
    for count, prefix, _ in counts:  # the largest first: two PROGRAMs are called by one function
        by_origin.setdefault(bool(prefix), int(count.replace(",", "")) / SCANS)
    return by_origin[True], by_origin[False]


def scans(build):
    rows = []
    for example in EXAMPLES:
        program = build / f"bin/scan_bench_{example}"
        orders = [measured(program), measured(f"{program}_swapped")]
        translated = min(figures["translated"] for figures in orders)
        by_hand = min(figures["by hand"] for figures in orders)
        counts = instructions(program)
        rows.append(
            [
                f"`{example}`",
                f"{translated.best / SCANS:.1f}",
                f"{by_hand.best / SCANS:.1f}",
                f"{translated.best / by_hand.best:.2f}",
                f"{translated.spread:.0%}",
                f"{counts[0]:.0f} / {counts[1]:.0f}" if counts else "",
                f"{counts[0] / counts[1]:.2f}" if counts else "",
            ]
        )
    return [
        "A scan of an example as `velc` translates it, and of the same program written by hand"
        " in C with the same runtime (`bench/programs/`), both at `-O2`. Before they are measured, both"
        " have left the same variables, memory and refreshed I/O behind after each scan. The mean of"
        f" {SCANS:,} scans from the start on, in which inputs come and go, the best of {REPETITIONS}"
        " runs in each of two programs that are linked in opposite orders:"
        " a scan takes so little that where its code lies shows in its time by a tenth and more."
        " The instructions, which valgrind counts, do not depend on that.",
        table(["", "ns", "by hand, ns", "ratio", "spread", "instructions / by hand", "ratio"], rows),
    ]


def large(build):
    in_one, in_parts, rows = builds.measure(build, units=2000)
    return [
        f"A generated library of 2,000 units (`bench/make_library.py`): {in_one:,} lines of C as one file, or"
        f" {in_parts:,} in a C file and a header for each unit, which the script of `examples/large/` builds with"
        " ninja. *files* are the calls"
        " of a C compiler, in seconds by the clock and of the processors, those of the daemons not included."
        " Each was done once. The two distcc daemons run on the same machine, on the cores on which the"
        " program would be compiled without them, so that their row shows what distributing costs; two other"
        " machines would compile at the same time.",
        table(["", "clock, s", "processors, s", "files"], rows),
    ]


SECTIONS = {
    "plugin": ("The plugin", operators),
    "velc": ("velc translate", translation),
    "scans": ("Generated C", scans),
    "builds": ("Large code bases", large),
}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path, help="folder of a release build")
    parser.add_argument("sections", nargs="*", choices=SECTIONS, help="measured anew; all when none is named")
    arguments = parser.parse_args()
    stamp = where(arguments.build)
    before = re.split(r"^(?=## )", PAGE.read_text(), flags=re.MULTILINE)
    page = ["# Benchmarks", "Written by `scripts/bench`."]
    for name, (title, measure) in SECTIONS.items():
        if not arguments.sections or name in arguments.sections:
            section = "\n\n".join([f"## {title}", stamp, *measure(arguments.build)])
            print(section, end="\n\n")
        else:
            section = next(old for old in before if old.startswith(f"## {title}\n"))
        page.append(section)
    PAGE.write_text("\n\n".join(part.strip("\n") for part in page) + "\n")


if __name__ == "__main__":
    main()
