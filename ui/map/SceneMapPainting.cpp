// How the map of the scene is drawn.
#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Text.h"
#include "core/Texts.h"
#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "platform/Path.h"
#include "toolkit/skin/IconSet.h"
#include "toolkit/skin/RoundBox.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Fonts.h"
#include "ui/map/MapColors.h"
#include "ui/map/SceneMap.h"

namespace ui {

using map::MapAction;
using map::NodeForm;
using platform::Color;
using toolkit::Tone;

namespace {

constexpr std::array<std::u16string_view, 4> kBadges{u"End", u"", u"Zone", u"Dice"};
constexpr core::Text kEmptyHeading = "The map is empty"_tr;
constexpr core::Text kEmptyText =
    "Each branch you add appears here, with lines to the branches its actions lead to."_tr;
constexpr int kEmptyEdge = 16;
constexpr int kEmptyLine = 18;
constexpr int kBadge = 14;      ///< in a row, and the bolt, as far as that has room
constexpr int kStillIcon = 24;  ///< in place of a still
constexpr int kBrokenLine = 20; ///< from a node with a broken target down to a cross
constexpr int kCrossReach = 5;  ///< of the cross, from its middle
constexpr int kPile = 3;        ///< by which the second of a pile of nodes is off
constexpr int kRadius = 3;      ///< of a node's corners
constexpr int kBadgeRadius = 2;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

struct Corner {
    platform::PointF at;
    platform::PointF in; ///< into the box, along both axes

    [[nodiscard]] platform::PointF inside(double x, double y) const {
        return {at.x + in.x * x, at.y + in.y * y};
    }
};

std::array<Corner, 4> cornersOf(const platform::Rect& box) {
    const auto left = static_cast<double>(box.left);
    const auto top = static_cast<double>(box.top);
    const auto right = static_cast<double>(box.right);
    const auto bottom = static_cast<double>(box.bottom);
    return {{{{left, top}, {1, 1}},
             {{right, top}, {-1, 1}},
             {{left, bottom}, {1, -1}},
             {{right, bottom}, {-1, -1}}}};
}

constexpr double kCircle = 0.5523; ///< of the radius: where a curve of a quarter bends

/// What a round corner leaves out of a square one.
platform::Path outsideOf(const Corner& corner) {
    const double bend = kRadius * (1 - kCircle);
    platform::Path path;
    path.moveTo(corner.at);
    path.lineTo(corner.inside(kRadius, 0));
    path.curveTo(corner.inside(bend, 0), corner.inside(0, bend), corner.inside(0, kRadius));
    path.close();
    return path;
}

/// The edge round a corner.
platform::Path edgeOf(const Corner& corner, double width) {
    const double bend = kRadius * (1 - kCircle);
    const double inner = width + std::max(kRadius - width, 0.0) * (1 - kCircle);
    platform::Path path;
    path.moveTo(corner.inside(kRadius, 0));
    path.curveTo(corner.inside(bend, 0), corner.inside(0, bend), corner.inside(0, kRadius));
    path.lineTo(corner.inside(width, kRadius));
    path.curveTo(corner.inside(width, inner), corner.inside(inner, width),
                 corner.inside(kRadius, width));
    path.close();
    return path;
}

/// As many lines as it takes, broken at blanks.
std::vector<std::u16string> wrapped(std::u16string_view text, int width, platform::FontHandle font,
                                    const platform::FontSet& fonts) {
    std::vector<std::u16string> lines(1);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u' '), text.size());
        std::u16string longer = lines.back();
        longer += (longer.empty() ? u"" : u" ");
        longer += text.substr(0, end);
        if (lines.back().empty() || toolkit::fitsInto(width, longer, font, fonts)) {
            lines.back() = std::move(longer);
        } else {
            lines.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace

Color SceneMap::color(Tone tone) const {
    return GetManager()->look().palette()[tone];
}

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
        paintEmpty(canvas);
        return;
    }
    if (layout().unreachedTop >= 0) {
        paintHeading(canvas);
    }
    paintLines(canvas, false);
    paintLines(canvas, true);
    paintBackLines(canvas);
    for (int branch = 0; branch < static_cast<int>(layout().nodes.size()); ++branch) {
        Rect place = placeOf(branch);
        place.bottom += kBrokenLine + 2 * kCrossReach; // the sign of a broken target hangs below
        place.right += kPile;
        if (!place.intersected(canvas.clip()).isEmpty() && faceOf(branch) == branch) {
            paintNode(canvas, branch);
        }
    }
    paintLink(canvas);
}

