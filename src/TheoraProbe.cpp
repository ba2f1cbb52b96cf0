#include "src/TheoraProbe.h"

#include <exception>

#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"
#include "src/TheoraException.h"
#include "src/TheoraFileDataSource.h"

namespace theora {
namespace {

Probe readHeaders(const std::string& path, platform::FileSystem& files) {
    StreamHeaders headers;
    try {
        TheoraFileDataSource file(path, files);
        SharedSource source(file);
        readStreamHeaders(source, headers);
        return {true, true};
    } catch (const TheoraGenericException& error) {
        const std::string& message = error.getMessage();
        return {false, !headers.lacksTheora, message.substr(0, message.find(": " + path))};
    }
}

} // namespace

Probe probeClip(const std::string& path, platform::FileSystem& files) {
    try {
        return readHeaders(path, files);
    } catch (const std::exception&) {
        return {false, true, "out of memory"};
    }
}

} // namespace theora
