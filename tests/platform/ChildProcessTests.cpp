#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/ChildProcess.h"
#include "platform/FileSystem.h"
#include "tests/support/TempFolder.h"

namespace {

using platform::ChildOutput;
using platform::ChildProcess;
using std::chrono::milliseconds;

struct Finished {
    std::string out;
    std::string error;
    int exitCode = 0;
};

class ChildProcessTest : public support::TempFolderTest {
protected:
    static std::unique_ptr<ChildProcess> start(const std::vector<std::string>& arguments) {
        int error = 0;
        auto child = platform::startChild({CHILD_PROGRAM, arguments}, error);
        EXPECT_TRUE(child) << error;
        return child;
    }

    static Finished finish(ChildProcess& child) {
        Finished run;
        ChildOutput output;
        while (child.read(milliseconds(1000), output)) {
            EXPECT_LE(output.out.size(), ChildProcess::kReadBytes);
            run.out += output.out;
            run.error += output.error;
        }
        run.exitCode = child.exitCode();
        return run;
    }

    static Finished run(const std::vector<std::string>& arguments) {
        const auto child = start(arguments);
        return child ? finish(*child) : Finished();
    }

    static bool isLocked(const std::string& file) {
        int error = 0;
        return platform::nativeFileSystem().lockFile(file, error) == nullptr && error == 0;
    }
};

TEST_F(ChildProcessTest, EveryArgumentArrivesUnchanged) {
    const std::vector<std::string> texts{"plain",
                                         "two words",
                                         "",
                                         "\"",
                                         "say \"hi\"",
                                         "a\\",
                                         "a b\\",
                                         "a\\\"b",
                                         "\\\\server\\share dir\\\\",
                                         "-i",
                                         "100%",
                                         "%PATH%",
                                         "$HOME `id`",
                                         "a;b|c&d",
                                         "*.mp4",
                                         "it's",
                                         "Größe 北京 \xF0\x9F\x8E\xA5",
                                         "a\tb",
                                         "^caret^",
                                         "trailing ",
                                         "(x)"};
    std::vector<std::string> arguments{"echo"};
    std::string expected;
    for (const std::string& text : texts) {
        arguments.push_back(text);
        expected += '[' + text + ']';
    }
    EXPECT_EQ(run(arguments).out, expected);
}

TEST_F(ChildProcessTest, TellsHowAProgramEnds) {
    EXPECT_EQ(run({"echo"}).exitCode, 0);
    EXPECT_EQ(run({"read"}).exitCode, 7) << "standard input is empty";
}

TEST_F(ChildProcessTest, WhatCannotRunIsAFailure) {
    support::writeBytes("text.exe", "no program");
    const std::string good = CHILD_PROGRAM;
    const std::vector<platform::ChildRequest> requests{
        {"", {}},
        {m_folder.path() + "missing", {}},
        {m_folder.path(), {}},
        {m_folder.path() + "text.exe", {}},
        {good, {"echo"}, m_folder.path() + "missing"},
        {good, {"echo", std::string("a\0b", 3)}},
    };
    for (const platform::ChildRequest& request : requests) {
        int error = 0;
        EXPECT_FALSE(platform::startChild(request, error)) << request.program;
        EXPECT_NE(error, 0) << request.program;
    }
}

TEST_F(ChildProcessTest, BothPipesAreReadWhole) {
    constexpr std::size_t kBytes = std::size_t{8} << 20U;
    const Finished flood = run({"flood", std::to_string(kBytes)});
    EXPECT_EQ(flood.out.size(), kBytes);
    EXPECT_EQ(flood.error.size(), kBytes);
    EXPECT_EQ(flood.exitCode, 0);
}

TEST_F(ChildProcessTest, AReadWaitsNoLongerThanAsked) {
    const auto child = start({"hold", m_folder.path() + "lock"});
    ChildOutput output;
    std::string text;
    while (text != "held" && child->read(milliseconds(1000), output)) {
        text += output.out;
    }
    EXPECT_TRUE(child->read(milliseconds(0), output));
    EXPECT_TRUE(child->read(milliseconds(5), output));
    EXPECT_TRUE(output.out.empty() && output.error.empty());
    child->end();
    EXPECT_FALSE(child->read(milliseconds(1000), output));
    EXPECT_EQ(child->exitCode(), ChildProcess::kKilled);
    EXPECT_FALSE(isLocked("lock"));
}

TEST_F(ChildProcessTest, EndsWithEverythingThatItHasStarted) {
    // The first program ends by itself; the second would run on, and keep the pipes open.
    const auto ended = start({"spawn", m_folder.path() + "lock"});
    EXPECT_EQ(finish(*ended).exitCode, 3);
    EXPECT_FALSE(isLocked("lock"));

    auto flooding = start({"flood", "1000000000"}); // which nobody reads
    flooding.reset();

    auto holding = start({"hold", m_folder.path() + "held"});
    ChildOutput output;
    while (!output.out.ends_with("held") && holding->read(milliseconds(1000), output)) {
    }
    EXPECT_TRUE(isLocked("held"));
    holding.reset();
    EXPECT_FALSE(isLocked("held"));
}

} // namespace
