#include "ui/keys/KeysWindow.h"

#include <utility>

#include "core/Texts.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "toolkit/window/Notification.h"
#include "ui/Companions.h"
#include "ui/Controls.h"
#include "ui/Manual.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ContextMenu.h"
#include "ui/commands/KeyMap.h"
#include "ui/commands/KeysCommands.h"
#include "ui/keys/KeyRow.h"
#include "ui/keys/KeyTable.h"

namespace ui {

using platform::Key;

namespace {

constexpr std::u16string_view kFindEdit = u"EditFindKey";
constexpr std::u16string_view kFindHint = u"LabelFindKey";
constexpr std::u16string_view kList = u"ListKeys";
constexpr std::u16string_view kCopyButton = u"ButtonKeysCopy";
constexpr std::u16string_view kHintLabel = u"LabelHint";
constexpr ContextMenu kContextMenus[] = {{kList, kKeyRows}};
constexpr std::u16string_view kPanes[] = {kFindEdit, kList, kCopyButton};
constexpr core::Text kUsualHint =
    "Letters and digits count when no text field has the cursor. Tool tips show them too."_tr;
constexpr core::Text kWaitingHint =
    "Press the new key. Esc: leave, Delete: no key, Backspace: reset."_tr;

} // namespace

std::shared_ptr<KeysWindow> KeysWindow::create(const WindowContext& context) {
    return std::make_shared<KeysWindow>(context);
}

KeysWindow::KeysWindow(const WindowContext& context)
    : EditorWindow(context, {kKeysCommands, kContextMenus, kPanes}) {
    bindCommands();
    m_changed = keys().observe([this] { fill(); });
}

void KeysWindow::bindCommands() {
    const auto canChange = [this] { return changeable() != nullptr; };
    commands().bind(command::kKeys, [this] { controls().setFocus(kFindEdit); });
    bindFind(kFindEdit);
    commands().bind(command::kCopyKeys, [this] { copy(); });
    commands().bind(command::kManual, [this] { openManual(context(), companions().helped()); });
    commands().bind(command::kCloseKeys, [this] { Close(1); });
    commands().bind(
        command::kChangeKey, [this] { change(); }, canChange);
    commands().bind(
        command::kRemoveKey, [this] { choose({}); }, canChange);
    commands().bind(
        command::kResetKey, [this] { resetChosen(); }, canChange);
    commands().bind(command::kResetKeys, [this] { keys().resetAll(); });
}

std::unique_ptr<toolkit::CControlUI> KeysWindow::CreateControl(std::u16string_view className) {
    if (className != u"KeyTable") {
        return EditorWindow::CreateControl(className);
    }
    auto table = std::make_unique<KeyTable>();
    table->setOnKey([this](const KeyChord& chord) { take(chord); });
    return table;
}

void KeysWindow::InitWindow() {
    m_table = find<KeyTable>(kList);
    fill();
    controls().setFocus(kFindEdit);
}

void KeysWindow::Notify(toolkit::TNotifyUI& message) {
    EditorWindow::Notify(message);
    const std::u16string& name = message.pSender->GetName();
    if (message.sType == toolkit::kTextChanged && name == kFindEdit) {
        fill();
    } else if (message.sType == toolkit::kItemActivate && name == kList) {
        change();
    } else if (message.sType == toolkit::kItemSelect && name == kList) {
        say(kUsualHint);
    }
}

void KeysWindow::fill() {
    const toolkit::CControlUI* edit = findControl(kFindEdit);
    if (m_table == nullptr || edit == nullptr || IsClosing()) {
        return;
    }
    const std::u16string wanted = edit->GetText();
    m_groups = keyGroups(keys(), wanted);
    m_table->show(m_groups);
    setVisibleOf(kFindHint, wanted.empty());
    setVisibleOf(u"EmptyLine", m_groups.empty());
}

void KeysWindow::copy() {
    Gui().windows().setClipboardText(keyListText(m_groups));
    say("The list is on the clipboard."_tr);
}

void KeysWindow::say(core::Text text) {
    const std::u16string hint = core::tr(text);
    toolkit::CControlUI* label = findControl(kHintLabel);
    if (label != nullptr && label->GetText() != hint) {
        label->SetText(hint);
        label->announce(false);
    }
}

const KeyLine* KeysWindow::changeable() {
    const KeyRow* row = m_table != nullptr ? m_table->chosen() : nullptr;
    const bool can =
        row != nullptr && row->line().command != nullptr && !row->line().command->isFixed;
    return can ? &row->line() : nullptr;
}

void KeysWindow::change() {
    if (changeable() != nullptr) {
        m_table->setWaiting(true);
        say(kWaitingHint);
    } else {
        say("This key cannot be changed."_tr);
    }
}

void KeysWindow::stopWaiting() {
    m_table->setWaiting(false);
    say(kUsualHint);
}

void KeysWindow::take(const KeyChord& chord) {
    const KeyLine* line = changeable();
    if (line == nullptr || chord == KeyChord{Key::escape, {}} || chord == line->chord) {
        stopWaiting();
    } else if (chord == KeyChord{Key::del, {}}) {
        choose({});
    } else if (chord == KeyChord{Key::backspace, {}}) {
        resetChosen();
    } else if (const std::u16string why = keys().refusal(*line->command, chord); !why.empty()) {
        m_table->chosen()->refuse(why);
    } else {
        choose(chord);
    }
}

void KeysWindow::choose(const KeyChord& chord) {
    const KeyLine* line = changeable();
    if (line == nullptr) {
        return;
    }
    const Command& command = *line->command;
    KeyMap::Keys chosen = keys().keysOf(command);
    chosen[line->number] = chord;
    if (chosen[0].key == Key::other) {
        std::swap(chosen[0], chosen[1]);
    }
    stopWaiting();
    keys().choose(command, chosen);
}

void KeysWindow::resetChosen() {
    if (const KeyLine* line = changeable()) {
        const Command& command = *line->command;
        stopWaiting();
        keys().choose(command, keys().usualKeys(command));
    }
}

} // namespace ui
