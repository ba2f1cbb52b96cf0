#include "ui/KeysWindow.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/KeyRow.h"
#include "ui/Manual.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/KeysCommands.h"
#include "ui/commands/ZoneEditorCommands.h"

namespace ui {

namespace {

constexpr std::u16string_view kFindEdit = u"EditFindKey";
constexpr std::u16string_view kFindHint = u"LabelFindKey";
constexpr std::u16string_view kList = u"ListKeys";
constexpr std::u16string_view kHintLabel = u"LabelHint";

constexpr int kColumns = 3;
constexpr int kColumnWidth = 296;
constexpr int kColumnPitch = 316;
constexpr int kHeadingHeight = 24;
constexpr int kHeadingFont = 1;
constexpr int kLineTop = 26;
constexpr int kRowsTop = 32;
constexpr int kRowHeight = 22;
constexpr int kGroupGap = 10;

/// Groups that share a column of the full list.
int columnOf(std::u16string_view group) {
    return group == kBranchEditor ? 1 : group == kZones ? 2 : 0;
}

} // namespace

std::shared_ptr<KeysWindow> KeysWindow::create(const WindowContext& context) {
    return std::make_shared<KeysWindow>(context);
}

KeysWindow::KeysWindow(const WindowContext& context) : EditorWindow(context, kKeysCommands) {
    commands().bind(command::kKeys, [this] { controls().setFocus(kFindEdit); });
    commands().bind(command::kCopyKeys, [this] { copy(); });
    commands().bind(command::kManual, [this] { openManual(this->context().gui); });
    commands().bind(command::kCloseKeys, [this] { Close(1); });
}

void KeysWindow::InitWindow() {
    fill();
    controls().setFocus(kFindEdit);
}

void KeysWindow::Notify(toolkit::TNotifyUI& message) {
    EditorWindow::Notify(message);
    if (message.sType == toolkit::kTextChanged && message.pSender->GetName() == kFindEdit) {
        fill();
    }
}

void KeysWindow::fill() {
    auto* list = find<toolkit::CContainerUI>(kList);
    const toolkit::CControlUI* edit = findControl(kFindEdit);
    if (list == nullptr || edit == nullptr) {
        return;
    }
    const std::u16string wanted = edit->GetText();
    m_groups = keyGroups(wanted);
    list->RemoveAll();
    std::array<int, kColumns> tops{};
    for (const KeyGroup& group : m_groups) {
        const int column = columnOf(group.name);
        addGroup(*list, group, column * kColumnPitch, tops[static_cast<std::size_t>(column)]);
    }
    setVisibleOf(kFindHint, wanted.empty());
    setVisibleOf(u"EmptyLine", m_groups.empty());
}

void KeysWindow::addGroup(toolkit::CContainerUI& list, const KeyGroup& group, int left, int& top) {
    auto heading = std::make_unique<toolkit::CLabelUI>();
    heading->SetText(group.name);
    heading->SetFont(kHeadingFont);
    heading->SetAttribute(u"textcolor", u"#FF1C2733");
    heading->SetPlace(platform::Rect::at(left, top, kColumnWidth, kHeadingHeight));
    list.Add(std::move(heading));
    auto line = std::make_unique<toolkit::CControlUI>();
    line->SetAttribute(u"bkcolor", u"#FFD3DAE2");
    line->SetPlace(platform::Rect::at(left, top + kLineTop, kColumnWidth, 1));
    list.Add(std::move(line));
    top += kRowsTop;
    for (const KeyLine& shown : group.lines) {
        auto row = std::make_unique<KeyRow>(shown);
        row->SetPlace(platform::Rect::at(left, top, kColumnWidth, kRowHeight));
        list.Add(std::move(row));
        top += kRowHeight;
    }
    top += kGroupGap;
}

void KeysWindow::copy() {
    Gui().windows().setClipboardText(keyListText(m_groups));
    if (toolkit::CControlUI* hint = findControl(kHintLabel)) {
        hint->SetText(u"The list is on the clipboard.");
        hint->announce(false);
    }
}

} // namespace ui
