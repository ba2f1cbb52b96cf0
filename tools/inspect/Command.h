// The commands of quorvel-inspect. Each has its own source file and an entry in the table of
// Command.cpp.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace scene {
class SceneManager;
}

namespace inspect {

/// Exit codes.
constexpr int kSuccess = 0;
constexpr int kFindings = 1;   ///< also when something was not made
constexpr int kUnreadable = 2; ///< also for bad usage; map and publish return 1 for both

/// What follows the command's name. UTF-8.
using Arguments = std::vector<std::string>;

/// Results go to `out`, everything else to stderr. Returns the exit code.
using CommandFunction = int (*)(const Arguments& arguments, std::ostream& out);

struct Command {
    const char* name;
    const char* usage; ///< the arguments, as shown to users
    CommandFunction run;
    const char* help; ///< what --help prints below the usage: whole lines
    void (*printMore)(std::ostream& out) = nullptr; ///< below that
};

/// check DIR
[[nodiscard]] int runCheck(const Arguments& arguments, std::ostream& out);
/// One line for each kind of finding.
void printKinds(std::ostream& out);
/// frames FILE [--sequential] [N | A-B | random:SEED:COUNT]...
[[nodiscard]] int runFrames(const Arguments& arguments, std::ostream& out);
/// import FILE... --into DIR [--quality small|standard|high] [--no-sound] [--keep-both]
///     [--readable] [--converter FILE] [--json]
[[nodiscard]] int runImport(const Arguments& arguments, std::ostream& out);
/// map DIR [--svg FILE] [--dot FILE]
[[nodiscard]] int runMap(const Arguments& arguments, std::ostream& out);
/// publish DIR --to FOLDER [--title TITLE] [--language LANGUAGE] ...
[[nodiscard]] int runPublish(const Arguments& arguments, std::ostream& out);
/// scene DIR [--rewrite DIR2]
[[nodiscard]] int runScene(const Arguments& arguments, std::ostream& out);
/// video FILE
[[nodiscard]] int runVideo(const Arguments& arguments, std::ostream& out);
/// zones BASE [--display WxH] [--video WxH] [--frames N] [--rewrite BASE2]
///     [--export cvat FILE | --import cvat FILE]
[[nodiscard]] int runZones(const Arguments& arguments, std::ostream& out);

/// Finds the command that the first argument names and runs it. Never throws: an error is reported
/// on stderr and returns kUnreadable.
[[nodiscard]] int runCommand(const Arguments& arguments, std::ostream& out);

/// Prints `message` and the command's usage on stderr; returns kUnreadable.
[[nodiscard]] int badUsage(const std::string& command, const std::string& message);

/// The scene in the folder, which lends it its name if the file has none. Empty, with a report on
/// stderr, if it cannot be read.
[[nodiscard]] std::shared_ptr<scene::SceneManager> readScene(const std::string& folder);

/// Removes "NAME value" from `arguments`. False when the value is missing; without the option
/// `value` stays unchanged.
[[nodiscard]] bool takeOption(Arguments& arguments, const std::string& name, std::string& value);
/// Removes the option "NAME"; whether it was there.
[[nodiscard]] bool takeFlag(Arguments& arguments, const std::string& name);

} // namespace inspect
