"""docs/reference.html: all operators on one page, from the registry and the pages."""
import html
import json
import re
import string
import subprocess
from pathlib import Path
from typing import NamedTuple

from . import messages, operators
from .markdown import inline, rendered
from .pages import ROOT, Problem, bodies_of, run_velc, static_code_of

# The variables of the sample calls; operators not here are conversions, whose types their names
# say. A parameter without a variable is given a device address.
VARIABLES = {
    "SEL": "G : BOOL; IN0, IN1, result : INT;",
    "LIMIT": "MN, IN, MX, result : INT;",
    "MIN MAX": "IN1, IN2, result : INT;",
    "MUX": "K, IN0, IN1, result : INT;",
    "SHL SHR ROL ROR": "IN, N, result : INT;",
    "MEP MEF": "IN, result : BOOL;",
    "MOVE ABS": "IN, result : INT;",
    "SQRT LN LOG EXP SIN COS TAN ASIN ACOS ATAN": "IN, result : REAL;",
    "EXPT": "IN1, IN2, result : REAL;",
    "TRUNC": "IN : REAL; result : DINT;",
    "SIZEOF ADR": "IN : INT; result : UDINT;",
    "BCD_TO_INT": "IN : BYTE; result : INT;",
    "INT_TO_BCD": "IN : INT; result : BYTE;",
    "IRDBIT": "OUT : BOOL;",
    "_READIDIRECT": "result : BOOL;",
    "IWRBIT _WRITEODIRECT": "IN : BOOL;",
    "IZSET IZRST ZSET ZRST": "",
    "GETBITOFPARAM": "{bitparam} IN : WORD; N : INT; result : BOOL;",
    "SETBITOFPARAM": "{bitparam} IN : WORD; N : INT; VALUE : BOOL;",
}
ADDRESSES = {"IN": "%IX0.3", "OUT": "%QX0.0", "FIRST": "%QX0.0", "LAST": "%QX0.7"}


class Operator(NamedTuple):
    """One operator as its page and the registry have it."""

    name: str
    class_name: str
    page: str  # the stem of its page's name
    signature: str
    does: str  # in a few words; may be empty
    pattern: str  # what its page calls it, its name or one with X and Y
    types: dict  # what X and Y stand for

    def variables(self):
        for names, declarations in VARIABLES.items():
            if self.name in names.split():
                return declarations
        source, target = re.fullmatch(r"(?:(\w+)_)?TO_(\w+)", self.name).groups()
        return f"IN : {source or 'REAL'}; result : {target};"

    def call(self):
        variables = self.variables()
        names = re.findall(r"\w+", self.signature)[1:]
        given = [name if re.search(rf"\b{name}\b", variables) else ADDRESSES[name]
                 for name in names]
        return f"{self.name}({', '.join(given)})"

    def unit(self, number):
        """A program unit with the sample call."""
        variables = self.variables()
        result = "result := " if "result" in variables else ""
        kind, block = ("FUNCTION_BLOCK", "VAR_INPUT") if "{" in variables else ("PROGRAM", "VAR")
        return (f"{kind} Unit{number}\n{block} {variables} END_VAR\n"
                f"{result}{self.call()};\nEND_{kind}\n")


def types_in(pattern, name):
    """What X and Y of a pattern stand for in a name."""
    return {part.lower(): own for part, own in zip(pattern.split("_"), name.split("_"))
            if part in ("X", "Y")}


def operators_of(path, classes):
    for signatures, types, does in operators.operator_items(path.read_text()):
        for signature in signatures:
            pattern = operators.name_of(signature)
            parameters = signature[len(pattern):] or "(IN)"
            for name in operators.expand(pattern, types):
                yield Operator(name, classes[name], path.stem, name + parameters, does, pattern,
                               types_in(pattern, name))


def translated(velc, group):
    """The C of the sample calls of operators that share a class, and what it relies on."""
    done = run_velc(velc, "translate", [], "".join(op.unit(i) for i, op in enumerate(group)))
    bodies = list(bodies_of(done.stdout))
    if done.returncode or len(bodies) != len(group):
        raise Problem(f"the sample calls of {group[0].class_name} do not translate: {done.stderr}")
    try:
        static = static_code_of(done.stdout)
    except Problem:
        static = ""
    return [expression_of(body) for body in bodies], static


def expression_of(body):
    """The C of the call alone: without the host's assignment and its way to the variables."""
    statement = body.rstrip("\n").split("\n")[-1].replace("self->", "")
    of_string = re.fullmatch(r"vel_w?string_set\(result, \d+, (.*)\);", statement)
    return of_string[1] if of_string else statement.removeprefix("result = ").removesuffix(";")


# --- HTML ---


def escaped(text):
    return html.escape(text, quote=True)


def link(label, target):
    """Links to codes and to pages of operators stay on the page."""
    if label.startswith("0x"):
        return f"#{label}"
    is_family = target != "README.md" and (ROOT / "docs/operators" / target).is_file()
    return f"#family={Path(target).stem}" if is_family else None


