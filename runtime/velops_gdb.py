"""Has gdb print the values of generated programs as Structured Text has them: strings up to their end,
WSTRINGs as text, arrays without the structure around them, BYTE and SINT as numbers.
(gdb) source PREFIX/share/velops/velops_gdb.py"""
import re

import gdb


class Number:
    """A value of 8 bits, which C takes for a character."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return str(int(self.value))


class String:
    """STRING and WSTRING."""

    def __init__(self, value):
        size = value.type.strip_typedefs().range()[1] + 1
        units = [int(value[i]) & 0xFFFF for i in range(size)]
        self.units = units[: (units + [0]).index(0)]
        self.wide = value.type.strip_typedefs().target().sizeof == 2

    def to_string(self):
        if self.wide:
            text = b"".join(unit.to_bytes(2, "little") for unit in self.units)
            return text.decode("utf-16-le", "replace")
        return bytes(unit & 0xFF for unit in self.units).decode("utf-8", "replace")

    def display_hint(self):
        return "string"


class Array:
    """The structure that an array is in C, counted from 0."""

    def __init__(self, value):
        self.elements = value["a"]

    def to_string(self):
        return None

    def children(self):
        for i in range(self.elements.type.range()[1] + 1):
            yield f"[{i}]", self.elements[i]

    def display_hint(self):
        return "array"


def printer(value):
    plain = value.type.strip_typedefs()
    if value.type.name in ("u8", "i8"):
        return Number(value)
    if plain.code == gdb.TYPE_CODE_ARRAY and plain.target().name in ("char", "u16"):
        return String(value)
    if plain.code == gdb.TYPE_CODE_STRUCT and re.match(r"array_\d+_", plain.name or ""):
        return Array(value)
    return None


gdb.pretty_printers.append(printer)
