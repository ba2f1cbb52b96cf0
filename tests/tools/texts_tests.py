#!/usr/bin/env python3
"""The .po files of tools/texts as translators' editors change them, and what is made of the catalogue."""

import importlib.machinery
import importlib.util
import json
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "tools"))
import text_files  # noqa: E402
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


PAGE = 'const TEXTS = {\n  en: {\n    zone: \'Zone "{0}"\', end: "End",\n  },\n};\nf({ a: "b" });\n'
INSTALLER = ('LangString textIn ${LANG_ENGLISH} "Version $0 (${VERSION}): in$\\n$INSTDIR\\Scenes$\\n$\\nStop."\n'
             'LangString textNo ${LANG_ENGLISH} \\\n  "No"\n')


class MadeFiles(unittest.TestCase):
    """What the builds of the page and of the installer take from the catalogue."""

    def test_every_text_is_used_and_every_used_one_is_there(self):
        scripts = "".join(file.read_text(encoding="utf-8") for file in (ROOT / "publish" / "page").glob("*.js"))
        words = text_files.page_words(text_files.PAGE.read_text(encoding="utf-8"))
        self.assertEqual(sorted(words), sorted(set(re.findall(r"\btexts\.(\w+)", scripts))))
        script = (ROOT / "packaging" / "quorvel.nsi").read_text(encoding="utf-8")
        lines = text_files.installer_lines(text_files.INSTALLER.read_text(encoding="utf-8"))
        self.assertEqual(sorted(lines), sorted(set(re.findall(r"\$\(text(\w+)\)", script))))

    def test_places_of_the_installer_come_back_as_they_went(self):
        file = text_files.INSTALLER
        lines = text_files.installer_lines(file.read_text(encoding="utf-8"))
        texts = {key: english for key, english, _ in text_files.installer_texts(file)}
        for name, english in lines.items():
            self.assertEqual(text_files.with_places_of(english, texts["Setup." + name]), english)

    def test_the_installer_has_each_language_and_english_where_one_lacks_a_text(self):
        sections = {"German": {"Setup.In": '{1} nach {0}: $ "{2}"'}, "French": {"Setup.No": "Non"}}
        lines = text_files.installer_script(sections, INSTALLER).splitlines()
        self.assertIn('LangString textIn ${LANG_GERMAN} "${VERSION} nach $0: $$ $\\"$\\n$INSTDIR\\Scenes$\\n$\\n$\\""',
                      lines)
        self.assertIn('LangString textNo ${LANG_GERMAN} "No"', lines)
        self.assertIn('LangString textNo ${LANG_FRENCH} "Non"', lines)
        self.assertEqual(len(lines), 8)

    def test_the_page_has_each_language_and_english_where_one_lacks_a_text(self):
        made = text_files.page_script({"German": {"Page.Zone": "Zone „{0}“", "Page.Old": "alt"}}, PAGE)
        languages = json.loads(made[made.index(",") + 1:made.rindex(")")])
        self.assertEqual(languages["de"], {"zone": "Zone „{0}“", "end": "End"})
        self.assertEqual(languages["nl"], {"zone": 'Zone "{0}"', "end": "End"})
        self.assertEqual(sorted(languages), ["de", "es", "fr", "nl"])

    def test_a_language_that_is_offered_without_words_is_found(self):
        offer = ", ".join(f'Language{{"{code}", "X"}}' for code in ("en", "fr", "de", "es", "nl"))
        self.assertEqual(list(text_files.offer_findings(offer)), [])
        for other in (offer.replace("nl", "it"), offer + ', Language{"it", "X"}'):
            self.assertIn("page: it is offered and has no words, or the other way round",
                          list(text_files.offer_findings(other)))


if __name__ == "__main__":
    unittest.main()
