// Which scenes are offered, and where a scene's folder lies.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Services.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"
#include "ui/SceneListing.h"

namespace {

using support::writeBytes;
using Names = std::vector<std::string>;

class SceneListing : public support::TempFolderTest {};

TEST_F(SceneListing, OffersFoldersWithASceneFileThatNothingReplaces) {
    EXPECT_EQ(ui::listScenes(), Names()) << "no folder \"Scenes\"";
    writeBytes("Scenes/Fire drill/Scene.xml", "");
    writeBytes("Scenes/forklift/Scene.xml", "");
    writeBytes("Scenes/\xC3\x9C"
               "bung & %s/Scene.xml",
               "");
    writeBytes("Scenes/Empty/clip.ogv", "");
    writeBytes("Scenes/Old/Scene.xml", "");
    writeBytes("Scenes/Old/Replaced", "");
    writeBytes("Scenes/Kept/Scene.xml", "");
    support::makeFolder("Scenes/Kept/Replaced");
    support::makeFolder("Scenes/Odd/Scene.xml");
    writeBytes("Scenes/Scene.xml", "");
    EXPECT_EQ(ui::listScenes(), (Names{"Fire drill", "forklift", "Kept",
                                       "\xC3\x9C"
                                       "bung & %s"}));
}

TEST_F(SceneListing, KeepsNamesAsStored) {
    const std::string odd = "b\xFF"
                            "d"; // no text in any encoding that we know
    support::FaultyFileSystem files(platform::nativeFileSystem());
    files.showAs(odd, "b-d");
    const core::ServicesOverride services(
        {&files, core::services().clock, core::services().process});
    writeBytes("Scenes/b-d/Scene.xml", "");
    EXPECT_EQ(ui::listScenes(), Names{odd});
}

TEST_F(SceneListing, AFolderPathEndsInABackslash) {
    EXPECT_EQ(ui::sceneFolderPath("Fire drill"), m_folder.path() + "Scenes/Fire drill\\");
    EXPECT_EQ(ui::sceneFolderPath(""), m_folder.path() + "Scenes/\\");
}

} // namespace
