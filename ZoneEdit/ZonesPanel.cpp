#include "ZoneEdit/ZonesPanel.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "ZoneEdit/OutlinePath.h"
#include "ZoneEdit/OutlinesLayer.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZonesPresenter.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "edit/History.h"
#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/FlagScope.h"
#include "ui/Fonts.h"
#include "zone/EditContext.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneOperations.h"

namespace zoneedit {
namespace {

using toolkit::CControlUI;

constexpr int kRowHeight = 30;

/// The colour of the zone's outline.
class Dot final : public CControlUI {
public:
    void setColor(platform::Color color) {
        m_color = color;
        Invalidate();
    }
    void DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) override {
        canvas.drawEllipse(GetPos(), paletteColor(toolkit::Tone::muted), m_color);
    }

private:
    platform::Color m_color = 0;
};

/// A press on the eye shows or hides the outline of a zone that is not edited: it chooses no zone.
class ZoneRow final : public toolkit::CListContainerElementUI {
public:
    bool notePress(const toolkit::TEventUI& event) override {
        const CControlUI* eye = FindSubControl(kRowEye);
        const bool isOnEye = eye != nullptr && eye->GetPos().contains(event.native.position);
        return !isOnEye && CListContainerElementUI::notePress(event);
    }
};

template <class Control>
Control& add(toolkit::CContainerUI& row, std::u16string_view name, std::u16string_view place,
             std::u16string_view anchor) {
    auto control = std::make_unique<Control>();
    Control& added = *control;
    control->SetName(name);
    control->SetAttribute(u"pos", place);
    control->SetAttribute(u"anchor", anchor);
    row.Add(std::move(control));
    return added;
}

template <class Control>
Control& part(CControlUI& row, std::u16string_view name) {
    return *toolkit::controlCast<Control>(row.FindSubControl(name));
}

} // namespace

ZonesPanel::ZonesPanel(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                       ZonesPresenter& zones, std::shared_ptr<OutlinesLayer> outlines)
    : m_controls(controls), m_video(video), m_session(session), m_zones(zones),
      m_outlines(std::move(outlines)),
      m_changes(session.observe([this](const auto& changes) { changed(changes); })) {}

toolkit::CListUI* ZonesPanel::list() const {
    return m_controls.find<toolkit::CListUI>(kZonesList);
}

void ZonesPanel::changed(const zone::ZoneSession::History::Changes& changes) {
    const bool isAboutList = std::any_of(changes.begin(), changes.end(), [](const auto& change) {
        return change.what != zone::ZoneChange::What::shapes;
    });
    if (isAboutList) {
        showAll();
    } else {
        refresh();
    }
}

void ZonesPanel::showAll() {
    if (toolkit::CListUI* rows = list()) {
        m_renamed = -1;
        rows->SetRows(m_session.zones().zoneCount(),
                      {[this](int zone) { return makeRow(zone); }, kRowHeight, true});
        refresh();
    }
}

void ZonesPanel::refresh() {
    toolkit::CListUI* rows = list();
    if (rows == nullptr) {
        return;
    }
    // A row that is chosen already stays where the author has scrolled it.
    if (const int zone = m_session.context().currentZone; zone != rows->GetCurSel()) {
        const ui::FlagScope showing(m_isShowing);
        rows->SelectItem(zone);
    }
    for (int zone = 0; zone < rows->GetCount(); ++zone) {
        if (CControlUI* row = rows->madeRow(zone)) {
            showRow(*row, zone);
        }
    }
}

std::unique_ptr<CControlUI> ZonesPanel::makeRow(int zone) {
    auto row = std::make_unique<ZoneRow>();
    row->SetFixedHeight(kRowHeight);
    row->SetAttribute(u"size", u"254,30");
    row->SetAttribute(u"bordercolor", u"rowline");
    row->SetAttribute(u"bordersize", u"0,0,0,1");
    add<Dot>(*row, kRowDot, u"11,9,12,12", u"left,top");
    auto& name = add<toolkit::CLabelUI>(*row, kRowName, u"33,0,118,29", u"left,top,right");
    name.SetAttribute(u"endellipsis", u"true");
    auto& edit = add<toolkit::CEditUI>(*row, kRowEdit, u"27,2,186,25", u"left,top,right");
    edit.SetAttribute(u"normalimage", u"file='EditNormal.png' corner='4,4,4,4'");
    edit.SetAttribute(u"hotimage", u"file='EditHover.png' corner='4,4,4,4'");
    edit.SetAttribute(u"textpadding", u"5,0,5,0");
    edit.SetLabel(core::tr("Zone name"_tr));
    edit.SetVisible(false);
    auto& state = add<toolkit::CLabelUI>(*row, kRowState, u"153,0,64,29", u"top,right");
    state.SetFont(ui::font::kSmall);
    state.SetAttribute(u"align", u"right");
    auto& eye = add<toolkit::COptionUI>(*row, kRowEye, u"221,2,28,25", u"top,right");
    eye.SetAttribute(u"hotimage", u"file='ButtonHover.png' corner='4,4,4,4'");
    eye.SetAttribute(u"icontint", u"muted");
    eye.SetToolTip(core::tr("Show its outline"_tr));
    showRow(*row, zone);
    return row;
}

