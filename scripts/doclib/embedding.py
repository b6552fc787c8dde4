"""The pages as `velc explain` has them: C++ tables of texts and of their topics."""
import re

from . import messages, operators, words
from .pages import ROOT, pages_in


def registered_names(listing):
    """The names in the output of the build tool operator_order."""
    return re.findall(r'"(\w+)"', listing)


def unregistered_classes():
    """The classes of operators that have no row and are not the base of another class."""
    headers = {path: path.read_text() for path in (ROOT / "operators").rglob("*.h")}
    used = set(re.findall(r"\bmake<(\w+)>", (ROOT / "operators/registration.cpp").read_text()))
    for text in headers.values():
        used.update(re.findall(r"public (?:vel::)?(\w+)", text))
    for path, text in sorted(headers.items()):
        for name in re.findall(r"^class (\w+)(?: final)? : public \w*Operator\b", text, re.M):
            if name not in used:
                yield (f"class {name} of {path.relative_to(ROOT)} has no row in "
                       "operators/registration.cpp")


def literal(text):
    return f'R"~({text})~"'


def embedded(listing):
    """The tables, and a list of the topics that are missing."""
    rows, topics = [], []

    def add(kind, title, text, names):
        topics.extend((name, len(rows)) for name in names)
        rows.append(f"{{Explanation::Kind::{kind}, {literal(title)}, {literal(text)}}},\n")

    names, parts, sections, groups = [], [], [], []
    for path in pages_in("operators"):
        text = path.read_text()
        page_names = operators.names_of(text)
        names += page_names
        add("Operator", text.split("\n")[0].lstrip("# "), text, page_names)
    for path in pages_in("language"):
        parts += words.sections_of(path.read_text())
    for part in parts:
        add("Word", part.title, part.text, part.names)
    for path in pages_in("messages"):
        sections += messages.sections_of(path.read_text())
        groups += messages.groups_of(path.read_text())
    for section in sections:
        add("Message", section.title, section.text.rstrip("\n") + "\n", [section.code])
    for name, state, _, text in groups:
        add("WarningGroup", f"warnings, {state}", text.rstrip("\n") + "\n", [name])
    problems = [*unregistered_classes(),
                *operators.coverage_problems(names, registered_names(listing)),
                *words.coverage_problems(parts),
                *messages.coverage_problems(sections),
                *messages.group_problems(groups, sections)]
    keys = [f'{{"{topic}", &kTexts[{index}]}},\n' for topic, index in sorted(topics)]
    tables = ("constexpr Explanation kTexts[] = {\n" + "".join(rows) + "};\n"
              "constexpr Topic kTopics[] = {\n" + "".join(keys) + "};\n")
    return tables, problems
