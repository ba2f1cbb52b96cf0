#include "ui/EarlierVersions.h"

#include <cstddef>
#include <memory>
#include <tuple>
#include <utility>

#include "app/state/SharedServices.h"
#include "check/Differences.h"
#include "core/Log.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "map/MapScene.h"
#include "platform/Gui.h"
#include "recovery/Versions.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/layout/CVerticalLayoutUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Controls.h"
#include "ui/Fonts.h"
#include "ui/ListRow.h"
#include "ui/TimeTexts.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/ContextMenu.h"
#include "ui/commands/EarlierVersionsCommands.h"
#include "ui/commands/MapCommands.h"
#include "ui/map/SceneMap.h"

namespace ui {
namespace {

using check::Line;

constexpr std::u16string_view kVersions = u"ListVersions";
constexpr std::u16string_view kDifferences = u"ListDifferences";
constexpr std::u16string_view kContents = u"ListVersionActions";
constexpr std::u16string_view kMap = u"VersionMap";
constexpr std::u16string_view kMapTab = u"OptionVersionMap";
constexpr std::u16string_view kPartsTab = u"OptionVersionActions";
constexpr std::u16string_view kVersionLabel = u"LabelVersion";
constexpr std::u16string_view kAboutLabel = u"LabelVersions";
constexpr std::u16string_view kRestoreButton = u"ButtonRestoreVersion";
constexpr std::u16string_view kHintLabel = u"LabelHint";

constexpr ContextMenu kContextMenus[] = {{kVersions, kVersionRows}, {kMap, kVersionMapRows}};
constexpr std::u16string_view kPanes[] = {kVersions, kMap, kContents, kDifferences, kRestoreButton};

constexpr int kDayHeight = 25;
constexpr int kVersionHeight = 44;
constexpr int kTimeHeight = 19;
constexpr int kSummaryHeight = 17;
constexpr int kLineHeight = 23;
constexpr int kIconSide = 16;

std::unique_ptr<toolkit::CLabelUI> label(std::u16string_view text, int font, bool isMuted) {
    auto label = std::make_unique<toolkit::CLabelUI>();
    label->SetText(text);
    label->SetFont(font);
    label->SetAttribute(u"textcolor", isMuted ? u"muted" : u"ink");
    label->SetAttribute(u"disabledtextcolor", u"muted");
    return label;
}

std::unique_ptr<toolkit::CControlUI> differenceRow(const Line& line) {
    auto icon = std::make_unique<toolkit::CControlUI>();
    icon->SetFixedWidth(kIconSide);
    icon->SetFixedHeight(kIconSide);
    icon->SetPadding({11, 0, 10, 0});
    icon->SetAttribute(u"icontint", u"muted");
    icon->SetIcon(line.kind == Line::Kind::with      ? u"Add"
                  : line.kind == Line::Kind::without ? u"Remove"
                                                     : u"Note");
    auto layout = std::make_unique<toolkit::CHorizontalLayoutUI>();
    layout->Add(std::move(icon));
    layout->Add(label(core::displayText(line.text), font::kBody, false));
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->Add(std::move(layout));
    return row;
}

std::unique_ptr<toolkit::CControlUI> contentsRow(const Line& line) {
    const bool isHeading = line.kind == Line::Kind::heading;
    auto text = label(core::displayText(line.text), isHeading ? font::kBold : font::kBody, false);
    text->SetTextPadding({isHeading ? 11 : 27, 0, 8, 0});
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->Add(std::move(text));
    return row;
}

} // namespace

EarlierVersions::EarlierVersions(const WindowContext& context, VersionHistory history)
    : EditorWindow(context, {kEarlierVersionsCommands, kContextMenus, kPanes}),
      m_reader(context.gui.loop(), *core::services().fileSystem, std::move(history)) {
    commands().bind(
        command::kRestoreVersion, [this] { restore(); }, [this] { return m_restore != nullptr; });
    commands().bind(command::kCloseVersions, [this] { Close(1); });
    const auto isMapShown = [this] { return controls().isUsable(kMap); };
    commands().bind(
        command::kMapFit, [this] { find<SceneMap>(kMap)->fit(); }, isMapShown);
    for (const auto& [id, by] : {std::pair{command::kMapIn, 1}, {command::kMapOut, -1}}) {
        commands().bind(
            id, [this, by = by] { find<SceneMap>(kMap)->zoom(by); }, isMapShown);
    }
}

EarlierVersions::~EarlierVersions() {
    if (auto* map = find<SceneMap>(kMap)) {
        map->setStills({});
        map->setErrors({});
    }
}

std::unique_ptr<toolkit::CControlUI> EarlierVersions::CreateControl(std::u16string_view className) {
    return className == u"SceneMap" ? std::make_unique<SceneMap>()
                                    : EditorWindow::CreateControl(className);
}

void EarlierVersions::show(const WindowContext& context, ConfirmCallback& owner,
                           VersionHistory history) {
    const auto window = std::make_shared<EarlierVersions>(context, std::move(history));
    if (!window->runAbove(owner, core::tr("Earlier Versions"_tr))) {
        core::Log::get()->Error("Unable to show the earlier versions");
    }
}

void EarlierVersions::InitWindow() {
    const VersionHistory& history = m_reader.history();
    setTextOf(kAboutLabel, core::tr(history.about, history.name));
    setTextOf(kPartsTab, history.parts);
    prepareMap();
    if (toolkit::CControlUI* list = findControl(kVersions)) {
        GetPaintManager().SetFocus(list);
    }
    commands().showEnabled();
    m_reader.readAll([this](const auto& rows) { addRows(rows); }, [this] { showEmpty(); });
}

void EarlierVersions::prepareMap() {
    auto* map = find<SceneMap>(kMap);
    const VersionHistory& history = m_reader.history();
    m_hasMap = history.hasMap && map != nullptr;
    setVisibleOf(kMapTab, m_hasMap);
    if (m_hasMap) {
        m_stills =
            std::make_unique<MapStills>(*map, context().services.stills.get(), history.clipFolder);
        map->setStills([this](int branch) {
            return m_stills->of(m_map.scene->branches[static_cast<std::size_t>(branch)]);
        });
        map->setErrors(
            [this](int branch) { return m_map.errors[static_cast<std::size_t>(branch)]; });
    }
    showView();
}

void EarlierVersions::addRows(const std::vector<VersionReader::Row>& rows) {
    auto* list = find<toolkit::CListUI>(kVersions);
    if (list == nullptr) {
        return;
    }
    const bool isFirst = m_versions.empty();
    for (const VersionReader::Row& row : rows) {
        if (const std::u16string day = dayText(row.version.saved); day != m_lastDay) {
            addDay(*list, day);
            m_lastDay = day;
        }
        addVersion(*list, row);
    }
    if (isFirst) {
        list->SelectItem(1); // behind the day
    }
}

void EarlierVersions::addDay(toolkit::CListUI& list, std::u16string_view day) {
    auto text = label(day, font::kSmall, true);
    text->SetTextPadding({11, 0, 8, 0});
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->SetFixedHeight(kDayHeight);
    row->SetAttribute(u"bkcolor", u"band");
    row->Add(std::move(text));
    row->SetEnabled(false);
    list.Add(std::move(row));
    m_versions.emplace_back();
}

void EarlierVersions::addVersion(toolkit::CListUI& list, const VersionReader::Row& row) {
    std::string summary = row.summary.empty() ? core::trStored("Cannot be read"_tr) : row.summary;
    if (row.version.isDamaged) {
        summary = core::trStored("VersionDamaged|{0}, damaged"_tr, {summary});
    }
    auto layout = std::make_unique<toolkit::CVerticalLayoutUI>();
    layout->SetInset({11, 4, 8, 0});
    auto time = label(timeText(row.version.saved), font::kBold, false);
    time->SetFixedHeight(kTimeHeight);
    layout->Add(std::move(time));
    auto differences = label(core::displayText(summary), font::kSmall, true);
    differences->SetFixedHeight(kSummaryHeight);
    layout->Add(std::move(differences));
    list.Add(makeLinedRow(std::move(layout), kVersionHeight, u"band"));
    m_versions.emplace_back(row.version);
}

void EarlierVersions::showEmpty() {
    for (const std::u16string_view name : {u"EmptyHeading", u"EmptyLine"}) {
        setVisibleOf(name, m_versions.empty());
    }
}

void EarlierVersions::OnItemSelect(toolkit::TNotifyUI& message) {
    if (message.pSender->GetName() == kVersions) {
        showChosen(message.wParam);
    }
}

void EarlierVersions::OnSelectChanged(toolkit::TNotifyUI& message) {
    const std::u16string& name = message.pSender->GetName();
    if (name == kMapTab || name == kPartsTab) {
        m_isMapWanted = name == kMapTab;
        showView();
    }
}

void EarlierVersions::OnItemActivate(toolkit::TNotifyUI& message) {
    if (message.pSender->GetName() == kVersions) {
        commands().run(command::kRestoreVersion);
    }
}

void EarlierVersions::showChosen(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= m_versions.size() ||
        !m_versions[static_cast<std::size_t>(row)]) {
        return;
    }
    const recovery::Version& version = *m_versions[static_cast<std::size_t>(row)];
    setTextOf(kVersionLabel, dayText(version.saved) + u", " + timeText(version.saved));
    showProblem({}, kHintLabel);
    m_restore = {};
    commands().showEnabled();
    m_reader.read(version, [this](VersionDetails details) { showDetails(std::move(details)); });
}

