// Random calls, valid and invalid, on a scene, on its editing session and on a plain model of
// the same rules, which log the same.
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/Log.h"
#include "scene/SceneSession.h"
#include "tests/scene/SceneFixture.h"
#include "tests/support/Random.h"

namespace {

using scene::Action;
using scene_tests::Lines;
using Actions = std::vector<std::shared_ptr<Action>>;

std::string line(int depth, const std::string& tag, const std::string& text) {
    return std::string(static_cast<std::size_t>(depth), '\t') + "<" + tag + ">" + text + "</" +
           tag + ">\r\n";
}

/// By number in the model; one that is not known is written as the first.
constexpr const char* kTypes[] = {"DefaultAction", "KeypressAction", "ZoneAction", "RandomAction",
                                  "DefaultAction"};

/// The operations are called as those of SceneManager.
struct PlainScene {
    struct Branch {
        std::string id;
        std::string filename;
        Actions actions;
    };

    bool AddBranch() {
        branches.push_back({"New Branch " + std::to_string(++added), "", {}});
        first = branches.size() == 1 ? branches[0].id : first;
        return true;
    }
    void branchIDs(Lines& ids) {
        for (const Branch& branch : branches) {
            ids.push_back(branch.id);
        }
    }
    [[nodiscard]] int branchCount() const { return static_cast<int>(branches.size()); }
    std::string branchID(int index) { return find(index, 337).id; }
    std::string branchFilename(int index) { return find(index, 351).filename; }
    void setBranchFilename(int index, const std::string& name) { find(index, 358).filename = name; }
    void branchActions(int index, Actions& actions) { actions = find(index, 365).actions; }
    void addAction(int index, const std::shared_ptr<Action>& action) {
        find(index, 372).actions.push_back(action);
    }
    void renameBranch(int index, const std::string& id) {
        const std::string old = branchID(index);
        find(index, 344).id = id;
        if (index >= 0 && index < branchCount() && first == old) {
            first = id;
        }
    }
    void removeAction(int index, int action) {
        Branch& branch = find(index, 379, action);
        if (!branch.actions.empty()) {
            branch.actions.erase(branch.actions.begin() + action);
        }
    }
    std::shared_ptr<Action> action(int index, int action) {
        const Branch& branch = find(index, 386, action);
        return branch.actions.empty() ? nullptr : branch.actions.begin()[action];
    }

    /// The scene file.
    [[nodiscard]] std::string text() const {
        std::string text = "<Scene>\r\n" + line(1, "Name", "S") + line(1, "FirstBranch", first);
        for (const Branch& branch : branches) {
            text +=
                "\t<Branch>\r\n" + line(2, "ID", branch.id) + line(2, "Filename", branch.filename);
            for (const auto& action : branch.actions) {
                const std::string& parameter = action->Parameter();
                text += "\t\t<Action>\r\n" + line(3, "Type", kTypes[action->Type()]) +
                        (parameter.empty() ? "" : line(3, "Parameter", parameter)) +
                        (action->Immediate() ? line(3, "Immediate", "true") : "") +
                        line(3, "BranchID", action->BranchID()) + "\t\t</Action>\r\n";
            }
            text += "\t</Branch>\r\n";
        }
        return text + "</Scene>\r\n";
    }

    std::string first;
    std::vector<Branch> branches;
    int added = 1;

private:
    /// A branch that takes changes without effect where there is none.
    Branch& find(int index, int line, std::optional<int> action = {}) {
        const bool isThere = index >= 0 && index < branchCount();
        const auto actions = isThere ? static_cast<int>(branches.begin()[index].actions.size()) : 0;
        if (isThere && (!action || (*action >= 0 && *action < actions))) {
            return branches.begin()[index];
        }
        core::Log::get()->Error("..\\BranchManager.cpp:%d Invalid branch index", line);
        return m_none = {};
    }

    Branch m_none;
};

/// The operations of the session under the names of the SceneManager's.
struct Session {
    scene::SceneSession& session;

