"""The tool tips that the manuals list: each stands in the catalogue."""

import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent
MANUALS = {"English": ROOT / "docs" / "manual.md", "German": ROOT / "docs" / "manual.de.md"}
TABLE = re.compile(r"^## (?:<a id=\"tool-tips\"></a>Kurzhinweise|Tool tips)\n(.*?)^## ", re.MULTILINE | re.DOTALL)
KEYS = re.compile(r" \([^()]*\)$")
NAMES = re.compile(r"\b[A-Z]{4,}\b")  # NAME, STEP and the like: what the program puts in
PLACE = re.compile(r"\{\d\}")


def plain(text):
    return " ".join(NAMES.sub("", PLACE.sub("", text)).split())


def is_list_of(text, known):
    """Whether it is tips of `known`, one behind the other; a tip may hold "; " itself."""
    parts = text.split("; ")
    return plain(text) in known or plain(KEYS.sub("", text)) in known or any(
        plain(KEYS.sub("", "; ".join(parts[:i]))) in known and is_list_of("; ".join(parts[i:]), known)
        for i in range(1, len(parts)))


def findings(manual, section):
    """The rows of the manual's table whose tool tips the section of the catalogue has not."""
    known = {plain(text) for text in section.values()}
    table = TABLE.search(manual)
    rows = re.findall(r"^\|.*\| (.*) \|$", table[1], re.MULTILINE)[2:] if table else []
    if not rows:
        yield "has no tool tips"
    for tip in rows:
        if not is_list_of(tip, known):
            yield f'"{tip}" is no tool tip'


def manual_findings(catalogue):
    for language, file in MANUALS.items():
        for finding in findings(file.read_text(encoding="utf-8"), catalogue.sections[language]):
            yield f"{file.name}: {finding}"
