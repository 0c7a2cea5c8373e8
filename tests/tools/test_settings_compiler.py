#!/usr/bin/env python3
"""The settings compiler: every mistake is one line with file, line, key and what was expected; what is right compiles.

Run with the folder of the tools and the table of known keys.
"""
import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

TOOLS, KEYS = sys.argv[1:3]
sys.path.insert(0, TOOLS)
import compile_settings  # noqa: E402
import knownkeys  # noqa: E402


def compile_text(text, *options):
    """(exit code, messages, resource lines) of a settings file p.settings with this text."""
    with tempfile.TemporaryDirectory() as folder:
        source, output = pathlib.Path(folder, "p.settings"), pathlib.Path(folder, "p.rc")
        source.write_bytes(text if isinstance(text, bytes) else text.encode())
        messages = io.StringIO()
        with contextlib.redirect_stderr(messages):
            code = compile_settings.main([str(source), "--keys", KEYS, "--output", str(output), *options])
        lines = output.read_text().splitlines()[1:] if output.exists() else None
        return code, messages.getvalue().replace(folder + "/", "").splitlines(), lines


# One faulty file a row (a partial library, ${PREFIX} defined) and the whole message it must give.
FAULTS = [
    ("IDO_MODEL", '1: error: expected KEY = "text" or KEY = number, found: IDO_MODEL'),
    ("# note\n\nIDO_MODEL = Larkmoor", "3: error: IDO_MODEL: expected a text in quotation marks or a number, found: Larkmoor"),
    ("IDO_MODEL =", "1: error: IDO_MODEL: expected a text in quotation marks or a number, found: nothing"),
    ('IDO_MODEL = "Lark" 4', '1: error: IDO_MODEL: expected a text in quotation marks or a number, found: "Lark" 4'),
    ('IDO_MODELL = "x"', "1: error: IDO_MODELL: unknown key; did you mean IDO_MODEL?"),
    ("IDO_XYZZY_PLUGH = 1", "1: error: IDO_XYZZY_PLUGH: unknown key"),
    ('ido_model = "x"', "1: error: ido_model: unknown key"),
    ("IDO_MODEL = 5", "1: error: IDO_MODEL: expected a text in quotation marks, found a number"),
    ('IDO_INKSTYLE = "3"', "1: error: IDO_INKSTYLE: expected a number, found a text"),
    ("IDO_INKSTYLE = 4294967296", "1: error: IDO_INKSTYLE: expected a number from 0 to 4294967295, found 4294967296"),
    ("IDO_INKSTYLE = -1", "1: error: IDO_INKSTYLE: expected a text in quotation marks or a number, found: -1"),
    ('IDO_MFG = "a"\nIDO_MFG = "a"', "2: error: IDO_MFG: already given in line 1"),
    (f'IDO_JSWDEFAULTSKIN = "{"s" * 50}"', "1: error: IDO_JSWDEFAULTSKIN: 50 bytes; JSWOptionsDlg have room for 49"),
    (r'IDO_WINNTPATH = "\spool"', r"1: error: IDO_WINNTPATH: \s is no escape; a backslash is written \\"),
    (r'IDO_MFG = "a\x00b"', "1: error: IDO_MFG: a text ends at its first zero byte"),
    ('IDO_MFG = "Ж"', "1: error: IDO_MFG: Ж cannot be written in code page cp1252"),
    ('IDO_MFG = "${MAKER}"', "1: error: IDO_MFG: nothing is defined for ${MAKER}"),
    ("IDO_DEBUGMSG = 1", "1: error: IDO_DEBUGMSG: never read under this name. 1 shows error messages of failed links. "
     "Read as IDO_FEATURE_ON for pre-release drivers, as IDO_FEATURE_OFF otherwise."),
    ('IDO_MODEL_OVERRIDE = "1"', "1: error: IDO_MODEL_OVERRIDE: expected a number (a configuration item), found a text"),
    ("IDO_CONFIG_DLL_OVERRIDE = 1", "1: error: IDO_CONFIG_DLL_OVERRIDE: IDO_CONFIG_DLL is read where no configuration "
     "library is asked"),
    ('cartridge 0x100 = "x"', "1: error: cartridge 0x100: expected a cartridge identity from 0x01 to 0xFF"),
    ("cartridge 0x32 = 5", "1: error: cartridge 0x32: expected a text in quotation marks, found a number"),
    ('cartridge 0x50 = "x"\ncartridge 0x70 = "y"', "2: error: cartridge 0x70: already given in line 1 as cartridge 0x50 "
     "(resource names do not tell case apart)"),
    ('IDO_UTIL_DLL = "abcdutil.dll"\nIDO_UTIL_RESDLL = "res.dll"', "2: error: IDO_UTIL_RESDLL: expected as many characters "
     "as IDO_UTIL_DLL has (12), found 7"),
    (f'IDO_JSWSKINEXTENSION = "{"e" * 10}"\nIDO_JSWALTERNATESKINNAMECONVENTION = "{"s" * 38}"', "2: error: "
     "IDO_JSWALTERNATESKINNAMECONVENTION: skin file names would be longer than 49 characters"),
    ('IDO_SKIN_SUBURL = "x"\nIDO_SUPPORT_SUBURL = "x"', "1: error: IDO_SKIN_SUBURL: IDO_SUPPORT_SUBURL already has this "
     "link name"),
]

