#include "toolkit/controls/CProgressUI.h"

#include <algorithm>
#include <string>

#include "core/Text.h"
#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Path.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"

namespace toolkit {
namespace {

constexpr double kRadius = 3;
constexpr int kWhole = 100;

void fillRounded(platform::Canvas& canvas, const CControlUI::Rect& box, double width,
                 platform::Color color) {
    platform::Path path;
    path.addRoundBox({static_cast<double>(box.left), static_cast<double>(box.top)}, width,
                     box.height(), kRadius);
    canvas.fillPath(path, color);
}

} // namespace

void* CProgressUI::GetInterface(std::u16string_view name) {
    return name == u"Progress" ? this : CControlUI::GetInterface(name);
}

void CProgressUI::SetPercent(int percent) {
    const int now = std::clamp(percent, 0, kWhole);
    if (now != m_percent) {
        m_percent = now;
        Invalidate();
        accessibleChanged(platform::AccessibleChange::value);
    }
}

bool CProgressUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    const bool isTrack = name == u"trackcolor";
    if (!isTrack && name != u"barcolor") {
        return CControlUI::SetAttribute(name, value);
    }
    assignIf(isTrack ? m_trackColor : m_barColor, parseSkinColor(value));
    Invalidate();
    return true;
}

std::u16string CProgressUI::accessibleValue() const {
    return core::displayText(std::to_string(m_percent) + " %");
}

void CProgressUI::paintStatus(platform::Canvas& canvas) {
    const Rect& box = GetPos();
    fillRounded(canvas, box, box.width(), paletteColor(m_trackColor));
    fillRounded(canvas, box, static_cast<double>(box.width()) * m_percent / kWhole,
                paletteColor(m_barColor));
}

} // namespace toolkit
