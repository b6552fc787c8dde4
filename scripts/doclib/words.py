"""The pages in docs/language/: sections about the words of the language.

Keywords, signs, types, standard functions and function blocks have a section, several of them
together where they belong together:

  ## IF, THEN, ELSIF, ELSE, END_IF: conditions

  What it does and how it is written. Then a block ```st and behind it a block made from it, of
  the kinds that `pages` knows. A word may be in several sections.
"""
import re
from typing import NamedTuple

from .pages import FENCE, ROOT


class Section(NamedTuple):
    """A section and the words that it is about."""

    names: list
    title: str
    text: str  # with its heading


def sections_of(text):
    return [Section(names.split(", "), title[0].upper() + title[1:], whole.rstrip("\n") + "\n")
            for whole, names, title in
            re.findall(r"(?m)^(## ([^\n]+?): ([^\n]+)\n(?:.*\n)*?)(?=## |\Z)", text)]


def source(path):
    return (ROOT / path).read_text()


def keywords():
    scanner = source("refhost/syntax/lexer.l")
    for words in re.findall(r"^([a-z_]+(?:\|[a-z_\"&]+)*) +\{ return Token::", scanner, re.M):
        yield from (word.upper().strip('"') for word in words.split("|"))
    # Those that are keywords in some places only.
    yield from re.findall(r'\{"([A-Z_]+)", +Kind::', source("refhost/syntax/token_stream.cpp"))
    properties = source("refhost/semantics/configurations.cpp")
    yield from re.findall(r'\{+"([A-Z]+)", BasicDataType::', properties)
    yield from re.findall(r'\{"([A-Z_]+)", +Kind::', source("refhost/services/test_functions.cpp"))


def signs():
    scanner = source("refhost/syntax/lexer.l")
    yield from re.findall(r'^"([^"]+)" +\{', scanner, re.M)
    single, = re.findall(r"^\[(.+)\] +\{ return static_cast", scanner, re.M)
    yield from single.replace("\\", "")


def pragmas():
    for path, pattern in (("no_warns.cpp", r'equalIgnoringCase\(text_.*, "(\w+)"\)'),
                          ("tree_declarations.cpp", r'followsPragma\(\w+, "(\w+)"\)')):
        yield from (name.upper() for name in re.findall(pattern, source("refhost/syntax/" + path)))


def types():
    return re.findall(r'BasicDataType::\w+, +"(\w+)"|\{"(\w+)", BasicDataType',
                      source("hostkit/elementary_types.cpp"))


def standard_units():
    table = source("refhost/services/standard_functions.cpp")
    yield from re.findall(r'^ +\{+"(\w+)", +Kind::', table, re.M)
    unit = re.compile(r"^FUNCTION(?:_BLOCK)? (\w+)(@SUFFIX@)?", re.M)
    suffixes = re.findall(r'"(\w*)@\w+@-?\d+@', source("refhost/CMakeLists.txt"))
    for path in sorted((ROOT / "refhost/prelude").glob("*.st*")):
        for name, template in unit.findall(path.read_text()):
            yield from (name + suffix for suffix in (suffixes if template else [""]))


def coverage_problems(sections):
    """Words of the language without a section, and sections that show nothing."""
    explained = {name for section in sections for name in section.names}
    known = {*keywords(), *signs(), *pragmas(), *standard_units(), *("".join(names) for names in types())}
    for name in sorted(known - explained):
        yield f"'{name}' has no section in docs/language/"
    for section in sections:
        marks = [mark for mark, _ in FENCE.findall(section.text)]
        if marks[:1] != ["st"] or len(marks) < 2:
            yield f"section '{section.names[0]}' in docs/language/ has no example with a result"
