#include "src/TheoraLog.h"

#include <utility>

#include "platform/ThreadAnnotations.h"
#include "src/TheoraMutex.h"

namespace theora {
namespace {

struct LogTarget {
    TheoraMutex mutex;
    TheoraLogHook hook GUARDED_BY(mutex);
};

LogTarget& target() {
    static LogTarget instance;
    return instance;
}

} // namespace

void setLogHook(TheoraLogHook hook) {
    LogTarget& to = target();
    const TheoraLock lock(to.mutex);
    to.hook = std::move(hook);
}

void writeLog(const std::string& line) {
    LogTarget& to = target();
    const TheoraLock lock(to.mutex);
    if (to.hook) {
        to.hook(line);
    }
}

void writeFailure(std::string_view what, const std::exception& error) noexcept {
    try {
        writeLog(std::string(what) + ": " + error.what());
    } catch (const std::exception&) {
        return; // the failure may have been that very lack of memory
    }
}

} // namespace theora
