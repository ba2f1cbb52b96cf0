// A scene on files in memory that can fail, and the log's lines, for the scene tests.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Services.h"
#include "scene/SceneManager.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/LogCapture.h"
#include "tests/support/MemoryFileSystem.h"

namespace scene_tests {

using Lines = std::vector<std::string>;

class SceneTest : public ::testing::Test {
protected:
    /// The file of the scene with this name.
    [[nodiscard]] std::string& file(const std::string& name) {
        m_disk.folders.insert({"/home/Scenes", "/home/Scenes/" + name});
        return m_disk.files["/home/Scenes/" + name + "/Scene.xml"];
    }
    bool load(const std::string& text) {
        file("A") = text;
        return m_scene->Load("A");
    }

    support::MemoryFileSystem m_disk;
    support::FaultyFileSystem m_files{m_disk};
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
    support::LogCapture m_log;
    std::shared_ptr<scene::SceneManager> m_scene = scene::SceneManager::create();
};

} // namespace scene_tests
