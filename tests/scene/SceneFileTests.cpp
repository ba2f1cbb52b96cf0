#include <string>

#include "tests/scene/SceneFixture.h"

namespace {

using scene_tests::Lines;
using scene_tests::SceneTest;

/// "name|first branch", then for each branch "[id,video TYPE'parameter'target! ...]".
std::string shown(const scene::SceneManager& scene) {
    std::string text = scene.Name() + "|" + scene.FirstBranch();
    for (int branch = 0; branch < scene.branchCount(); ++branch) {
        text += " [" + scene.branchID(branch) + "," + scene.branchFilename(branch);
        const auto shown = scene.branches()->branch(branch);
        for (int index = 0; index < shown->actionCount(); ++index) {
            const auto action = shown->action(index);
            text += " " + std::to_string(action->Type()) + "'" + action->Parameter() + "'" +
                    action->BranchID() + (action->Immediate() ? "!" : "");
        }
        text += "]";
    }
    return text;
}

using SceneFileTest = SceneTest;

TEST_F(SceneFileTest, TheFileIsLookedForUnderTheNameGivenOrHeld) {
    struct Case {
        const char *held, *given, *path;
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
        EXPECT_EQ(m_log.newErrors(), Lines{"Unable to load scene"});
    }
}

TEST_F(SceneFileTest, AFileThatIsNoSceneIsRefusedWithItsReason) {
    const std::string unreadable = "Unable to load scene";
    const std::string header = "Scene file has extraneous xml header";
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    std::string wide = "<Scene";
    for (int i = 0; i < 257; ++i) {
        wide += " a" + std::to_string(i) + "=''";
    }
    struct Case {
        std::string text, error;
    };
    const Case cases[] = {
        {"", unreadable},
        {"no xml", unreadable},
        {"<Scene><Name>A</Name>", unreadable},
        {"<Scene><Name>a < b</Name></Scene>", unreadable},
        {deep, unreadable},
        {wide + "><Name>A</Name></Scene>", unreadable},
        {"<Scene><Name>" + std::string(32 << 20, 'x') + "</Name></Scene>", unreadable},
        {"\xEF\xBB\xBF\r\n", "Scene file is corrupt"}, // nothing that the parser minds
        {"<?xml version=\"1.0\"?>\n<Scene><Name>A</Name></Scene>", header},
        {"<!-- note --><Scene><Name>A</Name></Scene>", header},
        {"<Scene>  </Scene>", header},
    };
    for (const Case& c : cases) {
        m_scene->AddBranch();
        EXPECT_FALSE(load(c.text)) << c.text.substr(0, 40);
        EXPECT_TRUE(m_scene->loadFailed());
        EXPECT_EQ(m_log.newErrors(), Lines{c.error}) << c.text.substr(0, 40);
        EXPECT_EQ(m_scene->branchCount(), 0) << "the previous scene is gone";
    }
}

TEST_F(SceneFileTest, ElementsAreReadInAnyOrderAndUnknownOnesNamed) {
    struct Case {
        std::string branch, shown;
        Lines unknown;
    };
    const Case cases[] = {
        {"<Action/><Extra/><ID>I</ID><!--n--><Filename/><Action><Odd/></Action>",
         "[I, 0'' 0'']",
         {"Extra", "Odd"}},
        {"<ID>  </ID><Filename>a&amp;b &lt;c</Filename>", "[,a&b <c]", {}},
        {"<Action><BranchID>B</BranchID><Parameter> Q </Parameter><Type>KeypressAction</Type>"
         "</Action><Action><Type>ZoneAction</Type></Action>",
         "[, 1' Q 'B 2'']",
         {}},
        {"<Action><Immediate>TRUE</Immediate><Type>RandomAction</Type></Action>", "[, 3''!]", {}},
        {"<Action><Immediate>1</Immediate><Type>zoneaction</Type></Action>", "[, 0'']", {}},
        {"<Action><Immediate>true</Immediate><Immediate/></Action>", "[, 0''!]", {}},
        {"<Action><Immediate>true</Immediate><Immediate>no</Immediate></Action>", "[, 0'']", {}},
        {"<Action><Type>ZoneAction</Type><Type/></Action>", "[, 0'']", {}},
        {"<Action>text<Parameter><!--c-->a<b/>c</Parameter><type/></Action>", "[, 0'a']", {"type"}},
        {"<Action><Parameter><b>in</b>after</Parameter></Action>", "[, 0'after']", {}},
        {"<Action><Parameter><![CDATA[<z>]]></Parameter></Action>", "[, 0'<z>']", {}},
    };
    m_scene->SetFirstBranch("held");
    for (const Case& c : cases) {
        EXPECT_TRUE(load("<Any>text<Branch>" + c.branch + "</Branch></Any>")) << c.branch;
        EXPECT_EQ(shown(*m_scene), "A|held " + c.shown) << c.branch;
        Lines errors;
        for (const std::string& name : c.unknown) {
            errors.push_back("Unknown node type: " + name);
        }
        EXPECT_EQ(m_log.newErrors(), errors) << c.branch;
    }
    EXPECT_TRUE(load("\xEF\xBB\xBF<S><!-- c --><Name/><Foo/><FirstBranch>f</FirstBranch></S><B/>"));
    EXPECT_EQ(shown(*m_scene), "|f") << "an empty name in the file counts";
    EXPECT_EQ(m_log.newErrors(), Lines{"Unknown node type: Foo"});
}

TEST_F(SceneFileTest, TextsAreWrittenAsTheyAre) {
    const std::string bad = "<Scene>\r\n\t<Name>A</Name>\r\n\t<FirstBranch>caf\xE9 \xFF";
    ASSERT_TRUE(load(bad + "</FirstBranch></Scene>"));
    EXPECT_TRUE(m_scene->Save("Scenes/A\\"));
    EXPECT_EQ(file("A"), bad + "</FirstBranch>\r\n</Scene>\r\n") << "bytes that are no UTF-8 stay";
    m_scene->SetName("a <b> & c");
    EXPECT_TRUE(m_scene->Save("Scenes/A\\"));
    EXPECT_NE(file("A").find("<Name>a <b> & c</Name>"), std::string::npos);
}

TEST_F(SceneFileTest, AWriteThatFailsEndsTheSaveAndIsTold) {
    const std::string old = "<Scene><Branch><Action><Immediate>true</Immediate></Action></Branch>"
                            "<FirstBranch>B</FirstBranch></Scene>";
    ASSERT_TRUE(load(old));
    testing::internal::CaptureStderr();
    for (int lines = 1; lines <= 13; ++lines) { // each is a write of its own
        int left = lines;
        m_files.setRule(
            [&left](const support::Call& call) {
                const bool fails = call.operation == "write" && --left <= 0;
                return fails ? support::Fault::fail : support::Fault::none;
            },
            5);
        EXPECT_FALSE(m_scene->Save("Scenes/A/"));
        EXPECT_EQ(left, 0) << "nothing is written after a write that failed";
        EXPECT_FALSE(m_scene->saveFailure().empty());
        EXPECT_EQ(file("A"), old);
    }
    (void)testing::internal::GetCapturedStderr(); // each failure is there
    EXPECT_EQ(m_log.newErrors(), Lines{}) << "printed, not logged";
    m_files.heal();
    EXPECT_TRUE(m_scene->Save("Scenes/A/"));
    EXPECT_TRUE(m_scene->saveFailure().empty());
}

TEST(BranchTest, AMovedActionStandsAtItsNewPlace) {
    struct Case {
        int from, to;
        std::string order;
    };
    const Case cases[] = {{0, 3, "1230"},  {3, 0, "3012"}, {1, 2, "0213"}, {2, 2, "0123"},
                          {-1, 2, "0123"}, {4, 0, "0123"}, {0, 4, "0123"}, {0, -1, "0123"}};
    for (const Case& c : cases) {
        scene::Branch branch;
        branch.addAction(nullptr); // is not taken
        for (const char* parameter : {"0", "1", "2", "3"}) {
            branch.addAction(scene::Action::create());
            branch.action(branch.actionCount() - 1)->SetParameter(parameter);
        }
        branch.moveAction(c.from, c.to);
        std::string order;
        for (const auto& action : branch.actions()) {
            order += action->Parameter();
        }
        EXPECT_EQ(order, c.order) << c.from << " to " << c.to;
    }
}

} // namespace
