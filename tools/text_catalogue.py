"""Reads and writes data/Translations.ini: a section for each language, lines "Key = text"."""

import re

HEADER = """\
; The texts of the editor that follow the language of Settings.ini, or the one chosen in Settings. A
; text that a language lacks is shown in English. This file is UTF-8. {0} to {9} are places for names
; and numbers; ".one" and ".other" are the forms for one and for several; ".2" and on continue a long
; text. The first four keys are the conditions of an action. "Page." is the published page and "Setup."
; the installer: they have their texts from here when they are built. docs/translating.md says more.
"""
LANGUAGES = ("English", "Dutch", "French", "German", "Spanish")
MAX_LINE = 190  # bytes; the reader takes 198
MAX_PARTS = 9
CONTINUED = re.compile(r"(.*)\.([2-9])$")


class Catalogue:
    def __init__(self, sections):
        self.sections = sections

    @staticmethod
    def parse(text):
        sections, section, last = {}, None, None
        for line in text.lstrip("\ufeff").splitlines():
            head = re.fullmatch(r"\[Language:(.+)\]\s*", line, re.IGNORECASE)
            if head:
                section, last = sections.setdefault(head[1], {}), None
            elif section is not None and "=" in line and line[0] not in ";#":
                key, _, value = (part.strip() for part in line.partition("="))
                continued = CONTINUED.fullmatch(key)
                if continued and continued[1] == last:
                    section[last] += " " + value
                else:
                    section[key], last = value, key
        return Catalogue(sections)

    @staticmethod
    def read(file):
        return Catalogue.parse(file.read_text(encoding="utf-8"))

    def drop_unused(self, texts, areas):
        for language, section in self.sections.items():
            for key in list(section):
                area, _, base = key.partition(".")
                if key not in texts and not (area in areas and base in texts):
                    del section[key]

    def text(self, texts):
        """The file, each section in the order of `texts`, with keys of single layouts at its end."""
        lines = [HEADER]
        languages = [one for one in LANGUAGES if one in self.sections]
        languages += sorted(set(self.sections) - set(LANGUAGES))
        for language in languages:
            section, place = self.sections[language], None
            lines.append(f"[Language:{language}]")
            for key in [k for k in texts if k in section] + sorted(set(section) - set(texts)):
                if language == "English" and texts[key].place != place:
                    place = texts[key].place
                    lines.append(f"; {place}")
                lines += wrapped(key, section[key])
            lines.append("")
        return "\n".join(lines).rstrip("\n") + "\n"


def wrapped(key, value):
    """The line of a text; lines, where it is too long for one."""
    lines, rest, number = [], value, 1
    while True:
        head = f"{key}.{number} = " if number > 1 else f"{key} = "
        if len((head + rest).encode()) <= MAX_LINE or number == MAX_PARTS:
            return lines + [head + rest]
        cut = max(i for i, sign in enumerate(rest)
                  if sign == " " and "  " not in rest[i - 1:i + 2] and len((head + rest[:i]).encode()) <= MAX_LINE)
        lines.append(head + rest[:cut])
        rest = rest[cut + 1:]
        number += 1
