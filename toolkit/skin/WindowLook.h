// How a window looks: its skin, its numbered fonts, the images that attributes name, and the
// default attributes of each kind of control. UI thread only.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Bitmap.h"
#include "platform/Color.h"
#include "platform/FontSet.h"
#include "toolkit/skin/IconSet.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/Skin.h"
#include "toolkit/skin/SkinColor.h"
#include "toolkit/skin/SkinImage.h"

namespace toolkit {

class CControlUI;

class WindowLook {
public:
    using Attributes = std::vector<std::pair<std::u16string, std::u16string>>;
    static constexpr std::size_t kMaxFonts = 256;
    static constexpr std::size_t kMaxDefaults = 1024;

    /// `fonts` must outlive the object.
    explicit WindowLook(platform::FontSet& fonts) : m_fonts(fonts) {}

    /// Forgets everything but the skin.
    void Clear();
    void SetSkin(std::shared_ptr<const Skin> skin);
    /// Light at first. Images keep their pointers.
    void SetDark(bool isDark);
    /// The image that an attribute names; null when it names none that can be read. The pointer
    /// stays valid until Clear.
    [[nodiscard]] const SkinImage* GetImage(const std::u16string& attribute);
    /// The icons of the skin.
    [[nodiscard]] const IconSet& icons();
    /// The colours of what the program draws itself.
    [[nodiscard]] const Palette& palette() { return icons().palette(); }
    [[nodiscard]] platform::Color color(const SkinColor& color) { return color.in(palette()); }
    /// Fonts are numbered from 0 in the order added. False beyond kMaxFonts.
    bool AddFont(const platform::FontDescription& font);
    /// An unknown number means the default font.
    [[nodiscard]] platform::FontHandle GetFont(int id) const;

    /// False beyond kMaxDefaults of a kind.
    bool AddDefault(std::u16string_view className, std::u16string_view name,
                    std::u16string_view value);
    void ApplyDefaults(CControlUI& control) const;
    /// The defaults of a kind; empty when the layout has none.
    [[nodiscard]] const Attributes& GetDefaults(const std::u16string& className) const;

private:
    [[nodiscard]] std::shared_ptr<const platform::Bitmap> loadImage(const std::u16string& file);

    platform::FontSet& m_fonts;
    std::shared_ptr<const Skin> m_skin;
    std::shared_ptr<const IconSet> m_icons; ///< null until one is asked for
    std::unordered_map<std::u16string, std::optional<SkinImage>> m_images;
    std::unordered_map<std::u16string, Attributes> m_defaults;
    std::vector<platform::FontHandle> m_fontHandles;
    bool m_isDark = false;
};

} // namespace toolkit
