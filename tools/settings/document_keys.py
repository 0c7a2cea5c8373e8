#!/usr/bin/env python3
"""Writes docs/settings.md: the introduction followed by a table for each group of known keys.

With --check nothing is written: the exit code says whether the file is up to date.
"""
import argparse
import sys

import knownkeys


def escaped(text):
    return text.replace("\\", "\\\\").replace("|", "\\|").replace("<", "&lt;").replace("~", "\\~")


def row(known):
    purpose = escaped(known.purpose)
    if known.presence == "rewritten":
        notes = "rewritten"
    else:
        notes = known.presence + ("" if known.overridable else ", no override")
    kind = known.kind if known.kind == "number" else f"text, {known.limit}"
    return f"| `{known.key}` | {kind} | {notes} | {known.readers} | {purpose} | {escaped(known.absence)} |"


def document(introduction, groups):
    parts = [introduction.rstrip("\n")]
    for group in groups:
        parts.append(
            f"\n### {group.title}\n\n{group.introduction}\n\n"
            "| Key | Kind | Presence | Read by | What it does | When it is missing |\n"
            "|---|---|---|---|---|---|\n" + "\n".join(row(known) for known in group.keys)
        )
    return "\n".join(parts) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--keys", required=True)
    parser.add_argument("--introduction", required=True)
    parser.add_argument("--output", required=True)
    parser.add_argument("--check", action="store_true")
    options = parser.parse_args()
    with open(options.introduction, encoding="utf-8") as file:
        text = document(file.read(), knownkeys.load(options.keys))
    if options.check:
        with open(options.output, encoding="utf-8") as file:
            if file.read() == text:
                return 0
        print(f"{options.output} is not what the table of known keys makes: build the target settings_reference",
              file=sys.stderr)
        return 1
    with open(options.output, "w", encoding="utf-8", newline="\n") as file:
        file.write(text)
    return 0


if __name__ == "__main__":
    sys.exit(main())
