// The commands of the zone editor.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/Event.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kClose = "close";
inline constexpr std::string_view kBack = "back";
inline constexpr std::string_view kBackTen = "backTen";
inline constexpr std::string_view kForward = "forward";
inline constexpr std::string_view kForwardTen = "forwardTen";
inline constexpr std::string_view kPlayVideo = "playVideo";
inline constexpr std::string_view kFirstFrame = "firstFrame";
inline constexpr std::string_view kLastFrame = "lastFrame";
inline constexpr std::string_view kKeyBefore = "keyBefore";
inline constexpr std::string_view kNextKey = "nextKey";
inline constexpr std::string_view kTimelineFit = "timelineFit";
inline constexpr std::string_view kRangeBegin = "rangeBegin";
inline constexpr std::string_view kRangeEnd = "rangeEnd";
inline constexpr std::string_view kAddZone = "addZone";
inline constexpr std::string_view kRemoveZone = "removeZone";
inline constexpr std::string_view kOnlyThisFrame = "onlyThisFrame";
inline constexpr std::string_view kOnAllFrames = "onAllFrames";
inline constexpr std::string_view kPanelAddZone = "panelAddZone";
inline constexpr std::string_view kPanelRemoveZone = "panelRemoveZone";
inline constexpr std::string_view kDuplicateZone = "duplicateZone";
inline constexpr std::string_view kPanelDuplicateZone = "panelDuplicateZone";
inline constexpr std::string_view kMoveTool = "moveTool";
inline constexpr std::string_view kAddOneTool = "addOneTool";
inline constexpr std::string_view kAddManyTool = "addManyTool";
inline constexpr std::string_view kDeleteTool = "deleteTool";
inline constexpr std::string_view kActive = "active";
inline constexpr std::string_view kNextZone = "nextZone";
inline constexpr std::string_view kZoneBefore = "zoneBefore";
inline constexpr std::string_view kClearLines = "clearLines";
inline constexpr std::string_view kGrabDistance = "keepGrabDistance";
inline constexpr std::string_view kAllZones = "allZones";
inline constexpr std::string_view kOnion = "onionSkin";
inline constexpr std::string_view kLoupe = "loupe";
inline constexpr std::string_view kPanel = "zonePanel";
inline constexpr std::string_view kFollow = "follow";
inline constexpr std::string_view kFollowButton = "followButton";
inline constexpr std::string_view kFollowStop = "followStop";
inline constexpr std::string_view kFollowAccept = "followAccept";
inline constexpr std::string_view kFollowDiscard = "followDiscard";
inline constexpr std::string_view kDeletePoint = "deletePoint";
inline constexpr std::string_view kEndAdding = "endAdding";
inline constexpr std::string_view kNudge[] = {"pointLeft",  "pointRight",   "pointUp",
                                              "pointDown",  "pointLeftTen", "pointRightTen",
                                              "pointUpTen", "pointDownTen"};
inline constexpr std::string_view kFill = "fillBetweenKeys";
inline constexpr std::string_view kInterpolate = "interpolate";
inline constexpr std::string_view kInterpolateButton = "interpolateButton";
inline constexpr std::string_view kInterpolateMenu = "interpolateMenu";
inline constexpr std::string_view kStraight = "straight";
inline constexpr std::string_view kSmooth = "smooth";
inline constexpr std::string_view kInterpolateAll = "interpolateAll";
inline constexpr std::string_view kMatchPoints = "matchPoints";
inline constexpr std::string_view kMatchPointsButton = "matchPointsButton";
inline constexpr std::string_view kDeleteKeys = "deleteKeys";
inline constexpr std::string_view kCopyShape = "copyShape";
inline constexpr std::string_view kCopyShapeButton = "copyShapeButton";
inline constexpr std::string_view kPasteShape = "pasteShape";
inline constexpr std::string_view kPasteShapeButton = "pasteShapeButton";
inline constexpr std::string_view kNewZone = "newZone";
inline constexpr std::string_view kApplyShape = "applyShape";
inline constexpr std::string_view kApplyRange = "applyRange";
inline constexpr std::string_view kApplyOnwards = "applyOnwards";
inline constexpr std::string_view kApplyUpTo = "applyUpTo";
inline constexpr std::string_view kActiveOnwards = "activeOnwards";
inline constexpr std::string_view kActiveUpTo = "activeUpTo";
inline constexpr std::string_view kInactiveOnwards = "inactiveOnwards";
inline constexpr std::string_view kInactiveUpTo = "inactiveUpTo";
inline constexpr std::string_view kActiveOnly = "activeOnly";
inline constexpr std::string_view kRangeActive = "rangeActive";
inline constexpr std::string_view kRangeInactive = "rangeInactive";
inline constexpr std::string_view kClearRange = "clearRange";
} // namespace command

