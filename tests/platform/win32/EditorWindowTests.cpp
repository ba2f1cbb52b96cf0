// The editor's own windows as Windows sees them: classes, styles, titles, the messages with a rule
// of their own, handles, and what a screen reader is told of every control.
#include <map>
#include <memory>
#include <string>

#include <windows.h>

#include <oleacc.h>

#include "core/Text.h"
#include "platform/win32/AccessibleNode.h"
#include "platform/win32/Win32Window.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/platform/win32/HandleCount.h"
#include "toolkit/CComboUI.h"
#include "toolkit/ToolTipWindow.h"
#include "ui/BranchList.h"
#include "ui/Confirmation.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"

namespace {

using platform::Accessible;
using platform::AccessibleRole;

HWND handleOf(const toolkit::WindowImplBase& window) {
    return static_cast<platform::win32::Win32Window&>(*window.GetNative()).handle();
}

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
using Object = std::unique_ptr<IAccessible, Release>;

Object clientOf(HWND window) {
    void* found = nullptr;
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                               &found);
    return Object(static_cast<IAccessible*>(found));
}

VARIANT numbered(long id) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = id;
    return child;
}

std::u16string taken(BSTR text) {
    const std::u16string result(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
    SysFreeString(text);
    return result;
}

class EditorWindows : public test::ZoneEditTest {
protected:
    EditorWindows() {
        makeClip(2);
        support::writeBytes("Scenes/Fire/Scene.xml", "<Scene>\r\n"
                                                     "\t<Name>Fire</Name>\r\n"
                                                     "\t<FirstBranch>Start</FirstBranch>\r\n"
                                                     "\t<Branch>\r\n"
                                                     "\t\t<ID>Start</ID>\r\n"
                                                     "\t\t<Filename>clip.ogv</Filename>\r\n"
                                                     "\t\t<Action>\r\n"
                                                     "\t\t\t<Type>ZoneAction</Type>\r\n"
                                                     "\t\t</Action>\r\n"
                                                     "\t</Branch>\r\n"
                                                     "</Scene>\r\n");
        EXPECT_TRUE(scene().Load("Fire"));
    }

    /// Shows each of the editor's windows in turn, as the program makes them.
    template <class Visit>
    void visitAll(Visit visit) {
        visitOne<ui::OpenScene>(u"Open or Create Scene", visit);
        visitOne<ui::NewScene>(u"New Scene", visit);
        visitOne<zoneedit::ZoneEdit>(u"Zone Edit", visit);
        const auto asker = open<ui::BranchList>(u"Quorvel");
        visit(*asker);
        {
            ui::Confirmation question(context(), *asker, "Exit?", "Are you sure?");
            ASSERT_TRUE(question.Create(asker->GetNative(), u"Exit?", ui::kDialogStyle,
                                        ui::kDialogExtendedStyle));
            question.ShowWindow(true);
            test::pump();
            visit(question);
            question.Close(1);
            test::pump();
        }
        asker->Close(1);
        test::pump();
    }

private:
    template <class Window, class Visit>
    void visitOne(std::u16string_view title, Visit visit) {
        const auto window = open<Window>(title);
        visit(*window);
        window->Close(1);
        test::pump();
    }
};

TEST_F(EditorWindows, HaveTheirClassesStylesAndTitlesAndNoFrame) {
    constexpr DWORD kScreen = 0x96C80000;
    constexpr DWORD kDialog = WS_POPUP | WS_VISIBLE;
    const struct {
        const wchar_t* title;
        DWORD style;
        DWORD extendedStyle;
    } common[] = {{L"Open or Create Scene", kScreen, 0x60000},
                  {L"New Scene", kScreen, 0x60000},
                  {L"Zone Edit", kScreen, 0x60000},
                  {L"Quorvel", kScreen, 0x60000},
                  {L"Exit?", kDialog, 0x20000}};
    const std::map<std::wstring, std::wstring> classes{
        {L"Open or Create Scene", L"OpenSceneWindow"},
        {L"New Scene", L"NewSceneWindow"},
        {L"Zone Edit", L"ZoneEditWindow"},
        {L"Quorvel", L"QuorvelWindow"},
        {L"Exit?", L"ConfirmationWindow"}};
    std::size_t visits = 0;
    visitAll([&](toolkit::WindowImplBase& window) {
        const auto& expected = common[visits++];
        const HWND handle = handleOf(window);
        wchar_t text[256] = {};
        GetWindowTextW(handle, text, 256);
        EXPECT_STREQ(text, expected.title);
        GetClassNameW(handle, text, 256);
        EXPECT_EQ(text, classes.at(expected.title));
        EXPECT_NE(IsWindowUnicode(handle), FALSE);
        // The system adds these two to top-level windows by itself.
        const DWORD style = static_cast<DWORD>(GetWindowLongW(handle, GWL_STYLE));
        EXPECT_EQ(style & ~WS_CLIPSIBLINGS, expected.style & ~WS_CLIPSIBLINGS) << expected.title;
        const DWORD extended = static_cast<DWORD>(GetWindowLongW(handle, GWL_EXSTYLE));
        EXPECT_EQ(extended & ~WS_EX_WINDOWEDGE, expected.extendedStyle) << expected.title;

        RECT client{};
        RECT frame{};
        GetClientRect(handle, &client);
        GetWindowRect(handle, &frame);
        EXPECT_EQ(client.right, frame.right - frame.left);
        EXPECT_EQ(client.bottom, frame.bottom - frame.top);
        EXPECT_EQ(window.GetPaintManager().GetRoot()->GetPos().size(),
                  (platform::Size{client.right, client.bottom}));
        EXPECT_EQ(SendMessageW(handle, WM_ERASEBKGND, 0, 0), 1);
        EXPECT_EQ(SendMessageW(handle, WM_NCPAINT, 1, 0), 0);
    });
    EXPECT_EQ(visits, std::size(common));
}

TEST_F(EditorWindows, EndTheirLoopHoweverTheyAreDestroyed) {
    const struct {
        const char* what;
        void (*end)(HWND);
    } cases[] = {
        {"the system's close box", [](HWND window) { SendMessageW(window, WM_CLOSE, 0, 0); }},
        {"destroyed from outside", [](HWND window) { DestroyWindow(window); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        auto window = open<ui::OpenScene>();
        const HWND handle = handleOf(*window);
        test::gui().loop().post([&] { c.end(handle); });
        EXPECT_EQ(test::gui().loop().run(), 0);
        EXPECT_EQ(window->GetNative(), nullptr);
        window.reset();
        EXPECT_EQ(IsWindow(handle), FALSE);
    }
}

TEST_F(EditorWindows, LeaveNoHandleBehindInAHundredVisits) {
    const auto work = [](toolkit::WindowImplBase& window) {
        test::WindowDriver driver(window);
        if (auto* combo = window.FindControl<toolkit::CComboUI>(u"ComboBranchName")) {
            driver.openDropList(*combo);
            combo->CloseDrop();
        }
        driver.hover(platform::Point{30, 30});
        window.GetPaintManager().toolTip().timeOver();
        test::pump();
    };
    visitAll(work); // what the first ones make for good: classes, fonts
    const test::HandleCount before;
    constexpr int kRounds = 20; // of five windows
    for (int round = 0; round < kRounds; ++round) {
        visitAll(work);
    }
    const test::HandleCount after;
    EXPECT_TRUE(after.isNoMoreThan(before))
        << before.gdiRoom << " " << after.gdiRoom << " " << before.windows << " " << after.windows;
}

const std::map<AccessibleRole, long> kRoles{
    {AccessibleRole::window, ROLE_SYSTEM_CLIENT},
    {AccessibleRole::dialog, ROLE_SYSTEM_DIALOG},
    {AccessibleRole::group, ROLE_SYSTEM_GROUPING},
    {AccessibleRole::label, ROLE_SYSTEM_STATICTEXT},
    {AccessibleRole::button, ROLE_SYSTEM_PUSHBUTTON},
    {AccessibleRole::checkBox, ROLE_SYSTEM_CHECKBUTTON},
    {AccessibleRole::radioButton, ROLE_SYSTEM_RADIOBUTTON},
    {AccessibleRole::comboBox, ROLE_SYSTEM_COMBOBOX},
    {AccessibleRole::edit, ROLE_SYSTEM_TEXT},
    {AccessibleRole::list, ROLE_SYSTEM_LIST},
    {AccessibleRole::listItem, ROLE_SYSTEM_LISTITEM},
    {AccessibleRole::picture, ROLE_SYSTEM_GRAPHIC},
};

/// The words of the system's own controls.
std::u16string actionOf(AccessibleRole role, const platform::AccessibleState& state) {
    switch (role) {
    case AccessibleRole::button:
        return u"Press";
    case AccessibleRole::checkBox:
        return state.checked ? u"Uncheck" : u"Check";
    case AccessibleRole::radioButton:
        return u"Check";
    case AccessibleRole::comboBox:
        return state.expanded ? u"Close" : u"Open";
    case AccessibleRole::listItem:
        return u"Select";
    default:
        return {};
    }
}

/// Compares the object that Windows hands out for `node` with it, and all below.
class TreeReader {
public:
    explicit TreeReader(HWND window) : m_window(window) {}

    void read(IAccessible& object, const Accessible& node) {
        ++m_seen[node.accessibleRole()];
        readTexts(object, node);
        readPlaceAndState(object, node);
        long count = -1;
        EXPECT_EQ(object.get_accChildCount(&count), S_OK);
        ASSERT_EQ(count, node.accessibleChildCount());
        for (long i = 1; i <= count; ++i) {
            IDispatch* child = nullptr;
            ASSERT_EQ(object.get_accChild(numbered(i), &child), S_OK);
            read(*Object(static_cast<IAccessible*>(child)),
                 *node.accessibleChild(static_cast<int>(i - 1)));
        }
    }
    [[nodiscard]] const std::map<AccessibleRole, int>& seen() const { return m_seen; }

private:
    void readTexts(IAccessible& object, const Accessible& node) {
        const std::string id = core::storedText(node.accessibleId());
        BSTR text = nullptr;
        object.get_accName(m_self, &text);
        EXPECT_EQ(taken(text), node.accessibleName()) << id;
        object.get_accValue(m_self, &text);
        EXPECT_EQ(taken(text), node.accessibleValue()) << id;
        object.get_accDefaultAction(m_self, &text);
        EXPECT_EQ(taken(text), actionOf(node.accessibleRole(), node.accessibleState())) << id;
        VARIANT role{};
        EXPECT_EQ(object.get_accRole(m_self, &role), S_OK);
        EXPECT_EQ(role.lVal, kRoles.at(node.accessibleRole())) << id;
    }

    void readPlaceAndState(IAccessible& object, const Accessible& node) {
        long width = 0;
        long height = 0;
        long left = 0;
        long top = 0;
        EXPECT_EQ(object.accLocation(&left, &top, &width, &height, m_self), S_OK);
        POINT origin{};
        ClientToScreen(m_window, &origin);
        const auto expected = node.accessibleRect().translated(origin.x, origin.y);
        EXPECT_EQ(platform::Rect::at(left, top, width, height), expected);

        const platform::AccessibleState state = node.accessibleState();
        VARIANT bits{};
        EXPECT_EQ(object.get_accState(m_self, &bits), S_OK);
        const auto has = [&](long bit) { return (bits.lVal & bit) != 0; };
        EXPECT_EQ(has(STATE_SYSTEM_UNAVAILABLE), !state.enabled);
        EXPECT_EQ(has(STATE_SYSTEM_INVISIBLE), !state.visible);
        EXPECT_EQ(has(STATE_SYSTEM_FOCUSABLE), state.focusable);
        EXPECT_EQ(has(STATE_SYSTEM_FOCUSED), state.focused);
        EXPECT_EQ(has(STATE_SYSTEM_CHECKED), state.checkable && state.checked);
        EXPECT_EQ(has(STATE_SYSTEM_SELECTED), state.selected);
        EXPECT_EQ(has(STATE_SYSTEM_EXPANDED), state.expandable && state.expanded);
        EXPECT_EQ(has(STATE_SYSTEM_COLLAPSED), state.expandable && !state.expanded);
        EXPECT_EQ(has(STATE_SYSTEM_READONLY), state.readOnly);
    }

    HWND m_window;
    VARIANT m_self = numbered(CHILDID_SELF);
    std::map<AccessibleRole, int> m_seen;
};

TEST_F(EditorWindows, TellAScreenReaderOfEveryControl) {
    std::map<AccessibleRole, int> seen;
    visitAll([&](toolkit::WindowImplBase& window) {
        const HWND handle = handleOf(window);
        const Object client = clientOf(handle);
        ASSERT_NE(client, nullptr);
        const Accessible& root = *window.GetPaintManager().GetRoot();
        TreeReader reader(handle);
        reader.read(*client, root);
        for (const auto& [role, count] : reader.seen()) {
            seen[role] += count;
        }
    });
    for (const AccessibleRole role :
         {AccessibleRole::label, AccessibleRole::button, AccessibleRole::checkBox,
          AccessibleRole::radioButton, AccessibleRole::comboBox, AccessibleRole::edit,
          AccessibleRole::list, AccessibleRole::listItem, AccessibleRole::picture}) {
        EXPECT_GT(seen[role], 0) << static_cast<int>(role);
    }
}

TEST_F(EditorWindows, DoWhatAScreenReaderAsks) {
    const auto window = open<ui::BranchList>(u"Quorvel");
    const Object client = clientOf(handleOf(*window));
    ASSERT_NE(client, nullptr);
    const auto ask = [&](std::u16string_view name) {
        Accessible* control = window->FindControl<toolkit::CControlUI>(name);
        // As listeners are told of it: by its number in the window.
        return client->accDoDefaultAction(
            numbered(platform::win32::AccessibleNode::numberOf(*control)));
    };
    EXPECT_EQ(ask(u"ButtonAddBranch"), S_OK);
    EXPECT_EQ(scene().branchCount(), 1) << "the asker is answered first";
    test::pump();
    EXPECT_EQ(scene().branchCount(), 2);
    EXPECT_EQ(ask(u"CheckFirst"), S_OK);
    test::pump();
    EXPECT_TRUE(test::isChecked(test::WindowDriver(*window), u"CheckFirst"));
    auto* combo = window->FindControl<toolkit::CComboUI>(u"ComboBranchName");
    EXPECT_EQ(ask(u"ComboBranchName"), S_OK);
    test::pump();
    EXPECT_TRUE(combo->IsDropped());
    combo->CloseDrop();
    EXPECT_EQ(ask(u"EditBranchName"), DISP_E_MEMBERNOTFOUND);

    window->GetNative()->setEnabled(false); // as behind a question
    EXPECT_EQ(ask(u"ButtonAddBranch"), S_OK);
    test::pump();
    EXPECT_EQ(scene().branchCount(), 2);
    window->GetNative()->setEnabled(true);
}

} // namespace
