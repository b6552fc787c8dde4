"""docs/reference.html: all operators, words and messages on one page, from registry and pages."""
import functools
import html
import json
import re
import string
import subprocess
from pathlib import Path
from typing import NamedTuple

from . import messages, operators, words
from .markdown import inline, rendered
from .pages import ROOT, Problem, bodies_of, pages_in, run_velc, static_code_of

# The variables of sample calls. Operators are left out if they are conversions, whose names tell the
# types, or have one type for all parameters. A parameter without a variable gets a device address.
VARIABLES = {
    "SEL": "G : BOOL; IN0, IN1, result : INT;",
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
    variables: str  # declarations of the sample call's variables

    def parameters(self):
        return re.findall(r"\w+", self.signature)[1:]

    def call(self):
        def given(name):
            if re.search(rf"\b{name}\b", self.variables):
                return name
            if name not in ADDRESSES:
                raise Problem(f"the sample call of {self.name} has no variable for {name}; see "
                              "VARIABLES in scripts/doclib/reference.py")
            return ADDRESSES[name]

        return f"{self.name}({', '.join(map(given, self.parameters()))})"

    def unit(self, number):
        """A program unit with the sample call."""
        result = "result := " if "result" in self.variables else ""
        kind, block = (("FUNCTION_BLOCK", "VAR_INPUT") if "{" in self.variables
                       else ("PROGRAM", "VAR"))
        return (f"{kind} Unit{number}\n{block} {self.variables} END_VAR\n"
                f"{result}{self.call()};\nEND_{kind}\n")


def types_in(pattern, name):
    """The values of X and Y of a pattern in a name."""
    return {part.lower(): own for part, own in zip(pattern.split("_"), name.split("_"))
            if part in ("X", "Y")}


def with_variables(operator, velc):
    """The operator with the variables of its sample call."""
    for names, declarations in VARIABLES.items():
        if operator.name in names.split():
            return operator._replace(variables=declarations)
    conversion = re.fullmatch(r"(?:(\w+)_)?TO_(\w+)", operator.name)
    if conversion:
        source, target = conversion.groups()
        return operator._replace(variables=f"IN : {source or 'REAL'}; result : {target};")
    for one_type in ("INT", "REAL", "BOOL", "WORD", "DINT", "LREAL", "TIME", "STRING"):
        names = ", ".join([*operator.parameters(), "result"])
        candidate = operator._replace(variables=f"{names} : {one_type};")
        said = run_velc(velc, "check", [], candidate.unit(0))
        if not said.returncode and not said.stderr:
            return candidate
    raise Problem(f"operator {operator.name} does not take one type for everything; give the "
                  "variables of its sample call in VARIABLES of scripts/doclib/reference.py")


def operators_of(path, classes, velc):
    for signatures, types, does in operators.operator_items(path.read_text()):
        for signature in signatures:
            pattern = operators.name_of(signature)
            parameters = signature[len(pattern):] or "(IN)"
            for name in operators.expand(pattern, types):
                if name not in classes:
                    raise Problem(f"{path.name} has operator {name}, which velc does not know")
                operator = Operator(name, classes[name], path.stem, name + parameters, does,
                                    pattern, types_in(pattern, name), "")
                yield with_variables(operator, velc)


def translated(velc, group):
    """The C of the sample calls of operators that share a class, and their static code."""
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
    """The C of the call alone, without the host's assignment and its access to the variables."""
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
    """The template of a page, with the parts that its operators have in common."""
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
            f'data-variables="{escaped(operator.variables)}">'
            f"<summary><code>{escaped(operator.signature)}</code>"
            f'<code class="c">{escaped(c)}</code>'
            f'<span class="family">{escaped(families[operator.page])}</span></summary></details>')


def message_row(section):
    body = rendered(section.text.partition("\n")[2], table, link)
    return (f'<details class="message" id="{section.code}"><summary><code>{section.code}</code>'
            f"<span>{inline(section.title)}</span></summary>{body}</details>")


