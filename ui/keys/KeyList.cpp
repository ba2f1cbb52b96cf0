#include "ui/keys/KeyList.h"

#include <algorithm>
#include <span>
#include <utility>

#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Event.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommandTables.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/MapCommands.h"
#include "ui/commands/ZoneEditorCommands.h"

namespace ui {

namespace {

/// The groups and the column of each.
constexpr std::pair<core::Text, int> kGroups[] = {{kEverywhere, 0},   {kFrames, 0},
                                                  {kBranchEditor, 1}, {kMapGroup, 1},
                                                  {kPreviewGroup, 1}, {kZones, 2}};
constexpr core::Text kSceneKeys = "A to Z go to the scene."_tr;
constexpr std::size_t kMostProblems = 10;

bool contains(std::u16string_view text, const std::u16string& wanted) {
    return core::foldCase(text).find(wanted) != std::u16string::npos;
}

void addLine(KeyLine line, const std::u16string& wanted, std::vector<KeyLine>& lines) {
    const bool isThere = std::any_of(lines.begin(), lines.end(), [&](const KeyLine& other) {
        return other.text == line.text && other.chord == line.chord;
    });
    if (!isThere && (contains(line.text, wanted) || contains(shownKeys(line), wanted))) {
        lines.push_back(std::move(line));
    }
}

void addLines(const Command& command, const KeyMap& keys, const std::u16string& wanted,
              std::vector<KeyLine>& lines) {
    const std::u16string text(command.listedText());
    if (!command.gesture.empty()) {
        addLine({.text = text, .command = &command}, wanted, lines);
        return;
    }
    const KeyMap::Keys chords = keys.keysOf(command);
    for (std::size_t i = 0; i < chords.size(); ++i) {
        // One that lost its key can get it again.
        const bool isShown = chords[i].key != platform::Key::other ||
                             (i == 0 && (!wanted.empty() || keys.isChosen(command)));
        if (isShown) {
            addLine({text, &command, i, chords[i], keys.isChosen(command)}, wanted, lines);
        }
    }
}

KeyGroup problemGroup(const std::vector<std::u16string>& problems) {
    KeyGroup group{core::tr("Not understood in Editor.ini"_tr), {}, 1};
    for (std::size_t i = 0; i < std::min(problems.size(), kMostProblems); ++i) {
        group.lines.push_back({.text = problems[i]});
    }
    if (problems.size() > kMostProblems) {
        const std::size_t rest = problems.size() - kMostProblems;
        group.lines.push_back(
            {.text = core::tr("AndMoreRows|and {0} more|and {0} more"_trn, rest)});
    }
    return group;
}

} // namespace

std::u16string shownKeys(const KeyLine& line) {
    const bool isGesture = line.command != nullptr && !line.command->gesture.empty();
    return isGesture ? core::trKeys(line.command->gesture) : shownKey(line.chord);
}

std::vector<KeyGroup> keyGroups(const KeyMap& keys, std::u16string_view wanted) {
    std::vector<KeyGroup> groups;
    const std::u16string text = core::foldCase(wanted);
    for (const auto& [name, column] : kGroups) {
        KeyGroup group{core::tr(name), {}, column};
        for (const std::span<const Command> table : commandTables()) {
            for (const Command& command : table) {
                if (command.group.source == name.source) {
                    addLines(command, keys, text, group.lines);
                }
            }
        }
        if (name.source == kPreviewGroup.source && contains(core::tr(kSceneKeys), text)) {
            group.lines.push_back({.text = core::tr(kSceneKeys)});
        }
        groups.push_back(std::move(group));
    }
    if (text.empty()) {
        groups.push_back(problemGroup(keys.problems()));
    }
    std::erase_if(groups, [](const KeyGroup& group) { return group.lines.empty(); });
    return groups;
}

std::u16string keyListText(const std::vector<KeyGroup>& groups) {
    std::u16string text;
    for (const KeyGroup& group : groups) {
        text += (text.empty() ? u"" : u"\n") + group.name + u"\n";
        for (const KeyLine& line : group.lines) {
            text += (line.command != nullptr ? shownKeys(line) + u"\t" : u"") + line.text + u"\n";
        }
    }
    return text;
}

} // namespace ui
