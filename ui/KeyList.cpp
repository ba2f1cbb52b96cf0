#include "ui/KeyList.h"

#include <algorithm>
#include <span>
#include <utility>

#include "core/Text.h"
#include "platform/Event.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/StartCommands.h"
#include "ui/commands/ZoneEditorCommands.h"

namespace ui {

namespace {

constexpr std::span<const Command> kTables[] = {
    kCommonCommands,       kOpenSceneCommands,  kNewSceneCommands,
    kBranchEditorCommands, kZoneEditorCommands,
};
constexpr std::u16string_view kGroups[] = {kEverywhere, kFrames, kBranchEditor, kZones};

bool isWanted(const KeyLine& line, const std::u16string& wanted) {
    return core::foldCase(line.text).find(wanted) != std::u16string::npos ||
           core::foldCase(keyText(line.chord)).find(wanted) != std::u16string::npos;
}

void addLines(const Command& command, const std::u16string& wanted, std::vector<KeyLine>& lines) {
    for (const KeyChord& chord : command.keys) {
        const KeyLine line{command.listed.empty() ? command.text : command.listed, chord};
        if (chord.key != platform::Key::other && isWanted(line, wanted) &&
            std::find(lines.begin(), lines.end(), line) == lines.end()) {
            lines.push_back(line);
        }
    }
}

} // namespace

std::vector<KeyGroup> keyGroups(std::u16string_view wanted) {
    std::vector<KeyGroup> groups;
    const std::u16string text = core::foldCase(wanted);
    for (const std::u16string_view name : kGroups) {
        KeyGroup group{name, {}};
        for (const std::span<const Command> table : kTables) {
            for (const Command& command : table) {
                if (command.group == name) {
                    addLines(command, text, group.lines);
                }
            }
        }
        if (!group.lines.empty()) {
            groups.push_back(std::move(group));
        }
    }
    return groups;
}

std::u16string keyListText(const std::vector<KeyGroup>& groups) {
    std::u16string text;
    for (const KeyGroup& group : groups) {
        text += (text.empty() ? u"" : u"\n") + std::u16string(group.name) + u"\n";
        for (const KeyLine& line : group.lines) {
            text += keyText(line.chord) + u"\t" + std::u16string(line.text) + u"\n";
        }
    }
    return text;
}

} // namespace ui
