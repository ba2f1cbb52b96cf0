// Controls and windows that end inside their own handlers, and windows that cannot be made.
#include <algorithm>
#include <cstddef>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/CListUI.h"

using namespace toolkit_test;
using platform::Key;
using toolkit::CComboUI;
using toolkit::CListUI;

namespace {

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

class Lifetime : public ToolkitTest {
protected:
    /// A list of four rows, and a button.
    void openList() {
        std::string rows;
        for (int i = 0; i < 4; ++i) {
            rows += R"(<ListContainerElement height="30"><HorizontalLayout>
                <Combo name="Combo"><ListLabelElement text="a"/><ListLabelElement text="b"/>
                    <ListLabelElement text="c"/></Combo>
                <Edit name="Edit"/><Option name="Check"/><Button name="Go"/>
                </HorizontalLayout></ListContainerElement>)";
        }
        open("<List name=\"List\" pos=\"0,0,400,200\">" + rows +
             "</List><Button name=\"Out\" pos=\"0,250,80,25\"/>");
    }
    CListUI& list() { return get<CListUI>(u"List"); }
    template <class T = toolkit::CControlUI>
    T& inRow(int row, std::u16string_view name) {
        return driver().getIn<T>(*list().GetItemAt(row), name);
    }
    CComboUI& comboIn(int row) { return inRow<CComboUI>(row, u"Combo"); }
};

} // namespace

TEST_F(Lifetime, RowsMayGoInsideTheHandlersOfWhatTheyHold) {
    const auto clickIn = [&](int row, const char16_t* name) { driver().click(inRow(row, name)); };
    const struct {
        const char* note;
        const char16_t* focused; ///< of row 1
        std::function<void()> act;
    } cases[] = {
        {"click Go", u"Go", [&] { clickIn(1, u"Go"); }},
        {"selectchanged Check", u"Check", [&] { clickIn(1, u"Check"); }},
        {"itemselect Combo 2", u"Edit", [&] { driver().pick(comboIn(1), 2); }},
        {"itemselect Combo 1", u"Combo", [&] { driver().press(Key::down); }},
        {"itemselect List 1", u"Go", [&] { clickIn(1, u"Combo"); }},
        {"textchanged Edit", u"Edit", [&] { driver().type(u"x"); }},
        {"killfocus Edit", u"Edit", [&] { driver().click(u"Out"); }},
        {"killfocus Edit", u"Edit", [&] { comboIn(2).Drop(); }},
        {"killfocus Edit", u"Edit", [&] { clickIn(2, u"Combo"); }},
    };
    for (const auto& [note, focused, act] : cases) {
        SCOPED_TRACE(note);
        openList();
        int removed = 0;
        window().reactions[note] = [&](toolkit::CControlUI& sender) {
            list().RemoveAll();
            ++removed;
            EXPECT_NE(sender.GetName(), u"") << "the sender lives until its event is over";
            list().AddNew<toolkit::CListLabelElementUI>();
        };
        comboIn(1).SelectItem(0);
        window().GetPaintManager().SetFocus(&inRow(1, focused));
        act();
        EXPECT_EQ(removed, 1);
        EXPECT_EQ(list().GetCount(), 1);
        EXPECT_EQ(list().GetCurSel(), -1);
        driver().click(*list().GetItemAt(0));
        EXPECT_EQ(window().notes.back(), "itemselect List 0");
    }
}

TEST_F(Lifetime, AWindowMayCloseInsideEveryHandler) {
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"click Out", [&] { driver().click(u"Out"); }},
        {"itemselect Combo 1", [&] { driver().pick(comboIn(0), 1); }},
        {"itemselect List 2", [&] { driver().click(*list().GetItemAt(2)); }},
    };
    for (const auto& [note, act] : cases) {
        SCOPED_TRACE(note);
        openList();
        window().reactions[note] = [&](auto&) {
            window().Close(1);
            window().Close(1);
        };
        test::gui().loop().post(act);
        window().ShowModal();
        EXPECT_EQ(window().GetNative(), nullptr);
    }
}

