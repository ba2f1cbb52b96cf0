#include <sstream>

#include <gtest/gtest.h>

#include "core/Paths.h"
#include "tests/tools/inspect/CommandTest.h"

namespace {

const std::string kScene = "<Scene>\r\n"
                           "\t<Name>Drill</Name>\r\n"
                           "\t<FirstBranch>Start</FirstBranch>\r\n"
                           "\t<Branch>\r\n"
                           "\t\t<ID>Start</ID>\r\n"
                           "\t\t<Filename>a.ogv</Filename>\r\n"
                           "\t\t<Action>\r\n"
                           "\t\t\t<Type>ZoneAction</Type>\r\n"
                           "\t\t\t<Parameter>caf\xE9</Parameter>\r\n"
                           "\t\t\t<Immediate>true</Immediate>\r\n"
                           "\t\t\t<BranchID>Start</BranchID>\r\n"
                           "\t\t</Action>\r\n"
                           "\t</Branch>\r\n"
                           "</Scene>\r\n";
const std::string kJson =
    R"({"name":"Drill","firstBranch":"Start","branches":[{"id":"Start","filename":"a.ogv",)"
    R"("actions":[{"type":"ZoneAction","parameter":"caf)"
    "\xEF\xBF\xBD"
    R"(","immediate":true,"branchID":"Start"}]}]})"
    "\n";

using SceneCommandTest = inspect_tests::CommandTest;

TEST_F(SceneCommandTest, PrintsTheSceneAndRewritesTheSameBytes) {
    support::writeBytes("in/Scene.xml", kScene);
    for (const char* folder : {"in", "in/"}) {
        EXPECT_EQ(run({"scene", folder, "--rewrite", "out"}), inspect::kGood);
        EXPECT_EQ(m_output, kJson);
        EXPECT_EQ(m_errors, "");
        EXPECT_EQ(support::readBytes("out/Scene.xml"), kScene);
    }
    EXPECT_EQ(run({"scene", "--rewrite", "in", "in"}), inspect::kGood);
    EXPECT_EQ(support::filesBelow("."),
              (std::vector<std::string>{"in/Scene.xml", "out/Scene.xml"}));
}

TEST_F(SceneCommandTest, TheDemoScenesRewriteToTheSameBytes) {
    const std::string scenes = QUORVEL_SOURCE_FOLDER "/demo/Scenes/";
    std::vector<std::string> names;
    ASSERT_TRUE(core::listFolders(scenes, names));
    EXPECT_GE(names.size(), 2U);
    for (const std::string& name : names) {
        EXPECT_EQ(run({"scene", scenes + name, "--rewrite", name}), inspect::kGood);
        EXPECT_EQ(m_errors, "");
        EXPECT_EQ(support::readBytes(name + "/Scene.xml"),
                  support::readBytes(scenes + name + "/Scene.xml"));
    }
}

TEST_F(SceneCommandTest, UnknownNodesAreNamedAndDoNotFailIt) {
    support::writeBytes("F\xC3\xBC/Scene.xml", "<Scene><Odd/><Branch><Odder/></Branch></Scene>");
    EXPECT_EQ(run({"scene", "F\xC3\xBC//"}), inspect::kGood);
    EXPECT_EQ(m_output, "{\"name\":\"F\xC3\xBC\",\"firstBranch\":\"\",\"branches\":[{\"id\":\"\","
                        "\"filename\":\"\",\"actions\":[]}]}\n");
    EXPECT_EQ(m_errors, "Error: Unknown node type: Odd\nError: Unknown node type: Odder\n");
}

TEST_F(SceneCommandTest, WhatCannotBeReadOrWrittenGivesTwo) {
    EXPECT_EQ(run({"scene", "missing"}), inspect::kUnreadable);
    EXPECT_EQ(m_errors, "Error: Unable to load scene\n");
    EXPECT_EQ(m_output, "");
    support::writeBytes("in/Scene.xml", kScene);
    EXPECT_EQ(run({"scene", "in", "--rewrite", "no/such"}), inspect::kUnreadable);
    EXPECT_EQ(m_output, kJson);
    EXPECT_EQ(m_errors.rfind("Not saved: no/such/Scene.xml: ", 0), 0U) << m_errors;
    EXPECT_EQ(support::filesBelow("."), std::vector<std::string>{"in/Scene.xml"});
}

TEST_F(SceneCommandTest, AnOutputThatCannotBeWrittenGivesTwo) {
    support::writeBytes("in/Scene.xml", kScene);
    std::ostringstream full;
    full.setstate(std::ios::badbit);
    testing::internal::CaptureStderr();
    EXPECT_EQ(inspect::runCommand({"scene", "in"}, full), inspect::kUnreadable);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "quorvel-inspect: the output cannot be written\n");
}

TEST_F(SceneCommandTest, BadUsageIsToldWithTheRightOne) {
    const std::vector<inspect::Arguments> cases = {{},
                                                   {"unknown"},
                                                   {"scene"},
                                                   {"scene", ""},
                                                   {"scene", "a", "b"},
                                                   {"scene", "a", "--rewrite"}};
    for (const inspect::Arguments& arguments : cases) {
        EXPECT_EQ(run(arguments), inspect::kUnreadable);
        EXPECT_NE(m_errors.find("usage: quorvel-inspect scene DIR [--rewrite DIR2]\n"),
                  std::string::npos)
            << m_errors;
        EXPECT_EQ(m_output, "");
    }
}

} // namespace
