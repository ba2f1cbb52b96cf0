#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "core/Log.h"
#include "tests/core/CoreFixture.h"
#include "tests/support/LogCapture.h"

namespace {

using core_tests::Lines;

const std::string kHeader =
    "<HTML><HEAD><TITLE>Log Output</TITLE></HEAD><BODY BGCOLOR=#00001F>"
    "<FONT COLOR=#FFFFFF>[03:07:41 PM]</FONT> <FONT COLOR=#00FF00>Logging started</FONT><BR>";
const std::string kFooter =
    "<FONT COLOR=#FFFFFF>[03:07:41 PM]</FONT> <FONT COLOR=#00FF00>Logging ended</FONT><BR>"
    "</BODY></HTML>\r\n";

std::string errorEntry(const std::string& message) {
    return "<FONT COLOR=#FFFFFF>[03:07:41 PM]</FONT> <FONT COLOR=#FF0000>Error: " + message +
           "</FONT><BR>";
}

/// The process-wide log, starting again in a folder of its own at a fixed time of day.
class LogTest : public core_tests::CoreTest {
protected:
    ~LogTest() override { core::Log::exchange(m_previous); }

    std::shared_ptr<core::Log> m_previous = core::Log::exchange(nullptr);
};

TEST_F(LogTest, WritesThePageByteForByteWhenTheLastReferenceGoes) {
    support::writeBytes("Log.html", "an old log");
    testing::internal::CaptureStderr();
    core::Log::get()->Error("%s:%d Invalid branch index", "..\\BranchManager.cpp", 337);
    EXPECT_FALSE(support::exists("Log.html")) << "the old page goes at the first use";
    core::Log::get()->Error("Unknown node type: %s", "<b>&\n");
    core::Log::get()->Write(core::Log::Level::warning, "low on %s", "disk");
    std::shared_ptr<core::Log> held = core::Log::get();
    core::Log::release();
    EXPECT_FALSE(support::exists("Log.html")) << "a caller still holds it";
    held.reset();

    EXPECT_EQ(support::readBytes("Log.html"),
              kHeader + errorEntry("..\\BranchManager.cpp:337 Invalid branch index") +
                  errorEntry("Unknown node type: <b>&\r\n") +
                  "<FONT COLOR=#FFFFFF>[03:07:41 PM]</FONT> <FONT COLOR=#FFFF00>Warning: low on "
                  "disk</FONT><BR>" +
                  kFooter);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Error: ..\\BranchManager.cpp:337 Invalid branch index\n"
              "Error: Unknown node type: <b>&\n\n");
}

TEST_F(LogTest, ARunWithoutErrorsWritesThePageWhereTheProgramStarted) {
    core::Log::get();
    support::makeFolder("elsewhere");
    ASSERT_TRUE(m_files.setCurrentFolder("elsewhere"));
    core::Log::release();
    EXPECT_EQ(support::readBytes("../Log.html"), kHeader + kFooter);
    testing::internal::CaptureStderr();
    core::Log::get()->Error("too late");
    core::Log::release();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: too late\n");
    EXPECT_EQ(support::readBytes("../Log.html"), kHeader + kFooter);
    EXPECT_EQ(support::filesBelow(m_folder.path()), Lines{"Log.html"});
}

TEST_F(LogTest, TheNormalEndOfTheProgramWritesThePageAndLaterMessagesDoNotHurt) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own, without other tests
    const auto run = [] {
        // Registered before the log's own end, so it runs after it.
        std::atexit([] {
            core::Log::get()->Error("from the very end");
            std::fputs(support::readBytes("Log.html").c_str(), stderr);
            const std::filesystem::path own = std::filesystem::current_path();
            std::filesystem::current_path(own.parent_path());
            std::filesystem::remove_all(own); // the fixture is not destroyed in that process
        });
        core::Log::get()->Error("a real error");
        std::exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0),
                "Error: a real error\nError: from the very end\n<HTML>.*Error: a real error<.*"
                "Logging ended</FONT><BR></BODY></HTML>");
}

TEST_F(LogTest, ReportingWhileThePageIsWrittenDoesNotRecurse) {
    // Every write to the page reports an error itself, as a broken stream handle would.
    core::Log::get();
    int reports = 0;
    const auto reportOnce = [&](const support::Call& call) {
        if (call.operation == "write" && ++reports == 1) {
            core::Log::get()->Error("while ending");
        }
        return support::Fault::none;
    };
    m_files.setRule(reportOnce, 0);
    testing::internal::CaptureStderr();
    core::Log::release();
    EXPECT_EQ(support::readBytes("Log.html"), kHeader + kFooter);
    for (const char* operation : {"open", "write", "close"}) { // a page that is lost silently
        core::Log::exchange(nullptr);
        core::Log::get();
        m_files.failOn(operation, EACCES);
        core::Log::release();
        m_files.heal();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: while ending\n");
}

TEST(LogMessages, APageThatGrowsWithoutEndStopsAtItsLimitAndIsStillClosed) {
    const support::LogCapture log;
    const std::string message(8000, 'm');
    for (int i = 0; i < 10000; ++i) {
        core::Log::get()->Write(core::Log::Level::warning, "%s", message.c_str());
    }
    core::Log::get()->Write(core::Log::Level::information, "the last words");
    EXPECT_EQ(log.page().size() >> 20U, 64U);
    EXPECT_NE(log.page().find("the last words"), std::string::npos);
}

TEST(LogMessages, AnOverlongMessageIsCutBetweenCharacters) {
    struct Case {
        std::string text, kept;
    };
    const std::string x(8189, 'x');
    const std::string euro = "\xE2\x82\xAC";
    const Case cases[] = {
        {x + "ab", x + "ab"},
        {x + "abc", x + "ab"},
        {x + euro, x},
        {x.substr(1) + "\xF0\x9F\x98\x80", x.substr(1)},
        {x.substr(1) + euro, x.substr(1) + euro},
        {std::string(9000, '\x80'), std::string(8191, '\x80')}, // no UTF-8 at all
        {std::string(100000, 'y'), std::string(8191, 'y')},
    };
    for (const Case& c : cases) {
        const support::LogCapture log;
        testing::internal::CaptureStderr();
        core::Log::get()->Error("%s", c.text.c_str());
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: " + c.kept + "\n");
        EXPECT_EQ(log.errors(), Lines{c.kept});
    }
}

} // namespace
