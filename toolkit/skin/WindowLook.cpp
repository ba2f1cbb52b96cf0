#include "toolkit/skin/WindowLook.h"

#include <utility>

#include "core/Text.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/skin/ImageCache.h"

namespace toolkit {

void WindowLook::SetSkin(std::shared_ptr<const Skin> skin) {
    m_skin = std::move(skin);
    m_images.clear(); // which refer to the icons
    m_icons.reset();
}

void WindowLook::SetDark(bool isDark) {
    if (m_isDark == isDark) {
        return;
    }
    m_isDark = isDark;
    m_icons.reset();
    for (auto& [attribute, image] : m_images) {
        if (image) {
            image->scales = &icons();
            if (auto bitmap = loadImage(image->file)) {
                image->bitmap = std::move(bitmap);
            }
        }
    }
}

std::shared_ptr<const platform::Bitmap> WindowLook::loadImage(const std::u16string& file) {
    const std::string name = core::storedText(file);
    ImageCache& cache = ImageCache::get();
    return m_isDark ? cache.loadDark(*m_skin, name) : cache.load(*m_skin, name);
}

void WindowLook::Clear() {
    m_fontHandles.clear();
    m_defaults.clear();
    m_images.clear();
}

const SkinImage* WindowLook::GetImage(const std::u16string& attribute) {
    if (attribute.empty() || m_skin == nullptr) {
        return nullptr;
    }
    const auto known = m_images.find(attribute);
    if (known != m_images.end()) {
        return known->second ? &*known->second : nullptr;
    }
    const ImageAttribute parsed = ImageAttribute::parse(attribute);
    std::optional<SkinImage>& image = m_images[attribute];
    if (!parsed.file.empty()) {
        if (auto bitmap = loadImage(parsed.file)) {
            image = SkinImage{std::move(bitmap), parsed.corner, parsed.dest, parsed.file, &icons()};
        }
    }
    return image ? &*image : nullptr;
}

const IconSet& WindowLook::icons() {
    if (m_icons == nullptr) {
        m_icons = IconSet::of(m_skin, m_isDark);
    }
    return *m_icons;
}

bool WindowLook::AddFont(const platform::FontDescription& font) {
    if (m_fontHandles.size() == kMaxFonts) {
        return false;
    }
    m_fontHandles.push_back(m_fonts.open(font));
    return true;
}

platform::FontHandle WindowLook::GetFont(int id) const {
    return id >= 0 && id < static_cast<int>(m_fontHandles.size())
               ? m_fontHandles[static_cast<std::size_t>(id)]
               : 0;
}

bool WindowLook::AddDefault(std::u16string_view className, std::u16string_view name,
                            std::u16string_view value) {
    Attributes& defaults = m_defaults[std::u16string(className)];
    if (defaults.size() == kMaxDefaults) {
        return false;
    }
    defaults.emplace_back(name, value);
    return true;
}

const WindowLook::Attributes& WindowLook::GetDefaults(const std::u16string& className) const {
    static const Attributes none;
    const auto found = m_defaults.find(className);
    return found == m_defaults.end() ? none : found->second;
}

void WindowLook::ApplyDefaults(CControlUI& control) const {
    for (const auto& [name, value] : GetDefaults(control.GetClass())) {
        control.SetAttribute(name, value);
    }
}

} // namespace toolkit
