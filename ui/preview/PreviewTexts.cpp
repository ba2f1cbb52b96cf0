#include "ui/preview/PreviewTexts.h"

#include <cstddef>

#include "core/Text.h"
#include "player/Story.h"
#include "ui/branch_editor/ClipCard.h"

namespace ui {
namespace {

std::u16string quoted(const std::string& name) {
    return u"\"" + core::displayText(name) + u"\"";
}

std::u16string number(int value) {
    return core::displayText(std::to_string(value));
}

} // namespace

std::u16string reasonText(const player::Reason& reason) {
    using Cause = player::Reason::Cause;
    const std::u16string when = reason.isImmediate ? u", immediate" : u", at the end of the clip";
    switch (reason.cause) {
    case Cause::zone:
        return u"Zone " + quoted(reason.name) + u" clicked" + when;
    case Cause::key:
        return u"Key " + core::displayText(reason.name) + u" pressed" + when;
    case Cause::clipEnd:
        return u"Clip ended";
    case Cause::chance:
        return u"By chance, 1 of " + number(reason.choices);
    case Cause::started:
        break;
    }
    return u"Played from here";
}

std::u16string endText(const player::Player& player) {
    using State = player::Player::State;
    switch (player.state()) {
    case State::ended:
        return u"Ended: " + quoted(player.branch().name) + u" has no action that applies.";
    case State::noBranch: {
        const std::string& name = player.path().back().name;
        return name.empty() ? std::u16string(u"Stopped: the action has no target branch.")
                            : u"Stopped: " + quoted(name) + u" is not in the scene.";
    }
    case State::noVideo:
        return u"Stopped: no video.";
    case State::unreadableClip:
        return u"Stopped: the video " + quoted(player.branch().video) + u" cannot be read.";
    case State::playing:
        break;
    }
    return {};
}

std::u16string choiceText(const player::Player& player, const player::Choice& choice,
                          double secondsLeft) {
    using When = player::Action::When;
    const player::Action& action = player.branch().actions[static_cast<std::size_t>(choice.action)];
    const std::u16string left =
        secondsLeft >= 0 ? u", in " + lengthText(secondsLeft) : std::u16string();
    if (choice.waits) {
        return u"Chosen: at the end" + left;
    }
    switch (action.when) {
    case When::zoneClicked:
        return u"Click into the zone " + core::displayText(action.parameter);
    case When::keyPressed:
        return u"Press " + core::displayText(action.parameter);
    case When::byChance:
        return u"By chance at the end, 1 of " + number(choice.outOf);
    case When::clipEnds:
        break;
    }
    return player.waiting() >= 0 ? std::u16string(u"At the end, unless a choice waits")
                                 : u"At the end" + left;
}

std::u16string pathText(const player::Player& player) {
    std::u16string text;
    int row = 0;
    for (const player::Step& step : player.path()) {
        text += number(++row) + u"\t" + core::displayText(step.name) + u"\t" +
                lengthText(step.seconds) + u"\t" + reasonText(step.reason) + u"\n";
    }
    const std::u16string end = endText(player);
    return end.empty() ? text : text + end + u"\n";
}

} // namespace ui