void EarlierVersions::showDetails(VersionDetails details) {
    m_restore = std::move(details.restore);
    if (auto* map = find<SceneMap>(kMap); m_stills != nullptr) {
        m_map = std::move(details.map);
        m_hasMap = m_map.scene != nullptr || !details.isReadable;
        if (m_map.scene != nullptr) {
            m_stills->want(*m_map.scene);
        }
        map->show(m_map.scene, m_map.layouts, m_map.scene ? m_map.scene->first : -1, {});
    }
    showView();
    listLines(kContents, std::move(details.contents), contentsRow);
    listLines(kDifferences, std::move(details.differences), differenceRow);
    if (!details.isReadable) {
        showProblem(core::tr("This version cannot be read."_tr), kHintLabel);
    }
    commands().showEnabled();
}

void EarlierVersions::showView() {
    const bool isMap = m_isMapWanted && m_hasMap;
    setEnabledOf(kMapTab, m_hasMap);
    for (const auto& [tab, view, isShown] :
         {std::tuple(kMapTab, kMap, isMap), {kPartsTab, kContents, !isMap}}) {
        setVisibleOf(view, isShown);
        if (auto* option = find<toolkit::COptionUI>(tab)) {
            option->SetFont(isShown ? font::kBold : font::kBody);
            if (isShown) {
                option->Selected(true);
            }
        }
    }
    commands().showEnabled();
}

void EarlierVersions::listLines(std::u16string_view name, std::vector<Line> lines,
                                std::unique_ptr<toolkit::CControlUI> (*makeRow)(const Line&)) {
    if (auto* list = find<toolkit::CListUI>(name)) {
        const auto kept = std::make_shared<const std::vector<Line>>(std::move(lines));
        list->SetRows(
            static_cast<int>(kept->size()),
            {.make = [kept,
                      makeRow](int row) { return makeRow((*kept)[static_cast<std::size_t>(row)]); },
             .height = kLineHeight});
    }
}

void EarlierVersions::restore() {
    if (m_restore()) {
        Close(1);
    } else {
        showProblem(core::tr("This version cannot be restored here."_tr), kHintLabel);
    }
}

} // namespace ui
