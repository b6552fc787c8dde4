"""The #include lines of the parts: which part may include which, and a diagram of those that do."""
import re
from typing import NamedTuple

from .pages import ROOT

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)
SOURCES = {".h", ".c", ".cpp", ".y", ".l"}
# Written by the build, not by hand.
GENERATED = {"explanations.inc", "grammar.h", "operator_order.inc", "prelude_text.inc"}
BEGIN = "<!-- drawn by scripts/docs from the #include lines -->\n"
END = "<!-- end of the drawing -->\n"


class Part(NamedTuple):
    """A folder, or some of its files."""

    files: str  # a pattern of names; the first part that fits a file is its part
    includes: str = ""  # names of the parts whose files it may include, beside its own
    libraries: str = ".*"  # a pattern of headers of others that it may include


C_PLUS_PLUS = r"[a-z_]+"
C = r"(?:std(?:arg|bool|def|int|io|lib)|errno|float|inttypes|limits|math|string)\.h"
INTERFACES = "op_manager_api|operator|add_on_api|messages|conversion_message|case_folding"

PARTS = {
    # The plugin: operators -> core -> host, and nothing from anywhere else.
    "host": Part(r"host/.*", "", C_PLUS_PLUS),
    "core/interfaces": Part(rf"core/({INTERFACES})\.h", "host", C_PLUS_PLUS),
    "core": Part(r"core/.*", "core/interfaces host", C_PLUS_PLUS),
    "operators/convert": Part(r"operators/convert/.*", "core core/interfaces host", C_PLUS_PLUS),
    "operators/device": Part(r"operators/device/.*", "core core/interfaces host", C_PLUS_PLUS),
    "operators/func": Part(r"operators/func/.*", "core core/interfaces host", C_PLUS_PLUS),
    "operators/select": Part(r"operators/select/.*", "core core/interfaces host", C_PLUS_PLUS),
    "operators": Part(r"operators/registration\.cpp", "core operators/convert operators/device "
                      "operators/func operators/select", C_PLUS_PLUS),
    # Hosts include only the interfaces of the plugin, and the test kit does not include the host kit.
    "hostkit/hosttest": Part(r"hostkit/hosttest/.*", "core/interfaces host"),
    "hostkit": Part(r"hostkit/.*", "core/interfaces host"),
    # The reference host, in the order in which a program goes through it.
    "refhost/basis": Part(r"refhost/(diagnostics?|messages|warnings|kit|operator_calls|spelling|translated_file)\..*",
                          "hostkit core/interfaces host"),
    "refhost/syntax": Part(r"refhost/syntax/.*", "refhost/basis hostkit core/interfaces host"),
    "refhost/format": Part(r"refhost/format/.*", "refhost/syntax refhost/basis hostkit "
                           "core/interfaces host"),
    "refhost/services": Part(r"refhost/services/.*", "refhost/syntax refhost/basis hostkit "
                             "core/interfaces host"),
    # Values as generated programs hold them, written by the runtime's functions.
    "refhost/values": Part(r"refhost/(value_format|value_memory|string_literal)\..*",
                           "runtime hostkit host"),
    "refhost/prelude": Part(r"refhost/prelude/.*", "refhost/syntax refhost/basis hostkit"),
    "refhost/semantics": Part(r"refhost/semantics/.*", "refhost/prelude refhost/services "
                              "refhost/syntax refhost/basis hostkit core/interfaces host"),
    "refhost/emit": Part(r"refhost/emit/.*", "refhost/semantics refhost/services refhost/syntax "
                         "refhost/basis hostkit core/interfaces host"),
    "refhost/editor": Part(r"refhost/editor/.*", "refhost/values refhost/semantics refhost/prelude "
                           "refhost/services refhost/syntax refhost/basis runtime hostkit "
                           "core/interfaces host"),
    "refhost/session": Part(r"refhost/(session|test_program|value_shape|neighbours)\..*",
                            "refhost/editor refhost/emit refhost/semantics refhost/prelude "
                            "refhost/services refhost/syntax refhost/basis hostkit "
                            "core/interfaces host"),
    # Generated programs are built on other machines.
    "runtime": Part(r"runtime/.*", "", C),
    # Runs where velc does.
    "cli/harness": Part(r"cli/harness/.*", "runtime"),
    # A tool of the build, which reads the plugin's table.
    "cli/operator_order": Part(r"cli/operator_order\.cpp", "core hostkit"),
    # What the commands and the language server share; it prints nothing.
    "cli/shared": Part(r"cli/(colours|common_options|diagnostics_printer|counted|excerpt|explanations|"
                       r"failure|local_io|located_json|paths|project|source_files|source_patterns|"
                       r"uri)\..*",
                       "refhost/session refhost/syntax refhost/basis hostkit core/interfaces host"),
    "lsp": Part(r"lsp/.*", "cli/shared refhost/session refhost/editor refhost/format refhost/syntax "
                "refhost/basis hostkit core/interfaces host"),
    "cli": Part(r"cli/.*", "lsp cli/shared refhost/session refhost/values refhost/format "
                "refhost/syntax refhost/basis hostkit runtime cli/harness core/interfaces host"),
}


