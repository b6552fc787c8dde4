"""The pages as `velc explain` has them: C++ tables of texts and of their topics."""
import re

from . import messages, operators
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
    texts, topics, names, sections, groups = [], {}, [], [], []
    for path in pages_in("operators"):
        text = path.read_text()
        page_names = operators.names_of(text)
        names += page_names
        topics.update(dict.fromkeys(page_names, len(texts)))
        texts.append((text.split("\n")[0].lstrip("# "), text))
    for path in pages_in("messages"):
        sections += messages.sections_of(path.read_text())
        groups += messages.groups_of(path.read_text())
    for section in sections:
        topics[section.code] = len(texts)
        texts.append((section.title, section.text.rstrip("\n") + "\n"))
    for name, state, _, text in groups:
        topics[name] = len(texts)
        texts.append((f"warnings, {state}", text.rstrip("\n") + "\n"))
    problems = [*unregistered_classes(),
                *operators.coverage_problems(names, registered_names(listing)),
                *messages.coverage_problems(sections),
                *messages.group_problems(groups, sections)]
    rows = [f"{{{literal(title)}, {literal(text)}}},\n" for title, text in texts]
    keys = [f'{{"{topic}", &kTexts[{index}]}},\n' for topic, index in sorted(topics.items())]
    tables = ("constexpr Explanation kTexts[] = {\n" + "".join(rows) + "};\n"
              "constexpr Topic kTopics[] = {\n" + "".join(keys) + "};\n")
    return tables, problems
