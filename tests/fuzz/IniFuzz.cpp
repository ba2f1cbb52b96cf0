// Any bytes as a translation file and as a settings file. A text comes from
// one line of the file, whatever the others hold; the window's texts can be had from any.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/IniLines.h"
#include "core/Settings.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"

namespace {

using fuzz::require;

/// What every language does: places, counts, keys and layouts.
void showTexts(const std::shared_ptr<const core::Translations>& translations) {
    core::setTexts(translations);
    (void)core::tr("Zone|Following \"{0}\": frame {1}"_tr, u"name", 7);
    for (const std::size_t count : {0U, 1U, 2U}) {
        (void)core::tr("Zone|{0} frame|{0} frames"_trn, count, u"name");
    }
    require(core::trLayout("`Zone", u"Zone (Ctrl+Z)").ends_with(u")"));
    core::setTexts(nullptr);
}

void readBothWays(support::MemoryFileSystem& files, const std::string& text) {
    files.files["/home/T.ini"] = text;
    const auto translations = core::Translations::create("T.ini", "French");
    require(translations != nullptr);
    require(translations->translate("7 up") == "7 up");
    require(translations->translate("").empty());
    const std::string found = translations->translate("Zone");
    require(found == "Zone" || found == translations->translate("zONE"));
    showTexts(translations);
    const auto settings = core::Settings::create("T.ini");
    if (settings) {
        (void)settings->getString("", "language", "English");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Services services;
    const std::string text(data, data + size);
    readBothWays(services.files, text);
    core::readIniText(text, "T.ini",
                      [&](std::string_view section, std::string_view key, std::string_view value) {
                          for (const std::string_view piece : {section, key, value}) {
                              require(piece.find('\n') == std::string_view::npos);
                              require(text.find(piece) != std::string::npos);
                          }
                      });
    return 0;
}
