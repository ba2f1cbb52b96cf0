#include "ui/preview/PreviewPresenter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "core/EditorSettings.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Clock.h"
#include "platform/Window.h"
#include "playback/Transport.h"
#include "player/Clip.h"
#include "player/Story.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/skin/Palette.h"
#include "ui/FigureTexts.h"
#include "ui/preview/PreviewNames.h"
#include "ui/preview/PreviewSlider.h"
#include "ui/preview/PreviewTexts.h"

namespace ui {

using namespace branch_list;

namespace {

constexpr int kRowHeight = 44;
constexpr const char* kSoundKey = "previewSound";
constexpr const char* kZonesKey = "previewZones";
constexpr core::Text kNoDevice = "No sound device: playing silently."_tr;

std::u16string textOf(const PreviewRowLook& look) {
    return look.name + (look.detail.empty() ? u"" : u", " + look.detail) +
           (look.time.empty() ? u"" : u", " + look.time);
}

std::unique_ptr<toolkit::CControlUI> makeRow(const PreviewRowLook& look) {
    auto element = std::make_unique<toolkit::CListContainerElementUI>();
    element->SetFixedHeight(kRowHeight);
    element->Add(std::make_unique<PreviewRow>(look));
    element->SetText(textOf(look));
    return element;
}

void showRow(toolkit::CControlUI& element, const PreviewRowLook& look) {
    if (auto* row = dynamic_cast<PreviewRow*>(element.childAt(0))) {
        row->show(look);
        element.SetText(textOf(look));
    }
}

} // namespace

PreviewPresenter::PreviewPresenter(Controls controls, scene::SceneSession& session,
                                   const std::string& folder, platform::Gui& gui,
                                   core::EditorSettings* settings, Listener& listener)
    : m_controls(controls), m_session(session), m_folder(folder), m_gui(gui), m_settings(settings),
      m_listener(listener), m_subscription(session.observe([this](const auto&) { changed(); })) {
    if (auto* sound = m_controls.find<toolkit::COptionUI>(kPreviewSound)) {
        sound->Selected(settings == nullptr || settings->getBool(kSoundKey, true));
    }
    if (auto* zones = m_controls.find<toolkit::COptionUI>(kPreviewZones)) {
        zones->Selected(settings != nullptr && settings->getBool(kZonesKey, false));
    }
    showSound();
    if (auto* slider = m_controls.find<PreviewSlider>(kPreviewSlider)) {
        slider->setListener([this](int place) {
            if (m_preview) {
                m_preview->seek(place);
            }
        });
    }
}

PreviewPresenter::~PreviewPresenter() {
    if (auto* slider = m_controls.find<PreviewSlider>(kPreviewSlider)) {
        slider->setListener({});
    }
    stop();
}

VideoPreview* PreviewPresenter::picture() const {
    return m_controls.find<VideoPreview>(kVideoPreview);
}

bool PreviewPresenter::isOn(std::u16string_view option) const {
    const auto* control = m_controls.find<toolkit::COptionUI>(option);
    return control != nullptr && control->IsSelected();
}

void PreviewPresenter::open() {
    stop();
    platform::Clock& clock = *core::services().clock;
    m_story = std::make_unique<playback::SceneStory>(m_session);
    const auto seed = static_cast<std::uint32_t>(clock.ticks());
    m_preview = std::make_unique<playback::Preview>(playback::Preview::Setup{
        m_story->story(), m_folder, *core::services().fileSystem, clock, m_gui.sound(), seed});
    m_preview->setAudible(isOn(kPreviewSound));
    if (VideoPreview* view = picture()) {
        view->setListener(this);
        view->run(true);
    }
}

void PreviewPresenter::playFirst() {
    open();
    m_preview->startAt(m_session.firstBranch());
    tick();
    m_controls.setFocus(kVideoPreview);
}

void PreviewPresenter::playBranch(int branch) {
    open();
    m_preview->startAt(branch);
    tick();
    m_controls.setFocus(kVideoPreview);
}

void PreviewPresenter::stop() {
    if (VideoPreview* view = picture()) {
        view->run(false);
        view->setListener(nullptr);
        view->showNothing();
    }
    m_preview.reset();
    m_story.reset();
    m_hasNotedSilence = false;
    m_duration = m_seconds = 0.0;
    m_choices.clear();
    listChoices(0);
    fillPath({});
    m_stepsBefore = 0;
    m_controls.setText(kPreviewTime, {});
    if (auto* slider = m_controls.find<PreviewSlider>(kPreviewSlider)) {
        slider->show(0, 0);
    }
}

bool PreviewPresenter::isPlaying() const {
    return m_preview && m_preview->player().state() == player::Player::State::playing;
}

bool PreviewPresenter::canGoBack() const {
    return m_preview && m_preview->player().path().size() > 1;
}

void PreviewPresenter::restart() {
    m_preview->restart();
    tick();
}

void PreviewPresenter::back() {
    if (m_preview->back()) {
        tick();
    }
}

void PreviewPresenter::togglePause() {
    m_preview->setPaused(!m_preview->transport().isPaused());
    showPause();
}

void PreviewPresenter::pause() {
    if (m_preview && !m_preview->transport().isPaused()) {
        togglePause();
    }
}

void PreviewPresenter::setSpeed(double speed) {
    m_preview->setSpeed(speed);
    m_shownFrame = -1;
}

bool PreviewPresenter::isSpeed(double speed) const {
    return m_preview && m_preview->transport().speed() == speed;
}

void PreviewPresenter::copyPath() const {
    m_gui.windows().setClipboardText(pathText(m_preview->player()));
}

void PreviewPresenter::takeSwitches() {
    if (m_settings != nullptr) {
        m_settings->set(kSoundKey, isOn(kPreviewSound) ? "true" : "false");
        m_settings->set(kZonesKey, isOn(kPreviewZones) ? "true" : "false");
    }
    showSound();
    if (m_preview) {
        m_preview->setAudible(isOn(kPreviewSound));
        showOutlines();
    }
}

void PreviewPresenter::showSound() {
    if (auto* sound = m_controls.find(kPreviewSound)) {
        sound->SetIcon(isOn(kPreviewSound) ? u"Sound" : u"Mute");
    }
}

void PreviewPresenter::takeChoice() {
    const auto* list = m_controls.find<toolkit::CListUI>(kPreviewChoices);
    const int row = list != nullptr ? list->GetCurSel() : -1;
    if (m_preview && row >= 0 && static_cast<std::size_t>(row) < m_choices.size() &&
        m_preview->choose(m_choices[static_cast<std::size_t>(row)].action)) {
        tick();
        showChoices();
    }
}

int PreviewPresenter::selectedBranch() const {
    const auto* list = m_controls.find<toolkit::CListUI>(kPreviewPath);
    const int row = list != nullptr && m_preview ? list->GetCurSel() : -1;
    const auto& path = m_preview ? m_preview->player().path() : std::vector<player::Step>();
    return row >= 0 && static_cast<std::size_t>(row) < path.size()
               ? path[static_cast<std::size_t>(row)].branch
               : -1;
}

void PreviewPresenter::changed() {
    if (m_preview) {
        auto story = std::make_unique<playback::SceneStory>(m_session);
        m_preview->replaceStory(story->story(), m_story->movedTo(m_session));
        m_story = std::move(story);
        showAll();
    }
}

void PreviewPresenter::clicked(platform::Point pixel) {
    if (m_preview && m_preview->click(pixel)) {
        tick();
        showChoices();
    }
}

void PreviewPresenter::typed(char letter) {
    if (m_preview && m_preview->press(std::string_view(&letter, 1))) {
        tick();
        showChoices();
    }
}

void PreviewPresenter::tick() {
    VideoPreview* view = picture();
    if (!m_preview || view == nullptr) {
        return;
    }
    if (!view->IsVisible()) {
        pause();
    }
    const bool wasShown = m_preview->isShown();
    const bool hasChanged =
        m_preview->tick([view](const std::uint8_t* pixels, platform::Size size) {
            view->showPicture(pixels, size);
        });
    if (!std::exchange(m_hasNotedSilence, m_preview->transport().lacksDevice()) &&
        m_hasNotedSilence) {
        m_listener.previewNotes(core::tr(kNoDevice));
    }
    if (hasChanged) {
        showAll();
        m_listener.previewChanged();
    } else if (m_preview->isShown() != wasShown) {
        showBranch();
        showOutlines();
    }
    // Until the first picture of a branch, the time of the one before stays.
    if (isPlaying() && !m_preview->isWaiting() && m_preview->frame() != m_shownFrame) {
        showTime();
        showOutlines();
        showChoices();
    }
}

void PreviewPresenter::showAll() {
    m_shownFrame = -1;
    if (!isPlaying()) {
        showTime();
    }
    showBranch();
    showOutlines();
    showChoices();
    showPath();
    showPause();
}

// The picture of the branch before stays until the first one of this branch, and with it the name.
void PreviewPresenter::showBranch() {
    const player::Player& player = m_preview->player();
    const bool isItsPicture =
        m_preview->isShown() || player.state() == player::Player::State::ended;
    VideoPreview* view = picture();
    if (view != nullptr && (isItsPicture || !view->hasPicture())) {
        view->setBranch(core::displayText(player.path().back().name));
    }
}

double PreviewPresenter::secondsLeft() const {
    const int count = m_preview->frameCount();
    return count < 0 ? -1.0 : (count - m_preview->frame()) / m_preview->framesPerSecond();
}

void PreviewPresenter::showTime() {
    m_shownFrame = m_preview->frame();
    if (isPlaying()) { // the clip that ended last stays on show
        m_seconds = m_preview->frame() / m_preview->framesPerSecond();
        m_duration = m_preview->frameCount() / m_preview->framesPerSecond();
    }
    std::u16string text = lengthText(m_seconds);
    if (m_duration > 0) {
        text += u" / " + lengthText(m_duration);
    }
    const double speed = m_preview->transport().speed();
    if (speed != 1.0) {
        text += speed < 1.0 ? u"  ½ ×" : u"  2 ×";
    }
    m_controls.setText(kPreviewTime, text);
    if (auto* slider = m_controls.find<PreviewSlider>(kPreviewSlider)) {
        slider->show(m_preview->frame(), std::max(m_preview->frameCount(), 0));
    }
}

void PreviewPresenter::showOutlines() {
    VideoPreview* view = picture();
    const auto& clip = m_preview->player().clip();
    std::vector<VideoPreview::Outline> outlines;
    if (m_preview->isShown() && clip && clip->frameCount >= 0 && isOn(kPreviewZones)) {
        for (const player::ZoneTrack& zone : clip->zones) {
            const player::ZoneShape* shape = player::shapeAt(zone, m_preview->frame());
            if (shape != nullptr && shape->isActive) {
                outlines.push_back({core::displayText(zone.name), shape->points});
            }
        }
    }
    if (view != nullptr) {
        view->setOutlines(std::move(outlines));
    }
}

PreviewRowLook PreviewPresenter::choiceLook(const player::Choice& choice) const {
    using When = player::Action::When;
    const player::Player& player = m_preview->player();
    const player::Action& action = player.branch().actions[static_cast<std::size_t>(choice.action)];
    PreviewRowLook look;
    look.name = core::displayText(action.target);
    look.detail = choiceText(player, choice, secondsLeft());
    look.isButton = true;
    look.isChosen = choice.waits;
    switch (action.when) {
    case When::keyPressed:
        look.badge = core::displayText(action.parameter);
        look.badgeTone = toolkit::Tone::keyKind;
        break;
    case When::zoneClicked:
        look.icon = u"Zone";
        look.badgeTone = toolkit::Tone::zoneKind;
        break;
    case When::byChance:
        look.icon = u"Dice";
        look.badgeTone = toolkit::Tone::randomKind;
        break;
    case When::clipEnds:
        look.icon = u"End";
        look.badgeTone = toolkit::Tone::defaultKind;
        break;
    }
    return look;
}

// Rows are made for those in view only, and stay with the focus and the selection while their
// number does.
void PreviewPresenter::showChoices() {
    auto* list = m_controls.find<toolkit::CListUI>(kPreviewChoices);
    m_choices = m_preview->player().choices(m_preview->frame());
    const int count = static_cast<int>(m_choices.size());
    if (list == nullptr) {
        return;
    }
    if (count != list->GetCount()) { // others: none of them is the selected one
        list->SelectItem(-1);
        listChoices(count);
    }
    for (int row = 0; row < count; ++row) {
        if (toolkit::CControlUI* made = list->madeRow(row)) {
            showRow(*made, choiceLook(m_choices[static_cast<std::size_t>(row)]));
        }
    }
}

void PreviewPresenter::listChoices(int count) {
    auto* list = m_controls.find<toolkit::CListUI>(kPreviewChoices);
    if (list == nullptr || list->GetCount() == count) {
        return;
    }
    if (count == 0 || list->GetCount() == 0) {
        const auto make = [this](int row) {
            return makeRow(choiceLook(m_choices[static_cast<std::size_t>(row)]));
        };
        list->SetRows(count, {make, kRowHeight});
    }
    while (list->GetCount() > count) {
        list->RemoveAt(list->GetCount() - 1);
    }
    while (list->GetCount() < count) {
        list->AnnounceAt(list->GetCount());
    }
}

std::vector<PreviewRowLook> PreviewPresenter::pathLooks() const {
    std::vector<PreviewRowLook> looks;
    int number = m_preview->player().stepsBefore();
    for (const player::Step& step : m_preview->player().path()) {
        PreviewRowLook look;
        look.number = core::displayText(std::to_string(++number));
        look.name = core::displayText(step.name);
        look.detail = reasonText(step.reason);
        look.time = lengthText(step.seconds);
        looks.push_back(std::move(look));
    }
    const std::u16string end = endText(m_preview->player());
    if (!end.empty()) {
        PreviewRowLook look;
        look.name = end;
        look.isProblem = m_preview->player().state() != player::Player::State::ended;
        looks.push_back(std::move(look));
    }
    return looks;
}

void PreviewPresenter::showPath() {
    const player::Player& player = m_preview->player();
    auto* list = m_controls.find<toolkit::CListUI>(kPreviewPath);
    for (; m_stepsBefore < player.stepsBefore(); ++m_stepsBefore) {
        if (list != nullptr && list->RemoveAt(0)) {
            m_pathRows.erase(m_pathRows.begin());
        }
    }
    fillPath(pathLooks());
    if (list != nullptr) {
        list->SelectItem(static_cast<int>(player.path().size()) - 1);
        list->revealRow(list->GetCount() - 1);
    }
}

// A long path grows by a row at a time; the others stay.
void PreviewPresenter::fillPath(std::vector<PreviewRowLook> looks) {
    auto* list = m_controls.find<toolkit::CListUI>(kPreviewPath);
    if (list == nullptr || m_pathRows == looks) {
        return;
    }
    while (m_pathRows.size() > looks.size()) {
        m_pathRows.pop_back();
        list->RemoveAt(static_cast<int>(m_pathRows.size()));
    }
    for (std::size_t i = 0; i < looks.size(); ++i) {
        if (i >= m_pathRows.size()) {
            list->Add(makeRow(looks[i]));
        } else if (m_pathRows[i] != looks[i]) {
            showRow(*list->GetItemAt(static_cast<int>(i)), looks[i]);
        }
    }
    m_pathRows = std::move(looks);
}

void PreviewPresenter::showPause() {
    if (toolkit::CControlUI* button = m_controls.find(kPreviewPlay)) {
        const bool isPaused = m_preview->transport().isPaused() || !isPlaying();
        button->SetIcon(isPaused ? u"Play" : u"Pause");
        button->SetLabel(core::tr(isPaused ? "Play"_tr : "Pause"_tr));
    }
}

} // namespace ui
