// Unsaved work on the disk: when it is written, what ends it, who may have it, and faults.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include "recovery/DraftFolder.h"
#include "recovery/KeptDrafts.h"
#include "recovery/Places.h"
#include "tests/recovery/DraftTest.h"

namespace {

using recovery::Draft;
using recovery::Drafts;
using Texts = std::vector<std::string>;

recovery::DraftContent contentOf(const std::string& text) {
    return {{recovery::kDraftScene, [text](core::File& file) { return file.writeString(text); }}};
}

/// A document that is a text, or saved.
struct Document {
    std::optional<std::string> text;
    std::unique_ptr<Draft> draft;
};

class DraftTest : public recovery_tests::DraftTest {
protected:
    std::unique_ptr<Document> open(const std::string& scene = "Fire Drill") {
        auto document = std::make_unique<Document>();
        document->draft = m_drafts->open({scene, scene}, [&text = document->text] {
            return text ? std::optional(contentOf(*text)) : std::nullopt;
        });
        return document;
    }
    static void edit(Document& document, const std::optional<std::string>& text) {
        document.text = text;
        document.draft->changed();
    }
    void keep(const std::string& text) {
        edit(*open(), text);
        m_drafts->settle();
    }
    /// What all drafts hold, the newest first.
    Texts kept() {
        m_drafts->settle();
        Texts texts;
        for (const recovery::KeptDraft& draft : recovery::keptSceneDrafts()) {
            texts.push_back(support::readBytes(draft.folder + draftFileNames(draft.info)[0]));
        }
        return texts;
    }
};

TEST_F(DraftTest, IsWrittenAWhileAfterTheFirstChangeHoweverManyFollow) {
    static_assert(Drafts::kDelay < std::chrono::seconds(2));
    const auto document = open();
    edit(*document, "first");
    m_clock.passed += Drafts::kDelay.count() - 1;
    edit(*document, "later");
    m_clock.passed += 1;
    until([] { return isOnDisk("later"); });
    edit(*document, "last");
    wait();
    until([] { return isOnDisk("last") && !isOnDisk("later"); });
    EXPECT_EQ(kept(), Texts()) << "a running program has it";
}

TEST_F(DraftTest, GoesByASaveOrWithNothingUnsavedOrWhenDraftsAreOff) {
    const auto document = open();
    for (int way = 0; way < 3; ++way) {
        edit(*document, "unsaved");
        wait();
        until([] { return isOnDisk("unsaved"); });
        if (way == 0) {
            document->draft->saved("base");
        } else {
            m_areKept = way != 2;
            way == 1 ? edit(*document, std::nullopt) : m_drafts->keepingChanged();
            wait();
        }
        until([] { return !support::exists("Drafts"); });
    }
    m_areKept = true;
    m_drafts->keepingChanged();
    until([] { return isOnDisk("unsaved"); });
}

TEST_F(DraftTest, OfEachProgramStaysForLaterAndIsRemovedAfterThirtyDays) {
    const std::string odd = "..\n\xFF%/A";
    for (const char* text : {"one", "two"}) {
        auto first = open(odd);
        auto second = open(odd);
        edit(*first, text);
        edit(*second, std::string(text) + ", other program");
        m_clock.time += 60;
        first = nullptr;
        m_clock.time += 60;
        second = nullptr;
    }
    EXPECT_EQ(kept(), (Texts{"two, other program", "two", "one, other program", "one"}));
    const auto drafts = recovery::keptSceneDrafts();
    EXPECT_EQ(drafts[0].info.scene, odd);
    EXPECT_EQ(drafts[0].info.time, m_clock.time);
    EXPECT_EQ(drafts[3].info.time, m_clock.time - 180);
    m_clock.time += recovery::kDraftSeconds;
    EXPECT_EQ(kept().size(), 1U) << "exactly so old";
    m_clock.time += 1;
    EXPECT_EQ(kept(), Texts());
    EXPECT_FALSE(support::exists("Drafts"));
    EXPECT_EQ(m_log.page().find("ignored"), std::string::npos);
}

TEST_F(DraftTest, RestoredStaysUntilASaveWhateverIsUndone) {
    keep("kept");
    auto document = open();
    edit(*document, "before");
    auto folder = recovery::takeDraft(recovery::keptSceneDrafts().at(0).folder);
    ASSERT_TRUE(folder);
    document->draft->restored(std::move(folder), contentOf("kept"));
    EXPECT_EQ(kept(), Texts());
    edit(*document, "changed");
    wait();
    until([] { return isOnDisk("changed") && !isOnDisk("kept"); });
    EXPECT_FALSE(isOnDisk("before"));
    edit(*document, std::nullopt);
    document = nullptr;
    EXPECT_EQ(kept(), Texts{"kept"});

    document = open();
    document->draft->restored(recovery::takeDraft(recovery::keptSceneDrafts().at(0).folder),
                              contentOf("kept"));
    document->draft->saved("base");
    document = nullptr;
    EXPECT_EQ(kept(), Texts());
    EXPECT_FALSE(support::exists("Drafts"));

    keep("kept");
    document = open("Renamed since");
    document->draft->restored(recovery::takeDraft(recovery::keptSceneDrafts().at(0).folder),
                              contentOf("kept"));
    edit(*document, "changed");
    document = nullptr;
    EXPECT_EQ(kept(), Texts{"changed"});
}

TEST_F(DraftTest, IsNotWrittenThroughALink) {
    const auto document = open();
    edit(*document, "first");
    wait();
    until([] { return isOnDisk("first"); });
    support::writeBytes("Scene.xml", "saved");
    std::error_code noLinksHere;
    const std::string target = std::filesystem::absolute("Scene.xml").string();
    const std::string folder = "Drafts/" + recovery::encodedName("Fire Drill") + "/1/";
    std::filesystem::create_symlink(target, folder + "2-Scene.xml", noLinksHere);
    edit(*document, "last");
    wait();
    until([] { return isOnDisk("last") && !isOnDisk("first"); });
    EXPECT_EQ(support::readBytes("Scene.xml"), "saved");
}

TEST_F(DraftTest, ThatIsNoneIsIgnoredWithOneLogLineAndLeftAlone) {
    keep("good");
    const std::string folder = "Drafts/" + recovery::encodedName("Fire Drill") + "/";
    const std::string good = support::readBytes(folder + "1/Draft.txt");
    const auto replaced = [&good](const std::string& from, const std::string& to) {
        std::string text = good;
        return text.replace(text.find(from), from.size(), to);
    };
    const Texts bad{"",
                    good.substr(0, good.size() - 1),
                    good + "x",
                    replaced("number 1", "number 0"),
                    replaced("number 1", "number 99999999999"),
                    replaced("time ", "time -"),
                    replaced("time ", "time 9999999"),
                    replaced("sizes 4", "sizes 5"),
                    replaced("sizes 4", "sizes"),
                    replaced("sizes 4", "sizes 4 4 4 4 4 4 4 4 4 4"),
                    replaced("video ", "video a"),
                    replaced("scene Fire", "scene fire"),
                    replaced("scene Fire", "scene Fire%"),
                    replaced("number 1", "number 2"),
                    std::string(100000, 'x')};
    for (std::size_t i = 0; i < bad.size(); ++i) {
        const std::string path = folder + std::to_string(i + 2) + "/";
        support::writeBytes(path + "Draft.txt", bad[i]);
        support::writeBytes(path + "1-Scene.xml", "good");
    }
    support::writeBytes(folder + "notes/17-notes.txt", "the author's");
    const Texts before = support::filesBelow("Drafts/");
    std::size_t links = 0;
    std::error_code error;
    const std::string linked = std::filesystem::absolute(folder + "1").string();
    std::filesystem::create_directory_symlink(linked, folder + "99", error);
    links += error ? 0 : 1;
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(kept(), Texts{"good"});
    }
    EXPECT_EQ(m_log.count("Draft ignored"), bad.size() + 1 + links);
    EXPECT_FALSE(support::exists(folder + "notes/Lock"));
    Texts after = support::filesBelow("Drafts/");
    std::erase_if(after, [](const std::string& name) { return name.find("/99") < name.size(); });
    std::erase_if(after, [&](const std::string& name) {
        return name.ends_with("Lock") && std::count(before.begin(), before.end(), name) == 0;
    });
    EXPECT_EQ(after, before);
}

