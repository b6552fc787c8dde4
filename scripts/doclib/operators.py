"""The pages in docs/operators/: one for each family of operators."""
import itertools
import re

from .pages import FENCE, Problem, found

HEADINGS = ["Operators", "Parameters", "Result", "Behaviour", "Example", "Messages"]


def section(text, heading):
    return found(rf"^## {heading}\n(.*?)(?=^## |\Z)", text, f"section '{heading}'")


def operator_items(text):
    """Of each item in the section of operators its signatures, and its types."""
    for item in re.findall(r"^- (.+(?:\n  .+)*)", section(text, "Operators"), re.M):
        signatures = re.match(r"`[^`]+`(?:,\s+`[^`]+`)*", item)
        if not signatures:
            raise Problem(f"an item of operators without a name: {item}")
        types = re.findall(r"\b[A-Z]{2,}\b", item[signatures.end():])
        yield re.findall(r"`([^`]+)`", signatures.group(0)), types


def name_of(signature):
    return re.match(r"\w+", signature)[0]


def expand(pattern, types):
    """The operators of a pattern like X_TO_Y, X and Y being different types, in their order."""
    parts = pattern.split("_")
    variables = [part for part in ("X", "Y") if part in parts]
    return ["_".join(dict(zip(variables, chosen)).get(part, part) for part in parts)
            for chosen in itertools.permutations(types, len(variables))]


def names_of(text):
    return [name for signatures, types in operator_items(text) for signature in signatures
            for name in expand(name_of(signature), types)]


def message_rows(text):
    """Code, severity, text and occasion of each message that a page lists."""
    return re.findall(r"^\| (0x\w+) \| (\w+) \| `(.*?)` \| (.*) \|$", section(text, "Messages"), re.M)


def check_page(path, text, index):
    if re.findall(r"^## (.+)$", text, re.M) != HEADINGS:
        raise Problem(f"its headings are not {HEADINGS}")
    row = next((line for line in index.splitlines() if f"]({path.name})" in line), "")
    for signature in itertools.chain.from_iterable(names for names, _ in operator_items(text)):
        if f"`{name_of(signature)}`" not in row:
            raise Problem(f"README.md has no row for this page that names {name_of(signature)}")
    examples = "".join(body for mark, body in FENCE.findall(text) if mark.startswith("text"))
    for code, severity, form, when in message_rows(text):
        raised = re.escape(f"{severity}: {form} [{code}]").replace("%s", ".*")
        if not when.startswith("Not with velc") and not re.search(raised, examples):
            raise Problem(f"no example raises {severity} {code} '{form}'")


def coverage_problems(names, registered):
    """Operators that are on no page, on more than one, or not registered."""
    for name in sorted(set(names) | set(registered)):
        if names.count(name) != registered.count(name):
            yield (f"operator {name} is on {names.count(name)} pages, "
                   f"registered {registered.count(name)} times")
