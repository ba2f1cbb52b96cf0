#include <ostream>
#include <string>

#include "core/StandardError.h"
#include "src/TheoraException.h"
#include "src/TheoraOutputMode.h"
#include "src/TheoraVideoClip.h"
#include "src/TheoraVideoManager.h"
#include "tools/inspect/Command.h"
#include "tools/inspect/FrameFetcher.h"
#include "tools/inspect/Json.h"

namespace inspect {
namespace {

void printVideo(Json& json, const std::string& file, const theora::TheoraVideoClip& clip) {
    json.beginObject();
    json.key("file").value(file);
    json.key("width").value(clip.getWidth());
    json.key("height").value(clip.getHeight());
    json.key("fps").value(static_cast<double>(clip.getFPS()));
    json.key("frameCount").value(clip.getNumFrames());
    json.key("duration").value(static_cast<double>(clip.getDuration()));
    json.key("audio").value(clip.hasAudio());
    json.endObject();
}

} // namespace

int runVideo(const Arguments& arguments, std::ostream& out) {
    if (arguments.size() != 1) {
        return badUsage("video", "expects one file");
    }
    theora::TheoraVideoManager manager(0); // headers only: nothing is decoded
    try {
        const theora::TheoraVideoClip& clip =
            *manager.createClip(arguments.front(), theora::TheoraOutputMode::TH_RGB);
        reportUnknownLength(clip);
        Json json(out);
        printVideo(json, arguments.front(), clip);
        out << '\n';
        return kSuccess;
    } catch (const theora::TheoraGenericException& error) {
        core::writeStandardError(error.getMessage());
        return kUnreadable;
    }
}

} // namespace inspect
