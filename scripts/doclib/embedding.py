"""What `velc explain` has of the pages: C++ tables of texts and of their topics."""
import re

from . import messages, operators
from .pages import pages_in


def registered_names(listing):
    """The names in what the build tool operator_order prints, without those that would
    convert a type to itself, which are not registered."""
    names = re.findall(r'"(\w+)"', listing)
    return [name for name in names if not re.fullmatch(r"(\w+)_TO_\1", name)]


def literal(text):
    return f'R"~({text})~"'


def embedded(listing):
    """The tables, and what is missing."""
    texts, topics, names, sections = [], {}, [], []
    for path in pages_in("operators"):
        text = path.read_text()
        page_names = operators.names_of(text)
        names += page_names
        topics.update(dict.fromkeys(page_names, len(texts)))
        texts.append((text.split("\n")[0].lstrip("# "), text))
    for path in pages_in("messages"):
        sections += messages.sections_of(path.read_text())
    for section in sections:
        topics[section.code] = len(texts)
        texts.append((section.title, section.text.rstrip("\n") + "\n"))
    problems = [*operators.coverage_problems(names, registered_names(listing)),
                *messages.coverage_problems(sections)]
    rows = [f"{{{literal(title)}, {literal(text)}}},\n" for title, text in texts]
    keys = [f'{{"{topic}", &kTexts[{index}]}},\n' for topic, index in sorted(topics.items())]
    tables = ("constexpr Explanation kTexts[] = {\n" + "".join(rows) + "};\n"
              "constexpr Topic kTopics[] = {\n" + "".join(keys) + "};\n")
    return tables, problems
