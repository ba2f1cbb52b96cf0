#include "ui/commands/CommandTables.h"

#include <algorithm>
#include <string_view>

#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ConfirmationCommands.h"
#include "ui/commands/EarlierVersionsCommands.h"
#include "ui/commands/ImportCommands.h"
#include "ui/commands/KeysCommands.h"
#include "ui/commands/PublishCommands.h"
#include "ui/commands/SettingsCommands.h"
#include "ui/commands/StartCommands.h"
#include "ui/commands/ZoneEditorCommands.h"

namespace ui {

std::span<const std::span<const Command>> commandTables() {
    static constexpr std::span<const Command> kTables[] = {
        kCommonCommands,     kOpenSceneCommands,    kNewSceneCommands, kBranchEditorCommands,
        kZoneEditorCommands, kConfirmationCommands, kSettingsCommands, kEarlierVersionsCommands,
        kKeysCommands,       kImportCommands,       kPublishCommands,
    };
    return kTables;
}

bool anyCommandBeside(std::string_view id, const std::function<bool(const Command&)>& visit) {
    const std::span<const std::span<const Command>> tables = commandTables();
    const auto has = [id](std::span<const Command> table) {
        return std::any_of(table.begin(), table.end(),
                           [id](const Command& command) { return command.id == id; });
    };
    const std::span<const Command> common = tables.front();
    const bool isCommon = has(common);
    return std::any_of(tables.begin(), tables.end(), [&](std::span<const Command> table) {
        return (isCommon || has(table)) && (std::any_of(table.begin(), table.end(), visit) ||
                                            std::any_of(common.begin(), common.end(), visit));
    });
}

} // namespace ui
