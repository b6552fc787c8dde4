"""Pages whose blocks ```console are a session: the commands and what they print.

The commands run one after the other in a copy of a folder of examples/, with velc on the PATH and
VELOPS naming the sources and their build. In the output on the page, `...` stands for any text, and
in a line of its own for any lines.
"""
import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

from .pages import ROOT

BLOCK = re.compile(r"^```console\n(.*?)^```$", re.M | re.S)
COMMAND = re.compile(r"^\$ ((?:.*\\\n)*.*\n)((?:(?!\$ ).*\n)*)", re.M)


def matches(shown, output):
    lines = (re.escape(line).replace(r"\.\.\.", ".*") + "\n" for line in shown.splitlines())
    return re.fullmatch("".join("(?:.*\n)*" if line == ".*\n" else line for line in lines), output)


def run(text, velc, example):
    """The page with the output that the commands have now, and the pictures that they have drawn."""
    with tempfile.TemporaryDirectory() as folder:
        sources, work = Path(folder, "velops"), Path(folder, "work")
        (sources / "build").mkdir(parents=True)
        (sources / "build/release").symlink_to(velc.parents[1])
        (sources / "runtime").symlink_to(ROOT / "runtime")
        shutil.copytree(ROOT / "examples" / example, work)
        environment = os.environ | {"VELOPS": str(sources), "LC_ALL": "C.UTF-8", "NO_COLOR": "1",
                                    "PATH": f"{velc.parent}:{os.environ['PATH']}"}

        def command(match):
            done = subprocess.run(["bash", "-c", match[1]], cwd=work, env=environment, text=True,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, check=False)
            return match[0] if matches(match[2], done.stdout) else f"$ {match[1]}{done.stdout}"

        fresh = BLOCK.sub(lambda block: f"```console\n{COMMAND.sub(command, block[1])}```", text)
        return fresh, {path.name: path.read_text() for path in work.glob("*.svg")}
