// Publishes a saved scene as a web page: one folder that plays in current browsers, from a disk or
// a server. On the calling thread. Findings of the scene never keep it from being published: a
// branch whose video is missing or unreadable stops the page there, as it stops the preview.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "import/Converter.h"
#include "import/ConverterRun.h"
#include "platform/FileSystem.h"
#include "publish/PageText.h"
#include "publish/PublishFolder.h"

namespace publish {

struct PublishRequest {
    std::string scene{};  ///< the scene's folder, absolute, ends in a separator
    std::string folder{}; ///< the page's, absolute; see PublishFolder
    PageOptions options{};
    imports::Converter converter{};
    imports::RunLimits limits{};
};

struct PublishProgress {
    std::string video{};     ///< that is being converted
    int number = 0;          ///< of it, from 1
    int count = 0;           ///< of videos to convert
    int percent = 0;         ///< of all of them
    double secondsLeft = -1; ///< -1 = not known yet
};

struct PublishResult {
    enum class State { published, cancelled, failed };

    State state = State::failed;
    PublishFailure failure = PublishFailure::none;
    std::string video{};   ///< that was not converted
    std::string reason{};  ///< why it was not
    std::string details{}; ///< technical, one line; may be empty
    // Of a published page.
    std::string folder{}; ///< without a final separator
    int fileCount = 0;
    int videoCount = 0;
    bool hasStill = false;
    std::uint64_t bytes = 0;
};

/// What stands behind "Not published: ". Empty without a failure.
[[nodiscard]] std::string publishFailureText(const PublishResult& result);

/// Ends within half a second once `isCancelled` returns true. Any thread; logs nothing.
[[nodiscard]] PublishResult
publishScene(platform::FileSystem& files, const PublishRequest& request,
             const std::function<void(const PublishProgress&)>& onProgress,
             const std::function<bool()>& isCancelled);

} // namespace publish
