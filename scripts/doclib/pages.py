"""Markdown pages whose blocks show the output of velc.

A block marked ```st holds a whole program, or statements after a comment with their
declarations. The blocks after it are made from it:

  ```c            the C of the statements
  ```c static     the C that the operators bring along
  ```text check   the diagnostics; with the word `last`, only the last of them
  ```text run     the values of the variables afterwards
  ```text test    the results of its unit tests

Further words of such a mark are options for velc: ```text run --scans 2
"""
import re
import shlex
import subprocess
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FENCE = re.compile(r"^```(\w.*)\n((?:.*\n)*?)```$", re.M)


class Problem(Exception):
    """A fault of a page."""


def as_program(source):
    """The fragment as a program in which every statement keeps its line and column."""
    if not source.startswith("(*"):
        return source
    framed, count = re.subn(r"\A\(\*(.*?)\*\)", r"PROGRAM Example \1", source, flags=re.S)
    if not count:
        raise Problem("the comment with the declarations has no end")
    return framed + "END_PROGRAM\n"


def bodies_of(c):
    """The statements of each program unit, in the order of the units."""
    for body in re.findall(r"^[^\n;]* \w+_(?:scan|body)\([^\n;]*\) \{\n(.*?)^\}$", c, re.M | re.S):
        lines = re.sub(r"^  (?:struct .* self = .*|\(void\)self;)\n", "", body, flags=re.M)
        yield re.sub(r"^  ", "", lines, flags=re.M)


def statements_of(c):
    return "\n".join(bodies_of(c))


def found(pattern, text, what):
    match = re.search(pattern, text, re.M | re.S)
    if not match:
        raise Problem(f"no {what}")
    return match.group(1)


def static_code_of(c):
    return found(r"^#endif\n\n((?!struct ).*?\n)\n*^struct ", c, "static code")


def last_of(diagnostics):
    return "".join(without_summary(diagnostics).splitlines(keepends=True)[-3:])


def without_summary(diagnostics):
    """The diagnostics without the line that counts them."""
    return re.sub(r"^\d+ (?:error|warning)s?\b.* in \d.*\n\Z", "", diagnostics, flags=re.M)


# For each kind of block, the command and the part of its output that the block shows. Blocks of
# `check` show standard error, with or without errors.
KINDS = {
    "c static": ("translate", static_code_of),
    "c": ("translate", statements_of),
    "text check last": ("check", last_of),
    "text check": ("check", without_summary),
    "text run": ("run", str),
    "text test": ("test", str),
}


def run_velc(velc, command, options, source):
    """The result of velc for the source: exit code, standard output and standard error."""
    with tempfile.TemporaryDirectory() as folder:
        Path(folder, "example.st").write_text(as_program(source))
        call = [velc, command, *options, "example.st"]
        return subprocess.run(call, cwd=folder, capture_output=True, text=True, check=False)


def shown(velc, mark, source):
    """The text that a block with this mark must show for the source."""
    kind = next((kind for kind in KINDS if f"{mark} ".startswith(f"{kind} ")), None)
    if kind is None or source is None:
        raise Problem("a block of no known kind, or before any ```st")
    command, extract = KINDS[kind]
    done = run_velc(velc, command, shlex.split(mark[len(kind):]), source)
    checks = command == "check"
    output = done.stderr if checks else done.stdout
    if done.returncode not in ((0,) if command in ("run", "translate") else (0, 1)) or not output:
        raise Problem(f"velc {command} gives {done.returncode}: {done.stderr or 'nothing'}")
    return extract(output)


def refresh(text, velc):
    """The text of a page with new blocks."""
    source = None

    def block(match):
        nonlocal source
        mark, body = match.groups()
        if mark == "st":
            source = body
            return match.group(0)
        try:
            return f"```{mark}\n{shown(velc, mark, source)}```"
        except Problem as problem:
            line = text.count("\n", 0, match.start()) + 1
            raise Problem(f"block at line {line}: {problem}") from None

    return FENCE.sub(block, text)


def pages_in(folder):
    """The pages of a folder of docs/ except its README."""
    paths = (ROOT / "docs" / folder).glob("*.md")
    return sorted(path for path in paths if path.name != "README.md")
