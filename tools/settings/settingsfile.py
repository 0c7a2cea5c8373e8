"""Reads and checks a product's settings file. docs/settings.md describes the format."""
import dataclasses
import difflib
import re

NUMBER_LIMIT = 0xFFFFFFFF
OVERRIDE = "_OVERRIDE"
ESCAPES = {"n": "\n", "r": "\r", "t": "\t", '"': '"', "\\": "\\"}
LINE = re.compile(r"(?P<name>cartridge\s+\S+|[^\s=]+)\s*=\s*(?P<value>.*)")
TEXT = re.compile(r'"(?P<body>(?:[^"\\]|\\.)*)"\s*(?:#.*)?')
NUMBER = re.compile(r"(?P<number>\d+|0[xX][0-9A-Fa-f]+)\s*(?:#.*)?")
PLACE = re.compile(r"\$\{(\w+)\}")


@dataclasses.dataclass(frozen=True)
class Setting:
    name: str  # the resource's name
    written: str  # the key as the file has it
    value: object  # bytes of a text, without terminator, or an int
    line: int


class SettingsFile:
    """The settings of one file. Every mistake becomes one line of `errors`: file, line, key, what was expected."""

    def __init__(self, path, text, known, *, partial=False, definitions=None, code_page="cp1252"):
        self.path = path
        self.known = known
        self.definitions = definitions or {}
        self.code_page = code_page
        self.settings = {}  # by upper-case name: resource names do not tell case apart
        self.errors = []
        for number, line in enumerate(text.splitlines(), 1):
            line = line.strip()
            if line and not line.startswith("#"):
                self._read_line(number, line)
        self._check_whole(partial)

    def value(self, name):
        setting = self.settings.get(name.upper())
        return None if setting is None else setting.value

    def _error(self, line, message):
        place = f"{self.path}:{line}" if line else self.path
        self.errors.append(f"{place}: error: {message}")

    # One line --------------------------------------------------------------------------------------------------------

    def _read_line(self, line, text):
        match = LINE.fullmatch(text)
        if not match:
            self._error(line, f'expected KEY = "text" or KEY = number, found: {text}')
            return
        found = self._read_value(line, match["name"], match["value"])
        if found is None:
            return
        name = self._check_name(line, match["name"], found)
        if name is None:
            return
        earlier = self.settings.get(name.upper())
        if earlier:
            note = "" if earlier.name == name else f" as {earlier.written} (resource names do not tell case apart)"
            self._error(line, f"{match['name']}: already given in line {earlier.line}{note}")
            return
        self.settings[name.upper()] = Setting(name, match["name"], found, line)

    def _read_value(self, line, name, text):
        match = NUMBER.fullmatch(text)
        if match:
            value = int(match["number"], 0 if match["number"][:2].lower() == "0x" else 10)
            if value > NUMBER_LIMIT:
                self._error(line, f"{name}: expected a number from 0 to {NUMBER_LIMIT}, found {match['number']}")
                return None
            return value
        match = TEXT.fullmatch(text)
        if not match:
            self._error(line, f'{name}: expected a text in quotation marks or a number, found: {text or "nothing"}')
            return None
        return self._read_text(line, name, match["body"])

    def _read_text(self, line, name, body):
        out = bytearray()
        position = 0
        while position < len(body):
            place = PLACE.match(body, position)
            if place:
                if place[1] not in self.definitions:
                    self._error(line, f"{name}: nothing is defined for {place[0]}")
                    return None
                out += self.definitions[place[1]].encode(self.code_page)
                position = place.end()
                continue
            character = body[position]
            position += 1
            if character == "$" and body.startswith("${", position):
                character, position = "${", position + 2  # $${ stands for the two characters
            elif character == "\\":
                hexadecimal = re.compile(r"x([0-9A-Fa-f]{2})").match(body, position)
                if hexadecimal:
                    out.append(int(hexadecimal[1], 16))
                    position = hexadecimal.end()
                    continue
                character = ESCAPES.get(body[position])
                if character is None:
                    self._error(line, f"{name}: \\{body[position]} is no escape; a backslash is written \\\\")
                    return None
                position += 1
            try:
                out += character.encode(self.code_page)
            except UnicodeEncodeError:
                self._error(line, f"{name}: {character} cannot be written in code page {self.code_page}")
                return None
        if 0 in out:
            self._error(line, f"{name}: a text ends at its first zero byte")
            return None
        return bytes(out)

    def _check_name(self, line, name, value):
        """The resource's name for a key that may be given this value, else None."""
        cartridge = re.fullmatch(r"cartridge\s+(\S+)", name)
        if cartridge:
            return self._check_cartridge(line, cartridge[1], value)
        known = self.known.get(name)
        if known:
            return name if self._check_value(line, known, value) else None
        base = self.known.get(name[: -len(OVERRIDE)]) if name.endswith(OVERRIDE) else None
        if base is None:
            close = difflib.get_close_matches(name, self.known, 1)
            self._error(line, f"{name}: unknown key" + (f"; did you mean {close[0]}?" if close else ""))
        elif not base.overridable:
            self._error(line, f"{name}: {base.key} is read where no configuration library is asked")
        elif not isinstance(value, int):
            self._error(line, f"{name}: expected a number (a configuration item), found a text")
        else:
            return name
        return None

    def _check_cartridge(self, line, code, value):
        if not re.fullmatch(r"0[xX][0-9A-Fa-f]{1,2}", code) or int(code, 16) == 0:
            self._error(line, f"cartridge {code}: expected a cartridge identity from 0x01 to 0xFF")
        elif not isinstance(value, bytes):
            self._error(line, f"cartridge {code}: expected a text in quotation marks, found a number")
        elif len(value) > 255:
            self._error(line, f"cartridge {code}: {len(value)} bytes; readers have room for 255")
        else:
            try:
                return bytes([int(code, 16)]).decode(self.code_page)
            except UnicodeDecodeError:  # the system takes what the code page leaves undefined for itself
                return chr(int(code, 16))
        return None

    def _check_value(self, line, known, value):
        if known.presence == "rewritten":
            self._error(line, f"{known.key}: never read under this name. {known.purpose}")
        elif known.kind == "number" and not isinstance(value, int):
            self._error(line, f"{known.key}: expected a number, found a text")
        elif known.kind == "text" and not isinstance(value, bytes):
            self._error(line, f"{known.key}: expected a text in quotation marks, found a number")
        elif known.kind == "text" and len(value) > known.limit:
            self._error(line, f"{known.key}: {len(value)} bytes; {known.readers} have room for {known.limit}")
        else:
            return True
        return False

    # The settings together -------------------------------------------------------------------------------------------

    def _check_whole(self, partial):
        if not partial:
            for known in self.known.values():
                if known.presence == "required" and known.key.upper() not in self.settings:
                    self._error(0, f"{known.key}: missing; expected a {known.kind}. {known.purpose}")
            self._check_tokens()
            for setting in self.settings.values():
                is_override = setting.name.endswith(OVERRIDE) and setting.name not in self.known
                if is_override and self.value("IDO_CONFIG_DLL") is None:
                    self._error(setting.line, f"{setting.name}: needs IDO_CONFIG_DLL, which is missing")
        self._check_relations()

    def _check_tokens(self):
        for setting in self.settings.values():
            for token, key in ((b"~MODEL~", "IDO_MODEL"), (b"~MFG~", "IDO_MFG")):
                count = setting.value.count(token) if isinstance(setting.value, bytes) else 0
                if count > 1:
                    self._error(setting.line, f"{setting.written}: only the first {token.decode()} is replaced")
                if count and self.value(key + OVERRIDE) is None:
                    self._error(setting.line, f"{setting.written}: {token.decode()} needs {key}{OVERRIDE}")

    def _check_relations(self):
        library, resources = self.settings.get("IDO_UTIL_DLL"), self.settings.get("IDO_UTIL_RESDLL")
        if library and resources and len(library.value) != len(resources.value):
            self._error(resources.line, "IDO_UTIL_RESDLL: expected as many characters as IDO_UTIL_DLL has "
                                        f"({len(library.value)}), found {len(resources.value)}")
        extension = self.value("IDO_JSWSKINEXTENSION")
        for key in ("IDO_JSWDEFAULTSKINNAMECONVENTION", "IDO_JSWALTERNATESKINNAMECONVENTION"):
            skin = self.settings.get(key)
            if skin and extension is not None and len(skin.value) + 2 + len(extension) > 49:
                self._error(skin.line, f"{key}: skin file names would be longer than 49 characters")
        links = {}
        for key in self.known:
            link = self.settings.get(key) if key.endswith("_SUBURL") else None
            if link and links.setdefault(link.value, link) is not link:
                self._error(link.line, f"{key}: {links[link.value].name} already has this link name")
