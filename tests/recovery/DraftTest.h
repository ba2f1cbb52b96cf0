// Drafts on the disk of a test, with a clock that the test turns and files that can fail.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/Services.h"
#include "recovery/Drafts.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/FixedClock.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TaskLoop.h"
#include "tests/support/TempFolder.h"

namespace recovery_tests {

class DraftTest : public support::TempFolderTest {
protected:
    /// Lets the time pass after which what was edited is due.
    void wait() { m_clock.passed += recovery::Drafts::kDelay.count(); }
    template <typename Condition>
    void until(Condition condition) {
        const auto isMet = [&condition] {
            try {
                return condition();
            } catch (const std::exception&) {
                return false; // a file is being replaced; the end of that is an event
            }
        };
        while (!isMet()) {
            m_loop.processEvents(true);
        }
    }
    /// Whether a draft's file holds such a text, or a text at all.
    static bool isOnDisk(const std::string& text) {
        for (const std::string& name : support::filesBelow("Drafts")) {
            const bool isContent = name.find('-') != std::string::npos;
            if (isContent && support::readBytes("Drafts/" + name).find(text) != std::string::npos) {
                return true;
            }
        }
        return false;
    }

    support::LogCapture m_log;
    support::FixedClock m_clock;
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_override{{&m_files, &m_clock, core::services().process}};
    support::TaskLoop m_loop;
    bool m_areKept = true;
    std::optional<recovery::Drafts> m_drafts{std::in_place, m_loop, [this] { return m_areKept; }};
};

} // namespace recovery_tests
