#include "ui/branch_editor/FindingsPresenter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "check/Facts.h"
#include "check/FactsReader.h"
#include "core/EditorSettings.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "scene/SceneChange.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/controls/CSplitterUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/FlagScope.h"
#include "ui/Fonts.h"
#include "ui/ListRow.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;

namespace {

constexpr int kRowHeight = 29;
constexpr int kSignSide = 16;
constexpr int kMostPlace = 200; ///< the sentence says more
constexpr const char* kFoldedKey = "findingsFolded";
constexpr const char* kHeightKey = "findingsHeight";
constexpr int kHeadHeight = 33;
constexpr int kUsualHeight = kHeadHeight + 121;
constexpr int kLeastHeight = kHeadHeight + 2 * kRowHeight;
constexpr int kMostHeight = 8192;
constexpr int kLowWindow = 728; ///< has no room for the list unless it is asked for

struct SeverityLook {
    std::u16string_view filter;
    core::Text row; ///< "{0}" is the sentence
    core::CountedText count;
    std::u16string_view icon;
    std::u16string_view tint;
};
constexpr std::array<SeverityLook, 3> kLooks{{
    {kErrorsFilter, "RowError|Error: {0}"_tr, "{0} error|{0} errors"_trn, u"Error", u"danger"},
    {kWarningsFilter, "RowWarning|Warning: {0}"_tr, "{0} warning|{0} warnings"_trn, u"Warning",
     u"warning"},
    {kNotesFilter, "RowNote|Note: {0}"_tr, "{0} note|{0} notes"_trn, u"Note", u"muted"},
}};

const SeverityLook& lookOf(check::Severity severity) {
    return kLooks.at(static_cast<std::size_t>(severity));
}

std::u16string number(int count) {
    return core::displayText(std::to_string(count));
}

std::unique_ptr<toolkit::CLabelUI> label(std::u16string_view text) {
    auto label = std::make_unique<toolkit::CLabelUI>();
    label->SetText(text);
    label->SetAttribute(u"textcolor", u"ink");
    label->SetAttribute(u"endellipsis", u"true");
    return label;
}

/// The same problem, whatever its number in the list now.
bool isSame(const check::Finding& one, const check::Finding& other) {
    return one.kind == other.kind && one.branch == other.branch && one.action == other.action &&
           one.video == other.video && one.zoneNumber == other.zoneNumber &&
           one.arguments == other.arguments;
}

} // namespace

FindingsPresenter::FindingsPresenter(Controls controls, scene::SceneSession& session,
                                     std::shared_ptr<check::FactsReader> reader,
                                     platform::EventLoop& loop, core::EditorSettings* settings,
                                     Listener& listener)
    : m_controls(controls), m_session(session), m_settings(settings), m_listener(listener),
      m_height(kUsualHeight), m_reader(std::move(reader)), m_job(loop),
      m_subscription(session.observe([this](const auto& changes) { changed(changes); })) {
    if (m_settings != nullptr) {
        m_height = m_settings->getInt(kHeightKey, m_height, kLeastHeight, kMostHeight);
        m_isFoldChosen = m_settings->getBool(kFoldedKey, false) || //
                         !m_settings->getBool(kFoldedKey, true);
        m_isFolded = m_settings->getBool(kFoldedKey, false);
    }
    windowSized();
    m_check.checkAll(m_session.scene());
    update();
    readFiles();
}

FindingsPresenter::~FindingsPresenter() {
    m_job.cancel();
    if (auto* list = m_controls.find<toolkit::CListUI>(kFindingsList)) {
        list->SetRows(0, {}); // it may outlive what makes its rows
    }
}

void FindingsPresenter::changed(const scene::SceneSession::Changes& changes) {
    using Part = scene::SceneChange::Part;
    m_check.update(m_session.scene(), changes);
    m_areNamesNew =
        m_areNamesNew || std::any_of(changes.begin(), changes.end(),
                                     [](const auto& one) { return one.part == Part::branchName; });
    update();
    const bool mayUseOthers = std::any_of(changes.begin(), changes.end(), [](const auto& change) {
        return change.part != Part::actions && change.part != Part::branchName &&
               change.part != Part::firstBranch;
    });
    if (mayUseOthers) {
        const std::set<std::string> videos = check::videosOf(m_session.scene());
        if (!std::includes(m_videos.begin(), m_videos.end(), videos.begin(), videos.end())) {
            readFiles(); // what is known of the others may stay
        }
    }
}

void FindingsPresenter::setCopying(std::set<std::string> names) {
    if (names != m_copying) {
        m_copying = std::move(names);
        readFiles();
    }
}

