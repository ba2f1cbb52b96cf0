// How the map of the scene is drawn.
#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/Text.h"
#include "platform/Geometry.h"
#include "platform/Path.h"
#include "toolkit/skin/IconSet.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/map/MapColors.h"
#include "ui/map/SceneMap.h"

namespace ui {

using map::MapAction;
using map::NodeForm;
using platform::Color;

namespace {

constexpr Color kInk = 0xFF1C2733;
constexpr Color kMuted = 0xFF465362;
constexpr Color kHint = 0xFF596675;
constexpr Color kEdge = 0xFF7C8A9A;
constexpr Color kLine = 0xFFD3DAE2;
constexpr Color kSurface = 0xFFFFFFFF;
constexpr Color kBand = 0xFFE6EBF1;
constexpr Color kAccent = 0xFF1D63AD;
constexpr Color kSelected = 0xFFC1E3FF;
constexpr Color kDanger = 0xFFA8221B;
constexpr std::array<std::u16string_view, 4> kBadges{u"End", u"", u"Zone", u"Dice"};
constexpr int kSmallFont = 4;
constexpr int kIcon = 12;       ///< in a row
constexpr int kBrokenLine = 20; ///< from a node with a broken target down to a cross
constexpr int kCrossReach = 5;  ///< of the cross, from its middle

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

} // namespace

void SceneMap::paintText(platform::Canvas& canvas, const std::string& text, const Rect& box,
                         int font, Color color) const {
    toolkit::CPaintManagerUI& manager = *GetManager();
    toolkit::TextLook look;
    look.font = manager.look().GetFont(font);
    look.color = color;
    toolkit::paintTextLine(canvas, manager.fonts(), core::displayText(text), box, look);
}

void SceneMap::paintStatus(platform::Canvas& canvas) {
    if (m_scene == nullptr || GetManager() == nullptr) {
        return;
    }
    const platform::ClipScope clip(canvas, canvas.clip().intersected(GetPos()));
    if (m_scene->branches.empty()) {
        Rect box = GetPos();
        box.top += box.height() / 2 - 12;
        box.bottom = box.top + 24;
        box.left += std::max(0, box.width() / 2 - 60);
        paintText(canvas, "The map is empty", box, 1, kInk);
        return;
    }
    if (layout().unreachedTop >= 0) {
        const Rect heading = inWindow(0, layout().unreachedTop, std::max(layout().width, 300), 40);
        for (int x = std::max(heading.left, heading.left + (GetPos().left - heading.left) / 6 * 6);
             x < std::min(heading.right, GetPos().right); x += 6) {
            canvas.fillRect({x, heading.top, x + 4, heading.top + 1}, kEdge);
        }
        paintText(canvas, "Not reached from the first branch", heading, kSmallFont, kHint);
    }
    paintLines(canvas, false);
    paintLines(canvas, true);
    paintBackLines(canvas);
    for (int branch = 0; branch < static_cast<int>(layout().nodes.size()); ++branch) {
        Rect place = placeOf(branch);
        place.bottom += kBrokenLine + 2 * kCrossReach; // the sign of a broken target hangs below
        if (!place.intersected(canvas.clip()).isEmpty()) {
            paintNode(canvas, branch);
        }
    }
    paintLink(canvas);
}

void SceneMap::paintNode(platform::Canvas& canvas, int branch) const {
    const Rect box = placeOf(branch);
    const bool isChosen = branch == m_chosen;
    const bool isFound = std::find(m_found.begin(), m_found.end(), branch) != m_found.end();
    canvas.fillRect(box, kSurface);
    Rect name = box;
    if (form() != NodeForm::name) {
        const int stillHeight = form() == NodeForm::whole ? map::kStillHeight : 52;
        Rect still = box;
        still.bottom = still.top + static_cast<int>(stillHeight * scale());
        paintStill(canvas, branch, still);
        name.top = still.bottom;
        name.bottom = name.top + static_cast<int>(map::kNameHeight * scale());
    }
    canvas.fillRect(name, isChosen ? kSelected : kSurface);
    Rect text = name;
    text.left += 6;
    text.right -= 4;
    const map::MapBranch& content = m_scene->branches[at(branch)];
    paintText(canvas, content.name, text, kSmallFont, kInk);
    if (form() == NodeForm::whole) {
        canvas.fillRect({box.left, name.bottom, box.right, name.bottom + 1}, kLine);
        paintRows(canvas, branch, {box.left, name.bottom, box.right, box.bottom});
        if (std::ranges::any_of(content.actions, &MapAction::isBroken)) {
            const int x = (box.left + box.right) / 2;
            for (int y = box.bottom; y < box.bottom + kBrokenLine; y += 5) {
                canvas.fillRect({x, y, x + 2, y + 3}, kDanger);
            }
            platform::Path cross;
            const double middle = box.bottom + kBrokenLine + kCrossReach;
            cross.moveTo({x + 1.0 - kCrossReach, middle - kCrossReach});
            cross.lineTo({x + 1.0 + kCrossReach, middle + kCrossReach});
            cross.moveTo({x + 1.0 + kCrossReach, middle - kCrossReach});
            cross.lineTo({x + 1.0 - kCrossReach, middle + kCrossReach});
            canvas.fillPath(cross.stroked(2), kDanger);
        }
    }
    const int edge = isChosen || isFound ? 2 : 1;
    canvas.fillFrame(box, {edge, edge, edge, edge}, isChosen || isFound ? kAccent : kEdge);
}

void SceneMap::paintStill(platform::Canvas& canvas, int branch, const Rect& box) const {
    const toolkit::IconSet& icons = GetManager()->look().icons();
    const Picture picture = m_stills ? m_stills(branch) : nullptr;
    canvas.fillRect(box, kBand);
    if (picture != nullptr && !picture->isEmpty()) {
        const platform::ClipScope clip(canvas, canvas.clip().intersected(box));
        const Size size = picture->size(); // fills the box
        const double factor = std::max(static_cast<double>(box.width()) / size.width,
                                       static_cast<double>(box.height()) / size.height);
        const int width = static_cast<int>(size.width * factor);
        const int height = static_cast<int>(size.height * factor);
        canvas.drawStill(*picture, Rect::at((box.left + box.right - width) / 2,
                                            (box.top + box.bottom - height) / 2, width, height));
    } else {
        const bool hasVideo = !m_scene->branches[at(branch)].video.empty();
        icons.draw(canvas, box, {hasVideo ? u"Video" : u"NoVideo", u"off"},
                   toolkit::IconState::normal);
    }
    if (branch == m_scene->first) {
        const Rect flag = Rect::at(box.left + 6, box.top + 6, 20, 20);
        canvas.fillRect(flag, kAccent);
        icons.draw(canvas, flag, {u"First", u"primary"}, toolkit::IconState::normal);
    }
    if (m_errors && m_errors(branch) > 0) {
        const Rect sign = Rect::at(box.right - 26, box.top + 6, 20, 20);
        canvas.fillRect(sign, kSurface);
        icons.draw(canvas, sign, {u"Error", u"danger"}, toolkit::IconState::normal);
    }
}

void SceneMap::paintRows(platform::Canvas& canvas, int branch, const Rect& box) const {
    const toolkit::IconSet& icons = GetManager()->look().icons();
    const map::MapBranch& content = m_scene->branches[at(branch)];
    std::vector<bool> hasLine(content.actions.size());
    for (const map::MapLine& line : layout().lines) {
        if (line.branch == branch) {
            hasLine[at(line.action)] = true;
        }
    }
    const double height = map::sizesOf(NodeForm::whole).row * scale();
    for (std::size_t i = 0; i < content.actions.size() && i <= map::kMostRows; ++i) {
        const int top = box.top + static_cast<int>(height * static_cast<double>(i)) + 1;
        const Rect row{box.left + 22, top, box.right - 16, top + static_cast<int>(height)};
        if (i == map::kMostRows) {
            paintText(canvas,
                      "and " + std::to_string(content.actions.size() - map::kMostRows) + " more",
                      row, kSmallFont, kHint);
            return;
        }
        const MapAction& action = content.actions[i];
        const std::size_t kind = kindOf(action);
        const Rect badge =
            Rect::at(box.left + 4, top + std::max(0, (row.height() - 14) / 2), 14, 14);
        canvas.fillRect(badge, kKindColors.at(kind));
        if (kBadges.at(kind).empty()) {
            const std::u16string letter = core::displayText(action.text.substr(4));
            canvas.drawText(letter, badge, GetManager()->look().GetFont(kSmallFont), kSurface,
                            platform::TextAlign::center);
        } else {
            const platform::ClipScope clip(canvas, canvas.clip().intersected(badge));
            icons.draw(
                canvas, badge,
                {.name = std::u16string(kBadges.at(kind)), .tint = u"primary", .side = kIcon},
                toolkit::IconState::normal);
        }
        const std::string text = action.isBroken() ? action.target
                                 : !hasLine[i] && action.branch >= 0
                                     ? "\xE2\x86\xA9 " + action.target
                                     : action.text;
        paintText(canvas, text, row, kSmallFont, action.isBroken() ? kDanger : kMuted);
        if (action.immediate) {
            const Rect bolt = Rect::at(box.right - 16, badge.top, 14, 14);
            icons.draw(canvas, bolt, {.name = u"Bolt", .tint = u"warning", .side = kIcon},
                       toolkit::IconState::normal);
        }
    }
}

} // namespace ui