void SceneMap::paintEmpty(platform::Canvas& canvas) const {
    toolkit::CPaintManagerUI& manager = *GetManager();
    toolkit::TextLook look;
    look.align = platform::TextAlign::center;
    look.font = manager.look().GetFont(font::kHeading);
    look.color = color(Tone::ink);
    const Rect& pos = GetPos();
    Rect line{pos.left + kEmptyEdge, pos.top + pos.height() * 2 / 5, pos.right - kEmptyEdge, 0};
    constexpr int kSide = 32;
    const Rect icon =
        Rect::at((line.left + line.right - kSide) / 2, line.top - kSide - 4, kSide, kSide);
    manager.look().icons().draw(canvas, icon, {.name = u"Map", .tint = u"off", .side = kSide},
                                toolkit::IconState::normal);
    line.bottom = line.top + kEmptyLine + 2;
    toolkit::paintTextLine(canvas, manager.fonts(), core::tr(kEmptyHeading), line, look);
    look.font = manager.look().GetFont(font::kBody);
    look.color = color(Tone::hint);
    line.top = line.bottom + 4;
    for (const std::u16string& text :
         wrapped(core::tr(kEmptyText), line.width(), look.font, manager.fonts())) {
        line.bottom = line.top + kEmptyLine;
        toolkit::paintTextLine(canvas, manager.fonts(), text, line, look);
        line.top = line.bottom;
    }
}

void SceneMap::paintHeading(platform::Canvas& canvas) const {
    const Rect heading = inWindow(0, layout().unreachedTop, std::max(layout().width, 300), 1);
    for (int x = std::max(heading.left, heading.left + (GetPos().left - heading.left) / 6 * 6);
         x < std::min(heading.right, GetPos().right); x += 6) {
        canvas.fillRect({x, heading.top, x + 4, heading.top + 1}, color(Tone::edge));
    }
    const Rect text{heading.left, heading.top + 3, heading.right, heading.top + 23};
    paintText(canvas, core::trStored("Not reached from the first branch"_tr), text, font::kSmall,
              color(Tone::hint));
}

void SceneMap::paintNode(platform::Canvas& canvas, int branch) const {
    const Rect box = placeOf(branch);
    const int chain = layout().nodes[at(branch)].chain;
    const bool isChosen = branch == m_chosen;
    const bool isFound = std::any_of(m_found.begin(), m_found.end(), [&](int found) {
        return found == branch ||
               (chain >= 0 && at(found) < layout().nodes.size() && faceOf(found) == branch);
    });
    if (chain >= 0) {
        paintPile(canvas,
                  {box.left + kPile, box.top + kPile, box.right + kPile, box.bottom + kPile});
    }
    canvas.fillRect(box, color(Tone::surface));
    Rect name = box;
    if (form() != NodeForm::name) {
        const int stillHeight = form() == NodeForm::whole ? map::kStillHeight : 52;
        Rect still = box;
        still.bottom = still.top + static_cast<int>(stillHeight * scale());
        paintStill(canvas, branch, still);
        name.top = still.bottom;
    }
    name.bottom = name.top + static_cast<int>(map::kNameHeight * scale());
    canvas.fillRect(name, color(isChosen ? Tone::selected : Tone::surface));
    Rect text = name;
    text.left += 6;
    text.right -= 4;
    const map::MapBranch& content = m_scene->branches[at(branch)];
    paintText(canvas, content.name, text, font::kSmall, color(Tone::ink));
    if (chain >= 0) {
        text.top = name.bottom;
        text.bottom = box.bottom - 2;
        const std::size_t others = layout().chains[at(chain)].size() - 1;
        paintText(canvas, core::trStored("AndMoreRows|and {0} more|and {0} more"_trn, others), text,
                  font::kSmall, color(Tone::hint));
    }
    if (form() == NodeForm::whole) {
        canvas.fillRect({box.left, name.bottom, box.right, name.bottom + 1}, color(Tone::line));
        paintRows(canvas, branch, {box.left, name.bottom, box.right, box.bottom});
        if (std::ranges::any_of(content.actions, &MapAction::isBroken)) {
            paintStub(canvas, box);
        }
    }
    for (const Corner& corner : cornersOf(box)) {
        const bool isOnPile = chain >= 0 && corner.in.x < 0 && corner.in.y < 0;
        canvas.fillPath(outsideOf(corner), color(isOnPile ? Tone::band : Tone::canvas));
    }
    paintEdge(canvas, box, isChosen || isFound ? 2 : 1,
              color(isChosen || isFound ? Tone::accent : Tone::edge));
}

void SceneMap::paintPile(platform::Canvas& canvas, const Rect& box) const {
    toolkit::fillRoundBox(canvas, box, kRadius, color(Tone::band));
    paintEdge(canvas, box, 1, color(Tone::edge));
}

/// Straight edges have whole pixels of the screen, as elsewhere.
void SceneMap::paintEdge(platform::Canvas& canvas, const Rect& box, int width, Color color) const {
    const Rect across{box.left + kRadius, box.top, box.right - kRadius, box.bottom};
    canvas.fillFrame(across, {0, width, 0, width}, color);
    const Rect down{box.left, box.top + kRadius, box.right, box.bottom - kRadius};
    canvas.fillFrame(down, {width, 0, width, 0}, color);
    for (const Corner& corner : cornersOf(box)) {
        canvas.fillPath(edgeOf(corner, width), color);
    }
}