void FindingsPresenter::readFiles() {
    if (m_reader == nullptr || m_job.isRunning()) {
        m_readsAgain = m_reader != nullptr;
        return;
    }
    m_readsAgain = false;
    m_videos = check::videosOf(m_session.scene());
    const auto facts = std::make_shared<check::FolderFacts>();
    const auto work = [facts, reader = m_reader, videos = m_videos,
                       copying = m_copying](jobs::BackgroundJob::Control& control) {
        *facts = reader->read(videos, copying, [&control] { return control.isCancelled(); });
    };
    m_job.start(work, {}, [this, facts](bool isWhole) {
        if (isWhole) {
            m_check.setFacts(std::move(*facts));
            m_check.update(m_session.scene(), {});
            update();
        }
        if (m_readsAgain) {
            readFiles();
        }
    });
}

std::vector<const check::Finding*> FindingsPresenter::wanted() const {
    std::vector<const check::Finding*> findings;
    for (std::size_t severity = 0; severity < kLooks.size(); ++severity) {
        const auto* filter = m_controls.find<toolkit::COptionUI>(kLooks[severity].filter);
        for (const check::Finding* finding : m_check.findings()) {
            if (static_cast<std::size_t>(finding->severity) == severity &&
                (filter == nullptr || filter->IsSelected())) {
                findings.push_back(finding);
            }
        }
    }
    return findings;
}

int FindingsPresenter::errorsOf(int branch) const {
    const auto& findings = m_check.findings();
    return static_cast<int>(std::count_if(findings.begin(), findings.end(), [&](const auto* one) {
        return one->branch == branch && one->severity == check::Severity::error;
    }));
}

void FindingsPresenter::update() {
    showCounts();
    showList();
    m_listener.findingsChanged();
}

void FindingsPresenter::showList() {
    auto* list = m_controls.find<toolkit::CListUI>(kFindingsList);
    const std::vector<const check::Finding*> findings = wanted();
    if (list == nullptr || // rows name their branches
        (!std::exchange(m_areNamesNew, false) &&
         std::equal(findings.begin(), findings.end(), m_shown.begin(), m_shown.end(),
                    [](const auto* one, const auto& shown) { return *one == shown; }))) {
        return;
    }
    const check::Finding* const before = selected();
    const auto kept = before == nullptr
                          ? findings.end()
                          : std::find_if(findings.begin(), findings.end(),
                                         [&](const auto* one) { return isSame(*one, *before); });
    const int row = kept != findings.end() ? static_cast<int>(kept - findings.begin()) : -1;
    m_shown.clear();
    m_shown.reserve(findings.size());
    for (const check::Finding* finding : findings) {
        m_shown.push_back(*finding);
    }
    const FlagScope selecting(m_isSelecting);
    list->SetRows(static_cast<int>(m_shown.size()),
                  {.make = [this](int index) { return makeRow(index); }, .height = kRowHeight});
    list->SelectItem(row);
}

void FindingsPresenter::showCounts() {
    const check::Counts& counts = m_check.counts();
    if (m_shownCounts == counts) {
        return;
    }
    m_shownCounts = counts;
    const std::array<int, 3> each{counts.errors, counts.warnings, counts.notes};
    for (std::size_t i = 0; i < kLooks.size(); ++i) {
        if (toolkit::CControlUI* filter = m_controls.find(kLooks[i].filter)) {
            filter->SetText(number(each[i]));
            filter->SetLabel(core::tr(kLooks[i].count, static_cast<std::size_t>(each[i])));
        }
    }
    const int all = counts.all();
    m_controls.setVisible(kNoFindings, all == 0);
    if (toolkit::CControlUI* button = m_controls.find(kCheckButton)) {
        button->SetLabel(core::tr("CheckCount|Check, {0} finding|Check, {0} findings"_trn,
                                  static_cast<std::size_t>(all)));
        button->SetToolTip(core::tr("FindingsNext|Findings: {0} (F8: next)"_tr, all));
    }
    m_controls.setText(kCheckBadge, all > 99 ? u"99" : number(all));
    if (toolkit::CControlUI* ground = m_controls.find(kBadgeGround)) {
        ground->SetAttribute(u"bkcolor", counts.errors > 0     ? u"danger"
                                         : counts.warnings > 0 ? u"warn"
                                         : all > 0             ? u"muted"
                                                               : u"good");
    }
}

std::vector<check::Finding> FindingsPresenter::errors() const {
    std::vector<check::Finding> found;
    for (const check::Finding* finding : m_check.findings()) {
        if (finding->severity == check::Severity::error) {
            found.push_back(*finding);
        }
    }
    return found;
}

std::string FindingsPresenter::placeOf(const check::Finding& finding) const {
    const std::string branch = finding.branch >= 0 ? m_session.branchName(finding.branch) : "";
    if (finding.action >= 0) {
        return core::trStored("PlaceAction|{0}, action {1}"_tr, {branch, finding.action + 1});
    }
    if (finding.zoneNumber >= 0) {
        return core::trStored("PlaceZones|{0}, zones"_tr, {branch});
    }
    return finding.branch >= 0 && !finding.video.empty()
               ? core::trStored("PlaceVideo|{0}, video"_tr, {branch})
               : branch;
}

