// What the author can choose for this editor; stands beside the window it was opened from. Each
// change counts at once, but the language (when it closes) and the folder of the scenes (from the
// next start). UI thread only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "jobs/BackgroundJob.h"
#include "ui/EditorWindow.h"
#include "ui/ScenesPlace.h"
#include "ui/WindowContext.h"

namespace core {
class EditorSettings;
}
namespace imports {
struct Converter;
}
namespace toolkit {
struct TNotifyUI;
}

namespace ui {

class SettingsWindow final : public EditorWindow {
public:
    /// Never empty.
    [[nodiscard]] static std::shared_ptr<SettingsWindow> create(const WindowContext& context);
    explicit SettingsWindow(const WindowContext& context);

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"SettingsWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "Settings.xml"; }
    void InitWindow() override;
    void OnSelectChanged(toolkit::TNotifyUI& message) override;
    void OnItemSelect(toolkit::TNotifyUI& message) override;

private:
    void showScale(const core::EditorSettings& settings);
    void showSkin(const core::EditorSettings& settings);
    void chooseConverter();
    /// Looks for the converter in the background and shows where it is.
    void showConverter();
    void showConverter(const imports::Converter& converter);
    void showLanguages();

    std::vector<std::string> m_languages; ///< as the catalogue spells them, in the order shown
    bool m_looksAgain = false;
    jobs::BackgroundJob m_looking;
    ScenesPlace m_scenesPlace;
};

} // namespace ui
