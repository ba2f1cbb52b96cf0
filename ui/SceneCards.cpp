#include "ui/SceneCards.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "check/FactsReader.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Clock.h"
#include "platform/Geometry.h"
#include "recovery/RecentScenes.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CPictureUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/layout/CVerticalLayoutUI.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Fonts.h"
#include "ui/ListRow.h"
#include "ui/TimeTexts.h"

namespace ui {
namespace {

constexpr std::u16string_view kList = u"ListScenes";
constexpr std::u16string_view kStill = u"Still";
constexpr std::u16string_view kCounts = u"Counts";
constexpr std::u16string_view kSign = u"Sign";
constexpr std::u16string_view kFindings = u"Findings";
constexpr int kRowHeight = 70;
constexpr platform::Size kStillSize{94, 53};
/// Twice the size: sharp on every screen.
constexpr platform::Size kStillBox{188, 106};
constexpr int kDateWidth = 170;
constexpr int kSignSide = 14;

/// Opened or saved, whichever came later.
std::int64_t lastTime(const scene::ListedScene& scene,
                      const std::map<std::string, std::int64_t>& opened) {
    const auto found = opened.find(scene.name);
    return found == opened.end() ? scene.saved : std::max(found->second, scene.saved);
}

std::u16string momentText(std::int64_t time) {
    return isRecentDay(time) ? dayText(time) + u" " + timeText(time) : dayText(time);
}

std::unique_ptr<toolkit::CLabelUI> makeLabel(const toolkit::WindowLook& look, int number,
                                             std::u16string_view text, int height) {
    auto label = std::make_unique<toolkit::CLabelUI>();
    look.ApplyDefaults(*label);
    label->SetFont(number);
    label->SetText(text);
    label->SetFixedHeight(height);
    if (number == font::kSmall) {
        label->SetAttribute(u"textcolor", u"muted");
    }
    return label;
}

/// Shows the number with the sign of the worst; nothing for none.
void showFindings(const toolkit::CControlUI& row, const check::Counts& counts) {
    toolkit::CControlUI* const sign = row.FindSubControl(kSign);
    toolkit::CControlUI* const text = row.FindSubControl(kFindings);
    if (sign == nullptr || text == nullptr || counts.all() == 0) {
        return;
    }
    const auto [icon, tint] = counts.errors > 0     ? std::pair(u"Error", u"danger")
                              : counts.warnings > 0 ? std::pair(u"Warning", u"warning")
                                                    : std::pair(u"Note", u"muted");
    sign->SetAttribute(u"icon", icon);
    sign->SetAttribute(u"icontint", tint);
    text->SetText(core::tr("{0} finding|{0} findings"_trn, static_cast<std::size_t>(counts.all())));
}

std::unique_ptr<toolkit::CControlUI> makeFindings(const toolkit::WindowLook& look) {
    auto sign = std::make_unique<toolkit::CControlUI>();
    sign->SetName(kSign);
    sign->SetFixedWidth(kSignSide);
    sign->SetFixedHeight(kSignSide);
    sign->SetPadding({0, 0, 5, 0});
    auto text = makeLabel(look, font::kSmall, {}, kSignSide);
    text->SetName(kFindings);
    auto line = std::make_unique<toolkit::CHorizontalLayoutUI>();
    line->SetFixedHeight(kSignSide);
    line->Add(std::move(sign));
    line->Add(std::move(text));
    return line;
}

} // namespace

SceneCards::SceneCards(Controls controls, platform::EventLoop& loop, platform::FileSystem& files,
                       stills::StillService* stills, std::vector<scene::ListedScene> scenes)
    : m_controls(controls), m_loop(loop), m_files(files), m_scenes(std::move(scenes)),
      m_facts(loop), m_counting(loop) {
    if (list() == nullptr) {
        return;
    }
    const auto opened = recovery::openedScenes();
    for (std::size_t scene = 0; scene < m_scenes.size(); ++scene) {
        m_cards.push_back({scene, lastTime(m_scenes[scene], opened)});
    }
    std::stable_sort(m_cards.begin(), m_cards.end(),
                     [](const Card& a, const Card& b) { return a.time > b.time; });
    if (stills != nullptr) {
        m_stills = std::make_unique<stills::StillClient>(
            *stills, [this](const stills::StillRequest& request) {
                for (int row = 0; row < list()->GetCount(); ++row) {
                    if (list()->madeRow(row) != nullptr &&
                        requestOf(m_cards[static_cast<std::size_t>(row)]) == request) {
                        showFacts(row);
                    }
                }
            });
    }
    list()->SetRows(static_cast<int>(m_cards.size()),
                    {.make = [this](int row) { return makeRow(row); }, .height = kRowHeight});
    std::vector<std::string> paths;
    for (const Card& card : m_cards) {
        paths.push_back(scene::videoPath(m_scenes[card.scene].name, scene::kSceneFileName));
    }
    m_facts.read(std::move(paths),
                 [this](std::size_t row, const auto& summary) { factsArrived(row, summary); });
}

SceneCards::~SceneCards() {
    if (list() != nullptr) {
        list()->SetRows(0, {}); // the list may outlive what makes its rows
    }
}

toolkit::CListUI* SceneCards::list() const {
    return m_controls.find<toolkit::CListUI>(kList);
}

void SceneCards::choose(int scene, bool reveals) {
    const auto card = std::find_if(m_cards.begin(), m_cards.end(), [&](const Card& each) {
        return static_cast<int>(each.scene) == scene;
    });
    if (card == m_cards.end()) {
        return;
    }
    const int row = static_cast<int>(card - m_cards.begin());
    if (reveals) {
        list()->SelectItem(row);
    } else {
        list()->pick(row, false);
    }
}

int SceneCards::chosen() const {
    const int row = list() != nullptr ? list()->GetCurSel() : -1;
    return row < 0 ? -1 : static_cast<int>(m_cards[static_cast<std::size_t>(row)].scene);
}

std::unique_ptr<toolkit::CControlUI> SceneCards::makeRow(int row) {
    const Card& card = m_cards[static_cast<std::size_t>(row)];
    const toolkit::WindowLook& look = m_controls.manager().look();
    auto still = std::make_unique<toolkit::CPictureUI>();
    look.ApplyDefaults(*still);
    still->SetName(kStill);
    still->SetFixedWidth(kStillSize.width);
    still->SetFixedHeight(kStillSize.height);
    auto heading = std::make_unique<toolkit::CHorizontalLayoutUI>();
    heading->SetFixedHeight(20);
    auto name = makeLabel(look, font::kBold, core::displayText(m_scenes[card.scene].name), 20);
    name->SetAttribute(u"endellipsis", u"true");
    heading->Add(std::move(name));
    auto date = makeLabel(look, font::kSmall, momentText(card.time), 20);
    date->SetFixedWidth(kDateWidth);
    date->SetAttribute(u"align", u"right");
    heading->Add(std::move(date));
    auto texts = std::make_unique<toolkit::CVerticalLayoutUI>();
    texts->SetPadding({13, 0, 0, 0});
    texts->Add(std::move(heading));
    auto counts = makeLabel(look, font::kSmall, countsOf(card), 18);
    counts->SetName(kCounts);
    texts->Add(std::move(counts));
    texts->Add(makeFindings(look));
    auto layout = std::make_unique<toolkit::CHorizontalLayoutUI>();
    layout->SetInset({8, 8, 11, 8});
    layout->Add(std::move(still));
    layout->Add(std::move(texts));
    auto element = makeLinedRow(std::move(layout), kRowHeight, u"band");
    if (m_stills && card.summary) {
        if (const stills::StillPtr known = m_stills->find(requestOf(card))) {
            auto* picture =
                toolkit::controlCast<toolkit::CPictureUI>(element->FindSubControl(kStill));
            picture->SetPicture({known, &known->picture});
        }
    }
    showFindings(*element, card.findings);
    wantMore();
    return element;
}

void SceneCards::factsArrived(std::size_t row, const std::optional<scene::SceneSummary>& summary) {
    m_cards[row].isRead = true;
    m_cards[row].summary = summary;
    showFacts(static_cast<int>(row));
    if (list()->madeRow(static_cast<int>(row)) != nullptr) {
        wantMore();
    }
}

void SceneCards::showFacts(int row) {
    const toolkit::CControlUI* made = list()->madeRow(row);
    if (made == nullptr) {
        return;
    }
    const Card& card = m_cards[static_cast<std::size_t>(row)];
    if (toolkit::CControlUI* counts = made->FindSubControl(kCounts)) {
        counts->SetText(countsOf(card));
    }
    auto* picture = toolkit::controlCast<toolkit::CPictureUI>(made->FindSubControl(kStill));
    if (m_stills && picture != nullptr && card.summary) {
        const stills::StillPtr known = m_stills->find(requestOf(card));
        picture->SetPicture(known ? toolkit::CPictureUI::Picture(known, &known->picture) : nullptr);
    }
    showFindings(*made, card.findings);
}

void SceneCards::wantMore() {
    if (std::exchange(m_isWanting, true)) {
        return;
    }
    m_loop.post([this, life = std::weak_ptr<const bool>(m_life)] {
        if (!life.expired()) {
            m_isWanting = false;
            wantStills();
            countNext();
        }
    });
}

std::vector<std::size_t> SceneCards::madeRows() const {
    std::vector<std::size_t> visible;
    std::vector<std::size_t> near;
    for (int row = 0; row < list()->GetCount(); ++row) {
        if (const toolkit::CControlUI* made = list()->madeRow(row)) {
            const bool isVisible = !made->GetPos().intersected(list()->GetPos()).isEmpty();
            (isVisible ? visible : near).push_back(static_cast<std::size_t>(row));
        }
    }
    visible.insert(visible.end(), near.begin(), near.end());
    return visible;
}

void SceneCards::wantStills() {
    if (!m_stills) {
        return;
    }
    std::vector<stills::StillRequest> wanted;
    for (const std::size_t row : madeRows()) {
        const Card& card = m_cards[row];
        if (card.summary && !card.summary->video.empty()) {
            wanted.push_back(requestOf(card));
        }
    }
    m_stills->want(std::move(wanted));
}

void SceneCards::countNext() {
    if (m_counting.isRunning()) {
        return;
    }
    const std::vector<std::size_t> rows = madeRows();
    const auto next = std::find_if(rows.begin(), rows.end(), [this](std::size_t row) {
        return m_cards[row].summary && !m_cards[row].isCounted;
    });
    if (next == rows.end()) {
        return;
    }
    const auto counts = std::make_shared<std::optional<check::Counts>>();
    m_counting.start(
        [counts, &files = m_files,
         folder = scene::sceneFolderPath(m_scenes[m_cards[*next].scene].name)](auto& control) {
            *counts = check::countFindings(files, platform::nativeClock(), folder,
                                           [&control] { return control.isCancelled(); });
        },
        {},
        [this, counts, row = *next](bool isWhole) {
            m_cards[row].isCounted = true;
            if (isWhole && *counts) {
                m_cards[row].findings = **counts;
                showFacts(static_cast<int>(row));
            }
            countNext();
        });
}

stills::StillRequest SceneCards::requestOf(const Card& card) const {
    return {card.summary ? scene::videoPath(m_scenes[card.scene].name, card.summary->video)
                         : std::string(),
            kStillBox};
}

std::u16string SceneCards::countsOf(const Card& card) const {
    if (!card.summary) {
        return card.isRead ? core::tr("Cannot be read"_tr) : std::u16string();
    }
    return core::tr("{0} branch|{0} branches"_trn,
                    static_cast<std::size_t>(card.summary->branches)) +
           u", " +
           core::tr("{0} video|{0} videos"_trn, static_cast<std::size_t>(card.summary->videos));
}

} // namespace ui
