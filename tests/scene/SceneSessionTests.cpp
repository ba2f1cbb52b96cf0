// The editing session: every edit can be taken back and done again exactly, and says what it
// changed.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
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

/// All that an author edits: read from the session, or edited beside it by the plain rules.
struct Contents {
    struct Branch {
        std::string name;
        std::string video;
        std::vector<Action> actions;
        friend bool operator==(const Branch&, const Branch&) = default;
    };

    Contents() = default;
    explicit Contents(const SceneSession& session)
        : first(session.firstBranch()), added(session.scene().addedVideos()) {
        for (int branch = 0; branch < session.branchCount(); ++branch) {
            branches.push_back(
                {session.branchName(branch), session.video(branch), session.actions(branch)});
        }
    }
    friend bool operator==(const Contents&, const Contents&) = default;

    [[nodiscard]] bool has(const std::string& name) const {
        return std::any_of(branches.begin(), branches.end(),
                           [&](const Branch& branch) { return branch.name == name; });
    }
    void copyBranch(std::ptrdiff_t at) {
        Branch copy = branches.begin()[at];
        for (int number = 2; has(copy.name); ++number) {
            copy.name = branches.begin()[at].name + " " + std::to_string(number);
        }
        branches.insert(branches.begin() + at + 1, copy);
    }
    void removeBranch(std::ptrdiff_t at) {
        const std::string name = branches.begin()[at].name;
        branches.erase(branches.begin() + at);
        if (first == name && !has(name)) {
            first = branches.empty()
                        ? ""
                        : branches.begin()[std::min(at, std::ssize(branches) - 1)].name;
        }
    }
    void retarget(const std::string& from, const std::string& to) {
        for (Branch& branch : branches) {
            for (Action& action : branch.actions) {
                action.SetBranchID(action.BranchID() == from ? to : action.BranchID());
            }
        }
    }
    void renameZone(const std::string& video, const std::string& from, const std::string& to) {
        for (Branch& branch : branches) {
            for (Action& action : branch.actions) {
                if (branch.video == video && action.Type() == 2 && action.Parameter() == from) {
                    action.SetParameter(to);
                }
            }
        }
    }

    std::string first;
    Lines added;
    std::vector<Branch> branches;
};

template <class T>
void moveEntry(std::vector<T>& list, std::ptrdiff_t from, std::ptrdiff_t to) {
    T moved = list.begin()[from];
    list.erase(list.begin() + from);
    list.insert(list.begin() + to, std::move(moved));
}

class SceneSessionTest : public scene_tests::SceneTest {
protected:
    SceneSessionTest() {
        file("A") = kScene;
        EXPECT_TRUE(m_session.load("A"));
    }

    [[nodiscard]] bool isTold(Part part, int branch) const {
        return std::find(m_heard.begin(), m_heard.end(), SceneChange{part, branch}) !=
               m_heard.end();
    }
    /// What differs was announced since the last call.
    void expectTold(const Contents& before, const Contents& now);
    /// Edits the session and the plain contents.
    void editOnce(Contents& plain);
    void editActions(std::vector<Action>& plain, int branch, const std::string& text);
    void restoreDraft(Contents& plain);
    void editAtRandom(Contents& plain);
    /// The file of a save now.
    std::string saved() {
        EXPECT_TRUE(m_scene->Save("Scenes/Copy/"));
        return file("Copy");
    }

