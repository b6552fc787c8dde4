"""The pages in docs/operators/: one for each family of operators."""
import itertools
import re
from typing import NamedTuple

from .pages import FENCE, Problem, found

HEADINGS = ["Operators", "Parameters", "Result", "Behaviour", "Example", "Messages"]


def section(text, heading):
    return found(rf"^## {heading}\n(.*?)(?=^## |\Z)", text, f"section '{heading}'")


class Item(NamedTuple):
    """An item in the section of operators."""

    signatures: list
    types: list  # that X and Y of the signatures stand for
    does: str  # what the operators do; may be empty


def operator_items(text):
    for item in re.findall(r"^- (.+(?:\n  .+)*)", section(text, "Operators"), re.M):
        signatures = re.match(r"`[^`]+`(?:,\s+`[^`]+`)*", item)
        if not signatures:
            raise Problem(f"an item of operators without a name: {item}")
        rest = item[signatures.end():]
        yield Item(re.findall(r"`([^`]+)`", signatures[0]), re.findall(r"\b[A-Z]{2,}\b", rest),
                   rest[2:] if rest.startswith(": ") else "")


def name_of(signature):
    return re.match(r"\w+", signature)[0]


def expand(pattern, types):
    """The operators of a pattern like X_TO_Y, X and Y being different types, in their order."""
    parts = pattern.split("_")
    variables = [part for part in ("X", "Y") if part in parts]
    return ["_".join(dict(zip(variables, chosen)).get(part, part) for part in parts)
            for chosen in itertools.permutations(types, len(variables))]


def names_of(text):
    return [name for item in operator_items(text) for signature in item.signatures
            for name in expand(name_of(signature), item.types)]


def message_rows(text):
    """Code, severity, text and occasion of each message that a page lists."""
    return re.findall(r"^\| (0x\w+) \| (\w+) \| `(.*?)` \| (.*) \|$",
                      section(text, "Messages"), re.M)


def index(text, pages):
    """The page about the pages, with the operators of each page beside its title."""
    for name, page in pages.items():
        row = re.compile(rf"^(\| \[.*\]\({re.escape(name)}\) \|).*$", re.M)
        if not row.search(text):
            raise Problem(f"it has no row for {name}; add one with its title")
        names = ", ".join(f"`{name_of(signature)}`" for item in operator_items(page)
                          for signature in item.signatures)
        text = row.sub(rf"\1 {names} |", text)
    return text


def check_page(text):
    if re.findall(r"^## (.+)$", text, re.M) != HEADINGS:
        raise Problem(f"its headings are not {HEADINGS}")
    examples = "".join(body for mark, body in FENCE.findall(text) if mark.startswith("text"))
    for code, severity, form, when in message_rows(text):
        raised = re.escape(f"{severity}: {form} [{code}]").replace("%s", ".*")
        if not when.startswith("Not with velc") and not re.search(raised, examples):
            raise Problem(f"no example raises {severity} {code} '{form}'")


def coverage_problems(names, registered):
    """Operators that are on no page, on more than one, or not registered."""
    for name in sorted(set(registered) - set(names)):
        yield f"operator {name} is on no page in docs/operators/"
    for name in sorted(set(names) - set(registered)):
        yield f"operator {name} is on a page, but has no row in operators/registration.cpp"
    for of, where in ((names, "on the pages"), (registered, "registered")):
        for name in sorted(set(of)):
            if of.count(name) > 1:
                yield f"operator {name} is {where} {of.count(name)} times"
