// Which files may be videos, by their names.
#pragma once

#include <string>
#include <string_view>

namespace ui {

/// For a file dialog: "*.mp4;*.mov;...".
inline constexpr std::string_view kVideoPatterns =
    "*.mp4;*.m4v;*.mov;*.webm;*.mkv;*.avi;*.3gp;*.3g2;*.mpg;*.mpeg;*.m2v;*.ts;*.mts;*.m2ts;*.vob;"
    "*.mod;*.tod;*.wmv;*.asf;*.wtv;*.flv;*.f4v;*.dv;*.mxf;*.qt;*.divx;*.ogg;*.ogv;*.ogm";

/// Whether a file of this name may be a video.
[[nodiscard]] bool hasVideoName(const std::string& path);

} // namespace ui
