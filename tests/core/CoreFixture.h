// A folder of its own on a faulty file system, and one save from beginning to end.
#pragma once

#include <string>
#include <vector>

#include "core/SafeSave.h"
#include "core/Services.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/FixedClock.h"
#include "tests/support/TempFolder.h"

namespace core_tests {

using Lines = std::vector<std::string>;

class CoreTest : public support::TempFolderTest {
protected:
    support::FixedClock m_clock;
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_services{{&m_files, &m_clock, &platform::nativeProcess()}};
};

class SafeSaveTest : public CoreTest {
protected:
    /// Keeps the reason of a failure and what was printed on standard error.
    bool save(const std::string& path, const std::string& text) {
        testing::internal::CaptureStderr();
        bool good = false;
        {
            core::SafeSave saving;
            good = saving.open(path, "wt") && saving.file().writeString(text) && saving.prepare() &&
                   saving.commit();
            m_failure = saving.failure().text();
        }
        m_printed = testing::internal::GetCapturedStderr();
        return good;
    }

    std::string m_failure;
    std::string m_printed;
};

} // namespace core_tests
