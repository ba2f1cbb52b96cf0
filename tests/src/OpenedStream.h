// A clip's stream for tests of the library's inner parts, with headers and layout read.
#pragma once

#include <optional>

#include "src/Theora/StreamHeaders.h"
#include "src/Theora/StreamScan.h"
#include "tests/src/MemorySource.h"

struct OpenedStream {
    explicit OpenedStream(MemorySource& bytes) : source(bytes) {
        theora::readStreamHeaders(source, headers);
        format.emplace(*headers.theora.info.get());
        layout = theora::scanStream(source, headers, *format);
    }

    theora::SharedSource source;
    theora::StreamHeaders headers;
    std::optional<theora::GranuleFormat> format;
    theora::StreamLayout layout;
};
