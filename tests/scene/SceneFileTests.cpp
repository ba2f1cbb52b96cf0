#include <cerrno>

#include <gtest/gtest.h>

#include "core/Services.h"
#include "scene/SceneManager.h"
#include "tests/scene/SceneFixture.h"
#include "tests/support/FaultyFileSystem.h"

namespace {

using scene_tests::Lines;

const std::string kStory = "<Scene>\r\n"
                           "\t<Name>Fire \xC3\x9C"
                           "bung</Name>\r\n"
                           "\t<FirstBranch>Start</FirstBranch>\r\n"
                           "\t<Branch>\r\n"
                           "\t\t<ID>Start</ID>\r\n"
                           "\t\t<Filename>a.ogv</Filename>\r\n"
                           "\t\t<Action>\r\n"
                           "\t\t\t<Type>ZoneAction</Type>\r\n"
                           "\t\t\t<Parameter>Door</Parameter>\r\n"
                           "\t\t\t<Immediate>true</Immediate>\r\n"
                           "\t\t\t<BranchID>End</BranchID>\r\n"
                           "\t\t</Action>\r\n"
                           "\t\t<Action>\r\n"
                           "\t\t\t<Type>RandomAction</Type>\r\n"
                           "\t\t\t<BranchID></BranchID>\r\n"
                           "\t\t</Action>\r\n"
                           "\t</Branch>\r\n"
                           "\t<Branch>\r\n"
                           "\t\t<ID>End</ID>\r\n"
                           "\t\t<Filename></Filename>\r\n"
                           "\t</Branch>\r\n"
                           "</Scene>\r\n";

class SceneFileTest : public scene_tests::SceneFixture {
protected:
    bool load(const std::string& text) {
        support::writeBytes("Scenes/A/Scene.xml", text);
        return m_scene->Load("A");
    }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
    std::shared_ptr<scene::SceneManager> m_scene = scene::SceneManager::create();
};

TEST_F(SceneFileTest, WhatWasWrittenReadsBackAndIsWrittenTheSame) {
    ASSERT_TRUE(load(kStory));
    EXPECT_EQ(m_scene->Name(), "Fire \xC3\x9C"
                               "bung")
        << "the file's name counts";
    EXPECT_EQ(m_scene->branchCount(), 2);
    EXPECT_EQ(m_scene->action(0, 0)->Parameter(), "Door");
    EXPECT_TRUE(m_scene->Save("Scenes/" + m_scene->Name() + "\\"));
    EXPECT_EQ(support::readBytes("Scenes/Fire \xC3\x9C"
                                 "bung/Scene.xml"),
              kStory);
    EXPECT_EQ(newErrors(), Lines{});
    EXPECT_EQ(m_scene->saveFailure(), "");
}

TEST_F(SceneFileTest, TheFileIsLookedForUnderTheNameGivenOrHeld) {
    struct Case {
        const char* held;
        const char* given;
        const char* path;
    };
    const Case cases[] = {{"A", "", "open Scenes/A/Scene.xml"},
                          {"A", "B", "open Scenes/B/Scene.xml"},
                          {"", "", "open Scenes/Scene.xml"},
                          {"", "x\\y", "open Scenes/x\\y\\Scene.xml"},
                          {"", "A/", "open Scenes/A/Scene.xml"}};
    for (const Case& c : cases) {
        m_scene->SetName(c.held);
        m_files.forgetCalls();
        EXPECT_FALSE(m_scene->Load(c.given));
        EXPECT_EQ(m_files.callTexts(), Lines{c.path});
        EXPECT_EQ(m_scene->Name(), *c.given ? c.given : c.held);
        EXPECT_EQ(newErrors(), Lines{"Unable to load scene"});
    }
}

TEST_F(SceneFileTest, AFileThatIsNoSceneIsRefusedWithItsReason) {
    const std::string unreadable = "Unable to load scene";
    const std::string header = "Scene file has extraneous xml header";
    const std::string corrupt = "Scene file is corrupt";
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    struct Case {
        std::string text;
        std::string error;
    };
    const Case cases[] = {
        {"", unreadable},
        {"no xml", unreadable},
        {"<Scene><Name>A</Name>", unreadable},
        {kStory.substr(0, kStory.size() - 10), unreadable},
        {"<Scene><Name>a < b</Name></Scene>", unreadable},
        {deep, unreadable},
        {"<Scene><Name>" + std::string(8 << 20, 'x') + "</Name></Scene>", unreadable},
        {"\xEF\xBB\xBF\r\n", corrupt}, // nothing, and nothing that the parser minds
        {"<?xml version=\"1.0\"?>\n" + kStory, header},
        {"<!-- note -->" + kStory, header},
        {"<!DOCTYPE Scene>" + kStory, header},
        {"<Scene/>", header},
        {"<Scene></Scene>", header},
        {"<Scene>  </Scene>", header},
    };
    for (const Case& c : cases) {
        m_scene->AddBranch();
        EXPECT_FALSE(load(c.text)) << c.text.substr(0, 40);
        EXPECT_EQ(newErrors(), Lines{c.error}) << c.text.substr(0, 40);
        EXPECT_EQ(m_scene->branchCount(), 0) << "the previous scene is gone";
    }
    support::makeFolder("Scenes/Folder/Scene.xml");
    EXPECT_FALSE(m_scene->Load("Folder"));
    EXPECT_EQ(newErrors(), Lines{unreadable});
}

TEST_F(SceneFileTest, OddButReadableFilesAreRead) {
    m_scene->SetFirstBranch("held");
    EXPECT_TRUE(load("\xEF\xBB\xBF<Anything><!-- c -->text<Branch/><Foo/><branch/></Anything>"));
    EXPECT_EQ(newErrors(), (Lines{"Unknown node type: Foo", "Unknown node type: branch"}));
    EXPECT_EQ(m_scene->Name() + "|" + m_scene->FirstBranch(), "A|held");
    EXPECT_EQ(m_scene->branchCount(), 1);
    EXPECT_TRUE(load("<Scene><Name/><FirstBranch>  </FirstBranch></Scene>"));
    EXPECT_EQ(m_scene->Name() + "|" + m_scene->FirstBranch(), "|");
    EXPECT_TRUE(load("<Scene><Name>only text</Name></Scene><Second/>"));
    const std::string bad = "<Scene>\r\n\t<Name>caf\xE9 \xFF</Name>\r\n"
                            "\t<FirstBranch>x</FirstBranch>\r\n</Scene>\r\n";
    EXPECT_TRUE(load(bad));
    EXPECT_TRUE(m_scene->Save("Scenes/A\\"));
    EXPECT_EQ(support::readBytes("Scenes/A/Scene.xml"), bad) << "bytes that are no UTF-8 stay";
}

TEST_F(SceneFileTest, NewBranchesAreNumberedAfreshInALoadedScene) {
    m_scene->AddBranch();
    m_scene->AddBranch();
    ASSERT_TRUE(load("<Scene><Branch><ID>New Branch 2</ID></Branch></Scene>"));
    m_scene->AddBranch();
    Lines ids;
    m_scene->branchIDs(ids);
    EXPECT_EQ(ids, (Lines{"New Branch 2", "New Branch 2"})) << "the same name twice is intended";
}

TEST_F(SceneFileTest, SavingMakesTheFoldersAndFillsTheFirstBranch) {
    m_scene->newScene("N");
    m_scene->AddBranch();
    m_scene->AddBranch();
    m_scene->SetFirstBranch("");
    EXPECT_TRUE(m_scene->Save("Scenes/N\\"));
    EXPECT_EQ(m_scene->FirstBranch(), "New Branch 2");
    EXPECT_EQ(support::filesBelow("."), Lines{"Scenes/N/Scene.xml"});
    EXPECT_EQ(
        support::readBytes("Scenes/N/Scene.xml"),
        "<Scene>\r\n\t<Name>N</Name>\r\n\t<FirstBranch>New Branch 2</FirstBranch>\r\n"
        "\t<Branch>\r\n\t\t<ID>New Branch 2</ID>\r\n\t\t<Filename></Filename>\r\n\t</Branch>\r\n"
        "\t<Branch>\r\n\t\t<ID>New Branch 3</ID>\r\n\t\t<Filename></Filename>\r\n\t</Branch>\r\n"
        "</Scene>\r\n");
}

TEST_F(SceneFileTest, ASceneWithoutBranchesIsReportedAndSaved) {
    m_scene->newScene("N");
    EXPECT_TRUE(m_scene->Save("Scenes/N/"));
    EXPECT_EQ(newErrors(), Lines{"..\\BranchManager.cpp:337 Invalid branch index"});
    EXPECT_EQ(support::readBytes("Scenes/N/Scene.xml"),
              "<Scene>\r\n\t<Name>N</Name>\r\n\t<FirstBranch></FirstBranch>\r\n</Scene>\r\n");
}

TEST_F(SceneFileTest, AFailedSaveKeepsTheOldFileAndSaysWhyUntilAGoodOne) {
    ASSERT_TRUE(load(kStory));
    m_scene->SetName("changed");
    for (const char* operation : {"open", "write", "sync", "close", "replaceFile"}) {
        m_files.failOn(operation, ENOSPC);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(m_scene->Save("Scenes/A/")) << operation;
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "Not saved: " + m_scene->saveFailure() + "\n");
        EXPECT_EQ(m_scene->saveFailure(), "Scenes/A/Scene.xml: " + m_files.errorText(ENOSPC));
        EXPECT_EQ(newErrors(), Lines{}) << "told, not logged";
        EXPECT_EQ(support::readBytes("Scenes/A/Scene.xml"), kStory);
        EXPECT_EQ(support::filesBelow("."), Lines{"Scenes/A/Scene.xml"});
    }
    m_files.heal();
    EXPECT_TRUE(m_scene->Save("Scenes/A/"));
    EXPECT_EQ(m_scene->saveFailure(), "");
    EXPECT_NE(support::readBytes("Scenes/A/Scene.xml"), kStory);
}

TEST_F(SceneFileTest, AStopAtAnyCallLeavesTheOldOrTheNewSceneWhole) {
    ASSERT_TRUE(load(kStory));
    m_scene->SetName("changed");
    ASSERT_TRUE(m_scene->Save("Scenes/New/"));
    const std::string changed = support::readBytes("Scenes/New/Scene.xml");
    bool good = false;
    for (int number = 1; !good; ++number) {
        m_files.heal();
        support::writeBytes("Scenes/A/Scene.xml", kStory);
        m_files.forgetCalls();
        m_files.stopAt(number);
        testing::internal::CaptureStderr();
        good = m_scene->Save("Scenes/A/");
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(support::readBytes("Scenes/A/Scene.xml"), good ? changed : kStory) << number;
    }
}

} // namespace
