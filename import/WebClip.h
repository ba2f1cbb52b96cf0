// Clips of a scene for web browsers: WebM with VP9 and Opus, as many pictures at the same rate. On
// the calling thread, as ImportJob.h does it for clips of the editor.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "import/Converter.h"
#include "import/ConverterRun.h"
#include "import/ImportTypes.h"
#include "import/Source.h"
#include "platform/FileSystem.h"

namespace imports {

struct WebClipRequest {
    std::string source{}; ///< absolute: a clip that theora::surveyClip can decode
    std::string target{}; ///< absolute; what is there is replaced
    Converter converter{};
    int frameCount = -1;        ///< of the source; -1: unknown, as many as come
    double framesPerSecond = 0; ///< of the source; 0: unknown
    RunLimits limits{};
};

/// How many pictures there are so far.
using WebClipProgress = std::function<void(int frames)>;

/// None when `target` is whole and has exactly as many pictures as the source; none, too, after a
/// cancellation, which ends it within half a second. Whatever happens, nothing but a whole clip
/// stays at `target`.
[[nodiscard]] ImportFailure makeWebClip(platform::FileSystem& files, const WebClipRequest& request,
                                        const WebClipProgress& onProgress,
                                        const std::function<bool()>& isCancelled);

/// The clip's first picture as a JPEG file, at most `width` pixels wide. The rest as above.
[[nodiscard]] ImportFailure makeWebStill(platform::FileSystem& files, const WebClipRequest& request,
                                         int width, const std::function<bool()>& isCancelled);

/// The source's rate as a ratio: what its header says where that agrees with the clip's own.
[[nodiscard]] Ratio webRate(const Source& source, double framesPerSecond);
/// How the converter is called.
[[nodiscard]] std::vector<std::string> webClipArguments(const Source& source,
                                                        const WebClipRequest& request);

} // namespace imports
