// Runs commands of quorvel-inspect and captures both output streams.
#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "core/Log.h"
#include "tests/support/TempFolder.h"
#include "tools/inspect/Command.h"

namespace inspect_tests {

class CommandTest : public support::TempFolderTest {
protected:
    CommandTest() : m_previous(core::Log::exchange(nullptr)) { core::Log::useStandardErrorOnly(); }
    ~CommandTest() override { core::Log::exchange(m_previous); }

    int run(const inspect::Arguments& arguments) {
        std::ostringstream out;
        testing::internal::CaptureStderr();
        const int code = inspect::runCommand(arguments, out);
        m_errors = testing::internal::GetCapturedStderr();
        m_output = out.str();
        return code;
    }

    std::string m_output;
    std::string m_errors;

private:
    std::shared_ptr<core::Log> m_previous;
};

} // namespace inspect_tests
