#include <gtest/gtest.h>

#include "core/Services.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "tests/scene/SceneFixture.h"
#include "tests/support/FaultyFileSystem.h"

namespace {

using scene_tests::Lines;

class ActionTest : public scene_tests::SceneFixture {};

TEST_F(ActionTest, TypeNumbersAndNamesCorrespond) {
    const char* const names[] = {"DefaultAction", "KeypressAction", "ZoneAction", "RandomAction"};
    for (int type = 0; type < 4; ++type) {
        EXPECT_EQ(scene::Action::typeName(type), names[type]);
        EXPECT_EQ(scene::Action::typeNumber(names[type]), type);
    }
    for (const int type : {-1, 4, 2147483647}) {
        EXPECT_EQ(scene::Action::typeName(type), "DefaultAction");
    }
    for (const char* name : {"", "zoneaction", "ZoneAction ", "Unknown"}) {
        EXPECT_EQ(scene::Action::typeNumber(name), 0) << name;
    }
}

TEST_F(ActionTest, WritesOnlyWhatIsSet) {
    const auto action = scene::Action::create();
    EXPECT_EQ(written(*action),
              "\t\t<Action>\n\t\t\t<Type>DefaultAction</Type>\n\t\t\t<BranchID></BranchID>\n"
              "\t\t</Action>\n");
    action->SetType(scene::Action::kZoneAction);
    action->SetParameter("a <b> & \xE9");
    action->SetImmediate(true);
    action->SetBranchID("New Branch 2");
    EXPECT_EQ(written(*action), "\t\t<Action>\n\t\t\t<Type>ZoneAction</Type>\n"
                                "\t\t\t<Parameter>a <b> & \xE9</Parameter>\n"
                                "\t\t\t<Immediate>true</Immediate>\n"
                                "\t\t\t<BranchID>New Branch 2</BranchID>\n\t\t</Action>\n");
}

TEST_F(ActionTest, ReadsItsChildrenInAnyOrderAndNamesUnknownOnes) {
    struct Case {
        const char* xml;
        int type;
        const char* parameter;
        const char* branch;
        bool immediate;
        Lines errors;
    };
    const Case cases[] = {
        {"<Action/>", 0, "", "", false, {}},
        {"<Action><BranchID>B</BranchID><Parameter> Q </Parameter><Type>KeypressAction</Type>"
         "</Action>",
         1,
         " Q ",
         "B",
         false,
         {}},
        {"<Action><Immediate>TRUE</Immediate><Type>RandomAction</Type></Action>",
         3,
         "",
         "",
         true,
         {}},
        {"<Action><Immediate>1</Immediate></Action>", 0, "", "", false, {}},
        {"<Action><Immediate>true</Immediate><Immediate/></Action>", 0, "", "", true, {}},
        {"<Action><Immediate>true</Immediate><Immediate>no</Immediate></Action>",
         0,
         "",
         "",
         false,
         {}},
        {"<Action><Type>Zone</Type></Action>", 0, "", "", false, {}},
        {"<Action><Type>ZoneAction</Type><Type/></Action>", 0, "", "", false, {}},
        {"<Action>text<!--note--><Foo>x</Foo><type/><BranchID>B</BranchID></Action>",
         0,
         "",
         "B",
         false,
         {"Unknown node type: Foo", "Unknown node type: type"}},
        {"<Action><Parameter><!--c-->a<b/>c</Parameter></Action>", 0, "a", "", false, {}},
        {"<Action><Parameter><b>in</b>after</Parameter></Action>", 0, "after", "", false, {}},
        {"<Action><Parameter>  </Parameter><BranchID>a&amp;b &lt;c</BranchID></Action>",
         0,
         "",
         "a&b <c",
         false,
         {}},
        {"<Action><Parameter><![CDATA[<z>]]></Parameter></Action>", 0, "<z>", "", false, {}},
    };
    for (const Case& c : cases) {
        const auto action = scene::Action::create(element(c.xml));
        ASSERT_TRUE(action) << c.xml;
        EXPECT_EQ(action->Type(), c.type) << c.xml;
        EXPECT_EQ(action->Parameter(), c.parameter) << c.xml;
        EXPECT_EQ(action->BranchID(), c.branch) << c.xml;
        EXPECT_EQ(action->Immediate(), c.immediate) << c.xml;
        EXPECT_EQ(newErrors(), c.errors) << c.xml;
    }
}

TEST_F(ActionTest, StopsWritingAtTheFirstFailure) {
    scene::Branch branch;
    const auto action = scene::Action::create();
    action->SetParameter("Q");
    action->SetImmediate(true);
    branch.addAction(action);
    support::FaultyFileSystem files(platform::nativeFileSystem());
    const core::ServicesOverride services(
        {&files, &platform::nativeClock(), &platform::nativeProcess()});
    constexpr int kWrites = 10; // four of the branch, six of the action
    for (int failing = 1; failing <= kWrites + 1; ++failing) {
        files.forgetCalls();
        files.failAt(failing + 1); // after the open
        core::File file;
        ASSERT_TRUE(file.open("f", "wb"));
        EXPECT_EQ(branch.Write(file), failing > kWrites) << failing;
        EXPECT_EQ(files.calls().size(), static_cast<std::size_t>(std::min(failing, kWrites)) + 1);
    }
}

class BranchTest : public scene_tests::SceneFixture {
protected:
    static std::string parameters(const scene::Branch& branch) {
        std::string all;
        for (const auto& action : branch.actions()) {
            all += action->Parameter();
        }
        return all;
    }
};

TEST_F(BranchTest, ABranchWithoutActionsHasFourLines) {
    const auto branch = scene::Branch::create();
    EXPECT_EQ(written(*branch),
              "\t<Branch>\n\t\t<ID></ID>\n\t\t<Filename></Filename>\n\t</Branch>\n");
    branch->SetID("New Branch 2");
    branch->SetFilename("clip 1.ogv");
    branch->addAction(scene::Action::create());
    branch->addAction(nullptr);
    EXPECT_EQ(written(*branch), "\t<Branch>\n\t\t<ID>New Branch 2</ID>\n"
                                "\t\t<Filename>clip 1.ogv</Filename>\n" +
                                    written(*scene::Action::create()) + "\t</Branch>\n");
}

TEST_F(BranchTest, ReadsItsChildrenAndNamesUnknownOnes) {
    const auto branch = scene::Branch::Load(element(
        "<Branch><Action><Parameter>1</Parameter></Action><Extra/><ID>A</ID>"
        "<!-- note --><Filename/><Action><Parameter>2</Parameter><Odd/></Action></Branch>"));
    ASSERT_TRUE(branch);
    EXPECT_EQ(branch->ID(), "A");
    EXPECT_EQ(branch->Filename(), "");
    EXPECT_EQ(parameters(*branch), "12");
    EXPECT_EQ(newErrors(), (Lines{"Unknown node type: Extra", "Unknown node type: Odd"}));
}

TEST_F(BranchTest, ActionsMoveAndGoByIndex) {
    struct Case {
        int from;
        int to;
        const char* order;
    };
    const Case cases[] = {{0, 3, "1230"}, {3, 0, "3012"}, {1, 2, "0213"},
                          {2, 1, "0213"}, {2, 2, "0123"}, {-1, 2, "0123"},
                          {4, 0, "0123"}, {0, 4, "0123"}, {0, -1, "0123"}};
    for (const Case& c : cases) {
        scene::Branch branch;
        for (const char* parameter : {"0", "1", "2", "3"}) {
            branch.addAction(scene::Action::create());
            branch.action(branch.actionCount() - 1)->SetParameter(parameter);
        }
        branch.moveAction(c.from, c.to);
        EXPECT_EQ(parameters(branch), c.order) << c.from << " to " << c.to;
        branch.removeAction(4);
        branch.removeAction(-1);
        EXPECT_EQ(branch.actionCount(), 4);
        branch.removeAction(1);
        EXPECT_EQ(parameters(branch), std::string(c.order).erase(1, 1));
        EXPECT_FALSE(branch.action(-1) || branch.action(3));
    }
}

} // namespace
