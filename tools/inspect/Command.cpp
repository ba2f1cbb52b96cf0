#include "tools/inspect/Command.h"

#include <algorithm>
#include <array>
#include <exception>

#include "core/StandardError.h"

namespace inspect {
namespace {

int runVersion(const Arguments& /*arguments*/, std::ostream& out) {
    out << "quorvel-inspect " << QUORVEL_VERSION << '\n';
    return kGood;
}

constexpr std::array kCommands{
    Command{"--version", "", runVersion},
    Command{"frames", "FILE [--sequential] [N | A-B | random:SEED:COUNT]...", runFrames},
    Command{"scene", "DIR [--rewrite DIR2]", runScene},
    Command{"video", "FILE", runVideo},
    Command{"zones", "BASE [--display WxH] [--video WxH] [--frames N] [--rewrite BASE2]", runZones},
};

std::string usage(const Command& command) {
    const std::string line = std::string("quorvel-inspect ") + command.name;
    return *command.usage == '\0' ? line : line + " " + command.usage;
}

const Command* findCommand(const std::string& name) {
    const auto* const found = std::find_if(kCommands.begin(), kCommands.end(),
                                           [&](const Command& c) { return c.name == name; });
    return found == kCommands.end() ? nullptr : found;
}

} // namespace

int badUsage(const std::string& command, const std::string& message) {
    core::tellStandardError("quorvel-inspect: " + message);
    for (const Command& known : kCommands) {
        if (command.empty() || command == known.name) {
            core::tellStandardError("usage: " + usage(known));
        }
    }
    return kUnreadable;
}

bool takeOption(Arguments& arguments, const std::string& name, std::string& value) {
    const auto found = std::find(arguments.begin(), arguments.end(), name);
    if (found == arguments.end()) {
        return true;
    }
    if (found + 1 == arguments.end()) {
        return false;
    }
    value = *(found + 1);
    arguments.erase(found, found + 2);
    return true;
}

int runCommand(const Arguments& arguments, std::ostream& out) {
    try {
        if (arguments.empty()) {
            return badUsage("", "no command");
        }
        const Command* command = findCommand(arguments.front());
        if (!command) {
            return badUsage("", "unknown command \"" + arguments.front() + "\"");
        }
        const int code = command->run({arguments.begin() + 1, arguments.end()}, out);
        out.flush();
        if (out) {
            return code;
        }
        core::tellStandardError("quorvel-inspect: the output cannot be written");
    } catch (const std::exception& error) {
        core::tellStandardError(std::string("quorvel-inspect: ") + error.what());
    }
    return kUnreadable;
}

} // namespace inspect
