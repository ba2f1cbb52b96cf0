// Opening clips ahead when memory runs out on the thread that does it.
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/FileSystem.h"
#include "playback/ClipShelf.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/RefusedMemory.h"
#include "tests/support/TempFolder.h"

namespace {

class ClipShelfMemory : public support::TempFolderTest {};

TEST_F(ClipShelfMemory, WhatCannotBeOpenedAheadIsOpenedWhenItIsTaken) {
    const std::string path = m_folder.path() + "a clip with a name that takes memory.ogv";
    support::writeBytes(path, support::makeClip({.frames = 3}));
    playback::ClipShelf shelf(platform::nativeFileSystem());
    std::vector<std::string> wanted{path};
    support::allocationsLeft = 0;
    shelf.want(std::move(wanted));
    while (support::allocationsLeft >= 0) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(shelf.take(path));
}

} // namespace