def part_of(name):
    return next((part for part, row in PARTS.items() if re.fullmatch(row.files, name)), None)


def resolved(path, target):
    """The file of this project that an include names, or None."""
    for folder in (ROOT, path.parent, ROOT / "runtime", ROOT / "cli/harness"):
        if (folder / target).is_file():
            return (folder / target).relative_to(ROOT).as_posix()
    return None


def problem_of(name, own, path, quote, target):
    """The fault of an include, or None; and the part that it leads to."""
    there = resolved(path, target)
    if there is None:
        if quote == '"' and target not in GENERATED:
            return f"there is no {target}", None
        if quote == "<" and not re.fullmatch(PARTS[own].libraries, target):
            return f"{own} may include no header of others like <{target}>", None
        return None, None
    part = part_of(there)
    if part not in (own, *PARTS[own].includes.split()):
        allowed = ", ".join(PARTS[own].includes.split()) or "nothing"
        return f"{name} belongs to {own}, which may include {allowed}, but not {there}", None
    return None, part


def read():
    """The parts that each part includes, and the faults."""
    used, problems = {part: set() for part in PARTS}, []
    tops = sorted({part.split("/")[0] for part in PARTS})
    for path in sorted(path for top in tops for path in (ROOT / top).rglob("*")):
        name = path.relative_to(ROOT).as_posix()
        if path.suffix not in SOURCES:
            continue
        own = part_of(name)
        if own is None:
            problems.append(f"{name} belongs to no part in scripts/doclib/includes.py")
            continue
        text = path.read_text()
        for match in INCLUDE.finditer(text):
            problem, part = problem_of(name, own, path, *match.groups())
            line = text.count("\n", 0, match.start(1)) + 1
            if problem:
                problems.append(f"{name}:{line}: {problem} (scripts/doclib/includes.py)")
            elif part and part != own:
                used[own].add(part)
    problems += [f"{part} includes itself by way of others" for part in PARTS
                 if part in reachable(used, part)]
    return used, problems


def reachable(used, part):
    found, ahead = set(), list(used[part])
    while ahead:
        other = ahead.pop()
        if other not in found:
            found.add(other)
            ahead += used[other]
    return found


def drawing(used):
    """The diagram in Mermaid, without arrows that follow from others."""
    lines = ["```mermaid", "flowchart TD"]
    for top in dict.fromkeys(part.split("/")[0] for part in PARTS):
        rooms = [part for part in PARTS if part.split("/")[0] == top]
        nodes = [f"  {room.replace('/', '_')}[{room}]" for room in rooms]
        if len(rooms) > 1:
            nodes = [f"  subgraph {top}_[{top}]", *("  " + node for node in nodes), "  end"]
        lines += nodes
    for part, others in used.items():
        follow = set().union(*(reachable(used, other) for other in others))
        lines += [f"  {part.replace('/', '_')} --> {other.replace('/', '_')}"
                  for other in PARTS if other in others - follow]
    return "\n".join(lines) + "\n```\n"


def drawn(text, used):
    """The page with a new diagram."""
    before, _, rest = text.partition(BEGIN)
    return before + BEGIN + drawing(used) + END + rest.partition(END)[2]
