#!/usr/bin/env python3
"""What the settings dump prints compiles to the library it was read from; damage is named and told by the exit code.

Run with the folder of the tools, the table of known keys, the command that runs Windows programs, the dump, and pairs of
a library and its resource script; the last library is the damaged one and has no script.
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOLS, KEYS, EMULATOR, DUMP, *LIBRARIES = sys.argv[1:]
DAMAGED = LIBRARIES.pop()
sys.path.insert(0, TOOLS)
import compile_settings  # noqa: E402


def dump(library):
    finished = subprocess.run([EMULATOR, DUMP, library], capture_output=True, stdin=subprocess.DEVNULL, timeout=50)
    return finished.returncode, finished.stdout.decode().replace("\r", ""), finished.stderr.decode().replace("\r", "")


class Dump(unittest.TestCase):
    def test_round_trip(self):
        self.assertTrue(LIBRARIES)
        for library, script in zip(LIBRARIES[::2], LIBRARIES[1::2]):
            with self.subTest(library), tempfile.TemporaryDirectory() as folder:
                code, text, _ = dump(library)
                self.assertEqual(code, 0, text)
                source, output = pathlib.Path(folder, "dumped.settings"), pathlib.Path(folder, "dumped.rc")
                source.write_text(text)
                compiled = compile_settings.main([str(source), "--keys", KEYS, "--output", str(output), "--partial"])
                self.assertEqual(compiled, 0)
                self.assertEqual(output.read_text(), pathlib.Path(script).read_text())

    def test_damage(self):
        code, text, _ = dump(DAMAGED)
        self.assertEqual((code, text.splitlines()[1:]), (1, [
            'IDO_MFG = "more" # damaged: 6 bytes after the text\'s terminator',
            'IDO_MODEL = "no terminator" # damaged: a text without its terminator',
            "IDO_MODEL_OVERRIDE = 1 # damaged: a number of 8 bytes",
            "IDO_INKSTYLE = 0 # damaged: a number of 2 bytes",
            "# unknown key: IDO_NOBODY_READS (4 bytes)",
        ]))

    def test_no_library(self):
        code, text, errors = dump("no-such.dll")
        self.assertEqual((code, text), (2, ""))
        self.assertIn("settingsdump: no-such.dll cannot be loaded (error ", errors)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
