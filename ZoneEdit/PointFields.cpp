#include "ZoneEdit/PointFields.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

#include "ZoneEdit/ZoneEditControls.h"
#include "core/Numbers.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "zone/ShapeEdits.h"
#include "zone/StepLabel.h"

namespace zoneedit {
namespace {

using Name = zone::StepLabel::Name;

constexpr std::u16string_view kFields[] = {kPointXEdit, kPointYEdit, kShapeWidthEdit,
                                           kShapeAngleEdit};
constexpr int kMostPercent = 1000;
constexpr std::size_t kMostDigits = 6;
constexpr char16_t kFirstBeyondAscii = 0x80;

std::u16string numberText(int number) {
    return core::displayText(std::to_string(number));
}

/// None for a text that is no number of at most six digits. Both decimal signs count in every
/// language.
std::optional<double> numberFrom(std::u16string_view text) {
    std::string digits;
    for (const char16_t unit : text) {
        digits += unit == u',' ? '.' : unit < kFirstBeyondAscii ? static_cast<char>(unit) : '?';
    }
    const std::size_t most = kMostDigits + (digits.starts_with('-') ? 1 : 0);
    const bool isNumber = digits.find_first_not_of("-.0123456789") == std::string::npos;
    return isNumber && digits.size() <= most ? core::parseNumber<double>(digits) : std::nullopt;
}

} // namespace

PointFields::PointFields(ui::Controls controls, zone::ZoneSession& session, ShapeEditor& editor)
    : m_controls(controls), m_session(session), m_editor(editor),
      m_changes(session.observe([this](const auto&) { show(); })) {}

std::u16string PointFields::textOf(std::u16string_view field) const {
    if (field == kShapeWidthEdit) {
        return u"100";
    }
    if (field == kShapeAngleEdit) {
        return u"0";
    }
    const auto at = m_editor.handlePlace();
    return at ? numberText(field == kPointXEdit ? at->x : at->y) : std::u16string();
}

bool PointFields::isTyped(std::u16string_view field) const {
    const toolkit::CControlUI* edit = m_controls.find(field);
    const auto shown = m_shown.find(field);
    return edit != nullptr && (shown == m_shown.end() || edit->GetText() != shown->second);
}

void PointFields::showNumber(std::u16string_view field) {
    std::u16string& shown = m_shown[field];
    shown = textOf(field);
    m_controls.setText(field, shown);
}

void PointFields::show() {
    const std::size_t count = m_editor.points().size();
    const int handle = m_editor.handle();
    for (const std::u16string_view field : kFields) {
        const bool isOfPoint = field == kPointXEdit || field == kPointYEdit;
        m_controls.setEnabled(field, isOfPoint ? m_editor.handlePlace().has_value() : count > 0);
        if (!m_controls.hasFocus(field) || !isTyped(field)) {
            showNumber(field);
        } else {
            m_shown.erase(field); // whatever else is typed is meant for what is on show now
        }
    }
    const bool isPoint = handle >= 0 && static_cast<std::size_t>(handle) < count;
    m_controls.setText(kPointLabel, isPoint ? core::tr("PlaceOf|{0} of {1}"_tr, handle + 1, count)
                                    : m_editor.handlePlace() ? core::tr("Centre"_tr)
                                                             : std::u16string());
    m_controls.setText(kShapeLabel, core::tr("{0} point|{0} points"_trn, count));
}

bool PointFields::typed(std::u16string_view field) {
    const toolkit::CControlUI* edit = m_controls.find(field);
    bool isOurs = false;
    for (const std::u16string_view name : kFields) {
        isOurs = isOurs || name == field;
    }
    if (!isOurs || edit == nullptr) {
        return isOurs;
    }
    const auto number = numberFrom(edit->GetText());
    if (number && isTyped(field) && edit->GetText() != textOf(field)) {
        // What leaves every shape as it is leaves no step.
        if (field == kShapeWidthEdit && *number != 100 && *number > 0 && *number <= kMostPercent) {
            m_editor.reshapeAll(Name::scale, zone::scaled(*number / 100));
        } else if (field == kShapeAngleEdit && std::fmod(*number, 360) != 0) {
            m_editor.reshapeAll(Name::rotate, zone::rotated(*number));
        } else if (field == kPointXEdit || field == kPointYEdit) {
            movePoint(field, static_cast<int>(std::lround(*number)));
        }
    }
    showNumber(field);
    return true;
}

void PointFields::movePoint(std::u16string_view field, int value) {
    const auto start = m_editor.startMove();
    if (!start || !m_editor.handlePlace()) {
        return;
    }
    const platform::Point to =
        m_editor.reachable(field == kPointXEdit ? platform::Point{value, start->at.y}
                                                : platform::Point{start->at.x, value});
    if (to == start->at) {
        return;
    }
    m_session.beginGesture({ShapeEditor::moveName(*start), start->place.zone, start->place.frame});
    m_editor.move(*start, to);
    m_session.endGesture();
}

bool PointFields::restoreText() {
    for (const std::u16string_view field : kFields) {
        if (m_controls.hasFocus(field)) {
            const toolkit::CControlUI* edit = m_controls.find(field);
            const bool differs = edit != nullptr && edit->GetText() != textOf(field);
            showNumber(field);
            return differs;
        }
    }
    return false;
}

} // namespace zoneedit
