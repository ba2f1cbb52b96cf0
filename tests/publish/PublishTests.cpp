// Publishing: what is written, where, and what stays of it when something fails. What a browser
// makes of it: browser_tests.py.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "import/Converter.h"
#include "platform/FileSystem.h"
#include "player/Clip.h"
#include "publish/PageText.h"
#include "publish/PublishFolder.h"
#include "publish/PublishJob.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"

namespace publish {
namespace {

using Names = std::vector<std::string>;

TEST(PublishedTexts, HoldNamesAsEscapes) {
    EXPECT_EQ(
        scriptText("a<b>&\"'\\\n\x7F\u2028\u2029é\xFF"),
        "\"a\\u003cb\\u003e\\u0026\\u0022\\u0027\\u005c\\u000a\\u007f\\u2028\\u2029é\uFFFD\"");
    EXPECT_EQ(htmlText("a<b>&\"'\\\n\u2028é\xFF"),
              "a&#60;b&#62;&#38;&#34;&#39;&#92; &#8232;é\uFFFD");
    PageContent content;
    content.options.title = "@ICON@ </title> @LANGUAGE@";
    content.still = "still.jpg";
    const std::string page = indexPage(content);
    EXPECT_NE(page.find("<title>@ICON@ &#60;/title&#62; @LANGUAGE@</title>"), std::string::npos);
    EXPECT_NE(page.find("<html lang=\"en\">"), std::string::npos);
    EXPECT_NE(page.find("<link rel=\"icon\" href=\"still.jpg\">"), std::string::npos);
    EXPECT_LT(page.size() + playerScript().size() + playerStyle().size(), 60'000U);
}

TEST(PublishedTexts, ShowEachRunOfEqualShapesOnce) {
    const std::vector<player::ZoneTrack> zones{
        {"Door", {{0, true, {{1, 2}, {30, 4}, {5, -6}}}, {40, false, {}}}}, {"<", {}}};
    EXPECT_EQ(zonesScript(3, zones), "quorvelZones(3,[\n[\"Door\",[\n[0,1,[1,2,30,4,5,-6]],\n"
                                     "[40,0,[]]]],\n[\"\\u003c\",[]]]);\n");
}

TEST(PublishedTexts, HaveFiveLanguages) {
    for (const char* word : {"fr", "FR", "Français", "FRANÇAIS"}) {
        ASSERT_NE(findLanguage(word), nullptr) << word;
        EXPECT_STREQ(findLanguage(word)->code, "fr");
    }
    EXPECT_EQ(findLanguage("it"), nullptr);
    for (const Language& language : languages()) {
        const std::string code = language.code; // the page's own words, and those behind them
        EXPECT_TRUE(playerScript().find("\n  " + code + ": {") != std::string::npos ||
                    playerScript().find("\n \"" + code + "\": {") != std::string::npos)
            << code;
    }
}

class PublishFolderTest : public support::TempFolderTest {
protected:
    PublishFailure publish(const std::string& text) {
        PublishFolder folder(m_files, m_folder.path() + "to/page");
        PublishFailure failure = folder.begin();
        for (const char* name : {"index.html", "clips/1.js"}) {
            failure = failure == PublishFailure::none ? folder.write(name, text) : failure;
        }
        return failure == PublishFailure::none ? folder.commit() : failure;
    }
    static std::string published() {
        return support::exists("to/page/index.html") ? support::readBytes("to/page/index.html")
                                                     : std::string();
    }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
};

const Names kPage{"page/clips/1.js", "page/index.html", "page/published.txt"};

TEST_F(PublishFolderTest, ReplacesNothingButWhatWasPublished) {
    EXPECT_EQ(publish("1"), PublishFailure::none);
    EXPECT_EQ(support::filesBelow("to"), kPage);
    support::writeBytes("to/page/Thumbs.db", std::string("of the system"));
    EXPECT_EQ(publish("2"), PublishFailure::none);
    EXPECT_EQ(support::filesBelow("to"), kPage);
    EXPECT_EQ(published(), "2");
    for (const char* added : {"to/page/mine.txt", "to/page/clips/mine.js", "to/page/sub/a"}) {
        support::writeBytes(added, std::string("mine"));
        EXPECT_EQ(publish("3"), PublishFailure::notEmpty) << added;
        EXPECT_EQ(published(), "2");
        EXPECT_EQ(support::readBytes(added), "mine");
        std::filesystem::remove(added);
        std::filesystem::remove("to/page/sub");
    }
    for (const char* list : {"", "Quorvel web page 1", "Quorvel web page 9\nindex.html\n"}) {
        support::writeBytes("to/page/published.txt", std::string(list));
        EXPECT_EQ(publish("4"), PublishFailure::notEmpty) << list;
    }
    std::filesystem::remove_all("to/page");
    support::makeFolder("to/page");
    EXPECT_EQ(publish("5"), PublishFailure::none) << "an empty folder is nobody's";
    std::filesystem::remove_all("to/page");
    support::writeBytes("to/page", std::string("a file"));
    EXPECT_EQ(publish("6"), PublishFailure::notEmpty);
    EXPECT_EQ(support::readBytes("to/page"), "a file");
    EXPECT_EQ(support::filesBelow("to"), Names{"page"});
}

TEST_F(PublishFolderTest, WhateverFailsLeavesTheOldPageOrTheNewOne) {
    ASSERT_EQ(publish("old"), PublishFailure::none);
    m_files.forgetCalls();
    ASSERT_EQ(publish("old"), PublishFailure::none);
    const auto calls = static_cast<int>(m_files.calls().size());
    ASSERT_GT(calls, 20);
    for (int number = 1; number <= calls; ++number) {
        SCOPED_TRACE("call " + std::to_string(number));
        m_files.forgetCalls();
        m_files.failAt(number);
        const bool isPublished = publish("new") == PublishFailure::none;
        m_files.heal();
        EXPECT_EQ(published(), isPublished ? "new" : "old");
        EXPECT_EQ(publish("old"), PublishFailure::none);
        EXPECT_EQ(support::filesBelow("to"), kPage);

        m_files.forgetCalls();
        m_files.stopAt(number); // the machine stops
        (void)publish("new");
        m_files.heal();
        PublishFolder next(m_files, m_folder.path() + "to/page");
        EXPECT_EQ(next.begin(), PublishFailure::none);
        EXPECT_TRUE(published() == "old" || published() == "new") << published();
    }
}

TEST_F(PublishFolderTest, EndsQuietlyWhenMemoryIsShort) {
    {
        PublishFolder folder(m_files, m_folder.path() + "to/page");
        EXPECT_EQ(folder.begin(), PublishFailure::none);
        m_files.setRule([](const support::Call&) -> support::Fault { throw std::bad_alloc(); }, 0);
    }
    m_files.heal();
    EXPECT_EQ(publish("new"), PublishFailure::none);
}

TEST_F(PublishFolderTest, IsWrittenByOneAtATimeAndBesideNothingOfOthers) {
    PublishFolder first(m_files, m_folder.path() + "to/page/");
    EXPECT_EQ(first.begin(), PublishFailure::none);
    EXPECT_EQ(publish("second"), PublishFailure::busy);
    support::writeBytes("to/page.quorvel-new/mine.txt", std::string("mine"));
    EXPECT_EQ(first.write("index.html", "first"), PublishFailure::none);
    EXPECT_EQ(first.commit(), PublishFailure::none);
    EXPECT_EQ(published(), "first");
}

class PublishSceneTest : public support::TempFolderTest {
protected:
    PublishSceneTest() {
        support::ClipSpec spec;
        spec.frames = 10;
        m_clip = support::makeClip(spec);
        support::writeBytes("scene/good.ogv", m_clip);
    }
    PublishResult publish(const Names& videos, const std::function<bool()>& isCancelled = {}) {
        std::string text = "<Scene><Name>Drill</Name><FirstBranch>A0</FirstBranch>";
        for (std::size_t i = 0; i < videos.size(); ++i) {
            text += "<Branch><ID>A" + std::to_string(i) + "</ID><Filename>" + videos[i] +
                    "</Filename></Branch>";
        }
        support::writeBytes("scene/Scene.xml", text + "</Scene>");
        PublishRequest request;
        request.scene = m_folder.path() + "scene/";
        request.folder = m_folder.path() + "page";
        request.converter = m_converter;
        return publishScene(
            platform::nativeFileSystem(), request,
            [this](const PublishProgress& progress) { m_progress.push_back(progress); },
            isCancelled ? isCancelled : [] { return false; });
    }

    support::Bytes m_clip;
    imports::Converter m_converter{FAKE_CONVERTER, FAKE_CONVERTER};
    std::vector<PublishProgress> m_progress;
};

TEST_F(PublishSceneTest, TakesTheClipsOfTheScenesOwnFolderThatCanBePlayed) {
    support::writeBytes("outside.ogv", m_clip);
    support::writeBytes("scene/broken.ogv", std::string("no clip"));
    const PublishResult result =
        publish({"missing.ogv", "../outside.ogv", "broken.ogv", "good.ogv", "good.ogv", ""});
    EXPECT_EQ(result.state, PublishResult::State::published) << publishFailureText(result);
    EXPECT_EQ(support::filesBelow("page"),
              (Names{"clips/1.webm", "index.html", "player.css", "player.js", "published.txt",
                     "scene.js", "still.jpg"}));
    EXPECT_EQ(result.fileCount, 7);
    EXPECT_EQ(result.videoCount, 1);
    EXPECT_TRUE(result.hasStill);
    const std::string scene = support::readBytes("page/scene.js");
    for (const char* video : {"missing.ogv", "../outside.ogv", "broken.ogv"}) {
        EXPECT_NE(scene.find(std::string("\"video\":\"") + video + "\",\"file\":\"\""),
                  std::string::npos)
            << video;
    }
    EXPECT_NE(scene.find("\"title\":\"Drill\""), std::string::npos);
    ASSERT_FALSE(m_progress.empty());
    EXPECT_EQ(m_progress.front().video, "good.ogv");
    EXPECT_EQ(m_progress.front().count, 1);
    EXPECT_EQ(m_progress.back().percent, 100);
}

TEST_F(PublishSceneTest, ConvertsAgainOnlyWhatHasChanged) {
    const auto converted = [this](const Names& videos) {
        m_progress.clear();
        const PublishResult result = publish(videos);
        EXPECT_EQ(result.state, PublishResult::State::published) << publishFailureText(result);
        EXPECT_EQ(result.videoCount, 2);
        Names names;
        for (const PublishProgress& progress : m_progress) {
            if (names.empty() || names.back() != progress.video) {
                names.push_back(progress.video);
            }
        }
        return names;
    };
    support::writeBytes("scene/other.ogv", support::makeClip({.frames = 10, .quality = 30}));
    const Names both{"good.ogv", "other.ogv"};
    EXPECT_EQ(converted(both), both);
    EXPECT_EQ(converted({"other.ogv", "good.ogv"}), Names{}) << "another number, the same clip";
    EXPECT_EQ(support::readBytes("page/clips/1.webm"), support::readBytes("page/clips/2.webm"));
    support::writeBytes("scene/other.ogv", support::makeClip({.frames = 10, .quality = 20}));
    EXPECT_EQ(converted(both), Names{"other.ogv"});
    support::writeBytes("page/clips/1.webm", std::string("damaged"));
    EXPECT_EQ(converted(both), Names{"good.ogv"});
    m_converter.ffmpeg = m_folder.path() + "another.exe";
    std::filesystem::copy_file(FAKE_CONVERTER, m_converter.ffmpeg);
    EXPECT_EQ(converted(both), both);
    // A list that leads out of the folder.
    std::string list = support::readBytes("page/published.txt");
    list.replace(list.find("clips/1.webm"), 12, "clips/../../scene/good.ogv");
    support::writeBytes("page/published.txt", list + "clips/1.webm\n");
    EXPECT_EQ(converted(both), Names{"good.ogv"});
}

TEST_F(PublishSceneTest, SaysWhyThereIsNoPage) {
    const std::vector<std::pair<Names, std::string>> kCases{
        {{}, "no branch has a video."},
        {{"", ""}, "no branch has a video."},
        {{"disk full.ogv"}, "no space left."},
        {{"dies.ogv"}, "dies.ogv: the converter stopped (9)."},
        {{"nothing.ogv"}, "nothing.ogv: its zones would not fit: the numbers of frames differ."},
        {{"<"}, "the scene cannot be read."}};
    for (const auto& [videos, text] : kCases) {
        if (!videos.empty() && videos.front().size() > 1) {
            support::writeBytes("scene/" + videos.front(), m_clip);
        }
        const PublishResult result = publish(videos);
        EXPECT_EQ(result.state, PublishResult::State::failed);
        EXPECT_EQ(publishFailureText(result), text);
        EXPECT_EQ(std::filesystem::exists("page"), false) << text;
    }
    m_converter = {};
    EXPECT_EQ(publishFailureText(publish({"good.ogv"})), "the converter is not installed.");
}

TEST_F(PublishSceneTest, LeavesTheOldPageWhenItIsCancelled) {
    ASSERT_EQ(publish({"good.ogv"}).state, PublishResult::State::published);
    const Names before = support::filesBelow(".");
    support::writeBytes("scene/hangs.ogv", support::makeClip({.frames = 10, .quality = 30}));
    const PublishResult result =
        publish({"hangs.ogv"}, [this] { return m_progress.back().video == "hangs.ogv"; });
    EXPECT_EQ(result.state, PublishResult::State::cancelled);
    std::filesystem::remove("scene/hangs.ogv");
    EXPECT_EQ(support::filesBelow("."), before);
}

} // namespace
} // namespace publish
