// One save from beginning to end on a faulty file system, for the tests of SafeSave.
#pragma once

#include <string>

#include "core/SafeSave.h"
#include "core/Services.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"

namespace core_tests {

class SafeSaveTest : public support::TempFolderTest {
protected:
    bool save(const std::string& path, const std::string& text) {
        core::SafeSave saving;
        const bool good = saving.open(path, "wt") && saving.file().writeString(text) &&
                          saving.prepare() && saving.commit();
        m_failure = saving.failure();
        return good;
    }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
    std::string m_failure;
};

} // namespace core_tests
