#!/usr/bin/env python3
"""Prints a PROGRAM with a given number of operator calls, an even mix of twenty kinds."""

import itertools
import sys

# Statements with one call each; `{i}` is the number of a variable.
STATEMENTS = [
    "y{i} := LIMIT(0, x{i}, 100);",
    "y{i} := MAX(x{i}, y{i});",
    "y{i} := MIN(x{i}, 50);",
    "y{i} := SEL(b{i}, x{i}, y{i});",
    "y{i} := MUX(k{i}, x{i}, y{i}, x{i});",
    "w{i} := SHL(w{i}, 1);",
    "w{i} := SHR(w{i}, k{i});",
    "w{i} := ROL(w{i}, 3);",
    "w{i} := ROR(w{i}, 3);",
    "y{i} := MOVE(x{i});",
    "r{i} := INT_TO_REAL(x{i});",
    "y{i} := REAL_TO_INT(r{i});",
    "d{i} := TO_DINT(x{i});",
    "d{i} := TRUNC(r{i});",
    "r{i} := SQRT(r{i});",
    "y{i} := ABS(x{i});",
    "b{i} := INT_TO_BOOL(y{i});",
    "y{i} := BCD_TO_INT(n{i});",
    "u{i} := SIZEOF(x{i});",
    "b{i} := WORD_TO_BOOL(w{i});",
]
VARIABLES = {"x": "INT", "y": "INT", "k": "INT", "b": "BOOL", "w": "WORD"}
VARIABLES.update({"r": "REAL", "d": "DINT", "n": "BYTE", "u": "UDINT"})
SETS_OF_VARIABLES = 100


def program(calls):
    yield "PROGRAM Plant\nVAR\n"
    for i in range(SETS_OF_VARIABLES):
        for name, kind in VARIABLES.items():
            yield f"  {name}{i} : {kind};\n"
    yield "END_VAR\n"
    numbered = itertools.cycle(
        (statement, i) for i in range(SETS_OF_VARIABLES) for statement in STATEMENTS
    )
    for statement, i in itertools.islice(numbered, calls):
        yield "  " + statement.format(i=i) + "\n"
    yield "END_PROGRAM\n"


if __name__ == "__main__":
    sys.stdout.writelines(program(int(sys.argv[1])))