TEST_F(DraftTest, SurvivesEveryFaultOfAWriting) {
    auto document = open();
    edit(*document, "before");
    wait();
    until([] { return isOnDisk("before"); });
    m_drafts->settle(); // a writing goes on after its file is there
    m_files.forgetCalls();
    edit(*document, "between");
    wait();
    until([] { return isOnDisk("between") && !isOnDisk("before"); });
    m_drafts->settle();
    const auto calls = static_cast<int>(m_files.calls().size());
    ASSERT_GT(calls, 5);
    for (int call = 1; call <= calls; ++call) {
        m_files.forgetCalls();
        m_files.stopAt(call);
        edit(*document, "lost");
        document = nullptr;
        m_drafts->settle();
        m_files.heal();
        const bool isWhole = kept() == Texts{"lost"} || kept() == Texts{"between"};
        EXPECT_TRUE(isWhole) << call;
        document = open();
        document->draft->restored(recovery::takeDraft(recovery::keptSceneDrafts().at(0).folder),
                                  contentOf("between"));
        edit(*document, "between");
        wait();
        until([&] { return m_drafts->failure().empty() && isOnDisk("between"); });
        m_drafts->settle();
    }
    document = nullptr;
    m_drafts.reset();
    EXPECT_EQ(m_log.errors().size(), 1U);
}