inline constexpr std::u16string_view kFrames = u"Zone Edit: frames";
inline constexpr std::u16string_view kZones = u"Zone Edit: zones";

/// The first four of command::kNudge move by one pixel, the others have Shift held as well.
constexpr Command nudgeCommand(std::size_t number, std::u16string_view text, platform::Key arrow) {
    return {.id = command::kNudge[number],
            .group = kZones,
            .text = text,
            .keys = {{{arrow, {.shift = number >= 4, .control = true}}}},
            .repeats = true};
}

inline constexpr Command kZoneEditorCommands[] = {
    {command::kSave,
     kEverywhere,
     u"Save",
     u"ButtonSave",
     u"Save the zones of this video",
     {kCtrlS}},
    kStopCommand,
    {command::kClose, kEverywhere, u"Close", u"ButtonClose", u"Back to the branch editor"},
    {.id = command::kBack,
     .group = kFrames,
     .text = u"Back 1 frame",
     .control = u"ButtonPrevious",
     .toolTip = u"Back 1 frame (Left)",
     .keys = {{{platform::Key::left, {}}}},
     .repeats = true,
     .anyModifiers = true},
    {.id = command::kForward,
     .group = kFrames,
     .text = u"Forward 1 frame",
     .control = u"ButtonNext",
     .toolTip = u"Forward 1 frame (Right)",
     .keys = {{{platform::Key::right, {}}}},
     .repeats = true,
     .anyModifiers = true},
    {.id = command::kBackTen,
     .group = kFrames,
     .text = u"Back 10 frames",
     .control = u"ButtonPrevious10",
     .toolTip = u"Back 10 frames (Shift + Left)",
     .keys = {{{platform::Key::left, {.shift = true}}}},
     .repeats = true,
     .anyModifiers = true},
    {.id = command::kForwardTen,
     .group = kFrames,
     .text = u"Forward 10 frames",
     .control = u"ButtonNext10",
     .toolTip = u"Forward 10 frames (Shift + Right)",
     .keys = {{{platform::Key::right, {.shift = true}}}},
     .repeats = true,
     .anyModifiers = true},
    {.id = command::kPlayVideo,
     .group = kFrames,
     .text = u"Play, pause",
     .control = u"ButtonPlayVideo",
     .toolTip = u"Play (Space)",
     .keys = {{{platform::Key::space, {}}}}},
    {.id = command::kFirstFrame,
     .group = kFrames,
     .text = u"First frame",
     .keys = {{{platform::Key::home, {}}}}},
    {.id = command::kLastFrame,
     .group = kFrames,
     .text = u"Last frame",
     .keys = {{{platform::Key::end, {}}}}},
    {.id = command::kKeyBefore,
     .group = kFrames,
     .text = u"Key before",
     .keys = {{{platform::Key::openBracket, {}}}},
     .repeats = true},
    {.id = command::kNextKey,
     .group = kFrames,
     .text = u"Next key",
     .keys = {{{platform::Key::closeBracket, {}}}},
     .repeats = true},
    {.id = command::kTimelineFit,
     .group = kFrames,
     .text = u"Whole clip",
     .control = u"ButtonTimelineFit",
     .toolTip = u"Whole clip"},
    {.id = command::kRangeBegin,
     .group = kZones,
     .text = u"Range begins here",
     .keys = {{{platform::Key::b, {}}}}},
    {.id = command::kRangeEnd,
     .group = kZones,
     .text = u"Range ends here",
     .keys = {{{platform::Key::e, {}}}}},
    {command::kAddZone, kZones, u"Add Zone", u"ButtonAddZone", u"Add a zone"},
    {.id = command::kRename, .group = kZones, .text = u"Rename the Zone", .keys = {{kF2}}},
    {command::kRemoveZone, kZones, u"Remove Zone", u"ButtonRemoveZone", u"Remove this zone"},
    {.id = command::kDuplicateZone, .group = kZones, .text = u"Duplicate Zone", .icon = u"Copy"},
    // The same beside the list of zones.
    {command::kPanelAddZone, {}, u"Add Zone", u"ButtonPanelAddZone", u"Add a zone"},
    {command::kPanelDuplicateZone,
     {},
     u"Duplicate Zone",
     u"ButtonDuplicateZone",
     u"Duplicate this zone"},
    {command::kPanelRemoveZone, {}, u"Remove Zone", u"ButtonPanelRemoveZone", u"Remove this zone"},
    {.id = command::kMoveTool,
     .group = kZones,
     .text = u"Tool: Move",
     .keys = {{{platform::Key::digit1, {}}}}},
    {.id = command::kAddOneTool,
     .group = kZones,
     .text = u"Tool: Add one",
     .keys = {{{platform::Key::digit2, {}}}}},
    {.id = command::kAddManyTool,
     .group = kZones,
     .text = u"Tool: Add many",
     .keys = {{{platform::Key::digit3, {}}}}},
    {.id = command::kDeleteTool,
     .group = kZones,
     .text = u"Tool: Delete",
     .keys = {{{platform::Key::digit4, {}}}}},
    {.id = command::kActive,
     .group = kZones,
     .text = u"Active on this frame",
     .keys = {{{platform::Key::a, {}}}}},
    {.id = command::kNextZone,
     .group = kZones,
     .text = u"Next zone",
     .keys = {{{platform::Key::n, {}}}},
     .repeats = true},
    {.id = command::kZoneBefore,
     .group = kZones,
     .text = u"Zone before",
     .keys = {{{platform::Key::n, {.shift = true}}}},
     .repeats = true},
    {.id = command::kClearLines, .group = kZones, .text = u"Clear Lines"},
    {.id = command::kGrabDistance, .group = kZones, .text = u"Keep the Grab Distance"},
    {.id = command::kAllZones,
     .group = kZones,
     .text = u"All zones",
     .control = u"CheckAllZones",
     .toolTip = u"Outlines of all zones (Z)",
     .keys = {{{platform::Key::z, {}}}}},
    {.id = command::kOnion,
     .group = kZones,
     .text = u"Onion skin",
     .control = u"CheckOnion",
     .toolTip = u"Keys before and after (O)",
     .keys = {{{platform::Key::o, {}}}}},
    {.id = command::kLoupe,
     .group = kZones,
     .text = u"Loupe",
     .control = u"CheckLoupe",
     .toolTip = u"Loupe (L)",
     .keys = {{{platform::Key::l, {}}}}},
    {.id = command::kFollow,
     .group = kZones,
     .text = u"Follow",
     .keys = {{{platform::Key::f, {}}}},
     .icon = u"Follow"},
    {command::kFollowStop, {}, u"Stop", u"ButtonFollowStop", u"Keep what was found so far"},
    {command::kFollowAccept, {}, u"Accept", u"ButtonFollowAccept", u"Take these shapes over"},
    {command::kFollowDiscard, {}, u"Discard", u"ButtonFollowDiscard", u"Leave the zone as it was"},
    {command::kPanel, kZones, u"List of zones", u"CheckPanel", u"List of zones"},
    kUndoCommand,
    kRedoCommand,
    kMinimizeCommand,
    kMaximizeCommand,
    kMenuCommand,
    kEarlierVersionsCommand,
    kNoticeUndoCommand,
    {command::kOnlyThisFrame,
     {},
     u"Only This Frame",
     u"ButtonOnlyThisFrame",
     u"Give the later frames their own shape back"},
    {command::kOnAllFrames,
     {},
     u"On All Frames",
     u"ButtonOnAllFrames",
     u"Make the change on every frame"},
    {command::kRestoreDraft,
     {},
     u"Restore Unsaved Work",
     u"ButtonRestoreDraft",
     u"Bring the unsaved zones back"},
    kCloseNoticeCommand,
    {.id = command::kDeletePoint,
     .group = kZones,
     .text = u"Delete the point",
     .keys = {{{platform::Key::del, {}}, {platform::Key::backspace, {}}}}},
    {.id = command::kInterpolate,
     .group = kZones,
     .text = u"Interpolate the range",
     .keys = {{{platform::Key::i, {}}}},
     .icon = u"Interpolate"},
    {.id = command::kFill,
     .group = kZones,
     .text = u"Fill Between Keys",
     .control = u"CheckAutoFill",
     .toolTip = u"Fill between keys: a drag blends up to the keys on both sides (Shift+I)",
     .keys = {{{platform::Key::i, {.shift = true}}}},
     .listed = u"Fill between keys"},
    {.id = command::kCopyShape,
     .group = kZones,
     .text = u"Copy the shape",
     .keys = {{{platform::Key::c, {.control = true}}}},
     .icon = u"Copy"},
    {.id = command::kPasteShape,
     .group = kZones,
     .text = u"Paste the shape",
     .keys = {{{platform::Key::v, {.control = true}}}},
     .icon = u"Paste"},
    // Of the bar that shows while frames are marked.
    {command::kInterpolateButton,
     {},
     u"Interpolate",
     u"ButtonInterpolate",
     u"Fill the frames between keys (I)"},
    {command::kFollowButton, {}, u"Follow", u"ButtonFollow", u"Follow what is in the zone (F)"},
    {command::kInterpolateMenu,
     {},
     u"How to interpolate",
     u"ButtonInterpolateMenu",
     u"How frames between keys are filled"},
    {command::kCopyShapeButton, {}, u"Copy", u"ButtonCopyShape", u"Copy the shape (Ctrl+C)"},
    {command::kPasteShapeButton, {}, u"Paste", u"ButtonPasteShape", u"Paste the shape (Ctrl+V)"},
    {command::kApplyShape,
     {},
     u"Apply shape",
     u"ButtonApplyShape",
     u"Give other frames this shape"},
    {command::kRangeActive,
     {},
     u"Active",
     u"ButtonRangeActive",
     u"The zone reacts on the frames of the range"},
    {command::kRangeInactive,
     {},
     u"Not active",
     u"ButtonRangeInactive",
     u"The zone does not react on the frames of the range"},
    {command::kClearRange, {}, u"Clear the range", u"ButtonClearRange", u"Clear the range (Esc)"},
    // Of the line at the top.
    {command::kMatchPointsButton,
     {},
     u"Match Points",
     u"ButtonMatchPoints",
     u"Give both keys the same number of points"},
    {command::kNewZone, {}, u"New Zone", u"ButtonNewZone", u"Paste the shape as a zone of its own"},
    // Of menus alone.
    {.id = command::kStraight, .text = u"Straight"},
    {.id = command::kSmooth, .text = u"Smooth"},
    {.id = command::kInterpolateAll, .text = u"Interpolate All Gaps", .icon = u"Interpolate"},
    {.id = command::kMatchPoints, .text = u"Match Points", .icon = u"Match"},
    {.id = command::kDeleteKeys, .text = u"Delete the Keys of the Range", .icon = u"Remove"},
    {.id = command::kApplyRange, .text = u"To the range"},
    {.id = command::kApplyOnwards, .text = u"From here on"},
    {.id = command::kApplyUpTo, .text = u"Up to here"},
    {.id = command::kActiveOnly, .text = u"Active from B to E only"},
    {.id = command::kActiveOnwards, .text = u"Active from here on"},
    {.id = command::kActiveUpTo, .text = u"Active up to here"},
    {.id = command::kInactiveOnwards, .text = u"Not active from here on"},
    {.id = command::kInactiveUpTo, .text = u"Not active up to here"},
    {.id = command::kEndAdding,
     .group = kZones,
     .text = u"End Add many",
     .keys = {{{platform::Key::enter, {}}}}},
    nudgeCommand(0, u"Move the point left by 1 pixel", platform::Key::left),
    nudgeCommand(1, u"Move the point right by 1 pixel", platform::Key::right),
    nudgeCommand(2, u"Move the point up by 1 pixel", platform::Key::up),
    nudgeCommand(3, u"Move the point down by 1 pixel", platform::Key::down),
    nudgeCommand(4, u"Move the point left by 10 pixels", platform::Key::left),
    nudgeCommand(5, u"Move the point right by 10 pixels", platform::Key::right),
    nudgeCommand(6, u"Move the point up by 10 pixels", platform::Key::up),
    nudgeCommand(7, u"Move the point down by 10 pixels", platform::Key::down),
};

inline constexpr std::string_view kInterpolateRows[] = {
    command::kStraight,       command::kSmooth,      command::kLine,
    command::kInterpolateAll, command::kMatchPoints, command::kDeleteKeys};

inline constexpr std::string_view kApplyRows[] = {
    command::kApplyRange, command::kApplyOnwards,    command::kApplyUpTo,
    command::kLine,       command::kActiveOnly,      command::kActiveOnwards,
    command::kActiveUpTo, command::kInactiveOnwards, command::kInactiveUpTo};

inline constexpr std::string_view kZoneEditorMenu[] = {
    command::kClearLines,      command::kFill,        command::kGrabDistance,  command::kLine,
    command::kInterpolateAll,  command::kMatchPoints, command::kDuplicateZone, command::kLine,
    command::kEarlierVersions, command::kSettings,    command::kKeys,          command::kManual};

inline constexpr std::string_view kZoneRows[] = {command::kAddZone, command::kRename,
                                                 command::kLine, command::kRemoveZone};

} // namespace ui
