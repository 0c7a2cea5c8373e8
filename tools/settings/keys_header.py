#!/usr/bin/env python3
"""Writes the table of known keys as a C++ header, for the settings dump and the tests."""
import argparse
import sys

import knownkeys

HEAD = """// Made from src/settings/known-keys.tsv by tools/settings/keys_header.py.
#pragma once

#include <array>

struct KnownKey
{
    const char* name;
    bool number;    ///< a 32-bit number; otherwise a text
    bool rewritten; ///< never looked up under this name
};

"""


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--keys", required=True)
    parser.add_argument("--output", required=True)
    options = parser.parse_args()
    keys = knownkeys.by_name(knownkeys.load(options.keys)).values()
    truth = {True: "true", False: "false"}
    rows = [f'    {{"{k.key}", {truth[k.kind == "number"]}, {truth[k.presence == "rewritten"]}}},\n' for k in keys]
    with open(options.output, "w", encoding="utf-8", newline="\n") as file:
        file.write(f"{HEAD}inline constexpr std::array<KnownKey, {len(rows)}> KnownKeys{{{{\n{''.join(rows)}}}}};\n")
    return 0


if __name__ == "__main__":
    sys.exit(main())
