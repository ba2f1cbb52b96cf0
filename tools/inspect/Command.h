// The commands of quorvel-inspect. Each has a source file of its own and a line in the table of
// Command.cpp.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace inspect {

/// Exit codes.
constexpr int kGood = 0;
constexpr int kFindings = 1;
constexpr int kUnreadable = 2; ///< also for bad usage

/// What stands after the command's name. UTF-8.
using Arguments = std::vector<std::string>;

/// Results go to `out`, everything else to stderr. Gives the exit code.
using CommandFunction = int (*)(const Arguments& arguments, std::ostream& out);

struct Command {
    const char* name;
    const char* usage; ///< the arguments, for people
    CommandFunction run;
    const char* help; ///< what --help prints below the usage: whole lines
};

/// frames FILE [--sequential] [N | A-B | random:SEED:COUNT]...
[[nodiscard]] int runFrames(const Arguments& arguments, std::ostream& out);
/// scene DIR [--rewrite DIR2]
[[nodiscard]] int runScene(const Arguments& arguments, std::ostream& out);
/// video FILE
[[nodiscard]] int runVideo(const Arguments& arguments, std::ostream& out);
/// zones BASE [--display WxH] [--video WxH] [--frames N] [--rewrite BASE2]
[[nodiscard]] int runZones(const Arguments& arguments, std::ostream& out);

/// Finds the command that the first argument names and runs it. Never throws: what goes wrong is
/// told on stderr and gives kUnreadable.
[[nodiscard]] int runCommand(const Arguments& arguments, std::ostream& out);

/// Tells `message` and the command's usage on stderr; gives kUnreadable.
[[nodiscard]] int badUsage(const std::string& command, const std::string& message);

/// Takes "NAME value" out of `arguments`. False when the value is missing; `value` stays as it was
/// when there is no such option.
[[nodiscard]] bool takeOption(Arguments& arguments, const std::string& name, std::string& value);

} // namespace inspect
