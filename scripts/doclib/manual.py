"""The manual page of velc, which has every command and every option of its help."""
import re
import subprocess

from .pages import ROOT


def help_of(velc, *command):
    call = [velc, *command, "--help"]
    return subprocess.run(call, capture_output=True, text=True, check=True).stdout


def coverage_problems(velc):
    text = (ROOT / "docs/velc.1").read_text()
    own = help_of(velc)
    commands = re.findall(r"^  ([a-z]+) ", own.partition("\nSubcommands:\n")[2], re.M)
    helps = own + "".join(help_of(velc, command) for command in commands)
    options = set(re.findall(r"^  (?:-\w,)?-(-[a-z-]+)", helps, re.M))
    items = "".join(re.findall(r"^\.It .*\n", text, re.M))
    for mark, there in (("Cm", set(commands)), ("Fl", options)):
        for name in sorted(there ^ set(re.findall(rf"{mark} (-?[a-z-]{{2,}})", items))):
            yield f"docs/velc.1: {mark} {name} is only {'in velc' if name in there else 'here'}"
