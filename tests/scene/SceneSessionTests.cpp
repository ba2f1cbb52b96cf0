// The editing session: every edit can be taken back and done again exactly, and says what it
// changed.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "scene/SceneSession.h"
#include "tests/scene/SceneFixture.h"
#include "tests/support/Random.h"

namespace {

using scene::Action;
using scene::SceneChange;
using scene::SceneSession;
using scene::SceneStep;
using scene_tests::Lines;
using Part = SceneChange::Part;

constexpr const char* kScene =
    "<Scene><Name>A</Name><FirstBranch>Hall</FirstBranch><Branch><ID>Hall</ID><Filename>hall.ogv</"
    "Filename>"
    "<Action><Type>KeypressAction</Type><Parameter>K</Parameter><BranchID>Exit</BranchID></Action>"
    "<Action><BranchID>Hall</BranchID></Action></Branch><Branch><ID>Exit</ID></Branch></Scene>";

/// All that an author edits.
struct Contents {
    explicit Contents(const SceneSession& session)
        : first(session.firstBranch()), names(session.branchNames()),
          added(session.scene().addedVideos()) {
        for (int branch = 0; branch < session.branchCount(); ++branch) {
            videos.push_back(session.video(branch));
            actions.push_back(session.actions(branch));
        }
    }
    friend bool operator==(const Contents&, const Contents&) = default;

    std::string first;
    Lines names;
    Lines added;
    Lines videos;
    std::vector<std::vector<Action>> actions;
};

class SceneSessionTest : public scene_tests::SceneTest {
protected:
    SceneSessionTest() {
        file("A") = kScene;
        EXPECT_TRUE(m_session.load("A"));
    }

    [[nodiscard]] bool isTold(Part part, int branch) const {
        return std::find(m_told.begin(), m_told.end(), SceneChange{part, branch}) != m_told.end();
    }
    /// What differs was announced since the last call.
    void expectTold(const Contents& before);
    bool editOnce();
    void editAtRandom();
    /// The file of a save now.
    std::string saved() {
        EXPECT_TRUE(m_scene->Save("Scenes/Copy/"));
        return file("Copy");
    }