TEST_F(Lifetime, TheCaptionDragsTheWindowExceptFromItsButtons) {
    open(R"(<Label pos="0,0,100,30" text="Title"/><Button name="Go" pos="200,5,80,20"/>
            <Control pos="0,30,400,200"/>)",
         "caption=\"0,0,0,30\"");
    const auto place = [&] { return driver().native().geometry(); };
    const platform::Rect before = place();
    const struct {
        platform::Point from;
        int moved;
    } cases[] = {{{50, 10}, 40}, {{390, 29}, 40}, {{210, 10}, 0}, {{50, 31}, 0}};
    int total = 0;
    for (const auto& c : cases) {
        // The window moves along: afterwards the pointer is where it took it.
        driver().drag({c.from, {c.from.x + 40, c.from.y}, c.from});
        total += c.moved;
        EXPECT_EQ(place().left - before.left, total) << c.from.x << "," << c.from.y;
    }
}

TEST_F(Lifetime, AWindowThatIsReleasedWithoutBeingClosedPostsNoQuit) {
    open(R"(<Edit name="Edit" pos="0,0,80,25"/>)");
    driver().click(u"Edit");
    m_window.reset();
    test::pump();
    test::gui().loop().post([] { test::gui().loop().postQuit(7); });
    EXPECT_EQ(test::gui().loop().run(), 7);
}

TEST_F(Lifetime, ALoopThatATaskStartsRunsTheTasksBehindIt) {
    platform::EventLoop& loop = test::gui().loop();
    std::string order;
    loop.post([&] {
        EXPECT_TRUE(test::pumpUntil([&] { return order == "bc"; }));
        order += "a";
    });
    loop.post([&] { order += "b"; });
    loop.post([&] { order += "c"; });
    test::pump();
    EXPECT_EQ(order, "bca");
}

TEST_F(Lifetime, AWindowThatIsMadeAgainBeginsAnew) {
    const std::string combo = R"(<Combo name="Combo" pos="0,30,80,20" enabled="true">
        <ListLabelElement text="one"/></Combo>)";
    open(R"(<Font size="30"/><Button name="Out" pos="0,0,80,25"/>)" + combo);
    driver().pick(u"Combo", 0);
    expectNotes("it takes input", {"itemselect Combo 0"});
    window().Close(1);
    test::gui().loop().run();
    support::writeBytes("UI/Test.xml", R"(<Window size="90,60"><Font size="40"/>
        <Button name="Out" pos="0,0,80,25"/>)" +
                                           combo + "</Window>");
    ASSERT_TRUE(window().Create(nullptr, u"Test", 0, 0));
    driver().show();
    driver().click(u"Out");
    driver().pick(u"Combo", 0);
    expectNotes("it takes input", {"click Out", "itemselect Combo 0"});
    EXPECT_EQ(window().GetPaintManager().look().GetFont(0),
              test::gui().fonts().open({"", 40, false, false}));
}

TEST_F(Lifetime, AWindowWhoseLastHandlerFailsHasEndedAllTheSame) {
    class Window final : public RecordingWindow {
    public:
        using RecordingWindow::RecordingWindow;
        bool HandleMessage(const platform::Event& event) override {
            RecordingWindow::HandleMessage(event);
            if (event.kind == platform::EventKind::destroyed) {
                throw std::bad_alloc();
            }
            return true;
        }
        void OnFinalMessage() override { hasEnded = true; }
        bool hasEnded = false;
    };
    support::writeBytes("UI/Test.xml", "<Window size=\"10,10\"/>");
    Window window(test::gui());
    ASSERT_TRUE(window.Create(nullptr, u"Test", 0, 0));
    window.Close();
    test::gui().loop().run();
    EXPECT_TRUE(window.hasEnded);
    EXPECT_EQ(window.GetNative(), nullptr);
}

