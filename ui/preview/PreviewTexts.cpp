#include "ui/preview/PreviewTexts.h"

#include <cstddef>

#include "core/Text.h"
#include "core/Texts.h"
#include "player/Story.h"
#include "ui/FigureTexts.h"

namespace ui {
namespace {

std::u16string number(int value) {
    return core::displayText(std::to_string(value));
}

} // namespace

std::u16string reasonText(const player::Reason& reason) {
    using Cause = player::Reason::Cause;
    switch (reason.cause) {
    case Cause::zone:
        return core::tr(reason.isImmediate ? "Zone \"{0}\" clicked, immediate"_tr
                                           : "Zone \"{0}\" clicked, at the end of the clip"_tr,
                        reason.name);
    case Cause::key:
        return core::tr(reason.isImmediate ? "Key {0} pressed, immediate"_tr
                                           : "Key {0} pressed, at the end of the clip"_tr,
                        reason.name);
    case Cause::clipEnd:
        return core::tr("Clip ended"_tr);
    case Cause::chance:
        return core::tr("By chance, 1 of {0}"_tr, reason.choices);
    case Cause::started:
        break;
    }
    return core::tr("Played from here"_tr);
}

std::u16string endText(const player::Player& player) {
    using State = player::Player::State;
    switch (player.state()) {
    case State::ended:
        return core::tr("Ended: \"{0}\" has no action that applies."_tr, player.branch().name);
    case State::noBranch: {
        const player::Step& step = player.path().back();
        if (!step.name.empty()) {
            return core::tr("Stopped: \"{0}\" is not in the scene."_tr, step.name);
        }
        return step.reason.cause == player::Reason::Cause::started
                   ? core::tr("Stopped: the scene has no first branch."_tr)
                   : core::tr("Stopped: the action has no target branch."_tr);
    }
    case State::noVideo:
        return core::tr("Stopped: no video."_tr);
    case State::unreadableClip:
        return core::tr("Stopped: the video \"{0}\" cannot be read."_tr, player.branch().video);
    case State::playing:
        break;
    }
    return {};
}

std::u16string choiceText(const player::Player& player, const player::Choice& choice,
                          double secondsLeft) {
    using When = player::Action::When;
    const player::Action& action = player.branch().actions[static_cast<std::size_t>(choice.action)];
    const std::u16string left = secondsLeft >= 0 ? lengthText(secondsLeft) : std::u16string();
    if (choice.waits) {
        return left.empty() ? core::tr("Chosen: at the end"_tr)
                            : core::tr("Chosen: at the end, in {0}"_tr, left);
    }
    switch (action.when) {
    case When::zoneClicked:
        return core::tr("Click into the zone {0}"_tr, action.parameter);
    case When::keyPressed:
        return core::tr("PressKey|Press {0}"_tr, action.parameter);
    case When::byChance:
        return core::tr("By chance at the end, 1 of {0}"_tr, choice.outOf);
    case When::clipEnds:
        break;
    }
    if (player.waiting() >= 0) {
        return core::tr("At the end, unless a choice waits"_tr);
    }
    return left.empty() ? core::tr("At the end"_tr) : core::tr("At the end, in {0}"_tr, left);
}

std::u16string pathText(const player::Player& player) {
    std::u16string text;
    int row = player.stepsBefore();
    for (const player::Step& step : player.path()) {
        text += number(++row) + u"\t" + core::displayText(step.name) + u"\t" +
                lengthText(step.seconds) + u"\t" + reasonText(step.reason) + u"\n";
    }
    const std::u16string end = endText(player);
    return end.empty() ? text : text + end + u"\n";
}

} // namespace ui
