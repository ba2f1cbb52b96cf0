// Starts nothing: records the requests and returns a preset result.
#pragma once

#include <functional>
#include <vector>

#include "platform/Process.h"

namespace support {

class RecordingProcess final : public platform::Process {
public:
    [[nodiscard]] bool launch(const platform::LaunchRequest& request) override {
        requests.push_back(request);
        if (onStart) {
            onStart();
        }
        return succeeds;
    }

    bool succeeds = true;
    std::function<void()> onStart;
    std::vector<platform::LaunchRequest> requests;
};

} // namespace support
