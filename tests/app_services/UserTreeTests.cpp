// The tree of a user of a shared installation: where it is, what is in it, and what a start leaves
// alone.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/services/StartFolder.h"
#include "app/services/Startup.h"
#include "core/Services.h"
#include "core/Translations.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"

namespace {

using support::readBytes;
using support::writeBytes;
using Names = std::vector<std::string>;

const std::string kProgram = "shared/Programs/Quorvel";
const std::string kTree = "documents/Quorvel";

class UserTreeTest : public support::TempFolderTest {
protected:
    UserTreeTest() {
        writeBytes(kProgram + "/AllUsers.ini", "; a comment\n");
        writeBytes(kProgram + "/UI/a.xml", std::string());
        writeBytes("shared/Template/Programs/Quorvel/Scenes/A/Scene.xml", "a");
        writeBytes("shared/Template/Programs/Quorvel/Scenes/B/Scene.xml", "b");
        writeBytes("shared/Template/Settings/Settings.ini", "language = Dutch\n");
    }
    /// In the program's folder, as by a shortcut, unless another is given.
    app::StartFolder start(const std::string& in = kProgram) {
        setCurrent(at(in));
        app::StartFolder result = app::enterStartFolder(
            at(kProgram), {.documents = at("documents"), .settings = at("settings")});
        m_workedIn = std::filesystem::current_path();
        setCurrent(m_folder.path());
        return result;
    }
    std::string at(const std::string& name) const { return m_folder.path() + name; }
    bool workedIn(const std::string& tree) const {
        return support::exists(tree) &&
               std::filesystem::equivalent(m_workedIn, tree + "/Programs/Quorvel");
    }
    static void setCurrent(const std::string& folder) {
        (void)platform::nativeFileSystem().setCurrentFolder(folder);
    }

