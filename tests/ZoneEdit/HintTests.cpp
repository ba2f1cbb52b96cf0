// What the caption's hint and the pointer say of the tools, and why a click did nothing.
#include <cstddef>
#include <string>

#include "ZoneEdit/WindowTimer.h"
#include "platform/Event.h"
#include "tests/ZoneEdit/GestureFixture.h"

namespace {

using platform::EventKind;
using platform::Key;
using platform::Modifiers;
using platform::Point;
using test::isChecked;
using test::kBoth;
using test::kControl;
using test::kShift;

class ZoneEditHints : public test::ZoneGestureTest {};

TEST_F(ZoneEditHints, HintAndPointerTellWhatADragDoesWhicheverKeysFollow) {
    using platform::PointerShape;
    show(5, 1);
    drawSquare();
    const struct {
        const char16_t* tool;
        Point press;
        Modifiers held;
        Modifiers then;
        const char16_t* hint;
        PointerShape shape;
    } cases[] = {
        {u"OptionMovePoint",
         {640, 340},
         kControl,
         {},
         u"Drag: scale about the centre",
         PointerShape::scale},
        {u"OptionMovePoint",
         {640, 340},
         kControl,
         kBoth,
         u"Drag: scale about the centre",
         PointerShape::scale},
        {u"OptionMovePoint",
         {640, 340},
         kBoth,
         kControl,
         u"Drag: rotate about the centre",
         PointerShape::rotate},
        {u"OptionMovePoint",
         {580, 300},
         {},
         kControl,
         u"Ctrl: scale, Ctrl + Shift: rotate",
         PointerShape::move},
        {u"OptionMovePoint",
         {580, 300},
         kShift,
         kBoth,
         u"Straight across or down",
         PointerShape::move},
        {u"OptionAddMultiPoint",
         {640, 340},
         kControl,
         {},
         u"Drag: a rectangle",
         PointerShape::rectangle},
        {u"OptionAddMultiPoint",
         {640, 340},
         {},
         kControl,
         u"Click: a point. Ctrl: rectangle",
         PointerShape::addPoint},
    };
    for (const auto& c : cases) {
        m_driver->click(c.tool);
        mouse(EventKind::mouseMove, on(c.press.x, c.press.y), c.held);
        mouse(EventKind::mouseDown, on(c.press.x, c.press.y), c.held);
        mouse(EventKind::mouseMove, on(c.press.x + 20, c.press.y), c.held);
        key(EventKind::keyDown, Key::other, c.then);
        mouse(EventKind::mouseMove, on(c.press.x + 40, c.press.y), c.then);
        EXPECT_EQ(hint(), c.hint);
        EXPECT_EQ(m_driver->manager().mouse().shape(), c.shape) << &c - cases;
        mouse(EventKind::mouseUp, on(c.press.x + 40, c.press.y), {});
        EXPECT_TRUE(hint().starts_with(u"Ctrl: scale") || hint().starts_with(u"Click: a point."))
            << "at rest";
        m_driver->click(u"ButtonUndo");
    }
}

TEST_F(ZoneEditHints, ANarrowWindowShowsTheHintInPlaceOfTheVideoWhileItIsNew) {
    show(5, 1);
    EXPECT_TRUE(isVisible(u"LabelVideo"));
    resize({1100, 756});
    const auto isInPlace = [this] {
        const platform::Rect& hint = m_driver->get(u"LabelHint").GetPos();
        EXPECT_EQ(isVisible(u"LabelVideo"), hint.width() <= 1);
        return hint.width() > 200;
    };
    EXPECT_FALSE(isInPlace());
    key(EventKind::keyDown, Key::other, kControl);
    EXPECT_TRUE(isInPlace());
    key(EventKind::keyUp, Key::other, {});
    EXPECT_FALSE(isInPlace());
    const auto timeIsUp = [this] {
        platform::Event event;
        event.kind = EventKind::timer;
        event.timerId = zoneedit::kHintTimer;
        (void)m_window->HandleMessage(event);
    };
    m_driver->click(u"OptionDeletePoint");
    EXPECT_TRUE(isInPlace());
    timeIsUp();
    EXPECT_FALSE(isInPlace());
    m_driver->click(on(600, 300));
    EXPECT_TRUE(isInPlace());
    EXPECT_EQ(hint(), u"There is no point here");
    resize({1280, 756});
    EXPECT_TRUE(isVisible(u"LabelVideo"));
}

TEST_F(ZoneEditHints, HintsTellWhyNoPointWasAdded) {
    show(5, 1);
    const auto expectNothingAdded = [this](std::size_t count) {
        EXPECT_EQ(hint(), u"Choose a point first, with Move");
        EXPECT_EQ(points(0, 0).size(), count);
    };
    m_driver->click(u"OptionAddMultiPoint");
    for (const Point at : {on(500, 300), on(600, 300), on(550, 400)}) {
        m_driver->click(at);
    }
    press(Key::digit4);
    m_driver->click(on(550, 400)); // the chosen one
    press(Key::digit3);
    m_driver->click(on(550, 400));
    expectNothingAdded(2);
    m_driver->click(u"ButtonUndo");

    press(Key::digit1);
    m_driver->drag({on(550, 333), on(560, 333)}); // by its centre
    press(Key::digit2);
    m_driver->click(on(700, 300));
    expectNothingAdded(3);
    EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    m_driver->click(on(560, 333)); // its centre
    press(Key::digit3);
    mouse(EventKind::mouseMove, on(700, 300), kControl);
    EXPECT_EQ(m_driver->manager().mouse().shape(), platform::PointerShape::notAllowed);
    drag({on(700, 300), on(800, 400)}, kControl);
    expectNothingAdded(3);
}

TEST_F(ZoneEditHints, WhyAClickDidNothingIsSaidOnTheBarWhereTheCaptionSaysMore) {
    show(5, 1);
    widen();
    const auto expectReason = [this](bool isOnBar) {
        m_driver->click(u"OptionDeletePoint");
        m_driver->click(on(600, 300));
        EXPECT_EQ(isVisible(u"PanelNotice"), isOnBar);
        EXPECT_EQ(isVisible(u"LabelHint"), !isOnBar);
        EXPECT_EQ(m_driver->textOf(isOnBar ? u"LabelNotice" : u"LabelHint"),
                  u"There is no point here");
        platform::Event event;
        event.kind = EventKind::timer;
        event.timerId = zoneedit::kNoticeTimer;
        (void)m_window->HandleMessage(event);
        EXPECT_FALSE(isVisible(u"PanelNotice"));
    };
    expectReason(false);
    m_driver->click(u"ButtonSave");
    expectReason(true);
    EXPECT_EQ(m_driver->textOf(u"LabelNote").substr(0, 8), u"Saved at");
    m_driver->enter(u"EditZone", u""); // a hint about names
    expectReason(true);
    m_driver->enter(u"EditZone", u"Door");
    expectReason(false);
}

TEST_F(ZoneEditHints, EnterAndEscEndAddManyAndHintsTellWhyAClickDidNothing) {
    show(5);
    m_driver->click(on(600, 300));
    EXPECT_EQ(hint(), u"Add a zone first: press +");
    addZone();
    m_driver->press(Key::digit3);
    mouse(EventKind::mouseMove, on(600, 300), kControl);
    EXPECT_EQ(m_driver->manager().mouse().shape(), platform::PointerShape::rectangle);
    for (const Key end : {Key::enter, Key::escape}) {
        m_driver->click(u"OptionAddMultiPoint");
        EXPECT_EQ(hint(), u"Click: a point. Ctrl: rectangle");
        m_driver->manager().SetFocus(nullptr);
        m_driver->press(end);
        EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    }
    m_driver->click(u"OptionDeletePoint");
    EXPECT_EQ(hint(), u"Click a point to delete it");
    m_driver->click(on(600, 300));
    EXPECT_EQ(hint(), u"There is no point here");
    m_driver->click(u"OptionAddPoint");
    EXPECT_EQ(hint(), u"Click: a point behind the chosen one");
}

} // namespace
