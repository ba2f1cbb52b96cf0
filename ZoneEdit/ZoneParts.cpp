#include "ZoneEdit/ZoneParts.h"

#include <string>
#include <utility>

#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/OutlinesLayer.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "player/Clip.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/EditContext.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

ZoneParts::ZoneParts(ui::CommandSet& commands, Links links)
    : m_links(std::move(links)), m_flags(m_links.controls, m_links.video, m_links.session),
      m_zones(m_links.controls, m_links.video, m_links.session, m_flags),
      m_panel(m_links.controls, m_links.video, m_links.session, m_zones, m_links.outlines) {
    bind(commands);
}

void ZoneParts::bind(ui::CommandSet& commands) {
    namespace command = ui::command;
    const auto hasZones = [this] { return m_zones.hasZones(); };
    const auto isChosen = [this] { return m_zones.canRemove(); };
    for (const std::string_view id : {command::kAddZone, command::kPanelAddZone}) {
        commands.bind(id, [this] { m_zones.add(); });
    }
    commands.bind(
        command::kPanelRemoveZone, [this] { remove(); }, isChosen);
    for (const std::string_view id : {command::kDuplicateZone, command::kPanelDuplicateZone}) {
        commands.bind(
            id, [this] { m_links.session.duplicateZone(m_links.session.context().currentZone); },
            isChosen);
    }
    commands.bind(
        command::kRename, [this] { startRename(); }, hasZones);
    commands.bind(
        command::kNextZone, [this] { chooseBeside(1); }, hasZones);
    commands.bind(
        command::kZoneBefore, [this] { chooseBeside(-1); }, hasZones);
    commands.bind(command::kActive, [this] {
        if (auto* option = m_links.controls.find<toolkit::COptionUI>(kActiveOption)) {
            option->Activate();
        }
    });
}

void ZoneParts::showAll() {
    m_zones.showAll();
    m_flags.showAll();
    m_panel.showAll();
}

void ZoneParts::frameShown() {
    m_flags.showActive();
    m_panel.refresh();
}

bool ZoneParts::choose(std::u16string_view list) {
    if (list == kZoneCombo) {
        m_zones.choose();
        m_panel.refresh();
        m_links.zoneShown();
    } else if (list == kZonesList) {
        m_panel.choose();
    } else {
        return false;
    }
    return true;
}

bool ZoneParts::press(toolkit::CControlUI& sender) {
    return m_flags.change(sender) || m_panel.press(sender);
}

void ZoneParts::activate(std::u16string_view list) {
    if (list == kZonesList) {
        m_panel.startRename();
    }
}

bool ZoneParts::typed(std::u16string_view field) {
    if (field == kZoneEdit) {
        m_zones.rename();
    } else if (field == kRowEdit) {
        m_panel.endRename(true);
    } else {
        return false;
    }
    return true;
}

bool ZoneParts::restoreText() {
    return (m_links.controls.hasFocus(kZoneEdit) && m_zones.restoreText()) ||
           (m_links.controls.hasFocus(kRowEdit) && m_panel.endRename(false));
}

bool ZoneParts::handle(const platform::Event& event) {
    const video::CVideoUI* control = m_links.video.control();
    if (event.button != platform::MouseButton::left) {
        return false;
    }
    if (event.kind == platform::EventKind::mouseDoubleClick) { // the second click is no tool's
        return std::exchange(m_isTagPressed, false);
    }
    const bool isPress = event.kind == platform::EventKind::mouseDown;
    m_isTagPressed = m_isTagPressed && !isPress;
    if (!isPress || m_links.controls.manager().FindControl(event.position) != control) {
        return false;
    }
    const int zone = tagAt(event.position);
    m_isTagPressed = zone >= 0;
    if (m_isTagPressed) {
        m_zones.show(zone);
    }
    return m_isTagPressed;
}

int ZoneParts::tagAt(platform::Point at) const {
    return m_links.outlines ? m_links.outlines->tagAt(at, m_links.video.frame()) : -1;
}

bool ZoneParts::chooseInside(platform::Point at) {
    const platform::Point pixel = m_links.video.control()->view().toDisplay(at);
    const zone::ZoneManager& zones = m_links.session.zones();
    const int edited = m_links.session.context().currentZone;
    const int count = zones.zoneCount();
    for (int step = 1; step < count; ++step) {
        const int zone = (edited + step) % count;
        const auto points = zones.zone(zone)->points(m_links.video.frame());
        if (points && player::contains({0, true, {points->begin(), points->end()}}, pixel)) {
            m_zones.show(zone);
            return true;
        }
    }
    return false;
}

void ZoneParts::chooseBeside(int by) {
    const int count = m_links.session.zones().zoneCount();
    const int edited = m_links.session.context().currentZone;
    m_zones.show(edited < 0 ? 0 : (edited + by + count) % count);
}

void ZoneParts::startRename() {
    if (m_panel.hasFocus()) {
        m_panel.startRename();
    } else {
        m_links.controls.startTyping(kZoneEdit);
    }
}

void ZoneParts::remove() {
    const zone::ZoneSession& session = m_links.session;
    const std::u16string name =
        core::displayText(session.zones().getZoneName(session.context().currentZone));
    m_zones.remove();
    m_links.notice.offer(core::tr("Zone \"{0}\" removed."_tr, name), {kNoticeUndoButton});
}

} // namespace zoneedit