TEST_F(DraftTest, ThatLacksMemoryIsTriedAgain) {
    bool lacksMemory = true;
    const auto draft = m_drafts->open({"A", "A"}, [&lacksMemory] {
        return lacksMemory ? throw std::bad_alloc() : std::optional(contentOf("late"));
    });
    draft->changed();
    wait();
    m_loop.processEvents(true);
    lacksMemory = false;
    m_clock.passed += Drafts::kRetryDelay.count();
    until([] { return isOnDisk("late"); });
}

TEST_F(DraftTest, ThatHasGoneLeavesItsFolderWhenMemoryIsShort) {
    core::FileError failure;
    auto folder = recovery::DraftFolder::claim(recovery::draftsFolder() + "a/", failure);
    ASSERT_TRUE(folder) << failure.text();
    m_files.setRule([](const support::Call&) -> support::Fault { throw std::bad_alloc(); }, 0);
    folder.reset();
    m_files.heal();
    EXPECT_TRUE(recovery::keptSceneDrafts().empty()) << "which tidies up";
    EXPECT_FALSE(support::exists("Drafts"));
}

TEST_F(DraftTest, ThatCannotBeWrittenIsTriedAgainAndBeginsAnewWhereItsFolderVanished) {
    const auto document = open();
    m_files.failOn("createFolder", ENOSPC);
    edit(*document, "unsaved");
    wait();
    until([&] { return !m_drafts->failure().empty(); });
    EXPECT_EQ(m_drafts->failure().reason, m_files.errorText(ENOSPC));
    const auto other = open("Other");
    other->draft->saved("base");
    m_loop.processEvents(true);
    EXPECT_FALSE(m_drafts->failure().empty()) << "of the other document";
    m_files.heal();
    m_clock.passed += Drafts::kRetryDelay.count();
    until([] { return isOnDisk("unsaved"); });
    until([&] { return m_drafts->failure().empty(); });

    std::error_code error;
    std::filesystem::remove_all("Drafts", error); // a system may hold on to the lock
    m_loop.failures = 1;
    edit(*document, "after all");
    wait();
    until([] { return isOnDisk("after all"); });
}

} // namespace
