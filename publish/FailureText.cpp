#include <string>

#include "core/Text.h"
#include "core/Texts.h"
#include "publish/PublishFolder.h"
#include "publish/PublishJob.h"

namespace publish {

std::string publishFailureText(const PublishResult& result) {
    switch (result.failure) {
    case PublishFailure::none:
        break;
    case PublishFailure::notEmpty:
        return core::trStored("the folder is not empty."_tr);
    case PublishFailure::noSpace:
        return core::trStored("no space left."_tr);
    case PublishFailure::noVideo:
        return core::trStored("no branch has a video."_tr);
    case PublishFailure::notSaved:
        return core::trStored("the scene could not be saved."_tr);
    case PublishFailure::sceneUnreadable:
        return core::trStored("the scene cannot be read."_tr);
    case PublishFailure::notWritable:
        return core::trStored("the folder cannot be written."_tr);
    case PublishFailure::inUse:
        return core::trStored("the folder is in use by another program."_tr);
    case PublishFailure::busy:
        return core::trStored("it is being published already."_tr);
    case PublishFailure::noConverter:
        return core::trStored("ConverterMissing|the converter is not installed."_tr);
    case PublishFailure::notConverted:
        return core::validUtf8(result.video) + ": " + result.reason;
    case PublishFailure::noMemory:
        return core::trStored("there is not enough memory."_tr);
    }
    return {};
}

} // namespace publish
