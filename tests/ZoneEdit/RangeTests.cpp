// Filling between keys, and what is done to many frames at once, by real events.
#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <ranges>
#include <string>
#include <string_view>
#include <vector>

#include "ZoneEdit/CopiedShape.h"
#include "core/EditorSettings.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/MenuPopup.h"

namespace {

using platform::Key;
using platform::Modifiers;
using platform::Point;
using test::isChecked;
using Points = std::vector<Point>;

constexpr Modifiers kControl{.control = true};
constexpr Modifiers kShift{.shift = true};

const Points kTriangle{{100, 100}, {300, 100}, {200, 400}};

class ZoneEditRange : public test::ZoneEditTest {
protected:
    ZoneEditRange() {
        zoneedit::copiedShape().reset();
        show(21, 1);
        drawTriangle();
        m_driver->manager().SetFocus(nullptr);
    }

    void press(Key key, Modifiers held = {}) {
        m_driver->manager().SetFocus(nullptr);
        m_driver->press(key, held);
    }
    /// Drags the centre of the triangle on a frame, where `dx` others have moved it already.
    void shift(int frame, int from, int dx) {
        goTo(frame);
        m_driver->drag({at(200 + from, 200), at(200 + dx, 200)});
    }
    int xAt(int frame) { return points(0, frame).at(0).x - 100; }
    /// Each frame's, "o" where the triangle was drawn.
    std::string allPlaces() {
        std::string all;
        for (int frame = 0; frame < 21; ++frame) {
            all += xAt(frame) == 0 ? 'o' : 'X';
        }
        return all;
    }
    std::string allFlags() {
        std::string all;
        for (int frame = 0; frame < 21; ++frame) {
            all += zones().isActive(0, frame) ? 'A' : '-';
        }
        return all;
    }
    void mark(int begin, int end) {
        goTo(begin);
        press(Key::b);
        goTo(end);
        press(Key::e);
    }
    /// Clicks a button, and then a row of the menu that it opens, if any.
    void choose(std::u16string_view button, const char16_t* row) {
        m_driver->click(button);
        if (row != nullptr) {
            const auto rows = test::menuOf(*m_driver);
            const auto place = std::ranges::find(rows, row);
            ASSERT_NE(place, rows.end());
            m_driver->click(*toolkit::MenuPopup::of(m_driver->manager())
                                 .menu()
                                 ->GetItemAt(static_cast<int>(place - rows.begin())));
        }
    }
    std::string lastStep() {
        const zone::StepLabel* label = m_window->session().undoLabel();
        return label != nullptr ? zone::stepName(label->name) : std::string();
    }
    std::size_t steps() { return m_window->session().history().position(); }
    std::u16string notice() {
        return isVisible(u"PanelNotice") ? m_driver->textOf(u"LabelNotice") : std::u16string();
    }
};

TEST_F(ZoneEditRange, InterpolateFillsTheGapAtTheFrameInOneStepAndSaysWhatItNeeds) {
    press(Key::i);
    EXPECT_EQ(notice(), u"Interpolate needs a key at both ends of the range.");
    shift(10, 0, 100); // carried forward
    const std::size_t before = steps();
    goTo(4);
    press(Key::i);
    EXPECT_EQ(xAt(5), 50);
    EXPECT_EQ(xAt(9), 90);
    EXPECT_EQ(xAt(20), 100);
    EXPECT_EQ(steps(), before + 1);
    EXPECT_EQ(lastStep(), "interpolate");
    m_driver->press(Key::z, kControl);
    EXPECT_EQ(xAt(5), 0);

    goTo(10); // the frames before have no point there
    m_driver->click(u"OptionDeletePoint");
    m_driver->click(at(400, 100));
    goTo(4);
    press(Key::i);
    EXPECT_EQ(notice(), u"The keys have 3 and 2 points: give them the same number first.");
    m_driver->click(u"ButtonMatchPoints");
    EXPECT_EQ(notice(), u"Point counts made equal: 3.");
    EXPECT_EQ(points(0, 10).size(), 3U);
    EXPECT_EQ(lastStep(), "match points");
    press(Key::i);
    EXPECT_EQ(lastStep(), "interpolate");
}

TEST_F(ZoneEditRange, TheOfferToMatchPointsHelpsWhereverUnequalKeysStoodInTheWay) {
    m_driver->click(u"OptionProgressChanges"); // off
    const auto cut = [this](int frame) {       // a point less, on that frame alone
        goTo(frame);
        m_driver->click(u"OptionMovePoint");
        m_driver->drag({at(300, 100), at(300 + frame, 120)});
        m_driver->click(u"OptionDeletePoint");
        m_driver->click(at(300 + frame, 120));
        EXPECT_EQ(points(0, frame).size(), 2U);
    };
    const auto isRefused = [this] {
        return notice() == u"The keys have 3 and 2 points: give them the same number first.";
    };
    const auto expectAllAreMatched = [&](std::initializer_list<int> keys) {
        ASSERT_TRUE(isRefused()) << core::wideToNarrow(notice());
        goTo(1); // it is about the keys, wherever the editor is by now
        m_driver->click(u"ButtonMatchPoints");
        EXPECT_EQ(notice(), u"Point counts made equal: 3.");
        for (const int key : keys) {
            EXPECT_EQ(points(0, key).size(), 3U) << key;
        }
    };
    shift(20, 0, 40);
    cut(10); // between the ends of the range, which are alike
    const std::size_t before = steps();
    mark(0, 20);
    m_driver->click(u"ButtonInterpolate");
    expectAllAreMatched({0, 10, 20});
    EXPECT_EQ(steps(), before + 1);
    m_driver->click(u"ButtonInterpolate");
    EXPECT_EQ(lastStep(), "interpolate");
    while (steps() > before) {
        m_driver->press(Key::z, kControl);
    }
    mark(8, 9); // the keys beside it
    choose(u"ButtonInterpolateMenu", u"Delete the Keys of the Range");
    expectAllAreMatched({0, 10, 20});
    m_driver->press(Key::z, kControl);
    choose(u"ButtonMenu", u"Interpolate All Gaps");
    expectAllAreMatched({0, 10, 20});
}

TEST_F(ZoneEditRange, WhatChangesNothingIsNoStep) {
    shift(10, 0, 100);
    goTo(4);
    press(Key::i);
    const std::size_t before = steps();
    press(Key::i);
    choose(u"ButtonMenu", u"Interpolate All Gaps");
    mark(5, 14);
    m_driver->click(u"ButtonRangeActive");
    EXPECT_EQ(steps(), before);
    m_driver->click(u"ButtonRangeInactive");
    EXPECT_EQ(steps(), before + 1);
    choose(u"ButtonApplyShape", u"To the range");
    choose(u"ButtonApplyShape", u"To the range");
    EXPECT_EQ(steps(), before + 2);
}

TEST_F(ZoneEditRange, ShapesAndFlagsGoToTheRangeFromHereOnAndUpToHere) {
    shift(10, 0, 100);
    goTo(8);
    m_driver->click(u"OptionToggleActive");
    mark(5, 14);
    const std::string places = "ooooooooooXXXXXXXXXXX";
    const std::string flags = "AAAAAAAA-------------";
    const struct {
        const char16_t* button;
        const char16_t* row; ///< of its menu
        int frame;
        std::string places;
        std::string flags;
    } cases[] = {
        {u"ButtonRangeInactive", nullptr, 0, places, "AAAAA----------------"},
        {u"ButtonApplyShape", u"To the range", 10, "oooooXXXXXXXXXXXXXXXX", flags},
        {u"ButtonApplyShape", u"To the range", 2, "oooooooooooooooXXXXXX", flags},
        {u"ButtonApplyShape", u"From here on", 3, "ooooooooooooooooooooo", flags},
        {u"ButtonApplyShape", u"Up to here", 12, "XXXXXXXXXXXXXXXXXXXXX", flags},
        {u"ButtonApplyShape", u"Active from B to E only", 0, places, "-----AAAAAAAAAA------"},
        {u"ButtonApplyShape", u"Active from here on", 12, places, "AAAAAAAA----AAAAAAAAA"},
        {u"ButtonApplyShape", u"Active up to here", 12, places, "AAAAAAAAAAAAA--------"},
        {u"ButtonApplyShape", u"Not active from here on", 3, places, "AAA------------------"},
        {u"ButtonApplyShape", u"Not active up to here", 3, places, "----AAAA-------------"},
        {u"ButtonRangeActive", nullptr, 0, places, "AAAAAAAAAAAAAAA------"},
    };
    for (const auto& item : cases) {
        const std::size_t number = static_cast<std::size_t>(&item - cases);
        goTo(item.frame);
        const std::size_t before = steps();
        choose(item.button, item.row);
        EXPECT_EQ(allPlaces(), item.places) << number;
        EXPECT_EQ(allFlags(), item.flags) << number;
        EXPECT_EQ(steps(), before + 1) << number;
        m_driver->press(Key::z, kControl);
        EXPECT_EQ(allPlaces() + allFlags(), places + flags) << number;
    }
}

TEST_F(ZoneEditRange, GapsAreFilledKeysDeletedAndTheRangeIsDraggedInOneStepEach) {
    shift(10, 0, 100);
    shift(20, 100, 0); // keys on 0, 10 and 20
    const auto xs = [this] {
        std::vector<int> all;
        for (const int frame : {0, 4, 5, 10, 14, 15, 20}) {
            all.push_back(xAt(frame));
        }
        return all;
    };
    const std::vector<int> filled{0, 40, 50, 100, 60, 50, 0};
    const std::size_t before = steps();
    goTo(3);
    choose(u"ButtonMenu", u"Interpolate All Gaps");
    EXPECT_EQ(xs(), filled);
    EXPECT_EQ(lastStep(), "interpolate");
    const struct {
        int begin;
        int end;
        std::vector<int> left;
    } cuts[] = {{8, 12, {0, 0, 0, 0, 0, 0, 0}},          // blended from 0 to 20
                {10, 20, {0, 0, 0, 0, 0, 0, 0}},         // nothing behind: the one before holds
                {0, 3, {100, 100, 100, 100, 60, 50, 0}}, // nothing in front
                {4, 5, {0, 40, 50, 100, 60, 50, 0}}};    // no key in it: nothing is blended anew
    for (const auto& cut : cuts) {
        mark(cut.begin, cut.end);
        choose(u"ButtonInterpolateMenu", u"Delete the Keys of the Range");
        EXPECT_EQ(xs(), cut.left) << cut.begin;
        while (steps() > before + 1) {
            m_driver->press(Key::z, kControl);
        }
        EXPECT_EQ(xs(), filled) << cut.begin;
    }
    mark(5, 14);
    goTo(10);
    m_driver->drag({at(300, 200), at(310, 220), at(340, 220)});
    EXPECT_EQ(xs(), (std::vector<int>{0, 40, 90, 140, 100, 50, 0}));
    EXPECT_EQ(points(0, 14)[0].y, 120);
    EXPECT_EQ(steps(), before + 2);
    goTo(2); // beside the range: as ever
    m_driver->drag({at(220, 200), at(230, 200)});
    EXPECT_EQ(xs(), (std::vector<int>{0, 50, 100, 150, 110, 60, 10}));
}

TEST_F(ZoneEditRange, TheWayOfInterpolatingIsRememberedByTheNextStart) {
    for (const bool isFirst : {true, false}) {
        m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
        show(21, 1);
        drawTriangle();
        shift(10, 0, 100);
        shift(20, 100, 120);
        mark(0, 20); // a gap alone has no other keys to go through
        press(Key::i);
        EXPECT_EQ(xAt(5) == 50, isFirst) << xAt(5);
        if (isFirst) {
            choose(u"ButtonInterpolateMenu", u"Smooth");
            EXPECT_EQ(core::EditorSettings("Editor.ini").getString("interpolation", ""), "smooth");
            press(Key::i);
        }
        EXPECT_GT(xAt(5), 52) << "slower behind the key, so faster before";
    }
}

TEST_F(ZoneEditRange, WhileFillingADragBlendsUpToTheKeysBesideItAndIsCarriedBehindTheLast) {
    press(Key::i, kShift);
    EXPECT_TRUE(m_services.editorSettings == nullptr ||
                m_services.editorSettings->getBool("fillBetweenKeys", false));
    shift(10, 0, 100);
    EXPECT_EQ(xAt(5), 50);
    EXPECT_EQ(xAt(20), 100) << "carried behind the last key";
    shift(20, 100, 0);
    EXPECT_EQ(xAt(15), 50);
    const std::size_t before = steps();
    goTo(5);
    m_driver->drag({at(250, 200), at(300, 210), at(270, 200)});
    EXPECT_EQ(steps(), before + 1);
    EXPECT_EQ(lastStep(), "fill");
    EXPECT_EQ(xAt(5), 70);
    EXPECT_EQ(xAt(1), 14);
    EXPECT_EQ(xAt(8), 88);
    EXPECT_EQ(xAt(15), 50) << "beyond the key";
    EXPECT_EQ(points(0, 10)[0], (Point{200, 100}));
    // A point and an arrow key blend, too.
    m_driver->click(at(170, 100));
    press(Key::down, {.shift = true, .control = true});
    EXPECT_EQ(points(0, 5)[0].y, 110);
    EXPECT_EQ(points(0, 1)[0].y, 102);
    press(Key::i, kShift);
    shift(15, 50, 60);
    EXPECT_EQ(xAt(14), 60) << "no longer";
}

TEST_F(ZoneEditRange, AKeyIsAdjustedAgainWhereTheCourseCouldTurnAFrameLaterAsWell) {
    press(Key::i, kShift);
    shift(10, 0, 10); // the line to frame 11 is as good, to a pixel
    shift(10, 10, 14);
    press(Key::right, kControl);
    press(Key::right, kControl);
    EXPECT_EQ(xAt(5), 8);
    EXPECT_EQ(xAt(11), 16);
    EXPECT_EQ(xAt(20), 16) << "carried behind the last key";
    shift(20, 16, 26);
    shift(10, 16, 20);
    EXPECT_EQ(xAt(11), 21) << "up to the next key";
    mark(9, 10);
    choose(u"ButtonInterpolateMenu", u"Delete the Keys of the Range");
    EXPECT_EQ(xAt(10), 13);
    EXPECT_EQ(xAt(11), 14);
}

TEST_F(ZoneEditRange, WhatTheEditorBlendedIsNoKeyOfTheAuthorsUntilHeShapesItOtherwise) {
    shift(10, 0, 100);
    shift(20, 100, 120);
    choose(u"ButtonMenu", u"Interpolate All Gaps");
    mark(0, 20);
    choose(u"ButtonInterpolateMenu", u"Smooth");
    m_driver->click(u"ButtonInterpolate");
    ASSERT_GT(xAt(5), 52);
    choose(u"ButtonInterpolateMenu", u"Straight");
    press(Key::escape);
    goTo(5);
    press(Key::i);
    EXPECT_EQ(xAt(5), 50);
    EXPECT_EQ(xAt(8), 80);
    const int curved = xAt(15);
    EXPECT_NE(curved, 110) << "the other gap";
    m_driver->press(Key::z, kControl);
    m_driver->press(Key::y, kControl);
    press(Key::i, kShift);
    shift(15, curved, 90);
    EXPECT_EQ(xAt(11), 98) << "straight, from key to key";
    EXPECT_EQ(xAt(19), 114);
    m_driver->press(Key::z, kControl);
    press(Key::i, kShift);
    // A part that was moved away by itself keeps its ends.
    mark(13, 17);
    shift(15, curved, curved + 100);
    press(Key::escape);
    press(Key::i, kShift);
    const int beside = xAt(12);
    const int end = xAt(13);
    shift(14, xAt(14), 0);
    EXPECT_EQ(xAt(12), beside);
    EXPECT_EQ(xAt(13), end);
}

TEST_F(ZoneEditRange, AFillEndsWhereTheNumberOfPointsChangesAndIsCarriedThere) {
    shift(10, 0, 40);
    goTo(10);
    m_driver->click(u"OptionDeletePoint");
    m_driver->click(at(340, 100)); // where frames 10 to 20 have it
    m_driver->click(u"OptionMovePoint");
    press(Key::i, kShift);
    shift(5, 0, 50);
    EXPECT_EQ(xAt(4), 40);
    EXPECT_EQ(xAt(9), 50);
    EXPECT_EQ(points(0, 10), (Points{{140, 100}, {240, 400}}));
}

TEST_F(ZoneEditRange, AnEndOfTheRangeIsAKeyWhereTheTimelineMarksOneAndNothingElseIsDeleted) {
    shift(10, 0, 100);
    mark(3, 6);
    const std::size_t before = steps();
    choose(u"ButtonInterpolateMenu", u"Delete the Keys of the Range");
    EXPECT_EQ(steps(), before) << "there is none in it";
    press(Key::home);
    press(Key::b);
    press(Key::end);
    press(Key::e);
    press(Key::i);
    EXPECT_EQ(notice(), u"");
    EXPECT_EQ(xAt(5), 50);
    EXPECT_EQ(xAt(15), 100);
}

TEST_F(ZoneEditRange, APastedFirstShapeLeavesTheFlagsOfAnEmptyZone) {
    press(Key::c, kControl);
    addZone();
    mark(5, 10);
    choose(u"ButtonApplyShape", u"Active from B to E only");
    press(Key::v, kControl);
    EXPECT_EQ(points(1, 0), kTriangle);
    EXPECT_EQ(points(1, 20), kTriangle);
    for (int frame = 0; frame < 21; ++frame) {
        EXPECT_EQ(zones().isActive(1, frame), frame >= 5 && frame <= 10) << frame;
    }
}

TEST_F(ZoneEditRange, AShapeIsCopiedToOtherFramesZonesAndVideos) {
    press(Key::c, kControl);
    shift(10, 0, 100);
    press(Key::v, kControl);
    EXPECT_EQ(points(0, 10), kTriangle);
    EXPECT_EQ(points(0, 20), kTriangle) << "carried forward";
    EXPECT_EQ(lastStep(), "paste");
    EXPECT_EQ(notice(), u"");
    m_driver->press(Key::z, kControl);
    goTo(5);
    m_driver->drag({at(200, 200), at(230, 200)});
    goTo(7);
    press(Key::v, kControl);
    EXPECT_EQ(notice(), u"Changed 11 later frames that had their own shape.");
    m_driver->click(u"ButtonOnlyThisFrame");
    EXPECT_EQ(points(0, 7), kTriangle);
    EXPECT_EQ(xAt(8), 30);
    EXPECT_EQ(xAt(20), 130);
    addZone();
    press(Key::v, kControl);
    EXPECT_EQ(points(1, 0), kTriangle);
    EXPECT_EQ(points(1, 20), kTriangle) << "a new zone has it everywhere";
    m_driver->click(at(100, 100));
    press(Key::del);
    press(Key::v, kControl);
    EXPECT_EQ(notice(), u"The copied shape has 3 points, this zone 2: paste it as a new zone?");
    const std::size_t before = steps();
    m_driver->click(u"ButtonNewZone");
    EXPECT_EQ(points(2, 7), kTriangle);
    EXPECT_EQ(steps(), before + 1);
    addZone();
    press(Key::c, kControl);
    EXPECT_EQ(notice(), u"There is no shape to copy on this frame.");

    show(5, 1); // another visit
    press(Key::v, kControl);
    EXPECT_EQ(points(0, 4), kTriangle);
}

TEST_F(ZoneEditRange, TheFieldsOfThePanelMoveThePointAndScaleAndTurnTheShape) {
    press(Key::b);
    m_driver->click(u"CheckPanel");
    test::pump();
    const platform::Rect video = m_driver->get(u"Video").GetPos();
    ASSERT_LT(video.right, m_driver->manager().GetWindowSize().width);
    const platform::Rect bar = m_driver->get(u"PanelRange").GetPos();
    EXPECT_EQ(bar.left - video.left, (video.width() - bar.width()) / 2) << "over the picture";
    m_driver->click(u"ButtonClearRange");
    press(Key::z, kControl); // leaves the third point chosen by none
    EXPECT_EQ(m_driver->textOf(u"LabelShape"), u"2 points");
    press(Key::y, kControl);
    EXPECT_EQ(m_driver->textOf(u"LabelPoint"), u"3 of 3");
    EXPECT_EQ(m_driver->textOf(u"EditPointX"), u"200");
    m_driver->enter(u"EditPointX", u"260");
    m_driver->enter(u"EditPointY", u"9999");
    EXPECT_EQ(points(0, 20)[2].x, 260);
    EXPECT_LT(points(0, 20)[2].y, 720) << "in the picture";
    m_driver->enter(u"EditPointY", u"400");
    m_driver->enter(u"EditPointX", u"200");
    const std::size_t before = steps();
    for (const char16_t* text : {u"51,6", u"51.6"}) {
        m_driver->enter(u"EditShapeWidth", text);
        EXPECT_EQ(points(0, 0), (Points{{148, 148}, {252, 148}, {200, 303}}));
        m_driver->click(u"ButtonUndo");
    }
    m_driver->enter(u"EditShapeWidth", u"50");
    EXPECT_EQ(points(0, 0), (Points{{150, 150}, {250, 150}, {200, 300}}));
    EXPECT_EQ(m_driver->textOf(u"EditShapeWidth"), u"100");
    m_driver->enter(u"EditShapeAngle", u"90");
    EXPECT_EQ(points(0, 0), (Points{{250, 150}, {250, 250}, {100, 200}}));
    m_driver->enter(u"EditShapeAngle", u"x");
    EXPECT_EQ(steps(), before + 2);
}

TEST_F(ZoneEditRange, AFieldThatNobodyTypedInChangesNothingWhereverTheWheelLeadsMeanwhile) {
    m_driver->click(u"CheckPanel");
    test::pump();
    m_driver->enter(u"EditPointX", u"260"); // and on all frames behind
    goTo(5);
    m_driver->enter(u"EditPointX", u"300");
    goTo(4);
    const auto wheel = [this](int notches) {
        m_driver->wheel(test::WindowDriver::middleOf(m_driver->get(u"Timeline")), notches);
    };
    const std::size_t before = steps();
    m_driver->click(u"EditPointX");
    wheel(-1);
    EXPECT_EQ(m_driver->textOf(u"EditPointX"), u"300");
    m_driver->press(Key::tab);
    EXPECT_EQ(steps(), before);
    m_driver->retype(u"EditPointX", u"280");
    wheel(1);
    EXPECT_EQ(m_driver->textOf(u"EditPointX"), u"280") << "typed";
    m_driver->press(Key::tab);
    EXPECT_EQ(points(0, 4)[2].x, 280) << "the frame on show";
    m_driver->retype(u"EditPointX", u"270");
    wheel(1);
    m_driver->retype(u"EditPointX", u"280"); // what the frame before has
    m_driver->press(Key::tab);
    EXPECT_EQ(points(0, 3)[2].x, 280);
}

} // namespace
