# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

"""check_msvc_layout.py - checks the layout of the interface in Microsoft's ABI.

    check_msvc_layout.py CLANG INCLUDE-DIRECTORY STAND-INS

Clang computes the layouts of records and virtual tables in that ABI without its headers: STAND-INS declares the few standard
types that the interface headers use; their sizes are not checked.
"""
import re
import subprocess
import sys
from pathlib import Path

SOURCE = """
#include "mathexpr/IMathExprService.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/IMathOperator.h"
#include "mathexpr/IMathVariable.h"
#include "mathexpr/IMathVariableFactory.h"
"""

# These classes override only the abstract functions, so that every table is laid out.
DERIVED = """
struct Operator : IMathOperator {
    std::wstring getHelpString() const override; std::wstring getDescription() const override;
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override;
    std::int32_t getPrecedence() const override; std::wstring getSymbol() const override;
};
struct Function : IMathFunction {
    std::wstring getHelpString() const override; std::wstring getDescription() const override;
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override;
    std::wstring getSymbol() const override; std::uint32_t getNbArgs() const override;
};
struct Variable : IMathVariable {
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override;
    std::wstring getSymbol() const override; VALTYPE* getValuePtr() override;
};
struct Factory : IMathVariableFactory { IMathVariable* create(const wchar_t*) override; };
struct Service : IMathExprService { bool lookupValue(const wchar_t*, VALTYPE&) const override; };
Operator o; Function f; Variable v; Factory m; Service s; unsigned long long size = sizeof(VALTYPE);
"""

ITEM = ["~", "getHelpString", "getDescription", "isConstant", "evaluate"]
SLOTS = {
    "Operator": ITEM + ["getPrecedence", "getSymbol", "isUnaryOp"],
    "Function": ITEM + ["getSymbol", "getNbArgs"],
    "Variable": ITEM + ["reservedSlot", "getSymbol", "getValuePtr"],
    "Factory": ["~", "create"],
    "Service": ["~", "lookupValue"],
}
FIELDS = {"type": 0, "flag": 1, "reserved": 2, "padding": 4, "x": 8, "y": 16, "z": 24}


def slots(dump, name):
    """The functions of a class's virtual table, in the order of the table."""
    table = re.search(rf"VFTable for .*'{name}'.*\n((?:[ \t]+.*\n)+)", dump)
    found = re.findall(r"^\s+(\d+) \| (?!.*RTTI)(.*)$", table.group(1), re.M) if table else []
    names = []
    for _, text in found:
        destructor = "destructor" in text or "~" in text
        names.append("~" if destructor else re.search(r"::(\w+)\(", text).group(1))
    return names


def main():
    clang, include, stand_ins = sys.argv[1:]
    command = [clang, "--target=x86_64-pc-windows-msvc", "-std=c++17", "-nostdinc", "-nostdinc++", "-isystem", stand_ins,
               "-I", include, "-x", "c++", "-", "-S", "-o", "/dev/null", "-emit-llvm",
               "-Xclang", "-fdump-record-layouts", "-Xclang", "-fdump-vtable-layouts"]
    run = subprocess.run(command, input=SOURCE + DERIVED, capture_output=True, text=True)
    if run.returncode != 0:
        print(run.stderr)
        return 1
    failures = []
    record = re.search(r"0 \| struct VALTYPE\n((?:.*\n)*?)\s+\| \[sizeof=(\d+), align=(\d+)", run.stdout)
    found = {name: int(at) for at, name in re.findall(r"^\s*(\d+) \|   .* (\w+)$", record.group(1), re.M)}
    if found != FIELDS or record.group(2) != "32" or record.group(3) != "8":
        failures.append(f"VALTYPE: {found}, size {record.group(2)}, alignment {record.group(3)}")
    for name, expected in SLOTS.items():
        if slots(run.stdout, name) != expected:
            failures.append(f"{name}: {slots(run.stdout, name)} instead of {expected}")
    print("\n".join(failures) or f"VALTYPE and {len(SLOTS)} virtual tables have the layout of the interface")
    return 1 if failures else 0


sys.exit(main())
