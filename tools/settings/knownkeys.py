"""The table of known settings, src/settings/known-keys.tsv."""
import dataclasses

COLUMNS = ("key", "kind", "presence", "limit", "override", "readers", "purpose", "absence")


@dataclasses.dataclass(frozen=True)
class KnownKey:
    key: str
    kind: str  # "text" or "number"
    presence: str  # "required", "optional" or "rewritten"
    limit: int  # bytes of a text without its terminator
    overridable: bool
    readers: str
    purpose: str
    absence: str


@dataclasses.dataclass
class Group:
    title: str
    introduction: str
    keys: list


def load(path):
    """The groups of the table in its order. A malformed table raises ValueError with its line."""
    groups = []
    seen = set()
    with open(path, encoding="utf-8") as file:
        for number, line in enumerate(file, 1):
            line = line.rstrip("\n")
            fields = line.split("\t")
            if not line or line.startswith("#"):
                continue
            if line.startswith("@") and len(fields) == 2:
                groups.append(Group(fields[0][1:], fields[1], []))
                continue
            row = dict(zip(COLUMNS, fields))
            if (
                len(fields) != len(COLUMNS)
                or not groups
                or row["kind"] not in ("text", "number")
                or row["presence"] not in ("required", "optional", "rewritten")
                or row["override"] not in ("yes", "no")
                or (row["kind"] == "text") != row["limit"].isdigit()
                or row["key"].upper() in seen  # resource names do not tell case apart
            ):
                raise ValueError(f"{path}:{number}: not a row of this table: {line}")
            seen.add(row["key"].upper())
            groups[-1].keys.append(
                KnownKey(row["key"], row["kind"], row["presence"], int(row["limit"] or 0), row["override"] == "yes",
                         row["readers"], row["purpose"], row["absence"])
            )
    for group in groups:
        for known in group.keys:
            if known.key.upper() + "_OVERRIDE" in seen:
                raise ValueError(f"{path}: {known.key}_OVERRIDE is a setting and an override at once")
    return groups


def by_name(groups):
    return {known.key: known for group in groups for known in group.keys}
