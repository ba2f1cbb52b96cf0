#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Paths.h"
#include "tests/tools/inspect/CommandTest.h"

namespace {

const std::string kScene = "<Any><Name>Drill</Name><FirstBranch>Start</FirstBranch><Branch><Odd/>"
                           "<ID>Start</ID><Filename>a.ogv</Filename><Action><Odder/>"
                           "<Type>ZoneAction</Type><Parameter>caf\xE9</Parameter>"
                           "<Immediate>true</Immediate><BranchID>Start</BranchID></Action>"
                           "</Branch></Any>";
const std::string kJson =
    R"({"name":"Drill","firstBranch":"Start","branches":[{"id":"Start","filename":"a.ogv",)"
    R"("actions":[{"type":"ZoneAction","parameter":"caf)"
    "\xEF\xBF\xBD"
    R"(","immediate":true,"branchID":"Start"}]}]})"
    "\n";

using SceneCommandTest = inspect_tests::CommandTest;

TEST_F(SceneCommandTest, PrintsTheSceneAndNamesUnknownNodes) {
    support::writeBytes("in/Scene.xml", kScene);
    for (const char* folder : {"in", "in/"}) {
        EXPECT_EQ(run({"scene", folder}), inspect::kSuccess);
        EXPECT_EQ(m_output, kJson);
        EXPECT_EQ(m_errors, "Error: Unknown node type: Odd\nError: Unknown node type: Odder\n");
    }
    EXPECT_EQ(support::readBytes("in/Scene.xml"), kScene);
    // A missing name is the folder's; text is escaped and invalid UTF-8 replaced.
    support::writeBytes(
        "F\xC3\xBC/Scene.xml",
        "<Scene><FirstBranch>\"\\/\t\x01\x1F\x7F \xF0\x9F\x98\x80\xFF\xC3</FirstBranch></Scene>");
    EXPECT_EQ(run({"scene", "F\xC3\xBC//"}), inspect::kSuccess);
    EXPECT_EQ(m_output,
              "{\"name\":\"F\xC3\xBC\",\"firstBranch\":\"\\\"\\\\/\\t\\u0001\\u001f\\u007f "
              "\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD\",\"branches\":[]}\n");
}

TEST_F(SceneCommandTest, TheMapIsWrittenWholeOrNotAtAll) {
    support::writeBytes("in/Scene.xml", kScene);
    EXPECT_EQ(run({"map", "in", "--svg", "a.svg", "--dot", "a.dot"}), 0);
    EXPECT_EQ(m_errors, "Error: Unknown node type: Odd\nError: Unknown node type: Odder\n");
    const std::string svg = support::readBytes("a.svg");
    EXPECT_TRUE(svg.ends_with("</svg>\n") && svg.find(">Start</text>") != std::string::npos) << svg;
    EXPECT_TRUE(support::readBytes("a.dot").starts_with("digraph"));
    EXPECT_EQ(run({"map", "in", "--svg", "b.svg", "--dot", "b.dot"}), 0);
    EXPECT_EQ(support::readBytes("b.svg"), svg);
    EXPECT_EQ(support::readBytes("b.dot"), support::readBytes("a.dot"));
    support::makeFolder("folder");
    const inspect::Arguments wrong[] = {{"map", "none", "--svg", "a.svg"},
                                        {"map", "in"},
                                        {"map", "in", "--svg"},
                                        {"map", "in", "--svg", "folder"},
                                        {"map", "in", "--dot", "none/a.dot"}};
    for (const inspect::Arguments& arguments : wrong) {
        EXPECT_EQ(run(arguments), 1) << arguments.back();
        EXPECT_NE(m_errors, "") << arguments.back();
    }
    EXPECT_EQ(support::readBytes("a.svg"), svg);
}

TEST_F(SceneCommandTest, TheDemoScenesRewriteToTheSameBytes) {
    const std::string scenes = QUORVEL_SOURCE_FOLDER "/demo/Scenes/";
    std::vector<std::string> names;
    ASSERT_TRUE(core::listFolders(scenes, names));
    EXPECT_GE(names.size(), 2U);
    for (const std::string& name : names) {
        EXPECT_EQ(run({"scene", scenes + name, "--rewrite", name}), inspect::kSuccess);
        EXPECT_EQ(m_errors, "");
        EXPECT_EQ(support::readBytes(name + "/Scene.xml"),
                  support::readBytes(scenes + name + "/Scene.xml"));
    }
}

TEST_F(SceneCommandTest, HelpIsPrintedForEveryCommandAndForAll) {
    for (const char* command : {"check", "frames", "map", "scene", "video", "zones"}) {
        const std::string usage = std::string("quorvel-inspect ") + command + " ";
        for (const inspect::Arguments& arguments :
             {inspect::Arguments{command, "--help"}, {command, "in", "--help"}}) {
            EXPECT_EQ(run(arguments), inspect::kSuccess);
            EXPECT_TRUE(m_output.starts_with("Usage: " + usage)) << m_output;
        }
        EXPECT_EQ(run({"--help"}), inspect::kSuccess);
        EXPECT_NE(m_output.find("\n  " + usage.substr(usage.find(' ') + 1)), std::string::npos);
        EXPECT_EQ(m_errors, "");
    }
}

TEST_F(SceneCommandTest, ErrorsAreReportedAndExitWithTwo) {
    support::writeBytes("in/Scene.xml", kScene);
    const std::string usage = "usage: quorvel-inspect scene DIR [--rewrite DIR2]\n";
    const struct {
        inspect::Arguments arguments;
        std::string output;
        std::string error;
    } cases[] = {
        {{}, "", usage},
        {{"unknown"}, "", usage},
        {{"scene"}, "", usage},
        {{"scene", "a", "b"}, "", usage},
        {{"scene", "a", "--rewrite"}, "", usage},
        {{"scene", "missing"}, "", "Error: Unable to load scene\n"},
        {{"scene", "in", "--rewrite", "no/such"}, kJson, "Not saved: no/such/Scene.xml: "},
    };
    for (const auto& item : cases) {
        EXPECT_EQ(run(item.arguments), inspect::kUnreadable);
        EXPECT_EQ(m_output, item.output);
        EXPECT_NE(m_errors.find(item.error), std::string::npos) << m_errors;
    }
    EXPECT_EQ(support::filesBelow("."), std::vector<std::string>{"in/Scene.xml"});
    std::ostringstream full;
    full.setstate(std::ios::badbit);
    testing::internal::CaptureStderr();
    EXPECT_EQ(inspect::runCommand({"--version"}, full), inspect::kUnreadable);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "quorvel-inspect: the output cannot be written\n");
}

} // namespace
