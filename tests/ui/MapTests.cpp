// The map of the scene in the branch editor, by real clicks, drags and keys.
#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "tests/support/ClipMaker.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/input/MouseInput.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/map/SceneMap.h"

namespace {

using platform::Key;
using platform::Point;
using platform::Rect;

class MapTest : public test::BranchEditorTest {
protected:
    /// "Alarm" leads to "Lift" and to a branch that is not there; nothing leads to "Apart".
    void showScene(int width = 1600, int height = 900) {
        makeScene({"Alarm", "Lift", "Apart"});
        addAction(scene::Action::kKeypressAction, "L", "Lift");
        addAction(scene::Action::kDefaultAction, {}, "Roof");
        addAction(scene::Action::kDefaultAction, {}, "Alarm", 1);
        show();
        m_driver->native().setGeometry(Rect::at(0, 0, width, height));
        test::pump();
    }
    /// "A" leads to "B", that one to "C", and so on.
    void showChain(int count) {
        std::vector<std::string> names;
        for (int i = 0; i < count; ++i) {
            names.push_back(i < 26 ? std::string(1, static_cast<char>('A' + i))
                                   : "Branch " + std::to_string(i));
        }
        makeScene(names);
        for (int i = 0; i + 1 < count; ++i) {
            addAction(scene::Action::kDefaultAction, {}, session().branchName(i + 1), i);
        }
        show();
        m_driver->native().setGeometry(Rect::at(0, 0, 1600, 900));
        test::pump();
    }
    ui::SceneMap& map() { return m_driver->get<ui::SceneMap>(u"SceneMap"); }
    Point on(int branch) {
        const Rect place = map().placeOf(branch);
        return {(place.left + place.right) / 2, place.top + 10};
    }
    /// The row of an action, at 100 %.
    Point row(int branch, int action) {
        return {on(branch).x, map().placeOf(branch).top + 107 + 17 * action};
    }
    std::u16string shown() { return m_driver->textOf(u"EditBranchName"); }
    std::string target(int action) { return session().action(0, action).BranchID(); }

