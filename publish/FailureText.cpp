#include <string>

#include "core/Text.h"
#include "publish/PublishFolder.h"
#include "publish/PublishJob.h"

namespace publish {

std::string publishFailureText(const PublishResult& result) {
    switch (result.failure) {
    case PublishFailure::none:
        break;
    case PublishFailure::notEmpty:
        return "the folder is not empty.";
    case PublishFailure::noSpace:
        return "no space left.";
    case PublishFailure::noVideo:
        return "no branch has a video.";
    case PublishFailure::notSaved:
        return "the scene could not be saved.";
    case PublishFailure::sceneUnreadable:
        return "the scene cannot be read.";
    case PublishFailure::notWritable:
        return "the folder cannot be written.";
    case PublishFailure::inUse:
        return "the folder is in use by another program.";
    case PublishFailure::busy:
        return "it is being published already.";
    case PublishFailure::noConverter:
        return "the converter is not installed.";
    case PublishFailure::notConverted:
        return core::validUtf8(result.video) + ": " + result.reason;
    case PublishFailure::noMemory:
        return "there is not enough memory.";
    }
    return {};
}

} // namespace publish
