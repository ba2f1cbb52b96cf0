"""check_skin on damaged copies of the skin: each row plants one fault and names the finding."""

import functools
import importlib.machinery
import importlib.util
import os
import pathlib
import re
import shutil
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TABLE = pathlib.Path(ROOT, "tests", "data", "skin", "layout.tsv")


def load_script():
    """The script has no ".py" to its name."""
    sys.dont_write_bytecode = True
    loader = importlib.machinery.SourceFileLoader("check_skin", os.path.join(ROOT, "tools", "check_skin"))
    script = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_skin", loader))
    loader.exec_module(script)
    images = sys.modules[script.Skin.__module__].png
    images.decode = functools.lru_cache(maxsize=None)(images.decode)
    return script


check_skin = load_script()


def findings(folder, table=None):
    return check_skin.check(check_skin.Skin(folder), check_skin.contract(), table)[0]


class SkinTest(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = os.path.join(place.name, "UI")
        shutil.copytree(check_skin.default_skin(), self.folder)

    def edit(self, name, pattern, replacement):
        file = pathlib.Path(self.folder, name)
        text = file.read_text(encoding="utf-8")
        changed = re.sub(pattern, replacement, text, count=1)
        self.assertNotEqual(text, changed, pattern)
        file.write_text(changed, encoding="utf-8")

    def test_every_fault_in_a_layout_is_named(self):
        cases = [
            ("NewScene.xml", 'name="ButtonBack"', 'name="Buttonback"', "ButtonBack: missing"),
            ("NewScene.xml", 'Edit name="EditSceneName"', 'Label name="EditSceneName"', "must be a Edit"),
            ("NewScene.xml", 'name="ButtonBack"', 'name="ButtonCreate"', "the name stands twice"),
            ("Settings.xml", r'<Font size="12" />\s*<Font', "<Font", "font 4 is none of the layout's 4 fonts"),
            ("ZoneEdit.xml", '<Font size="12"', '<Font family="Arial" size="12"', "names a family"),
            ("ZoneEdit.xml", "ButtonHover.png", "ButtonHower.png", "ButtonHower.png"),
            ("ZoneEdit.xml", 'icon="Move"', 'icon="Moved"', "OptionMovePoint: icon Moved is not in Icons.txt"),
            ("Icons.txt", "icon ChevronDown", "icon Chevron", "no icon ChevronDown, which"),
            ("Icons.txt", "color ink", "color inc", "no color ink, which"),
            ("Icons.txt", "color hint #596675", "color hint #A0A8B0", "color hint on surface: contrast 2.4"),
            ("Icons.txt", "tint danger", "tint dangerous", "no tint danger, which"),
            ("BranchList.xml", "corner='5,4,28,4'", "corner='45,4,28,4'", "the corners are larger"),
            ("BranchList.xml", 'textcolor="muted"', 'textcolor="grey"', '"grey" is no colour'),
            ("BranchList.xml", 'text="Branch" textcolor="muted"', 'text="Branch" textcolor="#FFA0A8B0"',
             "Branch: normal: contrast 2.4"),
            ("OpenScene.xml", 'class="Text" textcolor="ink"', 'class="Text" textcolor="#FF98A4B1"',
             "SceneList: item, chosen: contrast 1.9"),
            ("NewScene.xml", 'bkcolor="tip"', 'bkcolor="#FFC1E3FF"', "ToolTip: normal: contrast 1.3"),
            ("ZoneEdit.xml", 'label="Zone name"', "", "EditZone: no label"),
            ("Confirmation.xml", 'tooltip="Go ahead"', "", "ButtonYes: no tool tip"),
            ("Confirmation.xml", 'pos="64,53,340', 'pos="464,53,340', "is not inside the window"),
            ("ZoneEdit.xml", 'readonly="true"', 'readonlyy="true"', "has no attribute readonlyy"),
            ("ZoneEdit.xml", '<Control pos', '<Contrl pos', "<Contrl> is no element"),
            ("ZoneEdit.xml", "<Label pos", "<Label><Label pos", "mismatched tag"),
        ]
        for name, pattern, replacement, finding in cases:
            with self.subTest(finding=finding):
                shutil.copy(os.path.join(check_skin.default_skin(), name), self.folder)
                self.edit(name, pattern, replacement)
                found = [line for line in findings(self.folder) if finding in line]
                self.assertTrue(found and found[0].startswith(name), found)
                shutil.copy(os.path.join(check_skin.default_skin(), name), self.folder)

    def test_images_without_a_use_and_uses_without_an_image_are_named(self):
        os.remove(os.path.join(self.folder, "OptionHover.png"))
        shutil.copy(os.path.join(check_skin.default_skin(), "Card.png"), os.path.join(self.folder, "Extra.png"))
        self.assertIn("OptionHover.png: missing", findings(self.folder))
        shutil.copy(os.path.join(check_skin.default_skin(), "OptionHover.png"), self.folder)
        self.assertEqual(["Dark: Extra.png: only in one of the skin and its folder Dark",
                          "Extra.png: no layout uses it"], findings(self.folder))

    def test_the_dark_skin_is_read_as_well(self):
        self.edit(os.path.join("Dark", "Icons.txt"), "color hint #9BA8B6", "color hint #4A5662")
        self.edit(os.path.join("Dark", "Icons.txt"), "color key #7DBBF7", "color key #1D63AD")
        found = findings(self.folder)
        for finding in ("Dark: Icons.txt: color hint on surface: contrast 2.4, needed 4.5",
                        "Dark: Icons.txt: color key on canvas: contrast 2.8, needed 3"):
            self.assertIn(finding, found)

    def test_another_text_differs_from_the_table(self):
        self.edit("BranchList.xml", 'text="Edit Zones"', 'text="Edit Zone"')
        self.assertEqual(["BranchList.xml: ButtonEditZones: text is 'Edit Zone', must be 'Edit Zones'"],
                         findings(self.folder, TABLE))


if __name__ == "__main__":
    unittest.main()
