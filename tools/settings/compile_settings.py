#!/usr/bin/env python3
"""Compiles a product's settings file into a resource script: one RCDATA resource for each setting.

Any mistake in the file ends the build with a line for each: file, line, key and what was expected.
"""
import argparse
import re
import sys

import knownkeys
from settingsfile import SettingsFile


def resource_line(setting):
    name = setting.name if re.fullmatch(r"\w{2,}", setting.name, re.ASCII) else f'"{setting.name}"'
    if isinstance(setting.value, int):
        return f"{name} RCDATA {{ {setting.value}L }}"
    text = "".join(
        chr(byte) if 0x20 <= byte < 0x7F and chr(byte) not in '"\\' else f"\\{byte:03o}" for byte in setting.value
    )
    return f'{name} RCDATA {{ "{text}\\0" }}'


def resource_script(settings):
    """Sorted by name, so that the same settings make the same script whatever their order."""
    lines = ["#pragma code_page(65001) // the names of cartridges; texts are escaped bytes"]
    lines += [resource_line(settings[name]) for name in sorted(settings)]
    return "\n".join(lines) + "\n"


def definition(text):
    name, equals, value = text.partition("=")
    if not equals or not re.fullmatch(r"\w+", name):
        raise argparse.ArgumentTypeError(f"expected NAME=VALUE, found {text}")
    return name, value


def main(arguments=None):
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("settings", help="the settings file")
    parser.add_argument("--keys", required=True, help="the table of known keys")
    parser.add_argument("--output", required=True, help="the resource script to write")
    parser.add_argument("--define", metavar="NAME=VALUE", type=definition, action="append", default=[],
                        help="text that ${NAME} stands for")
    parser.add_argument("--partial", action="store_true",
                        help="the library answers some keys only, before another one")
    parser.add_argument("--code-page", default="cp1252", help="the texts' Windows code page")
    options = parser.parse_args(arguments)

    known = knownkeys.by_name(knownkeys.load(options.keys))
    try:
        with open(options.settings, encoding="utf-8") as file:
            text = file.read()
    except (OSError, UnicodeDecodeError) as problem:
        print(f"{options.settings}: error: {problem}", file=sys.stderr)
        return 1
    result = SettingsFile(options.settings, text, known, partial=options.partial, definitions=dict(options.define),
                          code_page=options.code_page)
    for error in result.errors:
        print(error, file=sys.stderr)
    if result.errors:
        return 1
    with open(options.output, "w", encoding="utf-8", newline="\n") as file:
        file.write(resource_script(result.settings))
    return 0


if __name__ == "__main__":
    sys.exit(main())
