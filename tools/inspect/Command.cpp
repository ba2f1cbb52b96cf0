#include "tools/inspect/Command.h"

#include <algorithm>
#include <array>
#include <exception>

#include "core/StandardError.h"

namespace inspect {
namespace {

constexpr std::array kCommands{
    Command{
        "check", "DIR", runCheck,
        "Print what is wrong with the scene in the folder DIR and with its videos and zones, one\n"
        "JSON object a line: its severity, kind and text, and where it is, with what does not\n"
        "apply left out. Actions count from 1, frames from 0. Findings of the whole scene come\n"
        "first, then those of each branch: its own and its video's, then its actions'. Exit\n"
        "status: 0 no errors, 1 errors, 2 the scene cannot be read.\n",
        printKinds},
    Command{"frames", "FILE [--sequential] [N | A-B | random:SEED:COUNT]...", runFrames,
            "Print a hash of each frame's picture, one \"NUMBER HASH\" a line, \"NUMBER -\" for a\n"
            "frame that does not come. Without numbers: all frames of the clip.\n"
            "\n"
            "  N                  this frame; frames count from 0\n"
            "  A-B                frames A to B, both included\n"
            "  random:SEED:COUNT  COUNT random frames, the same ones for the same SEED\n"
            "  --sequential       play the clip from its start instead of seeking each frame\n"},
    Command{
        "import",
        "FILE... --into DIR [--quality small|standard|high] [--no-sound] [--keep-both] "
        "[--readable] [--converter FILE] [--json]",
        runImport,
        "Convert videos of phones and cameras into clips in the folder DIR, one after the\n"
        "other. A file that cannot be converted does not stop the rest. Clips get the names of\n"
        "their files; nothing is ever overwritten.\n"
        "\n"
        "  --into DIR         where the clips go; an existing folder\n"
        "  --quality QUALITY  small: 640 x 352 at most, standard: 1280 x 720, high: 1920 x 1072\n"
        "  --no-sound         leave the sound out\n"
        "  --keep-both        where a name is taken, append a number to it\n"
        "  --readable         of a damaged file, take what can be read\n"
        "  --converter FILE   the program ffmpeg, with ffprobe beside it; else both are looked\n"
        "                     for beside this program and on the system's path\n"
        "  --json             print one JSON object a line for each file: source, file,\n"
        "                     frames, fps, width, height, sound, bytes, state (done, failed or\n"
        "                     cancelled), reason (a word), text and details\n"
        "\n"
        "Exit status: 0 every file was converted, 1 at least one was not, 2 there is no\n"
        "converter or the command line is wrong.\n"},
    Command{"map", "DIR [--svg FILE] [--dot FILE]", runMap,
            "Write a map of the scene in the folder DIR, as a drawing or as a graph in the DOT\n"
            "language, or both. Every branch is in it with its whole name. Exit status: 0\n"
            "written, 1 not written.\n"},
    Command{
        "publish",
        "DIR --to FOLDER [--title TITLE] [--language LANGUAGE] [--no-outlines] [--no-keys] "
        "[--report] [--converter FILE]",
        runPublish,
        "Publish the scene in the folder DIR as a web page: a folder that plays in any browser.\n"
        "A folder that was published before is replaced once the new one is whole.\n"
        "\n"
        "  --to FOLDER          new, empty, or published before\n"
        "  --title TITLE        instead of the scene's name\n"
        "  --language LANGUAGE  of the page's own words: en, fr, de, es or nl\n"
        "  --no-outlines        no outline of the zone under the mouse\n"
        "  --no-keys            no buttons for keys\n"
        "  --report             show the path taken at the end\n"
        "  --converter FILE     the program ffmpeg, with ffprobe beside it; else both are looked\n"
        "                       for beside this program and on the system's path\n"
        "\n"
        "Exit status: 0 published, 1 not published, with the reason on standard error.\n"},
    Command{"scene", "DIR [--rewrite DIR2]", runScene,
            "Print the scene in the folder DIR as one JSON object.\n"
            "\n"
            "  --rewrite DIR2     also save it into the folder DIR2\n"},
    Command{"video", "FILE", runVideo,
            "Print the size, frame rate and length of a clip as one JSON object. The length is\n"
            "-1 if it is unknown.\n"},
    Command{
        "zones",
        "BASE [--display WxH] [--video WxH] [--frames N] [--rewrite BASE2] "
        "[--export cvat FILE | --import cvat FILE]",
        runZones,
        "Print the zones in BASE-ZoneInfo.xml and BASE-ZoneInfo.bin as one JSON object.\n"
        "\n"
        "  --display WxH      size of the picture area that points are given in; 1280x720\n"
        "  --video WxH        size of the video; that of the picture area\n"
        "  --frames N         frames of each zone; as many as are stored\n"
        "  --rewrite BASE2    also save them under another name\n"
        "\n"
        "Or exchange them with programs that mark things in videos, as tracks of polygons:\n"
        "\n"
        "  --export cvat FILE  write the zones into FILE, in \"CVAT for videos 1.1\"; what\n"
        "                      that cannot hold is listed on standard error\n"
        "  --import cvat FILE  make the tracks of FILE the zones; what does not fit the clip\n"
        "                      is refused by its line, and nothing is written then\n"
        "\n"
        "Size and length are those of the clip BASE.ogv or BASE.ogg, or --video and --frames.\n"},
};

std::string usage(const Command& command) {
    return std::string("quorvel-inspect ") + command.name + " " + command.usage;
}

const Command* findCommand(const std::string& name) {
    const auto* const found = std::find_if(kCommands.begin(), kCommands.end(),
                                           [&](const Command& c) { return c.name == name; });
    return found == kCommands.end() ? nullptr : found;
}

void printHelp(std::ostream& out) {
    out << "Usage: quorvel-inspect COMMAND [ARGUMENT...]\n"
           "Show what Quorvel's clips, scenes and zone files hold.\n"
           "\n"
           "Commands:\n";
    for (const Command& command : kCommands) {
        out << "  " << command.name << ' ' << command.usage << '\n';
    }
    out << "\n"
           "Options:\n"
           "  --help     show this text; after a command, that command's\n"
           "  --version  show the version\n"
           "\n"
           "Results go to standard output, messages to standard error.\n"
           "Exit status: 0 all is well, 1 a frame is missing, a check found errors or something\n"
           "was not written, 2 a file cannot be read or the command line is wrong. What a "
           "command's\n"
           "own help says of it comes first.\n";
    printKinds(out);
}

int runAny(const Arguments& arguments, std::ostream& out) {
    const std::string& name = arguments.front();
    if (name == "--version") {
        out << "quorvel-inspect " << QUORVEL_VERSION << '\n';
        return kSuccess;
    }
    if (name == "--help") {
        printHelp(out);
        return kSuccess;
    }
    const Command* const command = findCommand(name);
    if (command == nullptr) {
        return badUsage("", "unknown command \"" + name + "\"");
    }
    if (std::find(arguments.begin() + 1, arguments.end(), "--help") != arguments.end()) {
        out << "Usage: " << usage(*command) << '\n' << command->help;
        if (command->printMore != nullptr) {
            command->printMore(out);
        }
        return kSuccess;
    }
    return command->run({arguments.begin() + 1, arguments.end()}, out);
}

} // namespace

int badUsage(const std::string& command, const std::string& message) {
    core::writeStandardError("quorvel-inspect: " + message);
    for (const Command& known : kCommands) {
        if (command.empty() || command == known.name) {
            core::writeStandardError("usage: " + usage(known));
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

bool takeFlag(Arguments& arguments, const std::string& name) {
    const auto found = std::find(arguments.begin(), arguments.end(), name);
    const bool isThere = found != arguments.end();
    if (isThere) {
        arguments.erase(found);
    }
    return isThere;
}

int runCommand(const Arguments& arguments, std::ostream& out) {
    try {
        if (arguments.empty()) {
            return badUsage("", "no command");
        }
        const int code = runAny(arguments, out);
        out.flush();
        if (out) {
            return code;
        }
        core::writeStandardError("quorvel-inspect: the output cannot be written");
    } catch (const std::exception& error) {
        core::writeStandardError(std::string("quorvel-inspect: ") + error.what());
    }
    return kUnreadable;
}

} // namespace inspect
