#include <string>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "tests/support/TempFolder.h"

namespace {

constexpr const char* kCatalogue =
    "[Language:English]\nSave = Save\nLong = Never shown\nLong.2 = in German\n"
    "[Language:German]\nSave = Sichern\nZoneEdit.Save = Speichern\n"
    "ActionLeadsTo = Nach {1} von {0}{2}{\nLong = Eine Zeile\n"
    "Zones.one = Eine Zone\nZones.other = {0} Zonen in {1}\nUndoStep = {0} zurück\n"
    "Key.Ctrl = Strg\nKey.Left = Links\nPlay = Los\n"
    "[Language:French]\nZones.one = {0} zone\nZones.other = {0} zones\nTwo = Une phrase\n"
    "Two.2 = et sa fin.\nTwo.4 = nie\n";

class TextsTest : public support::TempFolderTest {
protected:
    static void choose(const std::string& language) {
        support::writeBytes("T.ini", kCatalogue);
        core::setTexts(core::Translations::create("T.ini", language));
    }
    void TearDown() override {
        core::setTexts(nullptr);
        TempFolderTest::TearDown();
    }
};

TEST_F(TextsTest, AKeyIsTheFirstWordsOfItsText) {
    EXPECT_EQ(core::keyOf("No branches yet"), "NoBranchesYet");
    EXPECT_EQ(core::keyOf("{0} of {1}: \"{2}\" isn't 3\xC3\xA9"), "OfIsnT3");
    EXPECT_EQ(core::keyOf("A scene that already has this name is replaced"),
              "ASceneThatAlreadyHasThisNameIs");
    EXPECT_EQ(core::keyOf(std::string(40, 'x')), "X" + std::string(29, 'x'));
    EXPECT_EQ(core::keyOf("{\xE2\x80\xA6"), "");
}

TEST_F(TextsTest, WithoutACatalogueEnglishStandsToTheLetter) {
    EXPECT_EQ(core::tr("Undo (Ctrl+Z)"_tr), u"Undo (Ctrl+Z)");
    EXPECT_EQ(core::tr("UndoStep|Undo: {0} (Shift + Left)"_tr, "fill {0}"),
              u"Undo: fill {0} (Shift + Left)");
    EXPECT_EQ(core::tr("{0} zone|{0} zones"_trn, 1) + core::tr("{0} zone|{0} zones"_trn, 0),
              u"1 zone0 zones");
    EXPECT_EQ(core::tr("Key|{1} zone of {0}|{1} zones of {0}"_trn, 2, "B"), u"B zones of 2");
    EXPECT_EQ(core::trLayout("ZoneEdit", u"Save"), u"Save");
}

TEST_F(TextsTest, ALanguageHasItsOwnOrderPluralsAndKeys) {
    choose("German");
    EXPECT_EQ(core::tr("Save"_tr) + core::trLayout("ZoneEdit", u"Save") +
                  core::trLayout("Keys", u"Save (Ctrl+S)"),
              u"SichernSpeichernSichern (Strg+S)");
    EXPECT_EQ(core::tr("Action {0} leads to {1}"_tr, 2, "B"), u"Nach B von 2{");
    EXPECT_EQ(core::tr("{0} zone|{0} zones"_trn, 1, "C") +
                  core::tr("{0} zone|{0} zones"_trn, 7, "C"),
              u"Eine Zone7 Zonen in C");
    EXPECT_EQ(core::tr("UndoStep|Undo: {0} (Ctrl + Left)"_tr, "x"),
              core::displayText("x zurück (Strg + Links)"));
    EXPECT_EQ(core::tr("Play (if it can)"_tr), u"Play (if it can)") << "no keys in the brackets";
    EXPECT_EQ(core::trKeys(u"Ctrl+F12") + core::trKeys(u"Ctrl++") + core::trKeys(u"Left"),
              u"Strg+F12Strg++Links");
    EXPECT_EQ(core::tr("Long"_tr), u"Eine Zeile") << "no part of another language behind it";
    EXPECT_EQ(core::tr("Redo"_tr), u"Redo") << "a text that no language has";
}

TEST_F(TextsTest, NoneIsSingularInFrenchAndLongTextsGoOnInOtherLines) {
    choose("French");
    EXPECT_EQ(core::tr("{0} zone|{0} zones"_trn, 0) + core::tr("{0} zone|{0} zones"_trn, 2),
              u"0 zone2 zones");
    EXPECT_EQ(core::tr("Two"_tr), u"Une phrase et sa fin.");
    EXPECT_EQ(core::tr("Save"_tr), u"Save") << "in English";
}

} // namespace
