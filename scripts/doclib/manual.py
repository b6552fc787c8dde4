"""The manual page of velc, which has every command and every option of its help."""
import re
import subprocess

from .pages import ROOT


def help_of(velc, *command):
    return subprocess.run([velc, *command, "--help"], capture_output=True, text=True, check=True).stdout


def coverage_problems(velc):
    text = (ROOT / "docs/velc.1").read_text()
    own = help_of(velc)
    commands = re.findall(r"^  ([a-z]+) ", own.partition("\nSubcommands:\n")[2], re.M)
    helps = [own, *(help_of(velc, command) for command in commands)]
    options = {option for shown in helps for option in re.findall(r"^  (?:-\w,)?-(-[a-z-]+)", shown, re.M)}
    items = "".join(re.findall(r"^\.It .*\n", text, re.M))
    for mark, there in (("Cm", set(commands)), ("Fl", options)):
        for name in sorted(there ^ set(re.findall(rf"{mark} (-?[a-z-]{{2,}})", items))):
            yield f"docs/velc.1: {mark} {name} is only {'in velc' if name in there else 'here'}"