void ZonesPanel::showRow(CControlUI& row, int zone) {
    const auto shown = m_session.zones().zone(zone);
    if (!shown) {
        return;
    }
    const int frame = m_video.frame();
    const bool isActive =
        frame >= 0 && frame < shown->frameCount() && m_session.zones().isActive(zone, frame);
    const bool isHidden = m_outlines && m_outlines->isHidden(shown);
    const std::u16string name = core::displayText(shown->name());
    const std::u16string active =
        core::tr(isActive ? "ZoneActive|active"_tr : "ZoneNotActive|not active"_tr);
    part<Dot>(row, kRowDot).setColor(zoneColor(zone, m_session.context().currentZone));
    auto& label = part<toolkit::CLabelUI>(row, kRowName);
    label.SetText(name);
    label.SetAttribute(u"textcolor", isActive ? u"ink" : u"hint");
    auto& state = part<toolkit::CLabelUI>(row, kRowState);
    state.SetText(active);
    state.SetAttribute(u"textcolor", isActive ? u"good" : u"hint");
    auto& eye = part<toolkit::COptionUI>(row, kRowEye);
    eye.Selected(!isHidden);
    eye.SetIcon(isHidden ? u"EyeOff" : u"Eye");
    eye.SetLabel(core::tr("Show the outline: {0}"_tr, name));
    const bool isRenamed = m_renamed == zone;
    part<toolkit::CEditUI>(row, kRowEdit).SetVisible(isRenamed);
    label.SetVisible(!isRenamed);
    state.SetVisible(!isRenamed);
    row.SetText(name + u", " + active + u", " +
                core::tr(isHidden ? "ZoneHidden|hidden"_tr : "ZoneShown|shown"_tr));
}

int ZonesPanel::rowOf(const CControlUI& control) const {
    const toolkit::CListUI* rows = list();
    for (const CControlUI* at = &control; rows != nullptr && at != nullptr; at = at->GetParent()) {
        if (const int row = rows->GetItemIndex(at); row >= 0) {
            return row;
        }
    }
    return -1;
}

void ZonesPanel::choose() {
    const toolkit::CListUI* rows = list();
    if (rows != nullptr && !m_isShowing && rows->GetCurSel() >= 0) {
        m_zones.show(rows->GetCurSel());
    }
}

bool ZonesPanel::press(CControlUI& sender) {
    const int zone = sender.GetName() == kRowEye ? rowOf(sender) : -1;
    const auto shown = m_session.zones().zone(zone);
    if (zone < 0 || !shown) {
        return false;
    }
    if (m_outlines) {
        m_outlines->setHidden(shown, !m_outlines->isHidden(shown));
        m_video.repaintZone();
    }
    refresh();
    return true;
}

bool ZonesPanel::hasFocus() const {
    const CControlUI* focus = m_controls.manager().GetFocus();
    const toolkit::CListUI* rows = list();
    return focus != nullptr && rows != nullptr && focus->isInside(rows);
}

void ZonesPanel::startRename() {
    toolkit::CListUI* rows = list();
    const int zone = m_session.context().currentZone;
    CControlUI* row = rows != nullptr && zone >= 0 ? rows->GetItemAt(zone) : nullptr;
    if (row == nullptr) {
        return;
    }
    rows->revealRow(zone);
    m_renamed = zone;
    showRow(*row, zone);
    auto& edit = part<toolkit::CEditUI>(*row, kRowEdit);
    edit.SetText(core::displayText(m_session.zones().getZoneName(zone)));
    m_shownName = edit.GetText();
    m_controls.manager().UpdateLayout();
    m_controls.manager().SetFocus(&edit);
    edit.SetSel(0, static_cast<int>(edit.GetText().size()));
}

bool ZonesPanel::endRename(bool takes) {
    toolkit::CListUI* rows = list();
    const int zone = std::exchange(m_renamed, -1);
    CControlUI* row = rows != nullptr && zone >= 0 ? rows->madeRow(zone) : nullptr;
    if (row == nullptr) {
        return false;
    }
    const std::u16string typed = part<toolkit::CEditUI>(*row, kRowEdit).GetText();
    // An edit cannot hold every name that a file can: a text nobody touched is no new name.
    const bool isNew = typed != m_shownName;
    if (!takes || !isNew) {
        showRow(*row, zone);
    }
    if (!takes) {
        m_controls.manager().SetFocus(rows);
    } else if (isNew) { // which makes the rows anew
        m_session.renameZone(zone, core::storedText(typed));
    }
    return true;
}

} // namespace zoneedit