# One line and the resource it must become.
RIGHT = [
    ('IDO_MFG = "Tor\\"v\\\\ane" # note', 'IDO_MFG RCDATA { "Tor\\042v\\134ane\\0" }'),
    ('IDO_MFG = ""', 'IDO_MFG RCDATA { "\\0" }'),
    ('IDO_MFG = "a # b = \\t\\x9f"', 'IDO_MFG RCDATA { "a # b = \\011\\237\\0" }'),
    ('IDO_MFG = "Größe €"', 'IDO_MFG RCDATA { "Gr\\366\\337e \\200\\0" }'),
    ('IDO_UTIL_DLL = "${PREFIX}util.dll $${PREFIX} $"', 'IDO_UTIL_DLL RCDATA { "abcdutil.dll ${PREFIX} $\\0" }'),
    ("IDO_INKSTYLE = 010", "IDO_INKSTYLE RCDATA { 10L }"),
    ("IDO_INKSTYLE = 0xFFFFFFFF", "IDO_INKSTYLE RCDATA { 4294967295L }"),
    ("IDO_MODEL_OVERRIDE = 12", "IDO_MODEL_OVERRIDE RCDATA { 12L }"),
    ('IDO_SKIN_URL_OVERRIDE = "0"', 'IDO_SKIN_URL_OVERRIDE RCDATA { "0\\0" }'),
    ("IDO_SKIN_URL_OVERRIDE_OVERRIDE = 7", "IDO_SKIN_URL_OVERRIDE_OVERRIDE RCDATA { 7L }"),
    ('cartridge 0x2A = "x"', '"*" RCDATA { "x\\0" }'),
    ('cartridge 0x80 = "x"', '"€" RCDATA { "x\\0" }'),
    ('cartridge 0x81 = "x"', '"\x81" RCDATA { "x\\0" }'),
]


class Compiler(unittest.TestCase):
    def test_faults(self):
        for text, message in FAULTS:
            with self.subTest(text):
                code, messages, lines = compile_text(text, "--partial", "--define", "PREFIX=abcd")
                self.assertEqual((code, messages, lines), (1, ["p.settings:" + message], None))

    def test_right(self):
        for text, resource in RIGHT:
            with self.subTest(text):
                code, messages, lines = compile_text(text, "--partial", "--define", "PREFIX=abcd")
                self.assertEqual((code, messages, lines), (0, [], [resource]))

    def test_all_mistakes_at_once_in_order(self):
        _, messages, _ = compile_text("IDO_MFG = 1\n\nIDO_INKSTYLE = \"\"\n", "--partial")
        self.assertEqual([message.split(": ")[0] for message in messages], ["p.settings:1", "p.settings:3"])

    def test_complete_library(self):
        known = knownkeys.by_name(knownkeys.load(KEYS)).values()
        _, messages, _ = compile_text("# nothing")
        missing = [message.split(": ")[2] for message in messages]
        self.assertEqual(missing, [key.key for key in known if key.presence == "required"])
        self.assertIn("IDO_MODEL: missing; expected a text", messages[1])

        links = [key.key for key in known if key.key.endswith("_SUBURL")]
        values = {key.key: f'"{links.index(key.key)}"' if key.key in links else '"x"' if key.kind == "text" else "1"
                  for key in known if key.presence == "required"}
        whole = "\n".join(f"{key} = {value}" for key, value in values.items())
        self.assertEqual(compile_text(whole)[:2], (0, []))
        for more, message in [
            ('cartridge 0x31 = "~MODEL~"', "cartridge 0x31: ~MODEL~ needs IDO_MODEL_OVERRIDE"),
            ("IDO_MODEL_OVERRIDE = 1", "IDO_MODEL_OVERRIDE: needs IDO_CONFIG_DLL, which is missing"),
            ('IDO_CONFIG_DLL = "c"\nIDO_MFG_OVERRIDE = 1\ncartridge 0x31 = "~MFG~~MFG~"', "cartridge 0x31: only the first ~MFG~ is replaced"),
        ]:
            with self.subTest(more):
                code, messages, _ = compile_text(whole + "\n" + more)
                self.assertEqual((code, [text.split("error: ")[1] for text in messages]), (1, [message]))

    def test_unreadable_files(self):
        code, messages, _ = compile_text(b'IDO_MFG = "\xff"')
        self.assertEqual(code, 1)
        self.assertTrue(messages[0].startswith("p.settings: error: "), messages)

    def test_table_of_known_keys(self):
        row = "IDO_A\ttext\trequired\t9\tyes\tX\tp\ta\n"
        for table in ("IDO_A\ttext\n", "@G\ti\n" + row.replace("text", "word"), "@G\ti\n" + row + row.lower().upper(),
                      "@G\ti\n" + row + row.replace("IDO_A", "IDO_A_OVERRIDE"), row):
            with self.subTest(table), tempfile.NamedTemporaryFile("w", suffix=".tsv") as file:
                file.write(table)
                file.flush()
                with self.assertRaises(ValueError):
                    knownkeys.load(file.name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
