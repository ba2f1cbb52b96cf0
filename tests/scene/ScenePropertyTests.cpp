// Random calls, valid and invalid, on a scenario and on a plain model of the same rules.
#include <functional>
#include <limits>
#include <random>

#include "core/Services.h"
#include "scene/SceneManager.h"
#include "tests/scene/SceneFixture.h"
#include "tests/support/MemoryFileSystem.h"

namespace {

using scene::SceneManager;
using scene_tests::Lines;

struct PlainAction {
    int type = 0;
    std::string parameter;
    std::string target;
    bool immediate = false;
};

struct PlainBranch {
    std::string id;
    std::string filename;
    std::vector<PlainAction> actions;
};

struct PlainScene {
    std::string name;
    std::string first;
    std::vector<PlainBranch> branches;
    int added = 1;

    /// The scene file.
    [[nodiscard]] std::string text() const {
        static const char* const kTypes[] = {"Default", "Keypress", "Zone", "Random"};
        std::string text = "<Scene>\r\n\t<Name>" + name + "</Name>\r\n\t<FirstBranch>" + first +
                           "</FirstBranch>\r\n";
        for (const PlainBranch& branch : branches) {
            text += "\t<Branch>\r\n\t\t<ID>" + branch.id + "</ID>\r\n\t\t<Filename>" +
                    branch.filename + "</Filename>\r\n";
            for (const PlainAction& action : branch.actions) {
                text += std::string("\t\t<Action>\r\n\t\t\t<Type>") + kTypes[action.type] +
                        "Action</Type>\r\n";
                if (!action.parameter.empty()) {
                    text += "\t\t\t<Parameter>" + action.parameter + "</Parameter>\r\n";
                }
                text += action.immediate ? "\t\t\t<Immediate>true</Immediate>\r\n" : "";
                text += "\t\t\t<BranchID>" + action.target + "</BranchID>\r\n\t\t</Action>\r\n";
            }
            text += "\t</Branch>\r\n";
        }
        return text + "</Scene>\r\n";
    }
};

/// What one call is given.
struct Given {
    int branch = 0;
    int action = 0;
    PlainAction value;
};

/// An operation with the line of its report, and the same for the plain branch; `onAction` when it
/// needs an action that exists.
struct Operation {
    int line;
    bool onAction;
    std::function<std::string(SceneManager&, const Given&)> call;
    std::function<std::string(PlainScene&, PlainBranch&, const Given&)> expected;
};

const Operation kOperations[] = {
    {337, false, [](auto& s, auto& g) { return s.branchID(g.branch); },
     [](auto&, auto& b, auto&) { return b.id; }},
    {351, false, [](auto& s, auto& g) { return s.branchFilename(g.branch); },
     [](auto&, auto& b, auto&) { return b.filename; }},
    {358, false,
     [](auto& s, auto& g) {
         s.setBranchFilename(g.branch, g.value.target);
         return "";
     },
     [](auto&, auto& b, auto& g) {
         b.filename = g.value.target;
         return "";
     }},
    {372, false,
     [](auto& s, auto& g) {
         s.addAction(g.branch, scene::Action::create());
         return "";
     },
     [](auto&, auto& b, auto&) {
         b.actions.emplace_back();
         return "";
     }},
    {379, true,
     [](auto& s, auto& g) {
         s.removeAction(g.branch, g.action);
         return "";
     },
     [](auto&, auto& b, auto& g) {
         b.actions.erase(b.actions.begin() + g.action);
         return "";
     }},
    {386, true,
     [](auto& s, auto& g) {
         const auto action = s.action(g.branch, g.action);
         if (action) {
             action->SetType(g.value.type);
             action->SetParameter(g.value.parameter);
             action->SetBranchID(g.value.target);
             action->SetImmediate(g.value.immediate);
         }
         return action ? "set" : "";
     },
     [](auto&, auto& b, auto& g) {
         b.actions[static_cast<std::size_t>(g.action)] = g.value;
         return "set";
     }},
    {365, false,
     [](auto& s, auto& g) {
         std::vector<std::shared_ptr<scene::Action>> actions{nullptr};
         s.branchActions(g.branch, actions);
         return std::string(actions.size(), '.');
     },
     [](auto&, auto& b, auto&) { return std::string(b.actions.size(), '.'); }},
};

class ScenePropertyTest : public scene_tests::SceneFixture {
protected:
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    /// Below `count` mostly; else beyond its borders.
    int nearly(std::size_t count) {
        const int limit = static_cast<int>(count);
        const int beyond[] = {-1, limit, std::numeric_limits<int>::min(),
                              std::numeric_limits<int>::max()};
        return below(10) == 0 || limit == 0 ? beyond[below(4)] : below(limit);
    }
    std::string anyText() {
        static const char* const kTexts[] = {"", "a", "New Branch 2", "b c", "R&D", "\xC3\xBC.ogv"};
        return kTexts[below(6)];
    }
    void step();
    void changeScene();
    void rename(int branch, const std::string& id);
    void operate(const Operation& operation, const Given& given);
    void expectEqual();

