// What the Publish window is told when a page has been written.
#pragma once

#include "publish/PublishJob.h"

namespace test {

[[nodiscard]] inline publish::PublishResult publishedScene() {
    publish::PublishResult result;
    result.state = publish::PublishResult::State::published;
    result.fileCount = 13;
    result.videoCount = 4;
    result.bytes = 2'300'000;
    result.hasStill = true;
    return result;
}

} // namespace test
