#!/usr/bin/env python3
"""Builds a generated library as one C file and as one for each unit, with ninja, ccache and distcc:
builds.py BUILD_FOLDER UNITS prints the table. Fails if more is compiled than must be."""

import contextlib
import os
import pathlib
import resource
import shutil
import socket
import subprocess
import sys
import tempfile
import time

from make_library import library

ROOT = pathlib.Path(__file__).resolve().parent.parent
FLAGS = "-O2"
MAIN = '#include "gen/Plant.h"\nint main(void) { Plant_init(); Plant_scan(); return 0; }\n'


class Builds:
    """A folder with the library, and the environment in which it is built."""

    def __init__(self, build, units, folder):
        self.folder = pathlib.Path(folder).resolve()
        for name, text in library(units):
            self.write(f"src/{name}", text)
        self.write("main.c", MAIN)
        (self.folder / "distcc").mkdir()
        shutil.copy(ROOT / "examples/large/configure", self.folder)
        runtime = f"Cflags: -I{build}/include/velops\nLibs: {build}/lib/libvelrt.a -lm\n"
        self.write("velrt.pc", f"Name: velrt\nDescription: runtime\nVersion: 1\n{runtime}")
        self.environment = dict(
            os.environ,
            PATH=f"{build}/bin:{os.environ['PATH']}",
            PKG_CONFIG_PATH=str(self.folder),
            CCACHE_DIR=str(self.folder / "ccache"),
            DISTCC_DIR=str(self.folder / "distcc"),
            DISTCC_FALLBACK="0",
        )

    def write(self, name, text):
        (self.folder / name).parent.mkdir(exist_ok=True)
        (self.folder / name).write_text(text)

    def run(self, *command, **environment):
        """Seconds by the clock and of the processors that a command takes, and what it prints."""
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        begin = time.monotonic()
        result = subprocess.run(
            command, cwd=self.folder, env={**self.environment, **environment}, capture_output=True, text=True
        )
        seconds = time.monotonic() - begin
        if result.returncode != 0:
            raise SystemExit(f"{' '.join(command[:4])} failed:\n{result.stdout[-3000:]}{result.stderr[-3000:]}")
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        spent = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        return seconds, spent, result.stdout

    def ninja(self, jobs, **environment):
        """The same of the whole build, and how many C files it compiles."""
        seconds, spent, text = self.run("ninja", "-v", f"-j{jobs}", **environment)
        return seconds, spent, sum(" -c -o " in line for line in text.splitlines())

    def clean(self):
        self.run("ninja", "-t", "clean", "-r", "cc")
        (self.folder / "plant").unlink(missing_ok=True)

    def lines(self, files):
        return sum(path.read_bytes().count(b"\n") for path in self.folder.glob(files))

    def edit(self):
        """Changes a constant in a statement of one unit."""
        path = self.folder / "src/block7.st"
        text = path.read_text()
        path.write_text(text.replace("limit + 1)", "limit + 2)") if "limit + 1)" in text else
                        text.replace("limit + 2)", "limit + 1)"))


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


@contextlib.contextmanager
def daemons(folder, count):
    """Runs distcc daemons with one job each. Gives the value of DISTCC_HOSTS and their logs."""
    running = []
    hosts = []
    logs = []
    try:
        for number in range(count):
            port = free_port()
            logs.append(folder / f"distccd{number}.log")
            command = ["distccd", "--daemon", "--no-detach", "--allow", "127.0.0.1", "--listen", "127.0.0.1"]
            command += ["--port", str(port), "--jobs", "1", "--log-stderr", "--enable-tcp-insecure"]
            with logs[-1].open("w") as log:
                running.append(subprocess.Popen(command, stderr=log))
            hosts.append(f"127.0.0.1:{port}/1")
            for _ in range(100):
                with contextlib.suppress(OSError), socket.create_connection(("127.0.0.1", port)):
                    break
                time.sleep(0.1)
        yield " ".join(hosts), logs
    finally:
        for daemon in running:
            daemon.terminate()
            daemon.wait()


def measure(build, units):
    """The lines of C in one file and in several, and rows of a table: what was built, the time by the clock and of processors, the files compiled."""
    rows = []

    def row(what, seconds, spent, compiled):
        rows.append([what, f"{seconds:.1f}", f"{spent:.1f}", f"{compiled:,}"])

    def compiled_once(figures):
        if figures[2] != 1:
            raise SystemExit(f"{figures[2]} files were compiled after a change in one unit")
        return figures

    with tempfile.TemporaryDirectory() as temporary:
        builds = Builds(build.resolve(), units, temporary)
        sources = sorted(str(path.relative_to(builds.folder)) for path in builds.folder.glob("src/*.st"))
        translate = ["velc", "translate", "--no-warn", "all", *sources]
        include = f"-I{build.resolve()}/include/velops"
        row("`velc translate -o`", *builds.run(*translate, "-o", "one.c")[:2], 0)
        row(f"its C file, gcc `{FLAGS}`", *builds.run("gcc", FLAGS, include, "-c", "one.c")[:2], 1)
        in_one = builds.lines("one.c")

        configured = {"CC": "gcc"}
        row("`velc translate --split`", *builds.run(*translate, "--split", "gen")[:2], 0)
        in_parts = builds.lines("gen/*.[ch]")
        row("the same, nothing changed", *builds.run(*translate, "--split", "gen")[:2], 0)
        builds.run("./configure", **configured)
        row("ninja -j2, all", *builds.ninja(2, **configured))
        everything = builds.ninja(2, **configured)[2]
        builds.edit()
        row("ninja -j2, one statement changed", *compiled_once(builds.ninja(2, **configured)))
        assert everything == 0

        configured = {"CC": "ccache gcc"}
        builds.run("./configure", **configured)
        row("ninja -j2, ccache, nothing remembered", *builds.ninja(2, **configured))
        builds.clean()
        row("ninja -j2, ccache, all remembered", *builds.ninja(2, **configured))

        configured = {"CC": "distcc gcc"}
        with daemons(builds.folder, 2) as (hosts, logs):
            configured["DISTCC_HOSTS"] = hosts
            builds.run("./configure", **configured)
            row("ninja -j4, two local distcc daemons", *builds.ninja(4, **configured))
            builds.edit()
            row("ninja -j4, distcc, one statement changed", *compiled_once(builds.ninja(4, **configured)))
            shares = [log.read_text().count("COMPILE_OK") for log in logs]
            if min(shares) == 0:
                raise SystemExit(f"the daemons have compiled {shares} files")
    return in_one, in_parts, rows


if __name__ == "__main__":
    in_one, in_parts, table = measure(pathlib.Path(sys.argv[1]), int(sys.argv[2]))
    print(f"{in_one:,} lines of C in one file, {in_parts:,} in C files and headers")
    for cells in table:
        print("{:45} {:>8} {:>8} {:>6}".format(*cells))
