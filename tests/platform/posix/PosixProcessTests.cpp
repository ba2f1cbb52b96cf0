#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/Process.h"
#include "tests/support/TempFolder.h"

namespace {

namespace fs = std::filesystem;

class PosixProcessTest : public support::TempFolderTest {
protected:
    PosixProcessTest() {
        support::makeFolder("a b");
        EXPECT_EQ(::mkfifo("report", 0600), 0);
    }

    std::string program(const std::string& name, const std::string& script, int access = 0755) {
        support::writeBytes(name, script);
        fs::permissions(name, static_cast<fs::perms>(access));
        return m_folder.path() + name;
    }

    bool launch(const std::string& path, const std::string& arguments = "") {
        return platform::nativeProcess().launch({path, arguments, m_folder.path() + "a b/"});
    }

    /// What the started program writes, line by line; waits until it has.
    std::vector<std::string> report() {
        std::ifstream text("report"); // a pipe
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    static void expectNoChild() {
        EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
        EXPECT_EQ(errno, ECHILD);
    }
};

TEST_F(PosixProcessTest, StartsAProgramOfItsOwnInItsFolderWithoutOurFiles) {
    // Of the process's own record the sixth field is the session.
    const std::string path = program("a b/menu (1).sh", "#!/bin/sh\n"
                                                        "files=$(readlink /proc/$$/fd/*)\n"
                                                        "read -r stat < /proc/$$/stat\n"
                                                        "set -- \"$@\" -- ${stat##*) }\n"
                                                        "{ pwd; echo \"$0\"; echo \"$*\"; "
                                                        "echo \"$files\"; } > ../report\n");
    const int open = ::open(".", O_RDONLY); // without O_CLOEXEC
    ASSERT_GE(open, 0);
    ASSERT_TRUE(launch(path, "one  two"));
    expectNoChild();
    const std::vector<std::string> lines = report();
    ::close(open);
    ASSERT_GE(lines.size(), 6U);
    EXPECT_EQ(lines[0], m_folder.path() + "a b");
    EXPECT_EQ(lines[1], path);
    std::istringstream words(lines[2]);
    std::string one, two, dashes, state;
    pid_t parent = 0, group = 0, session = 0;
    words >> one >> two >> dashes >> state >> parent >> group >> session;
    EXPECT_EQ(one + two + dashes, "onetwo--");
    EXPECT_NE(session, ::getsid(0));
    EXPECT_NE(parent, ::getpid());
    const auto files = lines.begin() + 3;
    EXPECT_EQ(std::count(files, lines.end(), "/dev/null"), 3) << "the standard streams";
    EXPECT_EQ(std::count(files, lines.end(), fs::canonical(".").string()), 0);
}

TEST_F(PosixProcessTest, WhatCannotRunIsAFailureAndLeavesNoChild) {
    const std::string script = "#!/bin/sh\n";
    const std::string paths[] = {
        "",
        m_folder.path() + "missing",
        m_folder.path() + "a b",
        program("plain.sh", script, 0644),
        program("interpreter.sh", "#!/no/such/interpreter\n"),
        program("text", "neither a script nor a program\n"),
    };
    for (const std::string& path : paths) {
        EXPECT_FALSE(launch(path)) << path;
        expectNoChild();
    }
    const std::string good = program("good.sh", script);
    EXPECT_FALSE(platform::nativeProcess().launch({good, "", m_folder.path() + "missing"}));
    EXPECT_TRUE(launch(good));
    expectNoChild();
}

} // namespace
