#include "toolkit/skin/Palette.h"

#include <algorithm>
#include <iterator>

namespace toolkit {
namespace {

struct Entry {
    std::u16string_view name;
    platform::Color color;
};
/// Indexed by Tone.
constexpr Entry kEntries[] = {
    {u"ink", 0xFF1C2733},        {u"muted", 0xFF465362},  {u"hint", 0xFF596675},
    {u"surface", 0xFFFFFFFF},    {u"band", 0xFFE6EBF1},   {u"line", 0xFFD3DAE2},
    {u"edge", 0xFF7C8A9A},       {u"accent", 0xFF1D63AD}, {u"selected", 0xFFC1E3FF},
    {u"onselected", 0xFF124274}, {u"danger", 0xFFA8221B}, {u"stage", 0xFF20262D},
    {u"onstage", 0xFFB3BECA},    {u"tag", 0xE61C2733},    {u"ontag", 0xFFFFFFFF},
    {u"halo", 0xB3FFFFFF},       {u"rest", 0xFFDDE4EB},   {u"default", 0xFF465362},
    {u"key", 0xFF1D63AD},        {u"zone", 0xFF0B6B60},   {u"random", 0xFF6A3D9E},
    {u"onkind", 0xFFFFFFFF},
};

} // namespace

Palette::Palette() : m_colors{} {
    static_assert(std::size(kEntries) == kCount);
    std::transform(std::begin(kEntries), std::end(kEntries), m_colors.begin(),
                   [](const Entry& entry) { return entry.color; });
}

void Palette::set(std::u16string_view name, platform::Color color) {
    const auto found = std::find_if(std::begin(kEntries), std::end(kEntries),
                                    [&](const Entry& entry) { return entry.name == name; });
    if (found != std::end(kEntries)) {
        m_colors[static_cast<std::size_t>(found - std::begin(kEntries))] = color;
    }
}

} // namespace toolkit