    static constexpr Point kGround{600, 110};
};

TEST_F(MapTest, ANarrowWindowShowsItInPlaceOfTheFields) {
    showScene(884, 672);
    EXPECT_FALSE(isVisible(u"SceneMap"));
    m_driver->click(u"CheckMap");
    EXPECT_TRUE(isVisible(u"SceneMap"));
    EXPECT_FALSE(isVisible(u"BranchList"));
    EXPECT_EQ(m_driver->focusName(), u"SceneMap");
    m_driver->press(Key::right);
    m_driver->press(Key::enter);
    EXPECT_TRUE(isVisible(u"BranchList"));
    EXPECT_FALSE(isVisible(u"SceneMap"));
    EXPECT_EQ(shown(), u"Lift");
    m_driver->press(Key::m, {.control = true});
    EXPECT_TRUE(isVisible(u"SceneMap"));
    EXPECT_TRUE(isEnabled(u"ButtonMapIn"));
    m_driver->press(Key::escape);
    EXPECT_TRUE(isVisible(u"BranchList"));
    m_driver->native().setGeometry(Rect::at(0, 0, 1600, 900));
    test::pump();
    EXPECT_TRUE(isVisible(u"SceneMap") && isVisible(u"BranchList"));
    EXPECT_TRUE(isEnabled(u"ButtonMapIn"));
}

TEST_F(MapTest, ShowsTheChoiceAndFollowsEdits) {
    showScene();
    EXPECT_EQ(m_driver->textOf(u"LabelMapZoom"), u"100 %");
    m_driver->click(on(2));
    EXPECT_EQ(shown(), u"Apart");
    m_driver->press(Key::home);
    EXPECT_EQ(shown(), u"Alarm");
    const Rect before = map().placeOf(0);
    EXPECT_EQ(before.height() - map().placeOf(2).height(), 2 * 17) << "a row for each action";
    m_driver->drag({kGround, {kGround.x + 30, kGround.y + 20}});
    EXPECT_EQ(map().placeOf(0).left, before.left + 30);
    EXPECT_EQ(map().placeOf(0).top, before.top + 20);
    m_driver->click(u"ButtonAddAction");
    EXPECT_EQ(map().placeOf(0).topLeft(), (Point{before.left + 30, before.top + 20}));
    EXPECT_EQ(map().placeOf(0).height(), before.height() + 17);
    m_driver->press(Key::z, {.control = true});
    EXPECT_EQ(map().placeOf(0).height(), before.height());

    const auto edgeOf = [this](int branch) {
        return m_driver->pixel({map().placeOf(branch).left, on(branch).y});
    };
    const std::uint32_t edge = edgeOf(1);
    EXPECT_NE(m_driver->pixel(map().placeOf(1).topLeft()), edge) << "round";
    m_driver->retype(u"EditFindBranch", u"a");
    EXPECT_EQ(edgeOf(1), edge);
    m_driver->press(Key::enter);
    EXPECT_EQ(shown(), u"Apart");
    EXPECT_EQ(map().chosen(), 2);
    m_driver->press(Key::enter);
    EXPECT_EQ(shown(), u"Alarm");
    m_driver->retype(u"EditFindBranch", u"lif");
    EXPECT_NE(edgeOf(1), edge) << "a ring";
    EXPECT_EQ(edgeOf(2), edge);
    session().moveBranch(1, 0);
    EXPECT_NE(edgeOf(0), edge) << "goes with its branch";
    session().moveBranch(0, 1);

    const Point fixed = on(1);
    m_driver->wheel(fixed, -2);
    EXPECT_EQ(m_driver->textOf(u"LabelMapZoom"), u"60 %");
    EXPECT_TRUE(map().placeOf(1).contains(fixed));
    m_driver->press(Key::digit0, {.control = true});
    EXPECT_EQ(m_driver->textOf(u"LabelMapZoom"), u"150 %");
}

TEST_F(MapTest, FitTakesTheLargestStepThatShowsAll) {
    showScene();
    const auto showsAll = [this] {
        bool shows = true;
        for (const int branch : {0, 1, 2}) {
            const Rect place = map().placeOf(branch);
            shows = shows && place.intersected(map().GetPos()) == place;
        }
        return shows;
    };
    std::set<int> steps;
    for (const int height : {900, 780, 720, 680}) {
        m_driver->native().setGeometry(Rect::at(0, 0, 1600, height));
        test::pump();
        m_driver->click(u"ButtonMapFit");
        EXPECT_TRUE(showsAll()) << height;
        steps.insert(map().zoomPercent());
        if (map().zoomPercent() < 150) {
            m_driver->click(u"ButtonMapIn");
            const int needed = map().placeOf(2).bottom - map().placeOf(0).top;
            EXPECT_GT(needed, map().GetPos().height() - 40) << height;
        }
    }
    EXPECT_GT(steps.size(), 1U);
}

TEST_F(MapTest, ZoomsByButtonsKeysAndAboutThePointer) {
    showScene();
    const auto zoomAfter = [this](const auto& act) {
        act();
        return map().zoomPercent();
    };
    EXPECT_EQ(zoomAfter([&] { m_driver->click(u"ButtonMapIn"); }), 125);
    EXPECT_EQ(zoomAfter([&] { m_driver->press(Key::plus, {.shift = true, .control = true}); }),
              150);
    EXPECT_EQ(zoomAfter([&] { m_driver->press(Key::plus, {.control = true}); }), 150);
    EXPECT_EQ(zoomAfter([&] { m_driver->click(u"ButtonMapOut"); }), 125);
    EXPECT_EQ(zoomAfter([&] { m_driver->press(Key::minus, {.control = true}); }), 100);
    EXPECT_EQ(m_driver->get(u"ButtonMapIn").GetToolTip(), u"Zoom in (Ctrl+Plus)");
    m_driver->press(Key::digit0, {.control = true});
    for (const int notches : {-1, -4, -5}) { // other forms too
        const Rect before = map().placeOf(1);
        const Point pointer{before.left + 100, before.top + 5};
        m_driver->wheel(pointer, notches);
        const Rect now = map().placeOf(1);
        EXPECT_EQ(now.top, before.top);
        EXPECT_NEAR((pointer.x - now.left) / static_cast<double>(now.width()),
                    100.0 / before.width(), 0.02);
        m_driver->press(Key::digit0, {.control = true});
    }
}

TEST_F(MapTest, ALargeSceneIsShownAsItWasUntilItIsLaidOutAnew) {
    constexpr int kCount = 500;
    makeScene(std::vector<std::string>(kCount, "Same"));
    show();
    m_driver->native().setGeometry(Rect::at(0, 0, 1600, 900));
    const auto isLaidOut = [this](int count) {
        return map().accessibleChildCount() == count && map().placeOf(count - 1).width() > 0;
    };
    ASSERT_TRUE(test::pumpUntil([&] { return isLaidOut(kCount); }));
    map().choose(kCount - 1);
    while (map().zoomPercent() < 100) {
        map().zoom(1);
    }
    session().removeBranch(kCount - 1);
    session().removeBranch(kCount - 2);
    (void)m_driver->native().picture().snapshot();
    EXPECT_EQ(map().accessibleChildCount(), kCount);
    EXPECT_TRUE(test::pumpUntil([&] { return isLaidOut(kCount - 2); }));
}

TEST_F(MapTest, ALargeSceneThatIsLaidOutAnewStillLeadsToTheBranchesOfItsNodes) {
    constexpr int kCount = 300;
    showChain(kCount);
    session().addAction(1);
    session().setTarget(1, 1, "Gone");
    const auto isLaidOut = [this](int count) {
        return map().accessibleChildCount() == count && map().placeOf(count - 1).width() > 0;
    };
    ASSERT_TRUE(test::pumpUntil([&] {
        return isLaidOut(kCount) && map().accessibleChild(1)->accessibleChildCount() == 2;
    }));
    session().removeBranch(0);
    ASSERT_TRUE(isLaidOut(kCount));
    EXPECT_EQ(map().chosen(), 1) << "as B is shown";
    EXPECT_EQ(map().accessibleChild(1)->accessibleName(), u"B, 2 actions, 2 errors")
        << "its own errors";
    map().accessibleChild(2)->accessiblePress();
    EXPECT_EQ(shown(), u"C");
    map().accessibleChild(0)->accessiblePress();
    EXPECT_EQ(shown(), u"C") << "A is gone";
    EXPECT_EQ(map().chosen(), 2);
    session().moveBranch(1, 0);
    ASSERT_TRUE(isLaidOut(kCount));
    EXPECT_EQ(map().chosen(), 2);
    ASSERT_TRUE(test::pumpUntil([&] { return isLaidOut(kCount - 1); }));
    EXPECT_EQ(map().chosen(), 0);
}

TEST_F(MapTest, AFewBranchesWithManyActionsAreALargeScene) {
    constexpr int kCount = 30;
    std::vector<std::string> names;
    for (int i = 0; i < kCount; ++i) {
        names.push_back("Branch " + std::to_string(i));
    }
    makeScene(names);
    for (int i = 0; i < 500; ++i) {
        addAction(scene::Action::kDefaultAction, {}, "Branch " + std::to_string(i * 7 % kCount),
                  i % kCount);
    }
    show();
    ASSERT_TRUE(test::pumpUntil([&] { return map().accessibleChildCount() == kCount; }));
    session().removeBranch(kCount - 1);
    EXPECT_EQ(map().accessibleChildCount(), kCount) << "is laid out on a thread";
    EXPECT_TRUE(test::pumpUntil([&] { return map().accessibleChildCount() == kCount - 1; }));
}

TEST_F(MapTest, ABrokenTargetHangsBelowItsNodeAndWhatIsNotReachedStandsApart) {
    showScene();
    const auto isDrawnIn = [this](const Rect& area) {
        const platform::Bitmap picture = m_driver->native().picture().snapshot();
        const std::uint32_t ground = picture.row(kGround.y)[kGround.x];
        for (int y = area.top; y < area.bottom; ++y) {
            if (std::any_of(picture.row(y) + area.left, picture.row(y) + area.right,
                            [&](std::uint32_t pixel) { return pixel != ground; })) {
                return true;
            }
        }
        return false;
    };
    const auto below = [this](int branch) {
        const Rect place = map().placeOf(branch);
        return Rect{place.left, place.bottom + 3, place.right, place.bottom + 30};
    };
    EXPECT_TRUE(isDrawnIn(below(0)));
    EXPECT_FALSE(isDrawnIn(below(1)));
    const Rect apart = map().placeOf(2);
    EXPECT_GT(apart.top, below(0).bottom);
    const Rect heading{apart.left, apart.top - 40, apart.right, apart.top - 5};
    EXPECT_TRUE(isDrawnIn(heading)) << "says what these are";
    session().setTarget(0, 1, "Apart");
    test::pump();
    EXPECT_FALSE(isDrawnIn(below(0)));
    EXPECT_EQ(map().placeOf(2).left, map().placeOf(1).left) << "reached as the other is";
}

TEST_F(MapTest, TheChosenNodeKeepsItsPlaceThroughEdits) {
    showScene();
    m_driver->click(on(1)); // the view is still fitted
    const Point before = map().placeOf(1).topLeft();
    const Rect first = map().placeOf(0);
    session().addAction(0);
    session().setTarget(0, 2, "Apart");
    EXPECT_EQ(map().placeOf(1).topLeft(), before);
    EXPECT_NE(map().placeOf(2).left, first.left) << "reached now";
}

TEST_F(MapTest, TheChosenNodeKeepsItsPlaceWhenBranchesChangePlaces) {
    showChain(4);
    m_driver->click(on(2));
    const Point before = map().placeOf(2).topLeft();
    m_driver->click(u"ButtonBranchUp");
    ASSERT_EQ(shown(), u"C");
    EXPECT_EQ(map().chosen(), 1);
    EXPECT_EQ(map().placeOf(1).topLeft(), before);
    m_driver->press(Key::z, {.control = true});
    EXPECT_EQ(map().chosen(), 2);
    EXPECT_EQ(map().placeOf(2).topLeft(), before);
}

TEST_F(MapTest, ANewBranchLeavesTheViewWhereItIs) {
    showChain(4);
    m_driver->click(u"ButtonMapIn");
    m_driver->drag({kGround, {kGround.x, kGround.y - 60}});
    const Point before = map().placeOf(0).topLeft();
    m_driver->click(u"ButtonAddBranch");
    EXPECT_EQ(map().zoomPercent(), 125);
    EXPECT_EQ(map().placeOf(0).topLeft(), before);
    EXPECT_EQ(map().chosen(), 4);
    m_driver->press(Key::z, {.control = true});
    m_driver->click(u"ButtonDuplicateBranch");
    EXPECT_EQ(map().zoomPercent(), 125);
    EXPECT_EQ(map().placeOf(0).topLeft(), before);
    m_driver->click(u"ButtonRemoveBranch");
    m_driver->press(Key::z, {.control = true});
    EXPECT_EQ(map().zoomPercent(), 125);
}

TEST_F(MapTest, AFittedViewTakesInANewBranch) {
    showChain(4);
    for (int i = 0; i < 4; ++i) {
        m_driver->click(u"ButtonAddBranch");
        const Rect place = map().placeOf(4 + i);
        EXPECT_EQ(place.intersected(map().GetPos()), place);
        EXPECT_EQ(map().placeOf(0).intersected(map().GetPos()), map().placeOf(0));
    }
}

TEST_F(MapTest, AChainIsOneNodeWhereOnlyNamesAreShown) {
    makeScene({"Alarm", "Lift", "Stairs", "Yard", "Roof"});
    for (int branch = 0; branch < 3; ++branch) {
        addAction(scene::Action::kDefaultAction, {}, session().branchName(branch + 1), branch);
    }
    addAction(scene::Action::kDefaultAction, {}, "Roof", 3);
    addAction(scene::Action::kKeypressAction, "A", "Alarm", 3);
    show();
    m_driver->native().setGeometry(Rect::at(0, 0, 1600, 900));
    test::pump();
    EXPECT_NE(map().placeOf(0), map().placeOf(3));
    m_driver->wheel(on(0), -7);
    ASSERT_EQ(m_driver->textOf(u"LabelMapZoom"), u"35 %");
    EXPECT_EQ(map().placeOf(0), map().placeOf(3));
    EXPECT_EQ(map().toolTipAt(on(2)), u"Alarm, Lift, Stairs, Yard");
    m_driver->click(on(4));
    m_driver->press(Key::left);
    m_driver->press(Key::left);
    EXPECT_EQ(shown(), u"Stairs") << "the arrows go along it";
    m_driver->click(on(0));
    EXPECT_EQ(shown(), u"Stairs") << "the chosen one stands for all";
    m_driver->press(Key::right);
    m_driver->press(Key::right);
    EXPECT_EQ(shown(), u"Roof");
    m_driver->click(on(0));
    EXPECT_EQ(shown(), u"Alarm") << "its first";
}

TEST_F(MapTest, AnEmptyMapSaysWhatWillBeHere) {
    makeScene({});
    show();
    m_driver->native().setGeometry(Rect::at(0, 0, 1600, 900));
    test::pump();
    const Rect pos = map().GetPos();
    const auto textRows = [&](int from, int to) {
        const auto picture = m_driver->picture();
        int rows = 0;
        for (int y = pos.top + from; y < pos.top + to; ++y) {
            const std::uint32_t ground = picture.at(pos.left + 2, y);
            bool hasText = false;
            for (int x = pos.left + 2; x < pos.right - 2; ++x) {
                hasText = hasText || picture.at(x, y) != ground;
            }
            rows += hasText ? 1 : 0;
        }
        return rows;
    };
    const int top = pos.height() * 2 / 5;
    const int heading = textRows(top, top + 22);
    EXPECT_GT(heading, 0);
    EXPECT_GT(textRows(top + 22, pos.height() - 2), 0) << "and a line below it";
}

TEST_F(MapTest, ADragFromARowLeadsTheActionElsewhere) {
    showScene();
    const std::string before = session().savedForm();
    m_driver->drag({row(0, 1), {row(0, 1).x + 60, row(0, 1).y + 60}, on(2)});
    EXPECT_EQ(target(1), "Apart");
    EXPECT_EQ(target(0), "Lift");
    EXPECT_EQ(shown(), u"Alarm");
    m_driver->drag({row(0, 0), kGround});
    EXPECT_EQ(session().branchNames().size(), 4U);
    EXPECT_EQ(target(0), session().branchName(3));
    EXPECT_TRUE(target(0).starts_with("New Branch "));
    m_driver->press(Key::z, {.control = true});
    EXPECT_EQ(session().branchNames().size(), 3U);
    EXPECT_EQ(target(0), "Lift");
    m_driver->press(Key::z, {.control = true});
    EXPECT_EQ(session().savedForm(), before);

    const auto revision = session().revision();
    m_driver->drag({row(0, 0), {1200, 500}}); // out of the map
    m_driver->drag({on(0), kGround});         // not from a row
    m_driver->send(platform::EventKind::mouseDown, row(0, 0));
    m_driver->send(platform::EventKind::mouseMove, on(2));
    m_driver->press(Key::escape);
    m_driver->send(platform::EventKind::mouseUp, on(2));
    EXPECT_EQ(session().revision(), revision);
}

TEST_F(MapTest, IsATreeForScreenReaders) {
    showScene();
    EXPECT_EQ(map().accessibleName(), u"Scene map");
    ASSERT_EQ(map().accessibleChildCount(), 3);
    platform::Accessible& lift = *map().accessibleChild(1);
    const platform::Accessible& alarm = *map().accessibleChild(0);
    EXPECT_EQ(alarm.accessibleName(), u"Alarm, first branch, 2 actions, 2 errors");
    ASSERT_EQ(alarm.accessibleChildCount(), 2);
    const platform::Accessible& key = *alarm.accessibleChild(0);
    EXPECT_EQ(key.accessibleName(), u"Key L, to Lift");
    EXPECT_EQ(alarm.accessibleChild(1)->accessibleName(), u"Default, to Roof, missing");
    EXPECT_TRUE(key.accessibleRect().contains(row(0, 0)));
    EXPECT_EQ(key.accessibleParent(), &alarm);
    EXPECT_EQ(map().accessibleChildAt(on(1)), &lift);
    EXPECT_EQ(map().accessibleIndexOf(lift), 1);
    lift.accessiblePress();
    EXPECT_EQ(shown(), u"Lift");
    EXPECT_TRUE(lift.accessibleState().selected && !alarm.accessibleState().selected);
    alarm.accessibleChild(0)->accessiblePress();
    EXPECT_EQ(shown(), u"Alarm") << "whose action it is";
    const auto life = lift.accessibleLife();
    session().setImmediate(1, 0, true);
    EXPECT_TRUE(life.expired()) << "nodes of the scene before";
    EXPECT_EQ(map().accessibleChild(1)->accessibleChild(0)->accessibleName(),
              u"Default, to Alarm, immediate");
}

TEST_F(MapTest, APressThatStaysInItsRowLeadsNothingElsewhere) {
    showScene();
    const auto revision = session().revision();
    m_driver->drag({row(0, 0), {row(0, 0).x + 6, row(0, 0).y + 2}});
    EXPECT_EQ(session().revision(), revision);
    m_driver->drag({row(0, 0), {row(0, 0).x + 60, row(0, 0).y}, row(0, 1)});
    EXPECT_EQ(target(0), "Alarm") << "another row is its branch";
}

TEST_F(MapTest, ThePointerTellsWhatAPressWouldDo) {
    using platform::PointerShape;
    showScene();
    const auto shapeAt = [this](Point at) {
        m_driver->hover(at);
        return m_driver->manager().mouse().shape();
    };
    EXPECT_EQ(shapeAt(on(1)), PointerShape::hand);
    EXPECT_EQ(shapeAt(row(0, 1)), PointerShape::link);
    EXPECT_EQ(shapeAt(kGround), PointerShape::arrow);
    m_driver->send(platform::EventKind::mouseDown, kGround);
    EXPECT_EQ(shapeAt({kGround.x - 30, kGround.y}), PointerShape::move);
    m_driver->send(platform::EventKind::mouseUp, {kGround.x - 30, kGround.y});
    m_driver->send(platform::EventKind::mouseDown, row(0, 1));
    EXPECT_EQ(shapeAt(kGround), PointerShape::link);
    m_driver->press(Key::escape);
    m_driver->send(platform::EventKind::mouseUp, kGround);
}

TEST_F(MapTest, TheContextMenuIsAboutTheNodeItIsOpenedOn) {
    showScene();
    for (const auto kind : {platform::EventKind::mouseDown, platform::EventKind::mouseUp}) {
        test::input().mouse(m_driver->native(), kind, on(1), platform::MouseButton::right);
    }
    test::pump();
    EXPECT_EQ(shown(), u"Lift");
    m_driver->type(u"d");
    m_driver->press(Key::enter);
    EXPECT_EQ(session().branchNames(),
              (std::vector<std::string>{"Alarm", "Lift", "Lift 2", "Apart"}));
}

TEST_F(MapTest, TheArrowKeysGoToTheNodesAboveAndBelow) {
    showScene();
    m_driver->click(on(0));
    m_driver->press(Key::down);
    EXPECT_EQ(shown(), u"Apart");
    m_driver->press(Key::up);
    EXPECT_EQ(shown(), u"Alarm");
}

TEST_F(MapTest, ShowsWhatIsFoundInFiles) {
    support::writeBytes("Scenes/Fire/a.ogv", support::makeClip({.frames = 2}));
    makeScene({"Alarm"}, {"a.ogv"});
    show();
    m_driver->native().setGeometry(Rect::at(0, 0, 1600, 900));
    ASSERT_TRUE(test::pumpUntil([&] { return m_driver->textOf(u"LabelFindings") == u"1"; }));
    std::u16string painted;
    map().setErrors([&](int) {
        painted = m_driver->textOf(u"CheckErrors");
        return 0;
    });
    session().setVideo(0, "gone.ogv");
    ASSERT_TRUE(test::pumpUntil([&] { return m_driver->textOf(u"CheckErrors") == u"1"; }));
    EXPECT_TRUE(test::pumpUntil([&] { return painted == u"1"; }));
    map().setErrors({});
}

TEST_F(MapTest, ADoubleClickPlaysFromTheNodeThatItsFirstPressMet) {
    showChain(8);
    while (map().zoomPercent() < 150) {
        m_driver->press(Key::plus, {.control = true});
    }
    const Rect pos = map().GetPos();
    const Point ground{pos.left + 300, pos.bottom - 40};
    m_driver->drag({ground, {ground.x + pos.right - 60 - map().placeOf(2).left, ground.y}});
    const Rect before = map().placeOf(2);
    ASSERT_EQ(before.left, pos.right - 60);
    m_driver->click(Point{pos.right - 5, before.top + 10});
    EXPECT_LT(map().placeOf(2).right, pos.right) << "the whole node is shown";
    m_driver->drag({ground, {ground.x + before.left - map().placeOf(2).left, ground.y}});
    m_driver->click(on(1));
    m_driver->doubleClick({pos.right - 5, before.top + 10});
    ASSERT_TRUE(isVisible(u"VideoPreview"));
    EXPECT_EQ(m_driver->get(u"VideoPreview").accessibleName(), u"Preview of C");
}

TEST_F(MapTest, ADoubleClickPlaysFromTheBranch) {
    showScene();
    m_driver->doubleClick(on(1));
    EXPECT_TRUE(isVisible(u"VideoPreview"));
    EXPECT_EQ(m_driver->get(u"VideoPreview").accessibleName(), u"Preview of Lift");
    EXPECT_EQ(shown(), u"Lift");
}

} // namespace
