// A colour as a layout has it: fixed, or one of the skin's tones.
#pragma once

#include "platform/Color.h"
#include "toolkit/skin/Palette.h"

namespace toolkit {

class SkinColor {
public:
    /// Paints nothing.
    constexpr SkinColor() = default;
    // Both convert, so that a colour is written where one is wanted.
    constexpr SkinColor(platform::Color color) : m_value(color) {}
    constexpr SkinColor(Tone tone) : m_value(static_cast<platform::Color>(tone)), m_isTone(true) {}

    /// False for the one that paints nothing.
    [[nodiscard]] constexpr bool isSet() const { return m_isTone || m_value != 0; }
    [[nodiscard]] platform::Color in(const Palette& palette) const {
        return m_isTone ? palette[static_cast<Tone>(m_value)] : m_value;
    }

private:
    platform::Color m_value = 0;
    bool m_isTone = false;
};

} // namespace toolkit