std::unique_ptr<toolkit::CControlUI> FindingsPresenter::makeRow(int row) const {
    const check::Finding& finding = m_shown[static_cast<std::size_t>(row)];
    const SeverityLook& look = lookOf(finding.severity);
    const std::u16string sentence = core::displayText(check::findingText(finding));
    const std::u16string place = core::displayText(placeOf(finding));
    auto sign = std::make_unique<toolkit::CControlUI>();
    sign->SetFixedWidth(kSignSide);
    sign->SetFixedHeight(kSignSide);
    sign->SetPadding({12, 0, 10, 0});
    sign->SetAttribute(u"icon", look.icon);
    sign->SetAttribute(u"icontint", look.tint);
    auto where = label(place);
    where->SetFixedWidth(1);
    where->SetAttribute(u"besidetext", u"0");
    where->SetMaxWidth(kMostPlace);
    where->SetPadding({8, 0, 12, 0});
    where->SetFont(font::kSmall);
    where->SetAttribute(u"textcolor", u"hint");
    where->SetAttribute(u"align", u"right");
    auto layout = std::make_unique<toolkit::CHorizontalLayoutUI>();
    layout->Add(std::move(sign));
    layout->Add(label(sentence));
    layout->Add(std::move(where));
    auto element = makeLinedRow(std::move(layout), kRowHeight, u"rowline");
    // The name of the row, which shows its labels.
    element->SetText(core::tr(look.row, std::u16string(sentence, 0, sentence.size() - 1)) +
                     (place.empty() ? u"" : u", " + place));
    element->SetToolTip(sentence);
    return element;
}

const check::Finding* FindingsPresenter::selected() const {
    const auto* list = m_controls.find<toolkit::CListUI>(kFindingsList);
    const int row = list != nullptr ? list->GetCurSel() : -1;
    return row >= 0 && static_cast<std::size_t>(row) < m_shown.size()
               ? &m_shown[static_cast<std::size_t>(row)]
               : nullptr;
}

void FindingsPresenter::choose(bool byPointer) {
    const check::Finding* const finding = selected();
    if (finding != nullptr && !m_isSelecting) {
        m_listener.showPlace(check::Finding(*finding), byPointer);
    }
}

void FindingsPresenter::step(int by) {
    auto* list = m_controls.find<toolkit::CListUI>(kFindingsList);
    const int count = static_cast<int>(m_shown.size());
    if (list == nullptr || count == 0) {
        return;
    }
    const int now = list->GetCurSel();
    const int next = now < 0 ? (by > 0 ? 0 : count - 1) : (now + by + count) % count;
    {
        const FlagScope selecting(m_isSelecting);
        list->SelectItem(next);
    }
    m_listener.showPlace(check::Finding(m_shown[static_cast<std::size_t>(next)]), false);
}

void FindingsPresenter::filter() {
    update();
}

void FindingsPresenter::windowSized() {
    if (!m_isFoldChosen) {
        m_isFolded = m_controls.manager().GetWindowSize().height <= kLowWindow;
    }
    showFold();
}

void FindingsPresenter::fold(bool folded) {
    if (m_isFolded != folded) {
        m_isFolded = folded;
        m_isFoldChosen = true;
        if (m_settings != nullptr) {
            m_settings->set(kFoldedKey, folded ? "true" : "false");
        }
    }
    showFold();
}

void FindingsPresenter::turnFold() {
    const auto* option = m_controls.find<toolkit::COptionUI>(kFindingsFold);
    fold(option != nullptr && option->IsSelected());
}

void FindingsPresenter::showFold() {
    if (auto* option = m_controls.find<toolkit::COptionUI>(kFindingsFold)) {
        option->Selected(m_isFolded);
        option->SetAttribute(u"icon", m_isFolded ? u"ChevronUp" : u"ChevronDown");
    }
    m_controls.setVisible(kFindingsBody, !m_isFolded);
    m_controls.setEnabled(kFindingsSplitter, !m_isFolded);
    if (toolkit::CControlUI* pane = m_controls.find(kCheckPane)) {
        pane->SetMinHeight(m_isFolded ? kHeadHeight : kLeastHeight);
    }
    if (auto* splitter = m_controls.find<toolkit::CSplitterUI>(kFindingsSplitter)) {
        splitter->SetLength(m_isFolded ? kHeadHeight : m_height);
    }
}

void FindingsPresenter::keepHeight() {
    const auto* splitter = m_controls.find<toolkit::CSplitterUI>(kFindingsSplitter);
    if (splitter != nullptr && !m_isFolded && splitter->GetLength() != m_height) {
        m_height = splitter->GetLength();
        if (m_settings != nullptr) {
            m_settings->set(kHeightKey, std::to_string(m_height));
        }
    }
}

} // namespace ui
