#include "tests/soak/RandomUser.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <numeric>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/testing/OpenWindows.h"
#include "tests/support/TempFolder.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/DropListWindow.h"

namespace soak {

namespace {

using platform::EventKind;
using platform::Key;
using platform::MouseButton;
using platform::Point;
using toolkit::CControlUI;

/// Ticks until a copied video has arrived.
constexpr int kCopyPatience = 40;

/// Every visible control below `parent`, in the order of the layout.
void collect(CControlUI& parent, std::vector<CControlUI*>& controls) {
    if (!parent.IsVisible()) {
        return;
    }
    controls.push_back(&parent);
    if (const auto* container = toolkit::controlCast<toolkit::CContainerUI>(&parent)) {
        for (int i = 0; i < container->GetCount(); ++i) {
            collect(*container->GetItemAt(i), controls);
        }
    }
}

/// None where the folder is not there, or where the program removes a part of it at this moment.
std::vector<std::string> filesOf(const std::filesystem::path& folder) {
    try {
        return support::filesBelow(folder.string());
    } catch (const std::filesystem::filesystem_error&) {
        return {};
    }
}

/// Leaving is rare, or nothing else would ever happen.
bool leaves(const CControlUI& control) {
    const std::u16string& name = control.GetName();
    return name == u"ButtonExit" || name == u"ButtonClose" || name == u"closebtn";
}

} // namespace

RandomUser::RandomUser(platform::Gui& gui, test::ScriptedFileDialog& dialog, std::seed_seq& seed)
    : m_dialog(dialog), m_input(platform::createTestInput(gui)), m_random(seed) {}

void RandomUser::act() {
    static constexpr std::array<Action, 13> kActions{{
        {40, &RandomUser::clickControl},
        {8, &RandomUser::clickAnywhere},
        {3, &RandomUser::doubleClick},
        {2, &RandomUser::pressOnly},
        {12, &RandomUser::drag},
        {5, &RandomUser::turnWheel},
        {14, &RandomUser::pressKey},
        {7, &RandomUser::typeText},
        {2, &RandomUser::compose},
        {12, &RandomUser::pickFromDropList},
        {6, &RandomUser::playScene},
        {1, &RandomUser::askToClose},
        {1, &RandomUser::harmAFile},
    }};
    static const int kAll =
        std::accumulate(kActions.begin(), kActions.end(), 0,
                        [](int sum, const Action& action) { return sum + action.weight; });
    const auto windows = platform::openWindowsOf<toolkit::WindowImplBase>();
    if (windows.empty()) {
        return;
    }
    m_window = windows.back();
    m_patience = 1;
    answerFileDialog();
    int chosen = below(kAll);
    const Action* action = kActions.data();
    for (; chosen >= action->weight; ++action) {
        chosen -= action->weight;
    }
    note(static_cast<std::uint64_t>(action - kActions.data()));
    const std::u16string window(m_window->GetWindowClassName());
    note(std::hash<std::u16string_view>{}(window));
    ++m_actions[window];
    (this->*action->perform)();
}

int RandomUser::below(int limit) {
    return static_cast<int>(m_random() % static_cast<std::uint64_t>(limit));
}

void RandomUser::note(std::uint64_t what) {
    m_course = (m_course ^ what) * 0x100000001B3U;
}

Point RandomUser::anyPoint() {
    constexpr int kOutside = 20;
    const platform::Rect window = native().geometry();
    return {below(window.width() + 2 * kOutside) - kOutside,
            below(window.height() + 2 * kOutside) - kOutside};
}

Point RandomUser::anyPointIn(const platform::Rect& rect) {
    const int x = rect.left + below(std::max(rect.width(), 1));
    return {x, rect.top + below(std::max(rect.height(), 1))};
}

platform::Modifiers RandomUser::anyModifiers() {
    if (!oneIn(4)) {
        return {};
    }
    return {oneIn(2), oneIn(2), oneIn(4)};
}

std::u16string RandomUser::anyText() {
    static constexpr std::array<char16_t, 24> kLetters{
        u'a', u'b', u'Z', u'0',  u'1', u'9', u' ',  u'.', u'-', u'<',      u'&',      u'>',
        u'"', u'%', u's', u'\\', u'/', u'*', u'\t', u'ß', u'я', u'\u4E2D', u'\u0301', u'\u200F'};
    std::u16string text;
    for (int left = 1 + below(oneIn(20) ? 400 : 12); left > 0; --left) {
        text += oneIn(15) ? u"\U0001F525" : std::u16string(1, oneOf(kLetters));
    }
    return text;
}

void RandomUser::answerFileDialog() {
    static const std::vector<std::vector<std::string>> kNames{{"short.ogv"},
                                                              {"sound.ogg"},
                                                              {"short.ogv", "cut.ogv", "sound.ogg"},
                                                              {"gone.ogv"},
                                                              {"..\\short.ogv"}};
    m_dialog.requests.clear();
    m_dialog.answer.reset();
    if (!oneIn(6)) {
        m_dialog.answer = platform::OpenFilesResult{"videos/", oneOf(kNames)};
    }
}

void RandomUser::mouse(EventKind kind, Point at, MouseButton button) {
    m_input->mouse(native(), kind, at, button);
}

void RandomUser::click(platform::NativeWindow& native, Point at, MouseButton button,
                       platform::Modifiers modifiers) {
    m_input->mouse(native, EventKind::mouseMove, at, MouseButton::none, modifiers);
    m_input->mouse(native, EventKind::mouseDown, at, button, modifiers);
    m_input->mouse(native, EventKind::mouseUp, at, button, modifiers);
}

const CControlUI* RandomUser::anyControl() {
    std::vector<CControlUI*> controls;
    m_window->GetPaintManager().UpdateLayout();
    if (CControlUI* root = m_window->GetPaintManager().GetRoot()) {
        collect(*root, controls);
    }
    return controls.empty() ? nullptr : oneOf(controls);
}

void RandomUser::clickControl() {
    const CControlUI* control = anyControl();
    if (control == nullptr || (leaves(*control) && !oneIn(5))) {
        return;
    }
    if (control->GetName() == u"ButtonAddVideo") {
        m_patience = kCopyPatience;
    }
    note(std::hash<std::u16string_view>{}(control->GetName()));
    const Point at = anyPointIn(control->GetPos());
    const MouseButton button = oneIn(20) ? MouseButton::right : MouseButton::left;
    click(native(), at, button, anyModifiers());
}

void RandomUser::clickAnywhere() {
    click(native(), anyPoint());
}

void RandomUser::doubleClick() {
    const Point at = anyPoint();
    click(native(), at);
    mouse(EventKind::mouseDoubleClick, at);
    mouse(EventKind::mouseUp, at);
}

void RandomUser::pressOnly() {
    const EventKind kind = oneIn(2) ? EventKind::mouseDown : EventKind::mouseUp;
    mouse(kind, anyPoint(), oneIn(3) ? MouseButton::middle : MouseButton::left);
}

void RandomUser::drag() {
    const platform::Modifiers held = anyModifiers();
    const MouseButton button = oneIn(8) ? MouseButton::middle : MouseButton::left;
    const CControlUI* control = oneIn(2) ? anyControl() : nullptr; // most are small
    const bool isThere = control != nullptr && !leaves(*control);
    const auto place = [&] {
        return isThere && !oneIn(3) ? anyPointIn(control->GetPos()) : anyPoint();
    };
    m_input->mouse(native(), EventKind::mouseDown, place(), button, held);
    for (int moves = 1 + below(8); moves > 0; --moves) {
        m_input->mouse(native(), EventKind::mouseMove, place(), button, held);
    }
    m_input->mouse(native(), EventKind::mouseUp, place(), button, held);
}

void RandomUser::turnWheel() {
    const Point at = anyPoint();
    m_input->wheel(native(), at, (below(9) - 4) * 60, anyModifiers());
}

void RandomUser::pressKey() {
    const Key key = static_cast<Key>(below(static_cast<int>(Key::z) + 1));
    platform::Modifiers modifiers = anyModifiers();
    if (key == Key::f4 && modifiers.alt && !oneIn(5)) {
        modifiers.alt = false;
    }
    // The system's menu of the window has a loop of its own, which these events do not end.
    modifiers.alt = modifiers.alt && key != Key::space;
    m_input->key(native(), EventKind::keyDown, key, key == Key::space ? u" " : u"", modifiers);
    m_input->key(native(), EventKind::keyUp, key, {}, modifiers);
}

void RandomUser::typeText() {
    for (const char16_t letter : anyText()) {
        m_input->key(native(), EventKind::keyDown, Key::other, std::u16string(1, letter));
        m_input->key(native(), EventKind::keyUp, Key::other);
    }
}

void RandomUser::compose() {
    m_input->preedit(native(), anyText());
    if (oneIn(2)) {
        m_input->commit(native(), anyText());
    }
}

void RandomUser::pickFromDropList() {
    toolkit::DropListWindow& list = toolkit::DropListWindow::of(m_window->GetPaintManager());
    if (list.native() == nullptr || list.owner() == nullptr) {
        clickControl();
        return;
    }
    const platform::Size size = list.geometry().size();
    const Point at = anyPointIn({0, 0, size.width, size.height});
    if (oneIn(4)) {
        m_input->wheel(*list.native(), at, (below(5) - 2) * 120);
    }
    click(*list.native(), at);
}

void RandomUser::playScene() {
    const CControlUI* picture = m_window->GetPaintManager().FindControl(u"VideoPreview");
    if (picture != nullptr && picture->IsVisible()) {
        ++m_actions[u"VideoPreview"];
    }
    if (picture == nullptr || !picture->IsVisible() || oneIn(8)) {
        m_input->key(native(), EventKind::keyDown, Key::f5, {}, {.shift = oneIn(2)});
        m_input->key(native(), EventKind::keyUp, Key::f5);
    } else if (oneIn(2)) {
        click(native(), anyPointIn(picture->GetPos()));
    } else {
        const int letter = static_cast<int>(Key::a) + below(26);
        m_input->key(native(), EventKind::keyDown, static_cast<Key>(letter));
        m_input->key(native(), EventKind::keyUp, static_cast<Key>(letter));
    }
    m_patience = 1 + below(kCopyPatience); // the clips need time to play
}

void RandomUser::askToClose() {
    if (oneIn(4)) {
        m_input->requestClose(native());
    }
}

void RandomUser::harmAFile() {
    static const std::vector<std::string> kPlaces{"Scenes",  "Scenes",    "Drafts",
                                                  "Backups", "Published", "Cache"};
    const std::filesystem::path place(oneOf(kPlaces));
    const std::vector<std::string> names = filesOf(place);
    if (names.empty() || !oneIn(4)) {
        return;
    }
    const std::string& name = oneOf(names);
    const std::filesystem::path file = place / std::u8string(name.begin(), name.end());
    std::error_code error;
    if (oneIn(2)) {
        std::filesystem::remove(file, error);
    } else {
        std::filesystem::resize_file(file, static_cast<std::uintmax_t>(below(200)), error);
    }
}

} // namespace soak
