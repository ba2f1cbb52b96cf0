#include "src/TheoraProbe.h"

#include <exception>

#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"
#include "src/TheoraFileDataSource.h"

namespace theora {

bool hasTheoraHeaders(const std::string& path, platform::FileSystem& files) {
    try {
        TheoraFileDataSource file(path, files);
        SharedSource source(file);
        StreamHeaders headers;
        readStreamHeaders(source, headers);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace theora
