"""The message tables of the plugin and of the reference host, and their pages.

A page in docs/messages/ has a section for each code:

  ## 0xF0020 Unknown identifier

  - error: `Unknown identifier '%s';`

  What it means. Then a block ```st that raises it, followed by ```text check, and a block
  ```st that does not. Several formats of a code are several items, each raised by the example
  unless "Not with velc" follows it.
"""
import re
from typing import NamedTuple

from .pages import FENCE, ROOT, Problem, run_velc

TABLES = {"plugin": "core/messages.h", "host": "refhost/messages.h"}


class Section(NamedTuple):
    """The section of a code."""

    code: str
    title: str
    text: str  # with its heading

    def formats(self):
        """Severity and format of each message of the code, and the note to it."""
        return re.findall(r"^- (error|warning): `(.*?)`(.*(?:\n  .*)*)", self.text, re.M)


def declared(table):
    """Code, severity and format of every message of a table."""
    rows, texts = set(), {}
    for name, code, severity, rest in re.findall(
            r"MessageFormat (\w+)\s*\{\s*(0x\w+),\s*Severity::(\w+),(.*?)\};",
            (ROOT / TABLES[table]).read_text(), re.S):
        shared = re.search(r"(\w+)\.format", rest)
        texts[name] = texts[shared[1]] if shared else "".join(re.findall(r'"(.*?)"', rest))
        rows.add((code, severity.lower(), texts[name]))
    return rows


def sections_of(text):
    return [Section(*match) for match in
            re.findall(r"(?m)^(?=## (0x\w+) (.+)$)((?:.*\n)+?)(?=## |\Z)", text)]


def groups_of(text):
    """Name, state, codes and text of the groups of warnings on a page."""
    return [(name, state, re.findall(r"0x\w+", codes), whole) for whole, name, state, codes in
            re.findall(r"(?m)^(## Group ([a-z-]+)\n\n- (shown|hidden): ((?:.*\S\n)+)"
                       r"(?:.*\n)*?)(?=## |\Z)", text)]


def group_problems(groups, sections):
    """Groups of the host's table that are not on the page as they are, and warnings in none."""
    table = re.findall(r'{"([a-z-]+)",\s*(true|false),\s*{([^}]*)}}',
                       (ROOT / "refhost/warnings.cpp").read_text())
    declared_groups = [(name, "shown" if on == "true" else "hidden", re.findall(r"0x\w+", codes))
                       for name, on, codes in table]
    if declared_groups != [group[:3] for group in groups]:
        yield "the groups in docs/messages/warnings.md are not those of refhost/warnings.cpp"
    warnings = {section.code for section in sections
                for severity, _, _ in section.formats() if severity == "warning"}
    grouped = [code for _, _, codes in declared_groups for code in codes]
    for code in sorted(warnings ^ set(grouped)):
        yield f"warning {code} is in no group, or is no warning"
    for code in sorted({code for code in grouped if grouped.count(code) > 1}):
        yield f"warning {code} is in several groups"


def coverage_problems(sections):
    """Messages without a section, sections without a message, and codes with two sections."""
    listed = [(section.code, *row[:2]) for section in sections for row in section.formats()]
    everything = declared("plugin") | declared("host")
    for row in sorted(everything - set(listed)):
        yield f"message {' '.join(row)} has no section in docs/messages/"
    for row in sorted(set(listed) - everything):
        yield f"message {' '.join(row)} is not declared"
    for row in sorted({row for row in listed if listed.count(row) > 1}):
        yield f"message {' '.join(row)} has more than one section"


def check_section(section, velc):
    """Checks that the examples raise every message of the code, or none."""
    blocks = [*FENCE.findall(section.text), ("", "")]
    raised, silent = "", False
    for (mark, body), (next_mark, _) in zip(blocks, blocks[1:]):
        if mark.startswith("text check"):
            raised += body
            if set(re.findall(r"\[(0x\w+)\]$", body, re.M)) != {section.code}:
                raise Problem(f"the example of {section.code} raises another message")
        elif not next_mark.startswith("text"):
            said = run_velc(velc, "check", [], body)
            if said.returncode or said.stderr:
                raise Problem(f"the example of {section.code} that ought to raise nothing: "
                              f"{said.stderr}")
            silent = True
    for severity, form, remark in section.formats():
        pattern = re.escape(f"{severity}: {form} [{section.code}]").replace("%s", ".*")
        if "Not with velc" not in remark and not (silent and re.search(pattern, raised)):
            raise Problem(f"{section.code} needs an example that raises the {severity} '{form}', "
                          "and one that raises nothing")
