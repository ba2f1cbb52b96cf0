#include "ui/EditorWindow.h"

#include <string>
#include <utility>

#include "app/state/Installation.h"
#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "core/Paths.h"
#include "core/Texts.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "toolkit/input/MouseInput.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/ConfirmCallback.h"
#include "ui/Manual.h"
#include "ui/SettingsWindow.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommandMenu.h"
#include "ui/commands/CommonCommands.h"
#include "ui/keys/KeysWindow.h"

namespace ui {

namespace {

bool isInput(platform::EventKind kind) {
    using platform::EventKind;
    return kind == EventKind::mouseMove || kind == EventKind::mouseDown ||
           kind == EventKind::keyDown;
}

/// Where a menu of the control stands when a key opens it: at the chosen row of a list, at the top
/// of one that has none.
platform::Rect anchorOf(const toolkit::CControlUI& control) {
    const auto* list = dynamic_cast<const toolkit::CListUI*>(&control);
    const toolkit::CControlUI* row = list != nullptr ? list->GetItemAt(list->GetCurSel()) : nullptr;
    const platform::Rect pos = control.GetPos();
    return row != nullptr    ? row->GetPos()
           : list != nullptr ? platform::Rect::at(pos.left, pos.top, pos.width(), 0)
                             : pos;
}

} // namespace

EditorWindow::EditorWindow(const WindowContext& context, const WindowTables& tables)
    : WindowImplBase(context.gui), m_context(context), m_tables(tables),
      m_keys(KeyMap::of(context.services)), m_commands(GetPaintManager(), tables.commands, m_keys),
      m_commonCommands(GetPaintManager(), kCommonCommands, m_keys) {
    bindWindowCommands();
    bindCommonCommands();
}

void EditorWindow::bindCommonCommands() {
    m_commonCommands.bind(command::kManual, [this] { openManual(m_context, layoutName()); });
    m_commonCommands.bind(command::kKeys, [this] {
        companions().setHelped(layoutName());
        companions().show<KeysWindow>(m_context, core::tr("Keys"_tr));
    });
    m_commonCommands.bind(command::kSettings, [this] {
        companions().show<SettingsWindow>(m_context, core::tr("Settings"_tr));
    });
    const auto hasPanes = [this] { return !m_tables.panes.empty(); };
    m_commonCommands.bind(
        command::kNextPane, [this] { m_panes.go(m_tables.panes, false); }, hasPanes);
    m_commonCommands.bind(
        command::kPaneBefore, [this] { m_panes.go(m_tables.panes, true); }, hasPanes);
}

std::string EditorWindow::GetSkinFolder() const {
    const std::string& installed = context().services.installation.folder;
    return installed.empty() || core::isFile("UI.zip")
               ? "UI/"
               : core::withSeparator(core::hereOrIn(installed, "UI"));
}

std::string EditorWindow::layoutName() const {
    const std::string file = GetSkinFile();
    return file.substr(0, file.rfind('.'));
}

void EditorWindow::bindFind(std::u16string_view field) {
    m_commands.bind(
        command::kFind, [this, field] { controls().startTyping(field); },
        [this, field] { return controls().isUsable(field); });
}

void EditorWindow::bindWindowCommands() {
    using platform::WindowState;
    m_commands.bind(command::kMinimize, [this] { GetNative()->setState(WindowState::minimized); });
    m_commands.bind(command::kMaximize, [this] {
        GetNative()->setState(GetNative()->state() == WindowState::maximized
                                  ? WindowState::normal
                                  : WindowState::maximized);
    });
}

void EditorWindow::showState() {
    toolkit::CControlUI* button = findControl(kMaximizeCommand.control);
    if (button == nullptr) {
        return;
    }
    const bool isMaximized = GetNative()->state() == platform::WindowState::maximized;
    Command shown = kMaximizeCommand;
    if (isMaximized) {
        shown.toolTip = "RestoreWindow|Restore"_tr;
    }
    button->SetToolTip(toolTipOf(shown, {}, m_keys.keysOf(shown)[0]));
    button->SetLabel(labelOf(shown));
    button->SetAttribute(u"icon", isMaximized ? u"Restore" : u"Maximize");
}

void EditorWindow::showMenu(std::span<const std::string_view> ids) {
    if (toolkit::CControlUI* button = findControl(kMenuCommand.control)) {
        toolkit::MenuPopup::of(GetPaintManager())
            .open(*button, menuEntries({&m_commands, &m_commonCommands}, ids));
    }
}

void EditorWindow::OnClick(toolkit::TNotifyUI& message) {
    m_commands.runOf(message.pSender->GetName());
}

bool EditorWindow::MessageHandler(const platform::Event& event) {
    if (event.kind == platform::EventKind::resized) {
        showState();
        windowSized();
    }
    return openContextMenu(event) || m_commands.handleKey(event) ||
           m_commonCommands.handleKey(event) || WindowImplBase::MessageHandler(event);
}

bool EditorWindow::openContextMenu(const platform::Event& event) {
    toolkit::CPaintManagerUI& manager = GetPaintManager();
    const bool isPress = event.kind == platform::EventKind::mouseDown &&
                         event.button == platform::MouseButton::right;
    const bool isKey = event.kind == platform::EventKind::keyDown && toolkit::isMenuKey(event);
    toolkit::CControlUI* control = isPress ? manager.FindControl(event.position)
                                   : isKey ? manager.GetFocus()
                                           : nullptr;
    if (control == nullptr || event.repeat || (isKey && control->claimsKey(event))) {
        return false;
    }
    const platform::Rect anchor =
        isPress ? platform::Rect::at(event.position.x, event.position.y, 0, 0) : anchorOf(*control);
    if (isPress) {
        // Chooses the row that it is in.
        manager.mouse().notePress(control, {toolkit::EventType::buttonDown, control, event});
    }
    for (; control != nullptr; control = control->GetParent()) {
        for (const ContextMenu& menu : m_tables.contextMenus) {
            if (control->GetName() == menu.control) {
                // Belongs to the window: a combo has lists of its own.
                return toolkit::MenuPopup::of(manager).openAt(
                    anchor, *manager.GetRoot(),
                    menuEntries({&m_commands, &m_commonCommands}, menu.rows));
            }
        }
    }
    return false;
}

void EditorWindow::controlsReady() {
    m_commands.showKeys();
    m_keysChanged = m_keys.observe([this] {
        if (!IsClosing()) {
            m_commands.showKeys();
            showState();
        }
    });
}

bool EditorWindow::runScreen(std::u16string_view title) {
    if (!Create(nullptr, std::u16string(title), kScreenStyle, kScreenExtendedStyle)) {
        return false;
    }
    m_place.emplace(m_context.services.editorSettings.get(), layoutName());
    m_place->apply(*GetNative(), leastSize());
    runLoop();
    return true;
}

bool EditorWindow::showBeside(platform::NativeWindow* owner, std::u16string_view title,
                              std::function<void()> onEnd) {
    setModeless();
    if (!Create(owner, std::u16string(title), kDialogStyle, kDialogExtendedStyle)) {
        return false;
    }
    m_onEnd = std::move(onEnd);
    CenterWindow();
    ShowWindow(true);
    GetNative()->activate();
    return true;
}

bool EditorWindow::runAbove(ConfirmCallback& asker, std::u16string_view title) {
    joinCompanions(asker.askersCompanions());
    if (!Create(asker.GetParentWindow(), std::u16string(title), kDialogStyle,
                kDialogExtendedStyle)) {
        return false;
    }
    const AskingScope asking(asker);
    m_asker = &asker;
    enableAsker(false);
    CenterWindow();
    runLoop();
    enableAsker(true);
    m_asker = nullptr;
    return true;
}

void EditorWindow::enableAsker(bool enabled) {
    if (platform::NativeWindow* owner = m_asker != nullptr ? m_asker->GetParentWindow() : nullptr) {
        owner->setEnabled(enabled);
    }
}

void EditorWindow::OnFinalMessage() {
    m_companions.close();
    if (m_onEnd) {
        m_onEnd();
    }
}

bool EditorWindow::HandleMessage(const platform::Event& event) {
    if (m_place && isInput(event.kind) && GetNative() != nullptr) {
        m_place->noteOpened(*GetNative());
    }
    if (event.kind == platform::EventKind::closeRequest) {
        enableAsker(true);
    }
    return WindowImplBase::HandleMessage(event);
}

void EditorWindow::Close(int code) {
    enableAsker(true); // before the window goes, so that the keyboard returns to the asker
    if (!IsClosing()) {
        if (m_place && GetNative() != nullptr) {
            m_place->keep(*GetNative());
        }
        m_companions.close();
    }
    WindowImplBase::Close(code);
}

void EditorWindow::runLoop() {
    ShowModal();
    if (m_context.gui.isEnding()) {
        m_context.state.quit = true;
    }
}

} // namespace ui
