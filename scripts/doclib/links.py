"""Links of the Markdown files: the files and the headings that they lead to."""
import re
from pathlib import Path

from .pages import ROOT

LINK = re.compile(r"(?<!!)\[[^\]]*\]\(([^)\s]+)\)")
CODE = re.compile(r"^ *```.*?^ *```$|`[^`\n]+`", re.M | re.S)
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
    """What is wrong with a link, or nothing."""
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
        if parts[0] not in ("build", ".git"):
            yield path


def problems():
    for path in markdown_files():
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