    std::shared_ptr<SceneManager> m_scene = SceneManager::create();
    PlainScene m_plain;
    std::mt19937 m_random{77};
    support::MemoryFileSystem m_files;
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
};

void ScenePropertyTest::step() {
    Given given{
        nearly(m_plain.branches.size()), 0, {below(4), anyText(), anyText(), below(2) == 0}};
    const auto branch = static_cast<std::size_t>(given.branch);
    given.action =
        nearly(branch < m_plain.branches.size() ? m_plain.branches[branch].actions.size() : 0);
    const int call = below(100);
    if (call < 2) {
        changeScene();
    } else if (call < 14) {
        rename(given.branch, given.value.target);
    } else if (call < 20) {
        ASSERT_TRUE(m_scene->AddBranch());
        m_plain.branches.push_back({"New Branch " + std::to_string(++m_plain.added), "", {}});
        if (m_plain.branches.size() == 1) {
            m_plain.first = m_plain.branches.front().id;
        }
    } else {
        operate(kOperations[static_cast<std::size_t>(below(std::size(kOperations)))], given);
    }
}

/// Another scenario, or this one from the disk: it was saved after each call.
void ScenePropertyTest::changeScene() {
    if (below(2) == 0) {
        ASSERT_TRUE(m_scene->newScene("S"));
        m_plain = {"S", "", {}, 1};
    } else {
        ASSERT_TRUE(m_scene->loadFolder("Scenes/S/"));
        m_plain.added = 1;
    }
}

void ScenePropertyTest::rename(int branch, const std::string& id) {
    m_scene->renameBranch(branch, id);
    if (branch < 0 || branch >= static_cast<int>(m_plain.branches.size())) {
        ASSERT_EQ(newErrors(), (Lines{"..\\BranchManager.cpp:337 Invalid branch index",
                                      "..\\BranchManager.cpp:344 Invalid branch index"}));
        return;
    }
    PlainBranch& renamed = m_plain.branches[static_cast<std::size_t>(branch)];
    m_plain.first = m_plain.first == renamed.id ? id : m_plain.first;
    renamed.id = id;
}

void ScenePropertyTest::operate(const Operation& operation, const Given& given) {
    const std::string result = operation.call(*m_scene, given);
    std::string expected;
    Lines reports;
    const int branches = static_cast<int>(m_plain.branches.size());
    PlainBranch* branch = given.branch >= 0 && given.branch < branches
                              ? &m_plain.branches[static_cast<std::size_t>(given.branch)]
                              : nullptr;
    const bool missing =
        branch == nullptr ||
        (operation.onAction &&
         (given.action < 0 || given.action >= static_cast<int>(branch->actions.size())));
    if (missing) {
        reports.push_back("..\\BranchManager.cpp:" + std::to_string(operation.line) +
                          " Invalid branch index");
    } else {
        expected = operation.expected(m_plain, *branch, given);
    }
    ASSERT_EQ(result, expected) << operation.line;
    ASSERT_EQ(newErrors(), reports) << operation.line;
}

void ScenePropertyTest::expectEqual() {
    ASSERT_EQ(m_scene->FirstBranch(), m_plain.first);
    ASSERT_EQ(m_scene->branchCount(), static_cast<int>(m_plain.branches.size()));
    ASSERT_TRUE(m_scene->Save("Scenes/S/"));
    if (m_plain.first.empty() && !m_plain.branches.empty()) {
        m_plain.first = m_plain.branches.front().id;
    }
    (void)newErrors(); // a scenario without branches has no first one
    ASSERT_EQ(m_files.files["/home/Scenes/S/Scene.xml"], m_plain.text());
}

TEST_F(ScenePropertyTest, RandomCallsLeaveTheScenarioAsAPlainModelOfItsRules) {
    ASSERT_TRUE(m_scene->newScene("S"));
    m_plain.name = "S";
    testing::internal::CaptureStderr(); // a line for each invalid call
    for (int call = 0; call < 20'000 && !HasFatalFailure(); ++call) {
        step();
        if (!HasFatalFailure()) {
            expectEqual();
        }
    }
    (void)testing::internal::GetCapturedStderr();
}

} // namespace
