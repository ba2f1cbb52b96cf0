#include "toolkit/controls/CPictureUI.h"

#include <cstdint>
#include <utility>

#include "platform/Canvas.h"
#include "platform/Geometry.h"

namespace toolkit {
namespace {

/// The largest size with these proportions that fits.
platform::Size fitted(platform::Size picture, platform::Size box) {
    const std::int64_t byWidth = std::int64_t{box.width} * picture.height;
    const std::int64_t byHeight = std::int64_t{box.height} * picture.width;
    if (byWidth <= byHeight) {
        return {box.width, static_cast<int>((byWidth + picture.width / 2) / picture.width)};
    }
    return {static_cast<int>((byHeight + picture.height / 2) / picture.height), box.height};
}

} // namespace

void* CPictureUI::GetInterface(std::u16string_view name) {
    return name == u"Picture" ? this : CControlUI::GetInterface(name);
}

void CPictureUI::SetPicture(Picture picture) {
    m_picture = std::move(picture);
    Invalidate();
}

void CPictureUI::paintText(platform::Canvas& canvas) {
    if (m_picture != nullptr && !m_picture->isEmpty()) { // over the icon
        canvas.drawStill(*m_picture, GetPos().centred(fitted(m_picture->size(), GetPos().size())));
    }
}

} // namespace toolkit
