#!/usr/bin/env python3
"""Prints src/base/case_table.h: one-to-one upper-casing, as runs of code points with one distance each."""
import unicodedata

pairs = []
for code in range(0x110000):
    upper = chr(code).upper()
    if len(upper) == 1 and upper != chr(code) and unicodedata.category(chr(code)) != "Cs":
        pairs.append((code, ord(upper) - code))

runs = []  # first, last, step, distance
for code, distance in pairs:
    if runs and runs[-1][3] == distance:
        first, last, step, _ = runs[-1]
        gap = code - last
        if first == last and gap <= 2:
            runs[-1] = (first, code, gap, distance)
            continue
        if gap == step:
            runs[-1] = (first, code, step, distance)
            continue
    runs.append((code, code, 1, distance))

print("// Made by tools/make_case_table.py from the Unicode character data; do not edit.")
print("#pragma once\n\n#include <array>\n#include <cstdint>\n\nnamespace tonquay::base::detail {\n")
print("/// Every `step`-th code point from `first` to `last` has its upper case `distance` further on.")
print("struct CaseRun {\n    std::uint32_t first;\n    std::uint32_t last;\n    std::uint32_t step;\n    std::int32_t distance;\n};\n")
print("// clang-format off")
print(f"inline constexpr std::array<CaseRun, {len(runs)}> caseRuns{{{{")
for first, last, step, distance in runs:
    print(f"    {{0x{first:04X}, 0x{last:04X}, {step}, {distance}}},")
print("}};\n// clang-format on\n\n}")
