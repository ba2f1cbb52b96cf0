#!/usr/bin/env python3
"""The texts of the installer, and the .po files of tools/texts as translators' editors change them."""

import importlib.machinery
import importlib.util
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "tools"))
from text_catalogue import Catalogue  # noqa: E402
from text_sources import Text, collect  # noqa: E402

LOADER = importlib.machinery.SourceFileLoader("texts", str(ROOT / "tools" / "texts"))
TOOL = importlib.util.module_from_spec(importlib.util.spec_from_loader("texts", LOADER))
LOADER.exec_module(TOOL)

TEXTS = {"Say": Text('Say "{0}" \\ \'now\'', "ui/a.cpp"),
         "Zones.one": Text("{0} zone", "ui/a.cpp", True),
         "Zones.other": Text("{0} zones of {1}", "ui/a.cpp"),
         "Long": Text("One and two", "ui/b.cpp")}
GERMAN = {"Say": 'Sage \\n „{0}“ "x"', "Zones.one": "Eine Zone", "Zones.other": "{0} Zonen von {1}",
          "Long": "Eins und zwei"}


class PoFiles(unittest.TestCase):
    def test_each_language_comes_back_as_it_went(self):
        texts = collect()
        for language, section in Catalogue.read(ROOT / "data" / "Translations.ini").sections.items():
            known = {key: text for key, text in section.items() if key in texts}
            self.assertEqual(TOOL.from_po(TOOL.to_po(texts, section)), (known, []), language)

    def test_what_an_editor_of_such_files_does_is_understood(self):
        file = TOOL.to_po(TEXTS, GERMAN)
        self.assertEqual(TOOL.from_po(file), (GERMAN, []))
        wrapped = file.replace('msgstr "Eins und zwei"', 'msgstr ""\n"Eins "\n"und zwei"')
        self.assertEqual(TOOL.from_po(wrapped), (GERMAN, []))
        obsolete = file + '\n#~ msgctxt "Old"\n#~ msgid "Old"\n#~ msgstr "Alt"\n'
        self.assertEqual(TOOL.from_po(obsolete), (GERMAN, []))
        fuzzy = file.replace('msgctxt "Long"', '#, fuzzy\n#| msgid "One"\nmsgctxt "Long"')
        untranslated = file.replace('msgstr "Eins und zwei"', 'msgstr ""')
        for changed in (fuzzy, untranslated):
            self.assertEqual(TOOL.from_po(changed),
                             ({key: text for key, text in GERMAN.items() if key != "Long"}, []))

    def test_an_entry_without_its_key_is_reported(self):
        found, lost = TOOL.from_po(TOOL.to_po(TEXTS, GERMAN).replace('msgctxt "Long"\n', ""))
        self.assertEqual((found.get("Long"), lost), (None, ["One and two"]))

    def test_other_places_are_found_but_a_singular_may_do_without_its_number(self):
        section = dict(GERMAN, Long="Eins {0}")
        catalogue = Catalogue({"English": {key: text.english for key, text in TEXTS.items()}, "X": section})
        self.assertEqual(list(TOOL.findings(TEXTS, catalogue)),
                         ['X: "Long" has other places than "One and two"'])


class InstallerTexts(unittest.TestCase):
    def test_every_text_is_used_and_has_the_same_places_in_five_languages(self):
        folder = ROOT / "packaging"
        texts = (folder / "texts.nsh").read_text(encoding="utf-8")
        used = set(re.findall(r"\$\((text\w+)\)", (folder / "quorvel.nsi").read_text(encoding="utf-8")))
        names = []
        for name, languages in re.findall(r"^!insertmacro text (\w+)((?:\s*\\?\s*\".*?\")+)$", texts, re.MULTILINE):
            variants = re.findall(r'"(.*?)"', languages)
            self.assertEqual(len(variants), 5, name)
            self.assertEqual({tuple(re.findall(r"\$\w+|\$\\n|\$\{\w+\}|\\\w+", text)) for text in variants},
                             {tuple(re.findall(r"\$\w+|\$\\n|\$\{\w+\}|\\\w+", variants[0]))}, name)
            self.assertFalse([text for text in variants[1:] if text == variants[0] or not text.strip()], name)
            names.append(name)
        self.assertEqual(sorted(names), sorted(used))


if __name__ == "__main__":
    unittest.main()
