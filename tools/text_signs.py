"""The signs of each language, as docs/terms.md has them."""

import re

# What a text must not hold.
WRONG = {
    "French": re.compile(r"""(?<!\u202f)[;?!»%]|(?<![\u202f}]):|«(?!\u202f)|["']"""),
    "German": re.compile(r"""["'”]| %|„[^“]*„"""),
    "Spanish": re.compile(r"""["']| %|^[^¿]*\?"""),
    "Dutch": re.compile(r"""["']| %|“[^”]*“"""),
}

FIGURES = ("Time.OfDay", "Number.Decimal")  # not written as sentences are


def wrong_sign(language, text):
    """The first sign that does not stand so in the language; None without one."""
    found = WRONG[language].search(text) if language in WRONG else None
    return found[0] if found else None
