#!/usr/bin/env python3
"""The library exports the public names, and no other class or plain function.

Run with objdump, c++filt, the library and the list of public names.
"""
import re
import subprocess
import sys

OBJDUMP, CXXFILT, LIBRARY, NAMES = sys.argv[1:]


def output(*command, text=None):
    return subprocess.run(command, input=text, capture_output=True, text=True, check=True).stdout


def scope_of(name):
    """The class of a member's name, or the name of a plain function."""
    return re.split(r"::|\(", name)[0]


table = output(OBJDUMP, "-p", LIBRARY).split("[Ordinal/Name Pointer] Table")[1].split("\n\n")[0]
mangled = [line.split()[-1] for line in table.splitlines()[1:]]
# Tables and thunks that the compiler adds to every class are not names that a host writes.
exported = {name for name in output(CXXFILT, text="\n".join(mangled)).splitlines()
            if not re.match("vtable for |typeinfo |.* thunk to ", name)}
public, scope = set(), ""
for line in open(NAMES):
    if line.startswith(" "):
        public.update(scope + name.strip() for name in line.split(";") if name.strip())
    else:
        scope = "" if line[0] in "(#" else line.strip() + "::"
scopes = {scope_of(name) for name in public}
faults = [f"not exported: {name}" for name in sorted(public - exported)]
faults += [f"exported, but not in public-names.txt: {name}" for name in sorted(exported) if scope_of(name) not in scopes]
sys.exit("\n".join(faults) or None)
