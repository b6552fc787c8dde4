"""HTML of the Markdown that the pages use: paragraphs, lists, tables, blocks, code and links."""
import html
import re
from typing import NamedTuple

INLINE = re.compile(r"`([^`]+)`|\[([^\]]+)\]\(([^)]+)\)")


class Table(NamedTuple):
    """A table: its header and its rows, lists of cells."""

    header: list
    rows: list


def inline(text, link=lambda text, target: None):
    """The HTML of a text; `link` returns the address for a link, or None for a link to elsewhere."""
    def replaced(match):
        code, label, target = match.groups()
        if code:
            return f"<code>{html.escape(code, quote=False)}</code>"
        address = link(label, target)
        label = inline(label)
        return f'<a href="{html.escape(address)}">{label}</a>' if address else label

    parts, end = [], 0
    for match in INLINE.finditer(text):
        parts += [html.escape(text[end:match.start()], quote=False), replaced(match)]
        end = match.end()
    return "".join(parts) + html.escape(text[end:], quote=False)


def cells(line):
    return [cell.strip() for cell in line.strip().strip("|").split("|")]


def table_of(lines):
    return Table(cells(lines[0]), [cells(line) for line in lines[2:]])


def blocks(text):
    """The blocks of a text: kind and lines."""
    for chunk in re.findall(r"^```.*?^```$|(?:(?!```)[^\n]+\n?)+", text, re.M | re.S):
        lines = chunk.rstrip("\n").split("\n")
        if lines[0].startswith("```"):
            yield "code", lines[1:-1]
        elif lines[0].startswith("|"):
            yield "table", lines
        elif lines[0].startswith("- "):
            yield "list", re.split(r"\n- ", "\n".join(lines)[2:])
        else:
            yield "text", lines


def rendered(text, table, link=lambda text, target: None):
    """The HTML of a text whose tables `table` renders."""
    parts = []
    for kind, lines in blocks(text):
        if kind == "code":
            parts.append(f"<pre><code>{html.escape(chr(10).join(lines), quote=False)}</code></pre>")
        elif kind == "table":
            parts.append(table(table_of(lines)))
        elif kind == "list":
            items = (inline(item.replace("\n ", ""), link) for item in lines)
            parts.append("<ul>" + "".join(f"<li>{item}</li>" for item in items) + "</ul>")
        else:
            parts.append(f"<p>{inline(' '.join(lines), link)}</p>")
    return "\n".join(parts)
