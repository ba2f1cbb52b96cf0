#include "ui/commands/KeyMap.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Event.h"
#include "ui/commands/CommandTables.h"

namespace ui {

using platform::Key;

namespace {

constexpr const char* kSection = "keys";
/// Of a line, that are read.
constexpr std::size_t kMostParts = 4;

const Command* commandWith(std::string_view id) {
    for (const std::span<const Command> table : commandTables()) {
        const auto found = std::find_if(table.begin(), table.end(), [id](const Command& command) {
            return command.id == id && !command.group.empty();
        });
        if (found != table.end()) {
            return &*found;
        }
    }
    return nullptr;
}

bool has(const KeyMap::Keys& keys, const KeyChord& chord) {
    return std::find(keys.begin(), keys.end(), chord) != keys.end();
}

/// Keys that fields, lists, buttons and the system use themselves.
bool isTakenByControls(const KeyChord& chord) {
    const bool isPlain = !chord.modifiers.control;
    return chord.modifiers.alt || chord.key == Key::tab || chord.key == Key::escape ||
           chord.key == Key::enter || chord.key == Key::menu ||
           (chord.key == Key::f10 && chord.modifiers.shift) ||
           (isPlain && chord.key >= Key::left && chord.key <= Key::insert);
}

std::u16string listed(const KeyMap::Keys& keys) {
    std::u16string text;
    for (const KeyChord& chord : keys) {
        if (chord.key != Key::other) {
            text += (text.empty() ? u"" : u", ") + keyText(chord);
        }
    }
    return text;
}

} // namespace

KeyMap& KeyMap::of(app_state::SharedServices& services) {
    if (!services.keyMap) {
        services.keyMap = std::make_shared<KeyMap>(services.editorSettings);
    }
    return *services.keyMap;
}

KeyMap::KeyMap(std::shared_ptr<core::EditorSettings> settings) : m_settings(std::move(settings)) {
    if (m_settings) {
        read();
    }
}

void KeyMap::read() {
    std::vector<std::pair<const Command*, std::string>> lines;
    for (const auto& [id, text] : m_settings->section(kSection)) {
        const Command* command = commandWith(id);
        if (command == nullptr || command->isFixed) {
            m_problems.push_back(core::tr("\"{0}\" has no keys to choose."_tr, id));
            continue;
        }
        m_chosen[std::string(command->id)] = {}; // its keys are free for the others
        lines.emplace_back(command, text);
    }
    std::vector<const Command*> unread;
    for (const auto& [command, text] : lines) {
        if (!readLine(*command, core::displayText(text))) {
            unread.push_back(command);
        }
    }
    for (const Command* command : unread) {
        set(*command, usualKeys(*command));
    }
}

bool KeyMap::readLine(const Command& command, const std::u16string& text) {
    Keys keys{};
    std::size_t count = 0;
    bool isGood = true;
    const auto refuse = [&](const std::u16string& problem) {
        m_problems.push_back(command.listedText() + u": " + problem);
        isGood = false;
    };
    std::size_t read = 0;
    for (const std::u16string& part : splitKeys(text)) {
        if (++read > kMostParts) { // the line may be as long as it likes
            refuse(core::tr("only two keys count."_tr));
            break;
        }
        const std::optional<KeyChord> chord = parseKey(part);
        const std::u16string problem =
            chord ? refusal(command, *chord) : core::tr("\"{0}\" is not a key."_tr, part);
        if (!problem.empty()) {
            refuse(problem);
        } else if (!has(keys, *chord)) {
            if (count == keys.size()) {
                refuse(core::tr("only two keys count."_tr));
                break;
            }
            keys[count++] = *chord;
        }
    }
    set(command, keys);
    return isGood || count > 0;
}

void KeyMap::set(const Command& command, const Keys& keys) {
    if (keys == command.keys) {
        m_chosen.erase(std::string(command.id));
    } else {
        m_chosen[std::string(command.id)] = keys;
    }
}

KeyMap::Keys KeyMap::usualKeys(const Command& command) const {
    Keys keys = command.keys;
    for (KeyChord& chord : keys) {
        if (chord.key != Key::other && !refusal(command, chord).empty()) {
            chord = {};
        }
    }
    return keys;
}

KeyMap::Keys KeyMap::keysOf(const Command& command) const {
    const auto chosen = m_chosen.find(command.id);
    return chosen != m_chosen.end() ? chosen->second : command.keys;
}

bool KeyMap::isChosen(const Command& command) const {
    return m_chosen.contains(command.id);
}

std::u16string KeyMap::refusal(const Command& command, const KeyChord& chord) const {
    const std::u16string key = shownKey(chord);
    if (key.empty()) {
        return core::tr("This key cannot be chosen."_tr);
    }
    if (command.isFixed) {
        return core::tr("{0} keeps its key."_tr, command.listedText());
    }
    std::u16string owner;
    bool isUsual = false; // a command of these windows has it by default
    anyCommandBeside(command.id, [&](const Command& other) {
        isUsual = isUsual || (!other.isFixed && has(other.keys, chord));
        if (other.id != command.id && has(keysOf(other), chord)) {
            owner = other.listedText();
        }
        return !owner.empty();
    });
    if (!owner.empty()) {
        return core::tr("KeyIs|{0} is \"{1}\"."_tr, key, owner);
    }
    return isTakenByControls(chord) && !isUsual
               ? core::tr("{0} belongs to fields and lists."_tr, key)
               : std::u16string();
}

void KeyMap::choose(const Command& command, const Keys& keys) {
    set(command, keys);
    if (m_settings) { // a failed write is in the log
        m_settings->setIn(kSection, command.id,
                          isChosen(command) ? std::optional(core::storedText(listed(keys)))
                                            : std::nullopt);
    }
    m_observers.notify();
}

void KeyMap::resetAll() {
    m_problems.clear();
    for (const auto& [id, keys] : std::exchange(m_chosen, {})) {
        if (m_settings) {
            m_settings->setIn(kSection, id, std::nullopt);
        }
    }
    m_observers.notify();
}

} // namespace ui
