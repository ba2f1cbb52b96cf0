#include <string>

#include <windows.h>

#include "platform/CommandLine.h"
#include "platform/win32/ProgramName.h"
#include "platform/win32/WideText.h"

namespace platform {

std::string commandLine(int /*count*/, const char* const* /*arguments*/) {
    return win32::narrow(win32::withoutProgramName(GetCommandLineW()));
}

} // namespace platform