    std::filesystem::path m_workedIn;
};

TEST_F(UserTreeTest, IsMadeOnceAndThenTheUsersOwn) {
    writeBytes(kTree + "/Programs/Quorvel/Scenes.part/A/Scene.xml",
               "of a start that was cut short");
    const Names before = support::filesBelow("shared");
    const app::StartFolder first = start();
    EXPECT_EQ(first.problem.logged, "");
    EXPECT_TRUE(first.isOurs);
    EXPECT_TRUE(workedIn(kTree));
    EXPECT_EQ(support::filesBelow(kTree),
              (Names{"Programs/Quorvel/Scenes/A/Scene.xml", "Programs/Quorvel/Scenes/B/Scene.xml",
                     "Settings/Settings.ini"}));
    EXPECT_EQ(readBytes(kTree + "/Programs/Quorvel/Scenes/A/Scene.xml"), "a");
    std::filesystem::remove_all(kTree + "/Programs/Quorvel/Scenes/A");
    writeBytes(kTree + "/Settings/Settings.ini", "language = French\n");
    EXPECT_TRUE(start("settings/..").isOurs);
    EXPECT_TRUE(workedIn(kTree));
    EXPECT_EQ(support::filesBelow(kTree + "/Programs/Quorvel/Scenes"), Names{"B/Scene.xml"});
    EXPECT_EQ(readBytes(kTree + "/Settings/Settings.ini"), "language = French\n");
    EXPECT_EQ(support::filesBelow("shared"), before);
}

TEST_F(UserTreeTest, IsWhereTheUserElseTheAdministratorWantsIt) {
    writeBytes("file", std::string());
    const struct {
        std::string user;
        std::string administrator;
        std::string tree; ///< empty: refused
    } cases[] = {
        {"folder = " + at("mine"), "folder = " + at("given"), "mine"},
        {"FOLDER=" + at("mine ; too"), "", "mine ; too"},
        {"folder =\n", "folder = " + at("given"), "given"},
        {"what is this\n[folder]\n", "", kTree},
        {"folder = here", "", ""},
        {"", "folder = " + at("file/below"), ""},
    };
    for (const auto& [user, administrator, tree] : cases) {
        writeBytes("settings/Quorvel/Quorvel.ini", user);
        writeBytes(kProgram + "/AllUsers.ini", administrator);
        const app::StartFolder result = start();
        EXPECT_EQ(result.isOurs, !tree.empty()) << user << administrator;
        if (!tree.empty()) {
            EXPECT_TRUE(workedIn(tree)) << tree;
        } else {
            EXPECT_NE(result.problem.logged.find(user.empty() ? "AllUsers.ini" : "Quorvel.ini"),
                      std::string::npos)
                << result.problem.logged;
        }
    }
    EXPECT_FALSE(support::exists(kProgram + "/Log.html"));
}

TEST_F(UserTreeTest, ThatCannotBeMadeIsToldInTheLanguageThatItWouldHave) {
    writeBytes(kProgram + "/AllUsers.ini", "folder = " + at("file/below"));
    writeBytes(kProgram + "/Translations.ini",
               "[Language:Dutch]\nTheFolderCannotBePreparedFor = Nee: {0}.\n"
               "ItIsNamedIn = Zie:\n"
               "[Language:German]\nTheFolderCannotBePreparedFor = Nein: {0}.\n");
    writeBytes("file", std::string());
    const auto told = [&](const std::string& text) { return text.substr(0, text.find('\n')); };
    const app::StartProblem given = start().problem;
    EXPECT_EQ(told(given.logged),
              "The folder \"" + at("file/below") + "\" cannot be prepared for your scenes.");
    EXPECT_EQ(told(given.shown), "Nee: " + at("file/below") + ".") << "as a new tree is set";
    EXPECT_NE(given.shown.find("\n\nZie:\n"), std::string::npos);
    writeBytes("tree/Settings/Settings.ini", "language = german\n");
    writeBytes("tree/Programs/Quorvel/Scenes.lock/in the way", std::string());
    writeBytes(kProgram + "/AllUsers.ini", "folder = " + at("tree"));
    EXPECT_EQ(told(start().problem.shown), "Nein: " + at("tree") + ".") << "as the tree is set";
    writeBytes("tree/Programs/Quorvel/Editor.ini", "language = English\n");
    const app::StartProblem chosen = start().problem;
    EXPECT_EQ(chosen.shown, chosen.logged);
}

TEST_F(UserTreeTest, OfItsOwnWithASkinStaysWhatItIs) {
    writeBytes("other/Programs/Quorvel/UI/a.xml", std::string());
    EXPECT_TRUE(start("other/Programs/Quorvel").isOurs);
    EXPECT_TRUE(workedIn("other"));
    EXPECT_FALSE(support::exists("documents"));
}

TEST_F(UserTreeTest, HasAllScenesOrNoneWhateverFails) {
    support::FaultyFileSystem files(platform::nativeFileSystem());
    core::Services services = core::services();
    services.fileSystem = &files;
    const core::ServicesOverride replaced(services);
    ASSERT_EQ(start().problem.logged, "");
    const auto calls = static_cast<int>(files.calls().size());
    const std::string scenes = kTree + "/Programs/Quorvel/Scenes";
    for (int number = 1; number <= calls; ++number) {
        std::filesystem::remove_all("documents");
        files.forgetCalls();
        files.failAt(number);
        const app::StartFolder result = start();
        if (support::exists(scenes)) {
            EXPECT_EQ(support::filesBelow(scenes), (Names{"A/Scene.xml", "B/Scene.xml"})) << number;
        }
        files.heal();
        EXPECT_TRUE(start().isOurs) << number;
    }
}

TEST_F(UserTreeTest, TakesTextsFromTheInstallationUnlessItHasItsOwn) {
    writeBytes(kProgram + "/Translations.ini", "[Language:Dutch]\nZone=shared\n");
    const app::StartFolder folder = start();
    setCurrent(at(kTree + "/Programs/Quorvel"));
    for (const char* expected : {"shared", "own"}) {
        app_state::SharedServices services;
        app_state::ScreenState state;
        services.installation = folder.installation;
        ASSERT_TRUE(app::createServices(services, state));
        EXPECT_EQ(services.translations->translate("Zone"), expected);
        app::dropServices(services);
        writeBytes("Translations.ini", "[Language:Dutch]\nZone=own\n");
    }
    setCurrent(m_folder.path());
}

} // namespace
