#!/usr/bin/env python3
"""Writes a library of function blocks and functions into a folder, one file of Structured Text for
each unit, and a PROGRAM that calls some of them: make_library.py UNITS FOLDER"""

import pathlib
import sys

from make_program import STATEMENTS, VARIABLES

STATEMENTS_OF_UNIT = 260
SETS_OF_VARIABLES = 4
TYPES = 100  # structures; every tenth unit has another one


def statements(number):
    """The statements of a unit: others than those of its neighbours, with loops and conditions."""
    for k in range(STATEMENTS_OF_UNIT):
        text = STATEMENTS[(k * 7 + number) % len(STATEMENTS)].format(i=k % SETS_OF_VARIABLES)
        if k % 10 == 9:
            yield f"  IF x0 > {(number + k) % 1000} THEN\n    {text}\n  END_IF;\n"
        else:
            yield f"  {text}\n"


def block(number):
    """A FUNCTION_BLOCK that contains an instance of another one, a timer and a structure."""
    yield f"FUNCTION_BLOCK Block{number}\nVAR_INPUT x0, limit : INT; END_VAR\nVAR_OUTPUT y0 : INT; END_VAR\nVAR\n"
    yield f"  state : State{number // 10 % TYPES};\n  timer : TON;\n"
    if number % 10 != 0:
        yield f"  inner : Block{number - 1};\n"
    for i in range(SETS_OF_VARIABLES):
        for name, kind in VARIABLES.items():
            if (name, i) not in {("x", 0), ("y", 0)}:
                yield f"  {name}{i} : {kind};\n"
    yield "END_VAR\n"
    yield from statements(number)
    yield "  timer(IN := x0 > limit, PT := T#1s);\n  state.count := state.count + 1;\n"
    yield f"  state.level := Scale{number}(y0, limit);\n"
    if number % 10 != 0:
        yield "  inner(x0 := y0, limit := limit + 1);\n  IF timer.Q THEN y0 := inner.y0; END_IF;\n"
    yield "END_FUNCTION_BLOCK\n"


def function(number):
    yield f"FUNCTION Scale{number} : REAL\nVAR_INPUT value, limit : INT; END_VAR\n"
    yield f"  Scale{number} := INT_TO_REAL(LIMIT(0, value, limit)) * {number % 100 + 1}.5;\nEND_FUNCTION\n"


def library(units):
    """The text of each file by name."""
    types = "TYPE\n"
    for i in range(TYPES):
        types += f"  State{i} : STRUCT count : INT := {i}; level : REAL; name : STRING[20]; END_STRUCT\n"
    yield "types.st", types + "END_TYPE\n"
    for number in range(units // 2):
        yield f"block{number}.st", "".join(block(number))
        yield f"scale{number}.st", "".join(function(number))
    calls = "".join(f"  b{i}(x0 := i, limit := 50);\n" for i in range(9, units // 2, 10))
    blocks = "".join(f"  b{i} : Block{i};\n" for i in range(9, units // 2, 10))
    yield "plant.st", f"PROGRAM Plant\nVAR\n  i : INT;\n{blocks}END_VAR\n  i := i + 1;\n{calls}END_PROGRAM\n"


if __name__ == "__main__":
    target = pathlib.Path(sys.argv[2])
    target.mkdir(parents=True, exist_ok=True)
    for name, text in library(int(sys.argv[1])):
        (target / name).write_text(text)
