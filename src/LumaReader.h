// The grey pictures of a clip one by one, for work that looks at many of them away from the screen:
// a decoder of its own, without queues and threads.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "src/TheoraPicture.h"

namespace theora {

/// One thread at a time.
class LumaReader {
public:
    /// Reads the headers of the clip at `path` (UTF-8). `stop` is asked between reads and between
    /// packets; once it says true, no more pictures come. Throws TheoraGenericException when the
    /// clip cannot be decoded or is to stop. `files` outlives it.
    LumaReader(const std::string& path, platform::FileSystem& files, std::function<bool()> stop);
    ~LumaReader();
    LumaReader(const LumaReader&) = delete;
    LumaReader& operator=(const LumaReader&) = delete;

    /// As the editor shows the clip.
    [[nodiscard]] platform::Size size() const;
    /// Decodes up to that frame: quick for the next ones, a seek for others. False when it does not
    /// come. Never throws.
    [[nodiscard]] bool goTo(int frame) noexcept;
    /// The picture of that frame, of the clip's size and valid until the next call.
    [[nodiscard]] TheoraPlane luma();

private:
    class Decoding;
    std::unique_ptr<Decoding> m_decoding;
};

} // namespace theora
