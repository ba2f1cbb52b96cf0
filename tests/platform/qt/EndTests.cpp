// A signal ends the program through its own loops.
#include <csignal>

#include <gtest/gtest.h>

#include "tests/support/gui/TestGui.h"

TEST(EndOfProgram, ASignalEndsAllLoopsAndEveryLaterOne) {
    auto& gui = test::gui();
    auto& loop = gui.loop();
    EXPECT_FALSE(gui.isEnding());
    int ended = 0;
    loop.post([&] {
        loop.post([] { std::raise(SIGTERM); });
        loop.run();
        EXPECT_TRUE(gui.isEnding());
        ++ended;
    });
    loop.run();
    ++ended;
    loop.run();
    EXPECT_EQ(ended, 2);
    EXPECT_TRUE(gui.isEnding());
}
