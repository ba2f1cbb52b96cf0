#include "toolkit/skin/Palette.h"

#include <algorithm>
#include <iterator>

namespace toolkit {
namespace {

struct Entry {
    std::u16string_view name;
    platform::Color color;
};
/// Those of the light skin, indexed by Tone.
constexpr Entry kEntries[] = {
    {u"ink", 0xFF1C2733},       {u"value", 0xFF000000},    {u"muted", 0xFF465362},
    {u"hint", 0xFF596675},      {u"window", 0xFFF3F5F8},   {u"band", 0xFFE6EBF1},
    {u"surface", 0xFFFFFFFF},   {u"line", 0xFFD3DAE2},     {u"edge", 0xFF7C8A9A},
    {u"frame", 0xFF8A97A5},     {u"accent", 0xFF1D63AD},   {u"primary", 0xFF1D63AD},
    {u"onprimary", 0xFFFFFFFF}, {u"selected", 0xFFC1E3FF}, {u"onselected", 0xFF124274},
    {u"hot", 0xFFE9F5FF},       {u"off", 0xFF98A4B1},      {u"danger", 0xFFA8221B},
    {u"warn", 0xFF7A4A00},      {u"warnfill", 0xFFFFF0CF}, {u"warnedge", 0xFFB97A0A},
    {u"good", 0xFF1B6B3C},      {u"question", 0xFF33475B}, {u"onquestion", 0xFFFFFFFF},
    {u"tip", 0xFF2B3947},       {u"ontip", 0xFFFFFFFF},    {u"listedge", 0xFFA9B4C0},
    {u"divider", 0xFFC3CCD6},   {u"rowline", 0xFFE8ECF1},  {u"selectedline", 0xFFA6D2F7},
    {u"itemoff", 0xFFCCCCCC},   {u"canvas", 0xFFFAFBFC},   {u"stage", 0xFF20262D},
    {u"onstage", 0xFFB3BECA},   {u"tag", 0xE61C2733},      {u"ontag", 0xFFFFFFFF},
    {u"halo", 0xB3FFFFFF},      {u"rest", 0xFFDDE4EB},     {u"run", 0xFF4088D0},
    {u"playhead", 0xFF124274},  {u"tick", 0xFFB4BFCA},     {u"default", 0xFF465362},
    {u"key", 0xFF1D63AD},       {u"zone", 0xFF0B6B60},     {u"random", 0xFF6A3D9E},
    {u"onkind", 0xFFFFFFFF},
};

} // namespace

Palette::Palette() : m_colors{} {
    static_assert(std::size(kEntries) == kCount);
    std::transform(std::begin(kEntries), std::end(kEntries), m_colors.begin(),
                   [](const Entry& entry) { return entry.color; });
}

std::optional<Tone> toneNamed(std::u16string_view name) {
    const auto* const found = std::find_if(std::begin(kEntries), std::end(kEntries),
                                           [&](const Entry& entry) { return entry.name == name; });
    return found != std::end(kEntries) ? std::optional(static_cast<Tone>(found - kEntries))
                                       : std::nullopt;
}

} // namespace toolkit
