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

ROOT = pathlib.Path(__file__).resolve().parent.parent
REPETITIONS = 9
SCANS = 6400  # of a run, in programs/scan_bench.cpp
EXAMPLES = (
    "valve",
    "filling_station",
    "gate_iec",
    "gate_letters",
    "filling_line",
    "temperature_control",
    "lift",
)

Figure = collections.namedtuple("Figure", "best spread allocations")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def table(header, rows):
    lines = ["| " + " | ".join(header) + " |", "|---|" + "---:|" * (len(header) - 1)]
    lines += ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join(lines) + "\n"


def machine(build):
    model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    cache = (build / "CMakeCache.txt").read_text()
    compiler = re.search(r"CMAKE_CXX_COMPILER:\w+=(.*)", cache)[1]
    flags = re.search(r"CMAKE_CXX_FLAGS_RELEASE:\w+=(.*)", cache)[1]
    return table(
        ["Where and when", ""],
        [
            ["Processor", f"{model[1] if model else platform.machine()}, {os.cpu_count()} cores"],
            ["Load when started", f"{os.getloadavg()[0]:.1f}"],
            ["System", f"{platform.system()} {platform.release()}, {' '.join(platform.libc_ver())}"],
            ["Compiler", output(compiler, "--version").splitlines()[0] + f", `{flags}`"],
            ["Date", datetime.date.today().isoformat()],
        ],
    )


def measured(program, *arguments):
    """The best of several repetitions for each benchmark, and how far their median is off."""
    report = json.loads(
        output(
            program,
            "--benchmark_format=json",
            "--benchmark_min_time=0.01",
            f"--benchmark_repetitions={REPETITIONS}",
            "--benchmark_enable_random_interleaving=true",
            *arguments,
        )
    )
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


def against_floors(figures, operation):
    rows = []
    for name, plugin in figures.items():
        family, operator, what, who = name.split("|")
        if what != operation or who != "plugin":
            continue
        floor = figures[f"{family}|{operator}|{what}|floor"]
        rows.append(
            [
                family + (f" (`{operator}`)" if operator else ""),
                f"{plugin.best:,.0f}",
                f"{floor.best:,.0f}",
                f"{plugin.best / floor.best:.2f}",
                f"{plugin.spread:.0%}",
                f"{plugin.allocations:.0f} / {floor.allocations:.0f}",
            ]
        )
    rows.sort()
    return table(["", "ns", "floor, ns", "ratio", "spread", "allocations / floor"], rows)


def operators(build):
    figures = measured(build / "bin/operator_bench")
    parts = [
        "## The plugin",
        "Each operation of the plugin beside its *floor*: a routine that makes the same requests"
        " of the host in the same order and writes the same text by hand into one reserved"
        " string. The host answers what it has ready, so that the plugin is what is seen."
        f" The best of {REPETITIONS} runs, interleaved; *spread* is how far the median of the"
        " plugin's is above its best. Allocations are those of one call, the host's answers"
        " among them. A test holds them to the floor's, so no figure of them can rise unnoticed."
        " A generated text is allocated once up to 255 characters; a longer one grows.",
    ]
    for operation, title in [
        ("construct and destroy", "Registry of 519 operators, constructed and destroyed"),
        ("findOperator", "`findOperator`, any letter case; the floor is a hash table, `strcasecmp`"),
        ("check, accepted", "`check` of a right call"),
        ("check, refused", "`check` of a call with a wrong number of parameters"),
        ("generate", "`generate`"),
        ("staticCode", "`staticCode`"),
    ]:
        parts += [f"### {title}", against_floors(figures, operation)]
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
    header = ["calls", "processor, s", "spread", "calls a second", "memory, MiB", "bytes a call"]
    return [
        "## velc translate",
        "One PROGRAM of as many calls of operators, twenty kinds mixed evenly"
        " (`bench/make_program.py`), from source to C file on one core: the best of 5 runs."
        f" The smallest example takes {start_up * 1000:.0f} ms by the clock, start-up included.",
        table(header, rows),
    ]


def instructions(program):
    """Of a scan as velc translates it and by hand; none without valgrind."""
    if shutil.which("valgrind") is None:
        return None
    with tempfile.NamedTemporaryFile() as profile:
        output(
            "valgrind",
            "--tool=callgrind",
            f"--callgrind-out-file={profile.name}",
            program,
            "--once",
        )
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
        translated = min(figures[f"scan|{example}|scan|plugin"] for figures in orders)
        by_hand = min(figures[f"scan|{example}|scan|floor"] for figures in orders)
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
    header = ["", "ns", "by hand, ns", "ratio", "spread", "instructions / by hand", "ratio"]
    return [
        "## Generated C",
        "A scan of an example as `velc` translates it, and of the same program written by hand"
        " in C with the same runtime (`bench/programs/`), both at `-O2`. Before they are measured, both"
        " have left the same variables, memory and refreshed I/O behind after each scan. The mean of"
        f" {SCANS:,} scans from the start on, in which inputs come and go, the best of {REPETITIONS}"
        " runs in each of two programs that are linked in opposite orders:"
        " a scan takes so little that where its code lies shows in its time by a tenth and more."
        " The instructions, which valgrind counts, do not depend on that.",
        table(header, rows),
    ]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path, help="folder of a release build")
    build = parser.parse_args().build
    parts = ["# Benchmarks", "Written by `scripts/bench`.", machine(build)]
    parts += operators(build) + translation(build) + scans(build)
    text = "\n\n".join(part.rstrip("\n") for part in parts) + "\n"
    (ROOT / "docs/benchmarks.md").write_text(text)


if __name__ == "__main__":
    main()