def table(content):
    """A table; where its first column names operators, each row is marked with them instead."""
    header, rows = content
    named = header[0] == "Operator"
    owners, marked = [], []
    for row in rows:
        if named:
            owners = re.findall(r"`(\w+)`", row[0]) or owners
        marked.append((data_for(owners), [inline(cell, link) for cell in row[named:]]))
    if len(header) - named == 1:
        return "".join(f"<p{mark}>{text}</p>" for mark, (text,) in marked)
    lines = (f"<tr{mark}><td>{'</td><td>'.join(texts)}</td></tr>" for mark, texts in marked)
    head = "".join(f'<th scope="col">{inline(cell)}</th>' if cell else "<td></td>"
                   for cell in header[named:])
    return f'<table><thead><tr>{head}</tr></thead><tbody>{"".join(lines)}</tbody></table>'


def data_for(owners):
    """The mark of an element that concerns some operators of a page only."""
    return f' data-for="{" ".join(owners)}"' if owners else ""


def owners_of(when, names):
    """The operators that the occasion of a message begins with, when it is about no others."""
    def names_in(text):
        return [name for name in re.findall(r"`(\w+)`", text) if name in names]

    first = re.match(r"(?:`\w+`(?:, | and )?)*(?=:)", when)
    owners = names_in(first[0]) if first else []
    return owners if set(owners) == set(names_in(when)) and "others" not in when else []


def message_item(names, code, severity, form, when):
    return (f'<li{data_for(owners_of(when, names))}><a href="#{code}">{code}</a> '
            f'<span class="{severity}">{severity}</span> <code>{escaped(form)}</code>'
            f"<p>{inline(when, link)}</p></li>")


def page_template(path):
    """What the operators of a page have in common, to be filled in for each."""
    text = path.read_text()

    has_patterns = re.search(r"\b[XY]_|_[XY]\b", operators.section(text, "Operators"))

    def to_fill_in(body):
        if not has_patterns:
            return body
        return re.sub(r"\b[XY]\b",
                      lambda name: f'<var class="{name[0].lower()}">{name[0]}</var>', body)

    def section(heading):
        return to_fill_in(rendered(operators.section(text, heading), table, link))

    names = operators.names_of(text)
    items = "".join(message_item(names, *row) for row in operators.message_rows(text))
    return f"""<template id="page-{path.stem}">
<p class="does"></p>
<div class="columns"><div>
<h3>Parameters</h3>
{section("Parameters")}
<h3>Result</h3>
{section("Result")}
<h3>C</h3>
<p class="with">of <code class="call"></code> with <code class="variables"></code>:</p>
<pre><code class="c"></code></pre>
<div class="static"></div>
</div><div>
<h3>Behaviour</h3>
{section("Behaviour")}
</div></div>
<h3>Messages</h3>
<ul class="messages">{to_fill_in(items)}</ul>
<details class="more"><summary>Example, with values</summary>
{section("Example")}
</details>
</template>"""


def operator_row(operator, c, families):
    types = "".join(f' data-{key}="{value}"' for key, value in operator.types.items())
    if types:
        types += f' data-pattern="{operator.pattern}"'
    return (f'<details class="op" id="{operator.name}" data-page="{operator.page}" '
            f'data-class="{operator.class_name}"{types} data-does="{escaped(operator.does)}" '
            f'data-call="{escaped(operator.call())}" '
            f'data-variables="{escaped(operator.variables())}">'
            f"<summary><code>{escaped(operator.signature)}</code>"
            f'<code class="c">{escaped(c)}</code>'
            f'<span class="family">{escaped(families[operator.page])}</span></summary></details>')


def message_row(section):
    body = rendered(section.text.partition("\n")[2], table, link)
    return (f'<details class="message" id="{section.code}"><summary><code>{section.code}</code>'
            f"<span>{inline(section.title)}</span></summary>{body}</details>")


def page(velc):
    """The text of docs/reference.html."""
    call = [velc, "operators", "--json"]
    listing = subprocess.run(call, capture_output=True, text=True, check=True)
    classes = {entry["name"]: entry["class"] for entry in json.loads(listing.stdout)}
    families = {Path(target).stem: title for title, target in re.findall(
        r"^\| \[(.+?)\]\((.+?)\)", (ROOT / "docs/operators/README.md").read_text(), re.M)}
    paths = [ROOT / f"docs/operators/{stem}.md" for stem in families]
    all_operators = [operator for path in paths for operator in operators_of(path, classes)]
    # The many conversions come last: they would bury the others.
    all_operators.sort(key=lambda operator: "TO_" in operator.name)
    groups = {}
    for operator in all_operators:
        groups.setdefault(operator.class_name, []).append(operator)
    c_of, statics = {}, []
    for class_name, group in groups.items():
        texts, static = translated(velc, group)
        c_of.update(zip((operator.name for operator in group), texts))
        if static:
            statics.append(f'<template id="static-{class_name}">'
                           "<p>with this once in the program:</p>"
                           f"<pre><code>{escaped(static)}</code></pre></template>")
    sections = messages.sections_of((ROOT / "docs/messages/operators.md").read_text())
    template = string.Template((Path(__file__).parent / "reference.html").read_text())
    return template.substitute(
        count=len(all_operators),
        families="\n".join(f'<option value="{stem}">{escaped(title)}</option>'
                           for stem, title in families.items()),
        operators="\n".join(operator_row(op, c_of[op.name], families) for op in all_operators),
        messages="\n".join(message_row(section) for section in sections),
        templates="\n".join([*statics, *map(page_template, paths)]))
