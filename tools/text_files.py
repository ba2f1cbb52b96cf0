"""The texts of the published page and of the installer: their English as it stands in their sources,
and the other languages, made of the catalogue in the form that each of them reads."""

import json
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "publish" / "page" / "texts.js"
INSTALLER = ROOT / "packaging" / "texts.nsh"
OFFER = ROOT / "publish" / "PageText.cpp"
# The languages besides English, with the names that a page has for them.
CODES = {"French": "fr", "German": "de", "Spanish": "es", "Dutch": "nl"}
WORD = re.compile(r"""(\w+): ("(?:[^"\\]|\\.)*"|'(?:[^'\\]|\\.)*')""")
LINE = re.compile(r'^LangString text(\w+) \$\{LANG_ENGLISH\}\s+(?:\\\s+)?"(.*)"$', re.MULTILINE)
# A place of the installer's texts: what its script puts in, with the new lines around it.
PUT_IN = re.compile(r"(?:\$\\n|\$INSTDIR[\\\w]*|\$\d|\$\{\w+\})+")
OFFERED = re.compile(r'Language\{"(\w+)"')


def page_words(source):
    """Name → English, of the first object in the script."""
    words = WORD.findall(source[:source.index("\n};")])
    return {name: re.sub(r"\\(.)", r"\1", text[1:-1]) for name, text in words}


def installer_lines(source):
    """Name → English, as the script has it."""
    return dict(LINE.findall(source))


def page_key(name):
    return "Page." + name[0].upper() + name[1:]


def page_texts(file):
    for name, english in page_words(file.read_text(encoding="utf-8")).items():
        yield page_key(name), english, False


def installer_texts(file):
    for name, english in installer_lines(file.read_text(encoding="utf-8")).items():
        places = iter(range(10))
        yield "Setup." + name, PUT_IN.sub(lambda _: f"{{{next(places)}}}", english), False


def page_script(sections, source):
    """What comes behind `source`. What a language lacks is English."""
    languages = {code: {name: sections.get(language, {}).get(page_key(name), english)
                        for name, english in page_words(source).items()}
                 for language, code in CODES.items()}
    return f"Object.assign(TEXTS, {json.dumps(languages, ensure_ascii=False, indent=1)});\n"


def installer_script(sections, source):
    """The same for the installer."""
    lines = []
    for language in CODES:
        for name, english in installer_lines(source).items():
            text = sections.get(language, {}).get("Setup." + name)
            text = english if text is None else with_places_of(english, text)
            lines.append(f'LangString text{name} ${{LANG_{language.upper()}}} "{text}"\n')
    return "".join(lines)


def with_places_of(english, text):
    there = PUT_IN.findall(english)
    text = text.replace("$", "$$").replace('"', '$\\"')
    return re.sub(r"\{(\d)\}", lambda place: there[int(place[1])], text)


def offer_findings(offer):
    """Whether the languages that are offered for pages are those that have words."""
    for code in sorted(set(OFFERED.findall(offer)) ^ {"en", *CODES.values()}):
        yield f"page: {code} is offered and has no words, or the other way round"


def made(kind, sections):
    """The text of the file that is made: "--page" or "--installer"."""
    make, file = (page_script, PAGE) if kind == "--page" else (installer_script, INSTALLER)
    return make(sections, file.read_text(encoding="utf-8"))
