#include "ZoneEdit/ViewParts.h"

#include <utility>

#include "ZoneEdit/Loupe.h"
#include "ZoneEdit/OnionLayer.h"
#include "ZoneEdit/OutlinesLayer.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZonesLayer.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Fonts.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "video/CVideoUI.h"
#include "zone/ShapeDrawing.h"

namespace zoneedit {

ViewParts::ViewParts(ui::CommandSet& commands, Links links)
    : m_links(std::move(links)), m_zoom(m_links.controls, m_links.video, *m_links.session,
                                        [&commands] { commands.run(ui::command::kPlayVideo); }),
      m_toggles(m_links.controls, m_links.settings, [this](Toggle /*toggle*/) { show(); }) {
    bind(commands);
}

ViewParts::~ViewParts() = default;

void ViewParts::bind(ui::CommandSet& commands) {
    namespace command = ui::command;
    const std::pair<std::string_view, Toggle> switches[] = {
        {command::kAllZones, Toggle::allZones},     {command::kOnion, Toggle::onion},
        {command::kLoupe, Toggle::loupe},           {command::kPanel, Toggle::panel},
        {command::kClearLines, Toggle::clearLines}, {command::kGrabDistance, Toggle::grabDistance}};
    for (const auto& [id, toggle] : switches) {
        commands.bindSwitch(
            id, [this, toggle = toggle] { m_toggles.turn(toggle); },
            [this, toggle = toggle] { return m_toggles.isOn(toggle); });
    }
}

void ViewParts::addLayers() {
    video::CVideoUI& control = *m_links.video.control();
    const toolkit::WindowLook& look = m_links.controls.manager().look();
    m_onion = std::make_shared<OnionLayer>(m_links.session, m_links.keys);
    m_outlines = std::make_shared<OutlinesLayer>(control, m_links.session, m_links.fonts,
                                                 look.GetFont(ui::font::kSmall));
    m_drawing = std::make_shared<ZonesLayer>(
        m_links.session, zone::NumberFont{look.GetFont(ui::font::kSmallest), &m_links.fonts});
    control.AddLayer(m_onion);
    control.AddLayer(m_outlines);
    control.AddLayer(m_drawing);
}

void ViewParts::showAll() {
    m_zoom.showAll();
    if (auto* loupe = m_links.controls.find<Loupe>(kLoupe)) {
        loupe->show(m_links.video.control(), m_links.session);
    }
    m_toggles.showAll();
    show();
}

void ViewParts::show() {
    if (!m_drawing) {
        return;
    }
    m_onion->show(m_toggles.isOn(Toggle::onion));
    m_outlines->show(m_toggles.isOn(Toggle::allZones));
    m_drawing->setEdge(m_toggles.isOn(Toggle::clearLines) ? zone::LineEdge::dark
                                                          : zone::LineEdge::none);
    m_links.controls.setVisible(kLoupe, m_toggles.isOn(Toggle::loupe));
    m_links.controls.setVisible(kLoupeHead, m_toggles.isOn(Toggle::loupe));
    m_links.controls.manager().UpdateLayout();
    m_links.changed();
    m_links.video.control()->Invalidate();
}

bool ViewParts::choose(std::u16string_view list) {
    if (list == kZoomCombo) {
        m_zoom.choose();
        return true;
    }
    return false;
}

} // namespace zoneedit