    bool AddBranch() { return session.addBranch(); }
    void branchIDs(Lines& ids) { ids = session.branchNames(); }
    [[nodiscard]] int branchCount() const { return session.branchCount(); }
    [[nodiscard]] std::string branchID(int index) const { return session.branchName(index); }
    [[nodiscard]] std::string branchFilename(int index) const { return session.video(index); }
    void setBranchFilename(int index, const std::string& name) { session.setVideo(index, name); }
    void branchActions(int index, Actions& actions) const {
        actions.assign(session.actions(index).size(), nullptr);
    }
    void addAction(int index, const std::shared_ptr<Action>& /*made*/) { session.addAction(index); }
    void renameBranch(int index, const std::string& id) { session.renameBranch(index, id); }
    void removeAction(int index, int action) { session.removeAction(index, action); }
};

constexpr int kOperations = 11;

/// What one call is given.
struct Given {
    int branch = 0;
    int action = 0;
    int type = 0;
    std::string text;
};

template <typename Scene>
void changeAction(Scene& scene, const Given& g) {
    if (const auto action = scene.action(g.branch, g.action)) {
        action->SetType(g.type);
        action->SetParameter(g.text);
        action->SetBranchID(g.text);
        action->SetImmediate(g.type % 2 == 0);
    }
}

void changeAction(Session& scene, const Given& g) {
    scene.session.setType(g.branch, g.action, g.type); // reports what is not there
    const auto branch = scene.session.scene().branches()->branch(g.branch);
    if (branch && branch->action(g.action)) {
        scene.session.setParameter(g.branch, g.action, g.text);
        scene.session.setTarget(g.branch, g.action, g.text);
        scene.session.setImmediate(g.branch, g.action, g.type % 2 == 0);
    }
}

/// One of the calls on a SceneManager or on a PlainScene, and what it gives.
template <typename Scene>
std::string perform(Scene& s, int operation, const Given& g) {
    std::string result;
    const std::function<void()> calls[kOperations] = {
        [&] { result = s.AddBranch() ? "added" : ""; },
        [&] {
            Lines ids;
            s.branchIDs(ids);
            result = testing::PrintToString(ids);
        },
        [&] { result = std::to_string(s.branchCount()); },
        [&] { result = s.branchID(g.branch); },
        [&] { s.renameBranch(g.branch, g.text); },
        [&] { result = s.branchFilename(g.branch); },
        [&] { s.setBranchFilename(g.branch, g.text); },
        [&] {
            Actions actions{nullptr};
            s.branchActions(g.branch, actions);
            result = std::to_string(actions.size());
        },
        [&] { s.addAction(g.branch, Action::create()); },
        [&] { s.removeAction(g.branch, g.action); },
        [&] { changeAction(s, g); },
    };
    calls[operation]();
    return result;
}

/// Where a scene without a branch manager reports each call.
constexpr int kManagerLines[kOperations] = {216, 228, 235, 242, 249, 263, 270, 277, 284, 291, 298};

class ScenePropertyTest : public scene_tests::SceneTest {
protected:
    void step();
    void changeScene();
    void expectSaved();

    scene::SceneSession m_session{m_scene};
    PlainScene m_plain;
    support::Random m_random{77};
};

void ScenePropertyTest::step() {
    static const char* const kTexts[] = {"", "a", "New Branch 2", "b c", "R&D", "\xC3\xBC.ogv"};
    const int branch = m_random.nearly(m_plain.branchCount());
    const bool isThere = branch >= 0 && branch < m_plain.branchCount();
    const auto actions = isThere ? m_plain.branches.begin()[branch].actions.size() : 0;
    const Given given{branch, m_random.nearly(static_cast<int>(actions)), m_random.below(5),
                      m_random.oneOf(kTexts)};
    const int operation = m_random.below(kOperations);
    const std::string expected = perform(m_plain, operation, given);
    const Lines reports = m_log.newErrors();
    Session session{m_session};
    ASSERT_EQ(m_random.below(2) == 0 ? perform(*m_scene, operation, given)
                                     : perform(session, operation, given),
              expected)
        << operation;
    ASSERT_EQ(m_log.newErrors(), reports) << operation;
}

/// Another scene, or this one from the disk: it was saved after each call.
void ScenePropertyTest::changeScene() {
    if (m_plain.branchCount() > 6 || m_random.below(2) == 0) {
        ASSERT_TRUE(m_scene->newScene("S"));
        m_plain = {};
        return;
    }
    ASSERT_TRUE(m_scene->loadFolder("Scenes/S/"));
    m_plain.added = 1;
    for (const PlainScene::Branch& branch : m_plain.branches) {
        for (const auto& action : branch.actions) {
            action->SetType(action->Type() % 4); // an unknown type was written as the first
        }
    }
}

void ScenePropertyTest::expectSaved() {
    ASSERT_EQ(m_scene->FirstBranch(), m_plain.first);
    ASSERT_TRUE(m_scene->Save("Scenes/S/"));
    if (m_plain.first.empty()) {
        m_plain.first = m_plain.branches.empty() ? "" : m_plain.branches[0].id;
        ASSERT_EQ(m_log.newErrors(), Lines(m_plain.branches.empty() ? 1 : 0,
                                           "..\\BranchManager.cpp:337 Invalid branch index"));
    }
    ASSERT_EQ(m_disk.files["/home/Scenes/S/Scene.xml"], m_plain.text());
}

TEST_F(ScenePropertyTest, RandomCallsLeaveTheScenarioAsAPlainModelOfItsRules) {
    ASSERT_TRUE(m_scene->newScene("S"));
    testing::internal::CaptureStderr(); // a line for each invalid call
    for (int call = 0; call < 20'000 && !HasFatalFailure(); ++call) {
        m_random.below(30) == 0 ? changeScene() : step();
        if (!HasFatalFailure()) {
            expectSaved();
        }
    }
    (void)testing::internal::GetCapturedStderr();
}

TEST_F(ScenePropertyTest, WithoutABranchManagerEveryOperationReportsAndDoesNothing) {
    scene::SceneManager empty(nullptr);
    const auto report = [](int line) {
        return Lines{"..\\SceneManager.cpp:" + std::to_string(line) + " Branch Manager is invalid"};
    };
    for (int operation = 0; operation < kOperations; ++operation) {
        const std::string nothing = perform(empty, operation, {});
        EXPECT_TRUE(nothing.empty() || nothing == "{}" || nothing == "0") << nothing;
        EXPECT_EQ(m_log.newErrors(), report(kManagerLines[operation]));
    }
    Actions actions{nullptr};
    scene::BranchManager().branchActions(0, actions);
    EXPECT_EQ(actions, Actions{});
    (void)m_log.newErrors();
    EXPECT_FALSE(empty.Save("Scenes/A/"));
    EXPECT_EQ(m_log.newErrors(), report(305));
    EXPECT_FALSE(m_disk.info("Scenes/A/Scene.xml"));
}

} // namespace
