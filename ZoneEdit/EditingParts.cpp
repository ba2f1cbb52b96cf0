#include "ZoneEdit/EditingParts.h"

#include <cstddef>
#include <iterator>
#include <optional>

#include "platform/Geometry.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "zone/ShapeStretch.h"

namespace zoneedit {

EditingParts::EditingParts(ui::CommandSet& commands, const Links& links)
    : m_editor(
          links.video, links.session, links.keys, [] { return std::optional<zone::FrameRange>(); },
          links.settings),
      m_hints(links.controls),
      m_tools(links.controls, links.video, links.session, m_editor, m_hints),
      m_pointKeys(links.video, links.session, m_editor) {
    bindPoints(commands);
}

void EditingParts::bindPoints(ui::CommandSet& commands) {
    namespace command = ui::command;
    constexpr platform::Point kArrows[] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    for (std::size_t number = 0; number < std::size(command::kNudge); ++number) {
        const platform::Point arrow = kArrows[number % std::size(kArrows)];
        const int pixels = number < std::size(kArrows) ? 1 : 10;
        commands.bind(
            command::kNudge[number],
            [this, arrow, pixels] {
                m_pointKeys.nudge({arrow.x * pixels, arrow.y * pixels});
            },
            [this] { return m_pointKeys.canNudge(); });
    }
    commands.bind(
        command::kDeletePoint, [this] { m_pointKeys.remove(); },
        [this] { return m_pointKeys.canRemove(); });
    commands.bind(
        command::kEndAdding, [this] { (void)endAdding(); },
        [this] { return m_tools.isAddingMany(); });
}

bool EditingParts::handle(const platform::Event& event) {
    m_pointKeys.note(event);
    return m_tools.handle(event);
}

bool EditingParts::endAdding() {
    const bool wasAdding = m_tools.isAddingMany();
    if (wasAdding) {
        m_tools.endAddingMany();
    }
    return wasAdding;
}

} // namespace zoneedit
