"""The words of the published page (publish/page/texts.js): every language has them all."""

import pathlib
import re
from collections import Counter

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORDS = ROOT / "publish" / "page" / "texts.js"
OFFER = ROOT / "publish" / "PageText.cpp"
LANGUAGE = re.compile(r"^  (\w+): \{\n(.*?)^  \},\n", re.MULTILINE | re.DOTALL)
WORD = re.compile(r"""(\w+): ("(?:[^"\\]|\\.)*"|'(?:[^'\\]|\\.)*')""")
OFFERED = re.compile(r'Language\{"(\w+)"')
PLACE = re.compile(r"%[sd]")


def words(source):
    """Language → key → text, of the first object in the script."""
    block = source[:source.index("\n};") + 1]
    return {code: {key: text[1:-1] for key, text in WORD.findall(body)}
            for code, body in LANGUAGE.findall(block)}


def findings(source, offer):
    """What is wrong, one line each."""
    languages = words(source)
    offered = OFFERED.findall(offer)
    for code in sorted(set(offered) ^ set(languages)):
        yield f"page: {code} is offered and has no words, or the other way round"
    english = languages.get("en", {})
    if not english:
        yield "page: no English words"
    for code, texts in languages.items():
        for key in sorted(set(english) ^ set(texts)):
            yield f'page: {code}: "{key}" is missing, or not in English'
        for key in sorted(set(english) & set(texts)):
            if Counter(PLACE.findall(texts[key])) != Counter(PLACE.findall(english[key])) or not texts[key]:
                yield f'page: {code}: "{key}" has other places than "{english[key]}"'


def page_findings():
    return findings(WORDS.read_text(encoding="utf-8"), OFFER.read_text(encoding="utf-8"))
