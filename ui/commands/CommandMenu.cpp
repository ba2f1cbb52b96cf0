#include "ui/commands/CommandMenu.h"

#include <string>
#include <utility>

#include "ui/commands/Command.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace {

toolkit::MenuEntry entryOf(CommandSet& set, const Command& command) {
    toolkit::MenuEntry entry;
    entry.text = command.shownText();
    entry.key = set.keyOf(command);
    entry.icon = command.icon;
    entry.checked = set.isOn(command.id);
    entry.enabled = set.isEnabled(command.id);
    entry.run = [&set, id = command.id] { set.run(id); };
    return entry;
}

} // namespace

std::vector<toolkit::MenuEntry> menuEntries(std::initializer_list<CommandSet*> sets,
                                            std::span<const std::string_view> ids) {
    std::vector<toolkit::MenuEntry> entries;
    bool lineIsDue = false;
    for (const std::string_view id : ids) {
        lineIsDue = lineIsDue || id == command::kLine;
        for (CommandSet* set : sets) {
            if (const Command* command = set->bound(id)) {
                if (std::exchange(lineIsDue, false) && !entries.empty()) {
                    entries.emplace_back();
                }
                entries.push_back(entryOf(*set, *command));
                break;
            }
        }
    }
    return entries;
}

} // namespace ui
