"""The texts that are shown: by the program, from its sources ("..."_tr, "..."_trn) and its layouts, by the
published page and by the installer."""

import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree
from collections import Counter
from dataclasses import dataclass

import text_files

ROOT = pathlib.Path(__file__).resolve().parent.parent
LAYOUTS = ROOT / "data" / "UI"
MODULES = ("app", "check", "core", "follow", "import", "jobs", "map", "playback", "publish",
           "recovery", "scene", "stills", "toolkit", "track", "ui", "video", "zone", "ZoneEdit")
SHOWN = ("text", "tooltip", "label")
MAX_KEY = 30
LITERAL = r'(?:R"\((?:.|\n)*?\)"|"(?:[^"\\\n]|\\.)*")'
MARKED = re.compile(rf"((?:{LITERAL}\s*)*{LITERAL})_(trn?)\b")
PART = re.compile(LITERAL)
COMMENT = re.compile(rf'({LITERAL})|//[^\n]*')
ESCAPE = {"n": "\n", "t": "\t"}
PLACE = re.compile(r"\{\d\}")
KEY_NAME = re.compile(r"(?:Ctrl|Shift|Alt|Left|Right|Up|Down|Home|End|Page Up|Page Down|Tab|Enter|"
                      r"Esc|Space|Backspace|Delete|Insert|Menu|Arrows|Drag|Plus|Minus|F\d\d?|.)")
# The conditions of an action, whose keys are older than the others.
CONDITIONS = ("Default", "Keypress", "Zone", "Random")


def places(text):
    return Counter(PLACE.findall(text))


@dataclass
class Text:
    """One line of the catalogue."""
    english: str
    place: str
    is_one: bool = False  # a singular, which may do without its number

    def has_same_places(self, other):
        wanted, got = places(self.english), places(other)
        if self.is_one:
            wanted["{0}"] = got["{0}"] = 0
        return +wanted == +got


def key_of(text):
    """As core::keyOf."""
    key = ""
    for word in re.findall(r"[A-Za-z0-9]+", re.sub(r"\{[^}]*\}", " ", text)):
        if key and len(key) + len(word) > MAX_KEY:
            break
        key += word[0].upper() + word[1:] if word[0].islower() else word
    return key[:MAX_KEY]


def without_keyboard(text):
    """The text without the keys of the keyboard that stand behind it in brackets."""
    found = re.fullmatch(r"(.*) \(([^()]+)\)", text, re.DOTALL)
    if found and all(KEY_NAME.fullmatch(part.strip()) for part in re.split(r"(?<=.)\+", found[2])):
        return found[1]
    return text


def literal_value(source):
    value = ""
    for part in PART.findall(source):
        if part.startswith("R"):
            value += part[3:-2]
        else:
            value += re.sub(r"\\(.)", lambda m: ESCAPE.get(m[1], m[1]), part[1:-1])
    return value


def marked_texts(source, counted):
    """The (key, English, is_one) of a marked literal."""
    parts = literal_value(source).split("|")
    if counted:
        key = parts[0] if len(parts) == 3 else key_of(parts[-1])
        return [(key + ".one", parts[-2], True), (key + ".other", parts[-1], False)]
    english = without_keyboard(parts[-1])
    return [(parts[0] if len(parts) == 2 else key_of(english), english, False)]


def layout_texts(file):
    for element in ElementTree.parse(file).iter():
        for name in SHOWN:
            key, _, text = element.get(name, "").rpartition("|")
            text = without_keyboard(text)
            if key or re.search("[A-Za-z]", key_of(text)):
                yield key or key_of(text), text, False


def source_texts(file):
    text = COMMENT.sub(lambda m: m[1] or "", file.read_text(encoding="utf-8"))
    for source, suffix in MARKED.findall(text):
        if literal_value(source):
            yield from marked_texts(source, suffix == "trn")


def areas():
    return {file.stem for file in LAYOUTS.glob("*.xml")}


def collect():
    """Key → Text, in the order in which layouts and sources have them. Ends the program when two
    texts have one key."""
    texts, keys = {}, {}
    files = [(file, layout_texts) for file in sorted(LAYOUTS.glob("*.xml"))]
    for module in MODULES:
        files += [(file, source_texts) for file in sorted((ROOT / module).rglob("*.*"))
                  if file.suffix in (".h", ".cpp")]
    files += [(text_files.PAGE, text_files.page_texts), (text_files.INSTALLER, text_files.installer_texts)]
    for condition in CONDITIONS:
        texts[condition] = Text(condition, "the conditions of an action")
        keys[condition.lower()] = condition
    clashes = []
    for file, texts_of in files:
        place = file.relative_to(ROOT).as_posix()
        for key, english, is_one in texts_of(file):
            known = texts.get(keys.get(key.lower(), ""))
            if known is None:
                texts[key] = Text(english, place, is_one)
                keys[key.lower()] = key
            elif known.english != english:
                clashes.append(f'{place}: "{english}" has the key {key} of "{known.english}" '
                               f"({known.place}); give one of them a key of its own")
    if clashes:
        sys.exit("\n".join(clashes))
    return texts
