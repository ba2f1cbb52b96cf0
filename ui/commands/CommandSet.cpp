#include "ui/commands/CommandSet.h"

#include <algorithm>
#include <utility>

#include "core/Texts.h"
#include "platform/Event.h"
#include "toolkit/controls/CButtonUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/commands/KeyMap.h"

namespace ui {

namespace {

/// Keys that act wherever the focus is.
bool actsEverywhere(const platform::Event& event) {
    return event.modifiers.control || platform::isFunctionKey(event.key);
}

/// Keys that would type something into a text field.
bool isTyping(const platform::Event& event) {
    using platform::Key;
    return (event.key >= Key::digit0 || event.key == Key::space || event.key == Key::openBracket ||
            event.key == Key::closeBracket || event.key == Key::plus || event.key == Key::minus) &&
           !event.modifiers.control && !event.modifiers.alt;
}

} // namespace

void CommandSet::bind(std::string_view id, std::function<void()> run, std::function<bool()> enabled,
                      std::function<std::u16string()> subject) {
    m_bindings[id] = {std::move(run), std::move(enabled), std::move(subject), {}};
}

void CommandSet::bindSwitch(std::string_view id, std::function<void()> run,
                            std::function<bool()> isOn, std::function<bool()> enabled) {
    m_bindings[id] = {std::move(run), std::move(enabled), {}, std::move(isOn)};
}

std::optional<bool> CommandSet::isOn(std::string_view id) const {
    const auto binding = m_bindings.find(id);
    return binding != m_bindings.end() && binding->second.isOn
               ? std::optional(binding->second.isOn())
               : std::nullopt;
}

const Command* CommandSet::find(std::string_view id) const {
    const auto found = std::find_if(m_table.begin(), m_table.end(),
                                    [&](const Command& command) { return command.id == id; });
    return found != m_table.end() ? &*found : nullptr;
}

const Command* CommandSet::bound(std::string_view id) const {
    return m_bindings.contains(id) ? find(id) : nullptr;
}

bool CommandSet::has(const Command& command, const KeyChord& chord) const {
    const KeyMap::Keys keys = m_keys.keysOf(command);
    return std::find(keys.begin(), keys.end(), chord) != keys.end();
}

std::u16string CommandSet::keyOf(const Command& command) const {
    return shownKey(m_keys.keysOf(command)[0]);
}

const Command* CommandSet::commandOf(const platform::Event& event) const {
    KeyChord chord = chordOf(event.key, event.modifiers);
    if (chord.key == platform::Key::other) {
        return nullptr;
    }
    for (const Command& command : m_table) {
        if (has(command, chord)) {
            return &command;
        }
    }
    chord.modifiers.control = chord.modifiers.alt = false;
    for (const Command& command : m_table) {
        if (command.anyModifiers && has(command, chord)) {
            return &command;
        }
    }
    return nullptr;
}

toolkit::CControlUI* CommandSet::controlOf(const Command& command) const {
    return m_manager.FindControl(command.control);
}

bool CommandSet::mayRun(const Command& command) const {
    const auto binding = m_bindings.find(command.id);
    if (binding == m_bindings.end() || (binding->second.enabled && !binding->second.enabled())) {
        return false;
    }
    const toolkit::CControlUI* control = controlOf(command);
    return control == nullptr || (control->IsEnabled() && control->IsVisible());
}

bool CommandSet::isEnabled(std::string_view id) const {
    const Command* command = find(id);
    return command != nullptr && mayRun(*command);
}

bool CommandSet::run(std::string_view id) {
    const Command* command = find(id);
    return command != nullptr && run(*command);
}

bool CommandSet::run(const Command& command) {
    if (!mayRun(command)) {
        return false;
    }
    if (auto* button = toolkit::controlCast<toolkit::CButtonUI>(controlOf(command))) {
        button->Activate();
    } else {
        m_bindings.at(command.id).run();
    }
    return true;
}

bool CommandSet::runOf(std::u16string_view control) {
    for (const Command& command : m_table) {
        const auto binding = m_bindings.find(command.id);
        if (command.control == control && !control.empty() && binding != m_bindings.end()) {
            binding->second.run();
            return true;
        }
    }
    return false;
}

bool CommandSet::isForFocus(const platform::Event& event) const {
    const toolkit::CControlUI* focus = m_manager.GetFocus();
    if (focus == nullptr) {
        return true;
    }
    const auto& controls = m_typingControls;
    const bool isLimited = isTyping(event) && !controls.empty();
    return !focus->claimsKey(event) &&
           (!isLimited ||
            std::find(controls.begin(), controls.end(), focus->GetName()) != controls.end());
}

bool CommandSet::handleKey(const platform::Event& event) {
    if (event.kind != platform::EventKind::keyDown || !isForFocus(event)) {
        return false;
    }
    const Command* command = commandOf(event);
    if (command == nullptr || !m_bindings.contains(command->id)) {
        return false;
    }
    if (event.repeat && !command->repeats) {
        return true;
    }
    if (!actsEverywhere(event)) {
        return run(*command);
    }
    m_manager.focusKeeper().takeText();
    if (m_manager.takesInput()) {
        run(*command);
    }
    return true;
}

void CommandSet::showKeys() {
    bool isChanged = false;
    for (const Command& command : m_table) {
        const bool isChosen = m_keys.isChosen(command);
        if (command.toolTip.empty() || (!isChosen && m_rekeyed.erase(command.id) == 0)) {
            continue; // it names the key of the table already
        }
        if (isChosen) {
            m_rekeyed.insert(command.id);
        }
        if (toolkit::CControlUI* control = controlOf(command)) {
            control->SetToolTip(toolTipOf(command, {}, m_keys.keysOf(command)[0]));
            isChanged = true;
        }
    }
    if (isChanged) {
        showEnabled(); // what they would act on is part of some
    }
}

void CommandSet::showEnabled() {
    for (const auto& [id, binding] : m_bindings) {
        const Command* command = find(id);
        toolkit::CControlUI* control = command != nullptr ? controlOf(*command) : nullptr;
        if (control != nullptr && binding.enabled) {
            control->SetEnabled(binding.enabled());
        }
        if (control != nullptr && binding.subject) {
            const std::u16string subject = binding.subject();
            control->SetToolTip(toolTipOf(*command, subject, m_keys.keysOf(*command)[0]));
            control->SetLabel(labelOf(*command, subject));
        }
    }
}

} // namespace ui
