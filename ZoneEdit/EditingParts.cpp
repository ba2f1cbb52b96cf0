#include "ZoneEdit/EditingParts.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZonesPresenter.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "ui/commands/CommandMenu.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "zone/ShapeBlend.h"
#include "zone/ShapeStretch.h"

namespace zoneedit {

EditingParts::EditingParts(ui::CommandSet& commands, const Links& links)
    : m_links(links),
      m_editor(
          links.video, links.session, links.keys,
          [&selection = links.selection] {
              const auto span = selection.span();
              return span ? std::optional(zone::FrameRange{span->first, span->last + 1})
                          : std::nullopt;
          },
          links.settings),
      m_hints(links.controls, links.notice),
      m_tools(links.controls, links.video, links.session, m_editor, m_hints),
      m_pointKeys(links.video, links.session, m_editor),
      m_fields(links.controls, links.session, m_editor),
      m_range(links.session, m_editor, links.notice),
      m_rangeBar(links.controls, links.video, links.selection) {
    bindPoints(commands);
    bindRange(commands);
    bindShapes(commands);
}

void EditingParts::showAll() {
    m_tools.showAll();
    m_fields.show();
    m_rangeBar.show();
    showFill();
}

void EditingParts::turnFill() {
    m_editor.setFills(!m_editor.fills());
    showFill();
}

void EditingParts::showFill() {
    if (auto* option = m_links.controls.find<toolkit::COptionUI>(u"CheckAutoFill")) {
        option->Selected(m_editor.fills());
    }
}

void EditingParts::openMenu(ui::CommandSet& commands, std::u16string_view button,
                            std::span<const std::string_view> rows) {
    if (toolkit::CControlUI* owner = m_links.controls.find(button)) {
        toolkit::MenuPopup::of(m_links.controls.manager())
            .open(*owner, ui::menuEntries({&commands}, rows));
    }
}

void EditingParts::bindRange(ui::CommandSet& commands) {
    namespace command = ui::command;
    const auto hasPlace = [this] { return m_range.hasPlace(); };
    const auto hasRange = [this] { return m_range.hasRange(); };
    for (const std::string_view id : {command::kInterpolate, command::kInterpolateButton}) {
        commands.bind(
            id, [this] { m_range.interpolate(); }, hasPlace);
    }
    commands.bind(command::kInterpolateMenu, [this, &commands] {
        openMenu(commands, u"ButtonInterpolateMenu", ui::kInterpolateRows);
    });
    for (const auto& [id, way] : {std::pair{command::kStraight, zone::BlendWay::straight},
                                  std::pair{command::kSmooth, zone::BlendWay::smooth}}) {
        commands.bindSwitch(
            id, [this, way = way] { m_editor.setWay(way); },
            [this, way = way] { return m_editor.way() == way; });
    }
    commands.bind(
        command::kInterpolateAll, [this] { m_range.interpolateAll(); }, hasPlace);
    commands.bind(
        command::kMatchPoints, [this] { m_range.matchPoints(); }, hasPlace);
    commands.bind(command::kMatchPointsButton, [this] { m_range.matchOffered(); });
    commands.bind(
        command::kDeleteKeys, [this] { m_range.deleteKeys(); }, hasRange);
    commands.bind(
        command::kRangeActive, [this] { m_range.setActive(RangeActions::Where::range, true); },
        hasRange);
    commands.bind(
        command::kRangeInactive, [this] { m_range.setActive(RangeActions::Where::range, false); },
        hasRange);
    commands.bind(
        command::kActiveOnly, [this] { m_range.activeInRangeOnly(); }, hasRange);
    commands.bind(command::kClearRange, [this] { m_links.selection.clear(); });
    commands.bindSwitch(
        command::kFill, [this] { turnFill(); }, [this] { return m_editor.fills(); });
}

void EditingParts::bindShapes(ui::CommandSet& commands) {
    namespace command = ui::command;
    using Where = RangeActions::Where;
    const auto hasPlace = [this] { return m_range.hasPlace(); };
    for (const std::string_view id : {command::kCopyShape, command::kCopyShapeButton}) {
        commands.bind(
            id, [this] { m_range.copy(); }, hasPlace);
    }
    for (const std::string_view id : {command::kPasteShape, command::kPasteShapeButton}) {
        commands.bind(
            id, [this] { m_range.paste(); }, [this] { return m_range.canPaste(); });
    }
    commands.bind(command::kNewZone, [this] {
        const zone::ShapeStretch shapes = m_range.pastedZone();
        m_links.zones.add(&shapes);
    });
    commands.bind(
        command::kApplyShape,
        [this, &commands] { openMenu(commands, u"ButtonApplyShape", ui::kApplyRows); }, hasPlace);
    const std::pair<std::string_view, Where> applies[] = {{command::kApplyRange, Where::range},
                                                          {command::kApplyOnwards, Where::onwards},
                                                          {command::kApplyUpTo, Where::upToHere}};
    for (const auto& [id, where] : applies) {
        commands.bind(
            id, [this, where = where] { m_range.applyShape(where); },
            [this, where = where] {
                return where == Where::range ? m_range.hasRange() : m_range.hasPlace();
            });
    }
    const struct {
        std::string_view id;
        Where where;
        bool active;
    } flags[] = {{command::kActiveOnwards, Where::onwards, true},
                 {command::kActiveUpTo, Where::upToHere, true},
                 {command::kInactiveOnwards, Where::onwards, false},
                 {command::kInactiveUpTo, Where::upToHere, false}};
    for (const auto& flag : flags) {
        commands.bind(
            flag.id, [this, flag] { m_range.setActive(flag.where, flag.active); }, hasPlace);
    }
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
    const std::pair<std::string_view, std::u16string_view> tools[] = {
        {command::kMoveTool, kToolOptions[0]},
        {command::kAddOneTool, kToolOptions[1]},
        {command::kAddManyTool, kToolOptions[2]},
        {command::kDeleteTool, kToolOptions[3]}};
    for (const auto& [id, name] : tools) {
        commands.bind(id, [this, name = name] {
            if (auto* option = m_links.controls.find<toolkit::COptionUI>(name)) {
                option->Activate();
            }
        });
    }
    commands.bind(
        command::kEndAdding, [this] { (void)endAdding(); },
        [this] { return m_tools.isAddingMany(); });
}

bool EditingParts::handle(const platform::Event& event) {
    m_pointKeys.note(event);
    const bool isHandled = m_tools.handle(event);
    if (isHandled && event.kind != platform::EventKind::mouseMove) {
        m_fields.show(); // a press may have chosen another point
    }
    return isHandled;
}

bool EditingParts::endAdding() {
    const bool wasAdding = m_tools.isAddingMany();
    if (wasAdding) {
        m_tools.endAddingMany();
    }
    return wasAdding;
}

} // namespace zoneedit
