#include "ui/SettingsWindow.h"

#include <string_view>

#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "recovery/Drafts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/SettingsCommands.h"

namespace ui {

namespace {

/// A box and the setting that it shows.
struct Box {
    std::u16string_view name;
    bool (core::EditorSettings::*isOn)() const;
    bool (core::EditorSettings::*set)(bool);
};

constexpr Box kBoxes[] = {
    {u"CheckKeepDrafts", &core::EditorSettings::keepDrafts, &core::EditorSettings::setKeepDrafts},
    {u"CheckKeepBackups", &core::EditorSettings::keepBackups,
     &core::EditorSettings::setKeepBackups},
};

} // namespace

std::shared_ptr<SettingsWindow> SettingsWindow::create(const WindowContext& context) {
    return std::make_shared<SettingsWindow>(context);
}

SettingsWindow::SettingsWindow(const WindowContext& context)
    : EditorWindow(context, kSettingsCommands) {
    commands().bind(command::kSettingsClose, [this] { Close(1); });
}

void SettingsWindow::InitWindow() {
    const auto& settings = context().services.editorSettings;
    for (const Box& box : kBoxes) {
        if (auto* option = find<toolkit::COptionUI>(box.name); option != nullptr && settings) {
            option->Selected(((*settings).*box.isOn)());
        }
    }
    GetPaintManager().SetFocus(findControl(kBoxes[0].name));
}

void SettingsWindow::OnSelectChanged(toolkit::TNotifyUI& message) {
    const auto& settings = context().services.editorSettings;
    const auto* option = toolkit::controlCast<toolkit::COptionUI>(message.pSender);
    for (const Box& box : kBoxes) {
        if (settings && option != nullptr && option->GetName() == box.name) {
            ((*settings).*box.set)(option->IsSelected()); // a failed write is in the log
            if (const auto& drafts = context().services.drafts) {
                drafts->keepingChanged();
            }
        }
    }
}

} // namespace ui