def word_row(section):
    body = rendered(section.text.partition("\n")[2], table, link)
    names = escaped(", ".join(section.names))
    return (f'<details class="message" id="{escaped(section.names[0])}"><summary>'
            f"<code>{names}</code><span>{inline(section.title)}</span></summary>{body}</details>")


def families():
    """The titles of the operators' pages by the stems of their names."""
    return {Path(target).stem: title for title, target in re.findall(
        r"^\| \[(.+?)\]\((.+?)\)", (ROOT / "docs/operators/README.md").read_text(), re.M)}


@functools.lru_cache
def all_operators(velc):
    """The operators of all pages, in the order of the pages."""
    call = [velc, "operators", "--json"]
    listing = subprocess.run(call, capture_output=True, text=True, check=True)
    classes = {entry["name"]: entry["class"] for entry in json.loads(listing.stdout)}
    return [operator for stem in families()
            for operator in operators_of(ROOT / f"docs/operators/{stem}.md", classes, velc)]


def sample_calls(velc):
    """Declarations of variables, one of each type, and a call with them of each operator."""
    declarations, calls = {}, []
    for operator in all_operators(velc):
        renamed = {}
        for mark, names, type_name in re.findall(r"(\{\w+\} )?([\w, ]+) : (\w+);",
                                                 operator.variables):
            own = "bits" if mark else f"v_{type_name}"
            declarations[own] = f"{mark}{own} : {type_name}"
            renamed.update(dict.fromkeys(re.findall(r"\w+", names), own))
        name, _, operands = operator.call().partition("(")
        calls.append(f"{name}(" + re.sub(r"\w+", lambda word: renamed.get(word[0], word[0]),
                                         operands))
    return [*declarations.values(), *calls]


def calls_problems(velc):
    """The sample calls whose C does not compile with the runtime."""
    listed = all_operators(velc)
    said = run_velc(velc, "run", [], "".join(op.unit(i) for i, op in enumerate(listed))).stderr
    unknown = set(re.findall(r"(?:implicit declaration of function|undefined reference to) "
                             r"\W*(\w+)", said))
    for name in sorted(unknown):
        yield (f"the C of {name} calls {name}, which runtime/ does not have" if name in
               [op.name for op in listed] else
               f"the C of an operator calls {name}, which runtime/ does not have")
    if said and not unknown:
        yield f"the C of the operators' sample calls does not compile: {said}"


def anchor_problems(text):
    """The codes that SARIF logs link to but the page has not."""
    for table in messages.TABLES:
        for code in sorted({row[0] for row in messages.declared(table)}):
            if f'id="{code}"' not in text:
                yield f"docs/reference.html has no place {code}"


def page(velc):
    """The text of docs/reference.html."""
    titles = families()
    paths = [ROOT / f"docs/operators/{stem}.md" for stem in titles]
    # The conversions come last, since there are so many that the others would be hard to find.
    listed = sorted(all_operators(velc), key=lambda operator: "TO_" in operator.name)
    groups = {}
    for operator in listed:
        groups.setdefault(operator.class_name, []).append(operator)
    c_of, statics = {}, []
    for class_name, group in groups.items():
        texts, static = translated(velc, group)
        c_of.update(zip((operator.name for operator in group), texts))
        if static:
            statics.append(f'<template id="static-{class_name}">'
                           "<p>with this once in the program:</p>"
                           f"<pre><code>{escaped(static)}</code></pre></template>")
    sections = sorted(section for path in pages_in("messages")
                      for section in messages.sections_of(path.read_text()))
    template = string.Template((Path(__file__).parent / "reference.html").read_text())
    return template.substitute(
        count=len(listed),
        families="\n".join(f'<option value="{stem}">{escaped(title)}</option>'
                           for stem, title in titles.items()),
        operators="\n".join(operator_row(op, c_of[op.name], titles) for op in listed),
        words="\n".join(word_row(section) for path in pages_in("language")
                        for section in words.sections_of(path.read_text())),
        messages="\n".join(message_row(section) for section in sections),
        templates="\n".join([*statics, *map(page_template, paths)]))