    SceneSession m_session{m_scene, {100'000, std::size_t{1} << 30U, 1}};
    SceneSession::Changes m_told;
    edit::Subscription m_token = m_session.observe([this](const auto& changes) {
        m_told.insert(m_told.end(), changes.begin(), changes.end());
    });
    support::Random m_random{5};
    std::string m_draft = m_session.draftForm(); ///< of another state, as is the other
    std::string m_otherDraft = m_draft;
};

void SceneSessionTest::expectTold(const Contents& before) {
    const Contents now(m_session);
    EXPECT_TRUE(now.first == before.first || isTold(Part::firstBranch, -1) ||
                isTold(Part::scene, -1));
    EXPECT_TRUE(now.added == before.added || isTold(Part::addedVideos, -1));
    if (!isTold(Part::branches, -1) && !isTold(Part::scene, -1)) {
        ASSERT_EQ(now.names.size(), before.names.size());
        for (std::size_t i = 0; i < now.names.size(); ++i) {
            const int branch = static_cast<int>(i);
            EXPECT_TRUE(now.names[i] == before.names[i] || isTold(Part::branchName, branch));
            EXPECT_TRUE(now.videos[i] == before.videos[i] || isTold(Part::video, branch));
            EXPECT_TRUE(now.actions[i] == before.actions[i] || isTold(Part::actions, branch) ||
                        isTold(Part::actions, -1));
        }
    }
    m_told.clear();
}

bool SceneSessionTest::editOnce() {
    static const char* const kTexts[] = {"",    "a",        "Hall",    "Hall 2",    "New Branch 2",
                                         " \t", "a<&lt;>b", " \r\n\v", "\xFF\"&#7;"};
    const int branches = std::max(m_session.branchCount(), 1);
    const int branch = m_random.below(branches + 1);
    const int other = m_random.below(branches);
    const bool isThere = branch < m_session.branchCount();
    const int actions = isThere ? m_session.actionCount(branch) : 0;
    const int action = m_random.below(actions + 1);
    const char* text = m_random.oneOf(kTexts);
    switch (m_random.below(19)) {
    case 0:
        return branches < 9 && m_session.addBranch();
    case 1:
        return branches < 9 && m_session.duplicateBranch(branch);
    case 2:
        return m_session.removeBranch(branch);
    case 3:
        return m_session.moveBranch(branch, other);
    case 4:
        return m_session.renameBranch(branch, text);
    case 5:
        return m_session.setFirstBranch(text);
    case 6:
        return m_session.setVideo(branch, text);
    case 7:
    case 8:
        return actions < 9 && m_session.addAction(branch);
    case 9:
        return actions < 9 && m_session.duplicateAction(branch, action);
    case 10:
        return m_session.removeAction(branch, action);
    case 11:
        return m_session.moveAction(branch, action, m_random.below(actions + 1));
    case 12:
        return m_session.setType(branch, action, m_random.below(5));
    case 13:
        return m_session.setParameter(branch, action, text);
    case 14:
        return m_session.setTarget(branch, action, text);
    case 15:
        return m_session.setImmediate(branch, action, m_random.below(2) == 0);
    case 16:
        return m_session.retarget(text, m_random.oneOf(kTexts));
    case 17:
        return m_session.addVideos({text, std::to_string(m_random.below(40))});
    default:
        m_draft.swap(m_otherDraft);
        EXPECT_TRUE(m_session.restore(std::exchange(m_draft, m_session.draftForm())));
        return true;
    }
}

/// An edit, or several as one step, which may be dropped again.
void SceneSessionTest::editAtRandom() {
    if (m_random.below(8) != 0) {
        editOnce();
        return;
    }
    const Contents before(m_session);
    auto gesture = m_session.begin({SceneStep::target, 0});
    for (int count = m_random.below(6); count > 0; --count) {
        editOnce();
        EXPECT_TRUE(m_told.empty() && !m_session.undo());
    }
    if (m_random.below(2) == 0) {
        gesture.commit();
    } else {
        gesture.cancel();
        EXPECT_EQ(Contents(m_session), before);
    }
}

TEST_F(SceneSessionTest, RandomEditsGoBackToTheStartAndForthToTheEnd) {
    testing::internal::CaptureStderr(); // a line for each edit of what is not there
    const std::string startFile = saved();
    const std::string startText = m_scene->fileText();
    std::vector<Contents> states{Contents(m_session)}; // by place in the history
    const auto& history = m_session.history();
    const auto expectState = [&](const Contents& before) {
        expectTold(before);
        ASSERT_EQ(Contents(m_session), states[history.position()]);
        ASSERT_EQ(m_session.isModified(), m_scene->fileText() != startText);
    };
    for (int edit = 0; edit < 20'000 && !HasFailure(); ++edit) {
        const Contents before(m_session);
        const std::size_t place = history.position();
        m_random.below(10) == 0 ? static_cast<void>(m_session.undo()) : editAtRandom();
        if (history.position() > place) {
            states.erase(states.begin() + static_cast<std::ptrdiff_t>(place) + 1, states.end());
            states.emplace_back(m_session);
        }
        expectState(before);
        ASSERT_EQ(states.size(), history.size() + 1);
        ASSERT_TRUE(m_session.restore(m_session.draftForm()));
        ASSERT_EQ(states.size(), history.size() + 1) << "a draft has all that a file has";
    }
    m_session.setFirstBranch("the end");
    states.resize(history.position(), states.front());
    states.emplace_back(m_session);
    const std::string endFile = saved();
    EXPECT_GT(history.size(), 5'000U);
    while (history.canUndo() && !HasFailure()) {
        const Contents before(m_session);
        m_session.undo();
        expectState(before);
    }
    EXPECT_FALSE(m_session.isModified());
    EXPECT_EQ(saved(), startFile);
    while (history.canRedo() && !HasFailure()) {
        const Contents before(m_session);
        m_session.redo();
        expectState(before);
    }
    EXPECT_EQ(saved(), endFile);
    (void)testing::internal::GetCapturedStderr();
}

// What a window reads of the scene it cannot edit past the session.
using ReadAction = decltype(*std::declval<SceneSession>().scene().branches()->branch(0)->action(0));
static_assert(std::is_const_v<std::remove_reference_t<ReadAction>>);

TEST_F(SceneSessionTest, StepsSayWhatAndWhereAndNameWhatTheyChange) {
    using Session = SceneSession;
    const struct {
        std::function<bool(Session&)> edit;
        std::string step; ///< name, branch, action
        SceneSession::Changes changes;
    } cases[] = {
        {[](Session& s) { return s.addBranch(); }, "add branch 2 -1", {{Part::branches, -1}}},
        {[](Session& s) { return s.renameBranch(0, "Lobby"); },
         "rename 0 -1",
         {{Part::firstBranch, -1}, {Part::branchName, 0}}},
        {[](Session& s) { return s.setFirstBranch("Exit"); },
         "first branch 1 -1",
         {{Part::firstBranch, -1}}},
        {[](Session& s) { return s.setVideo(1, "a.ogv"); }, "video 1 -1", {{Part::video, 1}}},
        {[](Session& s) { return s.addAction(0); }, "add action 0 2", {{Part::actions, 0}}},
        {[](Session& s) { return s.setType(0, 2, 3); }, "condition 0 2", {{Part::actions, 0}}},
        {[](Session& s) { return s.moveAction(0, 2, 0); }, "move action 0 0", {{Part::actions, 0}}},
        {[](Session& s) { return s.moveBranch(0, 2); }, "move branch 2 -1", {{Part::branches, -1}}},
    };
    m_told.clear();
    for (const auto& test : cases) {
        EXPECT_TRUE(test.edit(m_session));
        const scene::SceneLabel& label = *m_session.history().undoLabel();
        EXPECT_EQ(scene::stepName(label.step) + (" " + std::to_string(label.branch)) + " " +
                      std::to_string(label.action),
                  test.step);
        EXPECT_EQ(std::exchange(m_told, {}), test.changes) << test.step;
    }
    const std::optional<scene::SceneLabel> moved = m_session.undo();
    EXPECT_TRUE(moved && moved->branch == 0) << "where the branch is again";
    EXPECT_EQ(m_session.redo()->branch, 2);
    m_told.clear();
    EXPECT_FALSE(m_session.setVideo(0, "a.ogv") || m_session.setType(2, 0, 3));
    EXPECT_TRUE(m_told.empty()) << "the same again is no step";
}

TEST_F(SceneSessionTest, ModifiedMeansThatASaveWouldWriteOtherBytes) {
    m_scene->SetFirstBranch("");
    file("B") = "<Scene><Branch><ID>Hall</ID></Branch><Branch/></Scene>\n<!-- by hand -->";
    ASSERT_TRUE(m_session.load("B"));
    EXPECT_FALSE(m_session.isModified() || m_session.isNew()) << "a save would write it otherwise";
    m_session.setFirstBranch("Hall");
    EXPECT_FALSE(m_session.isModified()) << "saving would fill in the same name";
    m_session.undo();
    m_session.moveBranch(0, 1);
    EXPECT_TRUE(m_session.isModified());
    m_session.undo();
    m_session.renameBranch(0, "Gate");
    m_files.failOn("open", 13);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(m_session.save("Scenes/B/"));
    (void)testing::internal::GetCapturedStderr();
    EXPECT_TRUE(m_session.isModified());
    m_files.heal();
    EXPECT_TRUE(m_session.save("Scenes/B/"));
    EXPECT_FALSE(m_session.isModified());
    EXPECT_EQ(m_session.firstBranch(), "Gate");
    m_session.undo();
    EXPECT_FALSE(m_session.isModified()) << "what saving filled in is a step that changes no byte";
    m_session.undo();
    EXPECT_TRUE(m_session.isModified());
    EXPECT_TRUE(m_session.newScene("C"));
    EXPECT_TRUE(m_session.isNew() && !m_session.isModified() && !m_session.undo());
    m_session.addBranch();
    m_session.undo();
    EXPECT_FALSE(m_session.isModified());
    m_session.addBranch();
    EXPECT_EQ(m_session.branchNames(), Lines{"New Branch 3"}) << "numbers only grow";
    EXPECT_EQ(m_session.firstBranch(), "New Branch 3");
}

TEST_F(SceneSessionTest, RestoringAVersionIsOneStepAndKeepsTheName) {
    const std::string form = m_session.savedForm();
    EXPECT_EQ(form, saved());
    m_session.removeBranch(0);
    m_session.save("Scenes/A/");
    EXPECT_TRUE(m_session.restore(form));
    EXPECT_EQ(m_session.branchNames(), (Lines{"Hall", "Exit"}));
    EXPECT_EQ(m_session.history().undoLabel()->step, SceneStep::restoreVersion);
    testing::internal::CaptureStderr();
    const std::uint64_t revision = m_session.revision();
    for (const char* text : {"", "<Scene>", "<!-- --><Scene/>", "no file"}) {
        EXPECT_FALSE(m_session.restore(text)) << text;
    }
    EXPECT_FALSE(m_session.restore(std::string(std::size_t{40} << 20U, ' ')));
    (void)testing::internal::GetCapturedStderr();
    EXPECT_EQ(m_session.revision(), revision);
    EXPECT_EQ(m_session.savedForm(), form);
    EXPECT_TRUE(m_session.restore("<Scene><Name>../B</Name><Branch/></Scene>"));
    EXPECT_EQ(m_session.scene().Name(), "A") << "which is where a save goes";
    EXPECT_EQ(m_session.branchNames(), Lines{""});
    m_session.undo();
    m_session.undo();
    EXPECT_EQ(m_session.branchNames(), Lines{"Exit"});
    EXPECT_FALSE(m_session.isModified());
}

TEST_F(SceneSessionTest, CopiesAndRemovedBranchesKeepTheRestInOrder) {
    m_session.duplicateBranch(0);
    m_session.duplicateBranch(0);
    EXPECT_EQ(m_session.branchNames(), (Lines{"Hall", "Hall 3", "Hall 2", "Exit"}));
    EXPECT_EQ(m_session.actions(1), m_session.actions(0));
    m_session.setTarget(1, 0, "Hall 2");
    EXPECT_EQ(m_session.action(0, 0).BranchID(), "Exit") << "a copy has actions of its own";
    const Lines heirs{"Hall 3", "Hall 2", "Exit", ""};
    for (const std::string& heir : heirs) {
        m_session.removeBranch(0);
        EXPECT_EQ(m_session.firstBranch(), heir);
    }
    m_session.undo();
    m_session.undo();
    m_session.setFirstBranch("Exit");
    m_session.removeBranch(1);
    EXPECT_EQ(m_session.firstBranch(), "Hall 2") << "the last one when none follows";
}

} // namespace