TEST_F(Lifetime, ABadLayoutKeepsTheWindowFromOpeningAndIsNamedInTheLog) {
    std::string deep = "<Window size=\"10,10\">";
    for (int i = 0; i < 2000; ++i) {
        deep += "<Container>";
    }
    std::string wide = "<Window size=\"10,10\"><!-- <Label --><Label";
    for (int i = 0; i < 257; ++i) {
        wide += " a" + std::to_string(i) + "='>'";
    }
    const std::pair<const char*, std::string> layouts[] = {
        {"missing", ""},
        {"no XML", "this is no layout"},
        {"cut", "<Window size=\"10,10\"><Button"},
        {"another root", "<Frame size=\"10,10\"/>"},
        {"no size", "<Window/>"},
        {"an empty size", "<Window size=\"0,10\"/>"},
        {"a huge size", "<Window size=\"100000,10\"/>"},
        {"too deep", deep},
        {"too many attributes", wide + "/></Window>"},
    };
    for (const auto& [what, layout] : layouts) {
        SCOPED_TRACE(what);
        support::makeFolder("UI");
        if (!layout.empty()) {
            support::writeBytes("UI/Test.xml", layout);
        }
        RecordingWindow window(test::gui());
        const std::size_t before = m_log.errors().size();
        EXPECT_FALSE(window.Create(nullptr, u"Test", 0, 0));
        EXPECT_EQ(window.GetNative(), nullptr);
        ASSERT_EQ(m_log.errors().size(), before + 1);
        EXPECT_NE(m_log.errors().back().find("UI/Test.xml"), std::string::npos);
    }
}

TEST_F(Lifetime, WhatALayoutHasTooMuchOfIsLeftOut) {
    open(repeated("<Font size=\"30\"/>", 256) + "<Font size=\"40\"/>" +
         repeated("<Default class=\"Edit\" width=\"5\"/>", 1024) +
         "<Default class=\"Edit\" width=\"6\"/><Label name=\"A\" text=\"few\">" +
         repeated("<Range from=\"1,1\" text=\"some\"/>", 16) +
         "<Range from=\"1,1\" text=\"many\"/></Label><Edit name=\"B\"/>");
    EXPECT_EQ(m_log.errors().size(), 3U);
    EXPECT_EQ(window().GetPaintManager().look().GetFont(256), 0);
    EXPECT_EQ(driver().get(u"B").GetFixedWidth(), 5);
    EXPECT_EQ(driver().textOf(u"A"), u"some");
}

TEST_F(Lifetime, WhatFailsInAWindowLeavesTheProgramRunning) {
    class Failing final : public toolkit::CControlUI {
    public:
        void SetPos(const Rect& pos) override {
            CControlUI::SetPos(pos);
            if (std::exchange(fails, false)) {
                throw std::bad_alloc();
            }
        }
        bool fails = false;
    };
    open("");
    auto* control = root().AddNew<Failing>();
    driver().manager().UpdateLayout();
    control->fails = true;
    {
        const toolkit::CPaintManagerUI::Busy busy(&driver().manager());
        control->NeedUpdate();
    }
    EXPECT_FALSE(control->fails);
    control->SetPos({});
    driver().manager().UpdateLayout();
    EXPECT_FALSE(control->GetPos().isEmpty()) << "laid out again";
}

TEST_F(Lifetime, WhatALayoutGetsWrongIsSkippedAndTheRestStands) {
    open(R"(<Button name="Go" pos="0,0,80,25" colour="red" font="abc" pos2="1"/>
            <Gadget><Button name="Inside"/></Gadget>
            <Combo name="Combo"><Button name="Wrong"/><ListLabelElement text="x"/></Combo>
            <List name="List"><Label/></List>)");
    EXPECT_EQ(window().GetPaintManager().FindControl(u"Inside"), nullptr);
    EXPECT_EQ(get<CComboUI>(u"Combo").GetCount(), 1);
    EXPECT_EQ(list().GetCount(), 0);
    const auto errors = m_log.errors();
    for (const char* remark : {"Gadget", "colour", "pos2", "Button cannot stand here"}) {
        EXPECT_TRUE(std::any_of(errors.begin(), errors.end(), [&](const std::string& error) {
            return error.starts_with("Layout UI/Test.xml: ") && error.find(remark) < error.size();
        })) << remark;
    }
}
