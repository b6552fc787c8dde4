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
import statistics
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
REPETITIONS = 9

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
        ("findOperator", "`findOperator`, any letter case; the floor is `strcasecmp` in a map"),
        ("check, accepted", "`check` of a right call"),
        ("check, refused", "`check` of a call with a wrong number of parameters"),
        ("generate", "`generate`"),
        ("staticCode", "`staticCode`"),
    ]:
        parts += [f"### {title}", against_floors(figures, operation)]
    return parts


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path, help="folder of a release build")
    build = parser.parse_args().build
    parts = ["# Benchmarks", "Written by `scripts/bench`.", machine(build)]
    parts += operators(build)
    text = "\n\n".join(part.rstrip("\n") for part in parts) + "\n"
    (ROOT / "docs/benchmarks.md").write_text(text)


if __name__ == "__main__":
    main()
