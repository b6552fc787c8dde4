"""Links of the Markdown files: the files and the headings that they lead to; and the files,
scripts and commands of velc that they name."""
import re
from pathlib import Path

from .pages import ROOT

LINK = re.compile(r"(?<!!)\[[^\]]*\]\(([^)\s]+)\)")
CODE = re.compile(r"^ *```.*?^ *```$|`[^`\n]+`", re.M | re.S)
# In code: a path in one of the folders, and a call of velc. The history may name files that are gone.
HISTORY = "CHANGELOG.md"
NAMED = re.compile(r"(?:`|^\$ |^)((?:host|core|operators|hostkit|refhost|runtime|cli|tests|bench"
                   r"|fuzz|examples|packaging|scripts|docs|editors|lsp)/[^`\s<>]*)", re.M)
CALL = re.compile(r"(?:^\$ |`)velc ([a-z]+)\b([^`\n|;]*)", re.M)
HEADING = re.compile(r"^#+ +(.*?) *#*$", re.M)


def anchors_of(path):
    """The anchors of a page, as the usual viewers of Markdown make them from its headings."""
    text = re.sub(r"^```.*?^```$", "", path.read_text(), flags=re.M | re.S)
    anchors = set(re.findall(r'\b(?:id|name)="([^"]+)"', text))
    for heading in HEADING.findall(text):
        plain = re.sub(r"\[([^\]]*)\]\([^)]*\)|[`*]", r"\1", heading).lower()
        anchor = first = re.sub(r"[^\w\- ]", "", plain).replace(" ", "-")
        count = 0
        while anchor in anchors:
            count += 1
            anchor = f"{first}-{count}"
        anchors.add(anchor)
    return anchors


def problem_of(path, target):
    """The fault of a link, or None."""
    name, _, anchor = target.partition("#")
    there = (path.parent / name).resolve() if name else path
    if not there.exists():
        return f"there is no {name}"
    if anchor and there.suffix == ".md" and anchor not in anchors_of(there):
        return f"{name or 'this page'} has no heading #{anchor}"
    return None


def markdown_files():
    for path in sorted(ROOT.rglob("*.md")):
        parts = path.relative_to(ROOT).parts
        if parts[0] not in ("build", ".git") and "node_modules" not in parts:
            yield path


def manual():
    """The commands and options of velc, from its manual page."""
    items = "".join(re.findall(r"^\.It .*\n", (ROOT / "docs/velc.1").read_text(), re.M))
    return set(re.findall(r"Cm ([a-z]+)", items)), set(re.findall(r"Fl (-[a-z-]+)", items))


def named_problems(path, text, commands, options):
    """The files and commands in the code of a page that do not exist."""
    for match in NAMED.finditer(text):
        name = match[1]
        places = (ROOT, path.parent, ROOT / path.relative_to(ROOT).parts[0])
        pattern = name.rstrip("/.,")
        if not any([*place.glob(pattern)] or [*place.glob(pattern + ".*")] for place in places):
            yield match.start(), f"'{name}': there is no such file"
    for match in CALL.finditer(text):
        command, rest = match.groups()
        if command not in commands:
            yield match.start(), f"'velc {command}': velc has no such command"
        for option in re.findall(r"(?<= -)-[a-z-]+", rest):
            if option not in options:
                yield match.start(), f"'velc {command} -{option}': velc has no such option"


def problems():
    commands, options = manual()
    for path in markdown_files():
        whole = path.read_text()
        named = [] if path.name == HISTORY else named_problems(path, whole, commands, options)
        for at, problem in named:
            line = whole.count("\n", 0, at) + 1
            yield f"{path.relative_to(ROOT)}:{line}: {problem}"
        # Code keeps its length, so that a link keeps its line.
        text = CODE.sub(lambda code: re.sub(r"[^\n]", " ", code[0]), path.read_text())
        for match in LINK.finditer(text):
            target = match[1]
            if re.match(r"[a-z]+:", target):
                continue
            problem = problem_of(path, target)
            if problem:
                line = text.count("\n", 0, match.start()) + 1
                yield f"{Path(path).relative_to(ROOT)}:{line}: link '{target}': {problem}"