void SceneMap::paintStub(platform::Canvas& canvas, const Rect& node) const {
    const int x = (node.left + node.right) / 2;
    for (int y = node.bottom; y < node.bottom + kBrokenLine; y += 5) {
        canvas.fillRect({x, y, x + 2, y + 3}, color(Tone::danger));
    }
    platform::Path cross;
    const double middle = node.bottom + kBrokenLine + kCrossReach;
    cross.moveTo({x + 1.0 - kCrossReach, middle - kCrossReach});
    cross.lineTo({x + 1.0 + kCrossReach, middle + kCrossReach});
    cross.moveTo({x + 1.0 + kCrossReach, middle - kCrossReach});
    cross.lineTo({x + 1.0 - kCrossReach, middle + kCrossReach});
    canvas.fillPath(cross.stroked(2), color(Tone::danger));
}

void SceneMap::paintStill(platform::Canvas& canvas, int branch, const Rect& box) const {
    const toolkit::IconSet& icons = GetManager()->look().icons();
    const Picture picture = m_stills ? m_stills(branch) : nullptr;
    canvas.fillRect(box, color(Tone::band));
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
        icons.draw(canvas, box,
                   {.name = hasVideo ? u"Video" : u"NoVideo", .tint = u"off", .side = kStillIcon},
                   toolkit::IconState::normal);
    }
    if (branch == m_scene->first) {
        const Rect flag = Rect::at(box.left + 6, box.top + 6, 20, 20);
        toolkit::fillRoundBox(canvas, flag, kBadgeRadius, color(Tone::accent));
        icons.draw(canvas, flag, {u"First", u"badge"}, toolkit::IconState::normal);
    }
    if (m_errors && m_errors(branch) > 0) {
        const Rect sign = Rect::at(box.right - 26, box.top + 6, 20, 20);
        toolkit::fillRoundBox(canvas, sign, kRadius, color(Tone::surface));
        icons.draw(canvas, sign, {u"Error", u"danger"}, toolkit::IconState::normal);
    }
}

void SceneMap::paintRows(platform::Canvas& canvas, int branch, const Rect& box) const {
    const toolkit::IconSet& icons = GetManager()->look().icons();
    const map::MapBranch& content = m_scene->branches[at(branch)];
    const std::span<const map::MapLine> lines = map::linesOf(layout(), branch);
    auto line = lines.begin();
    const double height = map::sizesOf(NodeForm::whole).row * scale();
    for (std::size_t i = 0; i < content.actions.size() && i <= map::kMostRows; ++i) {
        const int top = box.top + static_cast<int>(height * static_cast<double>(i)) + 1;
        Rect row{box.left + 22, top, box.right - 4, top + static_cast<int>(height)};
        if (i == map::kMostRows) {
            paintText(canvas,
                      core::trStored("AndMoreRows|and {0} more|and {0} more"_trn,
                                     content.actions.size() - map::kMostRows),
                      row, font::kSmall, color(Tone::hint));
            return;
        }
        const MapAction& action = content.actions[i];
        const bool hasLine = line != lines.end() && at(line->action) == i;
        line += hasLine ? 1 : 0;
        const int side = std::min(kBadge, row.height() - 2);
        const Rect badge = Rect::at(box.left + 4, top + (row.height() - side) / 2, side, side);
        if (action.immediate) {
            const Rect bolt = Rect::at(box.right - 16, badge.top, side, side);
            icons.draw(canvas, bolt, {.name = u"Bolt", .tint = u"warning", .side = side - 2},
                       toolkit::IconState::normal);
            row.right = bolt.left;
        }
        paintBadge(canvas, action, badge);
        const std::string text = action.isBroken()                ? action.target
                                 : !hasLine && action.branch >= 0 ? "\xE2\x86\xA9 " + action.target
                                                                  : action.text;
        paintText(canvas, text, row, font::kSmall,
                  color(action.isBroken() ? Tone::danger : Tone::muted));
    }
}

void SceneMap::paintBadge(platform::Canvas& canvas, const MapAction& action,
                          const Rect& box) const {
    toolkit::fillRoundBox(canvas, box, kBadgeRadius, color(toneOfKind(action.type)));
    const bool isKnown = action.type > 0 && at(action.type) < kBadges.size();
    const std::u16string_view icon = kBadges.at(isKnown ? at(action.type) : 0);
    toolkit::CPaintManagerUI& manager = *GetManager();
    if (icon.empty()) {
        canvas.drawText(core::displayText(action.letter), box, manager.look().GetFont(font::kSmall),
                        color(Tone::onKind), platform::TextAlign::center);
    } else {
        const platform::ClipScope clip(canvas, canvas.clip().intersected(box));
        manager.look().icons().draw(
            canvas, box, {.name = std::u16string(icon), .tint = u"badge", .side = box.width() - 2},
            toolkit::IconState::normal);
    }
}

} // namespace ui
