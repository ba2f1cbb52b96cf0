"""The installer's own texts (packaging/texts.nsh): each has the signs of its language."""

import pathlib
import re

import text_signs

FILE = pathlib.Path(__file__).resolve().parent.parent / "packaging" / "texts.nsh"
ORDER = re.compile(r"^!macro text name (.*)$", re.MULTILINE)
TEXT = re.compile(r'^!insertmacro text (\w+)((?:\s*\\?\s*".*?")+)$', re.MULTILINE)


def findings(source):
    """What is wrong, one line each."""
    order = ORDER.search(source)[1].split()
    texts = TEXT.findall(source)
    if not texts:
        yield "installer: no texts"
    for name, variants in texts:
        for language, text in zip(order, re.findall(r'"(.*?)"', variants)):
            if sign := text_signs.wrong_sign(language.capitalize(), text):
                yield f"installer: {name}: {language} has a sign {sign!r} that docs/terms.md has otherwise"


def installer_findings():
    return findings(FILE.read_text(encoding="utf-8"))