    SceneSession m_session{m_scene, {100'000, std::size_t{1} << 30U, 1}};
    SceneSession::Changes m_heard;
    edit::Subscription m_token = m_session.observe([this](const auto& changes) {
        m_heard.insert(m_heard.end(), changes.begin(), changes.end());
    });
    support::Random m_random{5};
    int m_newBranches = 1;
    /// Of another state.
    std::pair<std::string, Contents> m_draft{m_session.draftForm(), Contents(m_session)};
};

void SceneSessionTest::expectTold(const Contents& before, const Contents& now) {
    const bool all = isTold(Part::scene, -1);
    EXPECT_TRUE(now.first == before.first || all || isTold(Part::firstBranch, -1));
    EXPECT_TRUE(now.added == before.added || isTold(Part::addedVideos, -1));
    for (std::size_t i = 0; !all && !isTold(Part::branches, -1) && i < now.branches.size(); ++i) {
        ASSERT_EQ(now.branches.size(), before.branches.size());
        const Contents::Branch& is = now.branches[i];
        const Contents::Branch& was = before.branches[i];
        const int branch = static_cast<int>(i);
        EXPECT_TRUE(is.name == was.name || isTold(Part::branchName, branch));
        EXPECT_TRUE(is.video == was.video || isTold(Part::video, branch));
        EXPECT_TRUE(is.actions == was.actions || isTold(Part::actions, branch) ||
                    isTold(Part::actions, -1));
    }
    m_heard.clear();
}

void SceneSessionTest::editOnce(Contents& plain) {
    static const char* const kTexts[] = {"",    "a",        "Hall",    "Hall 2",    "New Branch 2",
                                         " \t", "a<&lt;>b", " \r\n\v", "\xFF\"&#7;"};
    auto& branches = plain.branches;
    const int count = static_cast<int>(branches.size());
    const int branch = m_random.below(count + 1);
    const int other = m_random.below(count + 1);
    const std::string text = m_random.oneOf(kTexts);
    const std::string text2 = m_random.oneOf(kTexts);
    const int operation = m_random.below(21);
    if (operation == 0 && count < 9 && m_session.addBranch()) {
        branches.push_back({"New Branch " + std::to_string(++m_newBranches), "", {}});
        plain.first = count == 0 ? branches[0].name : plain.first;
    } else if (operation == 1 && count < 9 && m_session.duplicateBranch(branch)) {
        plain.copyBranch(branch);
    } else if (operation == 2 && m_session.removeBranch(branch)) {
        plain.removeBranch(branch);
    } else if (operation == 3 && m_session.moveBranch(branch, other)) {
        moveEntry(branches, branch, other);
    } else if (operation == 4 && m_session.renameBranch(branch, text)) {
        plain.first = plain.first == branches.begin()[branch].name ? text : plain.first;
        branches.begin()[branch].name = text;
    } else if (operation == 5 && m_session.setFirstBranch(text)) {
        plain.first = text;
    } else if (operation == 6 && m_session.setVideo(branch, text)) {
        branches.begin()[branch].video = text;
    } else if (operation == 7 && m_session.addVideos({text, text})) {
        plain.added.push_back(text);
    } else if (operation == 8 && m_session.retarget(text, text2)) {
        plain.retarget(text, text2);
    } else if (operation == 9) {
        restoreDraft(plain);
    } else if (operation == 10) {
        const std::string video = m_random.oneOf(kTexts);
        if (m_session.renameZone(video, text, text2)) {
            plain.renameZone(video, text, text2);
        }
    } else if (operation > 10 && branch < count) {
        editActions(branches.begin()[branch].actions, branch, text);
    }
}

void SceneSessionTest::editActions(std::vector<Action>& plain, int branch,
                                   const std::string& text) {
    const int count = static_cast<int>(plain.size());
    const int action = m_random.below(count + 1);
    const int other = m_random.below(count + 1);
    const int low = std::min(action, other);
    const int high = std::max(action, other);
    const int by = m_random.below(5) - 2;
    const int operation = m_random.below(10);
    if (operation < 2 && count < 9 && m_session.addAction(branch)) {
        plain.emplace_back();
    } else if (operation == 2 && count < 9 && m_session.duplicateActions(branch, {other, action})) {
        const Action copies[] = {plain.begin()[low], plain.begin()[high]};
        plain.insert(plain.begin() + high + 1, std::begin(copies) + (low == high ? 1 : 0),
                     std::end(copies));
    } else if (operation == 3 && m_session.removeActions(branch, {action, other})) {
        plain.erase(plain.begin() + high);
        if (low < high) {
            plain.erase(plain.begin() + low);
        }
    } else if (operation == 9 && m_session.shiftActions(branch, {other, action}, by)) {
        moveEntry(plain, by > 0 ? high : low, (by > 0 ? high : low) + by);
        if (low < high) {
            moveEntry(plain, by > 0 ? low : high, (by > 0 ? low : high) + by);
        }
    } else if (operation == 4 && m_session.moveAction(branch, action, other)) {
        moveEntry(plain, action, other);
    } else if (operation == 5 && m_session.setType(branch, action, other % 4)) {
        plain.begin()[action].SetType(other % 4);
    } else if (operation == 6 && m_session.setParameter(branch, action, text)) {
        plain.begin()[action].SetParameter(text);
    } else if (operation == 7 && m_session.setTarget(branch, action, text)) {
        plain.begin()[action].SetBranchID(text);
    } else if (operation == 8 && m_session.setImmediate(branch, action, other % 2 == 0)) {
        plain.begin()[action].SetImmediate(other % 2 == 0);
    }
}

void SceneSessionTest::restoreDraft(Contents& plain) {
    auto [draft, contents] = std::exchange(m_draft, {m_session.draftForm(), plain});
    const std::uint64_t before = m_session.revision();
    EXPECT_TRUE(m_session.restore(draft));
    if (m_session.revision() != before) { // a draft names the first branch, as a save does
        contents.first = contents.first.empty() && !contents.branches.empty()
                             ? contents.branches[0].name
                             : contents.first;
        contents.added = plain.added;
        plain = contents;
    }
}

/// An edit, or several as one step, which may be dropped again.
void SceneSessionTest::editAtRandom(Contents& plain) {
    if (m_random.below(8) != 0) {
        editOnce(plain);
        return;
    }
    const Contents before = plain;
    auto gesture = m_session.begin({SceneStep::target, 0});
    for (int count = m_random.below(6); count > 0; --count) {
        editOnce(plain);
        EXPECT_TRUE(m_heard.empty() && !m_session.undo());
    }
    if (m_random.below(2) == 0) {
        gesture.commit();
    } else {
        gesture.cancel();
        plain = before;
    }
}

TEST_F(SceneSessionTest, RandomEditsAndUndoAgreeWithPlainContents) {
    testing::internal::CaptureStderr(); // a line for each edit of what is not there
    const auto& history = m_session.history();
    struct State {
        Contents plain;
        std::size_t bytes; ///< of a save, hashed
    };
    const auto bytes = [this] { return std::hash<std::string>()(m_session.savedForm()); };
    std::vector<State> states{{Contents(m_session), bytes()}}; // by place in the history
    Contents before = states[0].plain;
    const auto expectState = [&] {
        const Contents now(m_session);
        ASSERT_EQ(now, states[history.position()].plain);
        ASSERT_EQ(bytes(), states[history.position()].bytes);
        ASSERT_EQ(m_session.isModified(), states[history.position()].bytes != states[0].bytes);
        expectTold(before, now);
        before = now;
    };
    for (int edit = 0; edit < 50'000 && !HasFailure(); ++edit) {
        const std::size_t place = history.position();
        const int choice = m_random.below(20);
        if (choice < 5) {
            m_session.undo();
        } else if (choice < 8) {
            m_session.redo();
        } else {
            Contents plain = states[place].plain;
            editAtRandom(plain);
            if (history.position() > place) {
                states.erase(states.begin() + static_cast<std::ptrdiff_t>(place) + 1, states.end());
                states.push_back({plain, bytes()});
            } else {
                EXPECT_EQ(plain, before) << "what changes something is a step";
            }
        }
        expectState();
        ASSERT_EQ(states.size(), history.size() + 1);
    }
    while (m_session.undo() && !HasFailure()) {
        expectState();
    }
    EXPECT_GT(history.size(), 4'500U);
    while (m_session.redo() && !HasFailure()) {
        expectState();
    }
    EXPECT_EQ(m_session.savedForm(), saved());
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
    m_heard.clear();
    for (const auto& test : cases) {
        EXPECT_TRUE(test.edit(m_session));
        const scene::SceneLabel& label = *m_session.history().undoLabel();
        EXPECT_EQ(scene::stepName(label.step) + (" " + std::to_string(label.branch)) + " " +
                      std::to_string(label.action),
                  test.step);
        EXPECT_EQ(std::exchange(m_heard, {}), test.changes) << test.step;
    }
    const std::optional<scene::SceneLabel> moved = m_session.undo();
    EXPECT_TRUE(moved && moved->branch == 0) << "where the branch is again";
    EXPECT_EQ(m_session.redo()->branch, 2);
    m_heard.clear();
    EXPECT_FALSE(m_session.setVideo(0, "a.ogv") || m_session.setType(2, 0, 3));
    EXPECT_TRUE(m_heard.empty()) << "the same again is no step";
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

} // namespace
