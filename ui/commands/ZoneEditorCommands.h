// The commands of the zone editor.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/Texts.h"
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

inline constexpr core::Text kFrames = "Zone Edit: frames"_tr;
inline constexpr core::Text kZones = "Zone Edit: zones"_tr;

/// The first four of command::kNudge move by one pixel, the others have Shift held as well.
constexpr Command nudgeCommand(std::size_t number, core::Text text, platform::Key arrow) {
    return {.id = command::kNudge[number],
            .group = kZones,
            .text = text,
            .keys = {{{arrow, {.shift = number >= 4, .control = true}}}},
            .repeats = true};
}

inline constexpr Command kZoneEditorCommands[] = {
    {command::kSave,
     kEverywhere,
     "Save"_tr,
     u"ButtonSave",
     "Save the zones of this video"_tr,
     {kCtrlS}},
    kStopCommand,
    {command::kClose, kEverywhere, "Close"_tr, u"ButtonClose", "Back to the branch editor"_tr},
    {.id = command::kBack,
     .group = kFrames,
     .text = "Back 1 frame"_tr,
     .control = u"ButtonPrevious",
     .toolTip = "Back 1 frame (Left)"_tr,
     .keys = {{{platform::Key::left, {}}}},
     .repeats = true,
     .anyModifiers = true},
    {.id = command::kForward,
     .group = kFrames,
     .text = "Forward 1 frame"_tr,
     .control = u"ButtonNext",
     .toolTip = "Forward 1 frame (Right)"_tr,
     .keys = {{{platform::Key::right, {}}}},
     .repeats = true,
     .anyModifiers = true},
    {.id = command::kBackTen,
     .group = kFrames,
     .text = "Back 10 frames"_tr,
     .control = u"ButtonPrevious10",
     .toolTip = "Back 10 frames (Shift + Left)"_tr,
     .keys = {{{platform::Key::left, {.shift = true}}}},
     .repeats = true,
     .anyModifiers = true},
    {.id = command::kForwardTen,
     .group = kFrames,
     .text = "Forward 10 frames"_tr,
     .control = u"ButtonNext10",
     .toolTip = "Forward 10 frames (Shift + Right)"_tr,
     .keys = {{{platform::Key::right, {.shift = true}}}},
     .repeats = true,
     .anyModifiers = true},
    {.id = command::kPlayVideo,
     .group = kFrames,
     .text = "Play, pause"_tr,
     .control = u"ButtonPlayVideo",
     .toolTip = "Play (Space)"_tr,
     .keys = {{{platform::Key::space, {}}}}},
    {.id = command::kFirstFrame,
     .group = kFrames,
     .text = "First frame"_tr,
     .keys = {{{platform::Key::home, {}}}}},
    {.id = command::kLastFrame,
     .group = kFrames,
     .text = "Last frame"_tr,
     .keys = {{{platform::Key::end, {}}}}},
    {.id = command::kKeyBefore,
     .group = kFrames,
     .text = "Key before"_tr,
     .keys = {{{platform::Key::openBracket, {}}}},
     .repeats = true},
    {.id = command::kNextKey,
     .group = kFrames,
     .text = "Next key"_tr,
     .keys = {{{platform::Key::closeBracket, {}}}},
     .repeats = true},
    {.id = command::kTimelineFit,
     .group = kFrames,
     .text = "Whole clip"_tr,
     .control = u"ButtonTimelineFit",
     .toolTip = "Whole clip"_tr},
    {.id = command::kRangeBegin,
     .group = kZones,
     .text = "Range begins here"_tr,
     .keys = {{{platform::Key::b, {}}}}},
    {.id = command::kRangeEnd,
     .group = kZones,
     .text = "Range ends here"_tr,
     .keys = {{{platform::Key::e, {}}}}},
    {command::kAddZone, kZones, "Command.AddZone|Add Zone"_tr, u"ButtonAddZone", "Add a zone"_tr},
    {.id = command::kRename, .group = kZones, .text = "Rename the Zone"_tr, .keys = {{kF2}}},
    {command::kRemoveZone, kZones, "Command.RemoveZone|Remove Zone"_tr, u"ButtonRemoveZone",
     "Remove this zone"_tr},
    {.id = command::kDuplicateZone, .group = kZones, .text = "Duplicate Zone"_tr, .icon = u"Copy"},
    // The same beside the list of zones.
    {command::kPanelAddZone,
     {},
     "Command.AddZone|Add Zone"_tr,
     u"ButtonPanelAddZone",
     "Add a zone"_tr},
    {command::kPanelDuplicateZone,
     {},
     "Duplicate Zone"_tr,
     u"ButtonDuplicateZone",
     "Duplicate this zone"_tr},
    {command::kPanelRemoveZone,
     {},
     "Command.RemoveZone|Remove Zone"_tr,
     u"ButtonPanelRemoveZone",
     "Remove this zone"_tr},
    {.id = command::kMoveTool,
     .group = kZones,
     .text = "Tool: Move"_tr,
     .keys = {{{platform::Key::digit1, {}}}}},
    {.id = command::kAddOneTool,
     .group = kZones,
     .text = "Tool: Add one"_tr,
     .keys = {{{platform::Key::digit2, {}}}}},
    {.id = command::kAddManyTool,
     .group = kZones,
     .text = "Tool: Add many"_tr,
     .keys = {{{platform::Key::digit3, {}}}}},
    {.id = command::kDeleteTool,
     .group = kZones,
     .text = "Tool: Delete"_tr,
     .keys = {{{platform::Key::digit4, {}}}}},
    {.id = command::kActive,
     .group = kZones,
     .text = "Active on this frame"_tr,
     .keys = {{{platform::Key::a, {}}}}},
    {.id = command::kNextZone,
     .group = kZones,
     .text = "Next zone"_tr,
     .keys = {{{platform::Key::n, {}}}},
     .repeats = true},
    {.id = command::kZoneBefore,
     .group = kZones,
     .text = "Zone before"_tr,
     .keys = {{{platform::Key::n, {.shift = true}}}},
     .repeats = true},
    {.id = command::kClearLines, .group = kZones, .text = "Clear Lines"_tr},
    {.id = command::kGrabDistance, .group = kZones, .text = "Keep the Grab Distance"_tr},
    {.id = command::kAllZones,
     .group = kZones,
     .text = "All zones"_tr,
     .control = u"CheckAllZones",
     .toolTip = "Outlines of all zones (Z)"_tr,
     .keys = {{{platform::Key::z, {}}}}},
    {.id = command::kOnion,
     .group = kZones,
     .text = "Onion skin"_tr,
     .control = u"CheckOnion",
     .toolTip = "Keys before and after (O)"_tr,
     .keys = {{{platform::Key::o, {}}}}},
    {.id = command::kLoupe,
     .group = kZones,
     .text = "Loupe"_tr,
     .control = u"CheckLoupe",
     .toolTip = "Loupe (L)"_tr,
     .keys = {{{platform::Key::l, {}}}}},
    {.id = command::kFollow,
     .group = kZones,
     .text = "Follow"_tr,
     .keys = {{{platform::Key::f, {}}}},
     .icon = u"Follow"},
    {command::kFollowStop, {}, "Stop"_tr, u"ButtonFollowStop", "Keep what was found so far"_tr},
    {command::kFollowAccept, {}, "Accept"_tr, u"ButtonFollowAccept", "Take these shapes over"_tr},
    {command::kFollowDiscard,
     {},
     "Discard"_tr,
     u"ButtonFollowDiscard",
     "Leave the zone as it was"_tr},
    {command::kPanel, kZones, "List of zones"_tr, u"CheckPanel", "List of zones"_tr},
    kUndoCommand,
    kRedoCommand,
    kMinimizeCommand,
    kMaximizeCommand,
    kMenuCommand,
    kEarlierVersionsCommand,
    kNoticeUndoCommand,
    {command::kOnlyThisFrame,
     {},
     "Only This Frame"_tr,
     u"ButtonOnlyThisFrame",
     "Give the later frames their own shape back"_tr},
    {command::kOnAllFrames,
     {},
     "On All Frames"_tr,
     u"ButtonOnAllFrames",
     "Make the change on every frame"_tr},
    {command::kRestoreDraft,
     {},
     "Restore Unsaved Work"_tr,
     u"ButtonRestoreDraft",
     "Bring the unsaved zones back"_tr},
    kCloseNoticeCommand,
    gestureCommand("drawRectangle", kZones, "Rectangle (Add many)"_tr, u"Ctrl+Drag"),
    gestureCommand("scaleShape", kZones, "Scale the shape"_tr, u"Ctrl+Drag"),
    gestureCommand("rotateShape", kZones, "Rotate the shape"_tr, u"Ctrl+Shift+Drag"),
    gestureCommand("dragStraight", kZones, "Straight across or down"_tr, u"Shift+Drag"),
    {.id = command::kDeletePoint,
     .group = kZones,
     .text = "Delete the point"_tr,
     .keys = {{{platform::Key::del, {}}, {platform::Key::backspace, {}}}}},
    {.id = command::kInterpolate,
     .group = kZones,
     .text = "Interpolate the range"_tr,
     .keys = {{{platform::Key::i, {}}}},
     .icon = u"Interpolate"},
    {.id = command::kFill,
     .group = kZones,
     .text = "Fill Between Keys"_tr,
     .control = u"CheckAutoFill",
     .toolTip = "Fill between keys: a drag blends up to the keys on both sides (Shift+I)"_tr,
     .keys = {{{platform::Key::i, {.shift = true}}}},
     .listed = "Command.FillBetweenKeys|Fill between keys"_tr},
    {.id = command::kCopyShape,
     .group = kZones,
     .text = "Copy the shape"_tr,
     .keys = {{{platform::Key::c, {.control = true}}}},
     .icon = u"Copy"},
    {.id = command::kPasteShape,
     .group = kZones,
     .text = "Paste the shape"_tr,
     .keys = {{{platform::Key::v, {.control = true}}}},
     .icon = u"Paste"},
    // Of the bar that shows while frames are marked.
    {command::kInterpolateButton,
     {},
     "Interpolate"_tr,
     u"ButtonInterpolate",
     "Fill the frames between keys (I)"_tr},
    {command::kFollowButton, {}, "Follow"_tr, u"ButtonFollow", "Follow what is in the zone (F)"_tr},
    {command::kInterpolateMenu,
     {},
     "How to interpolate"_tr,
     u"ButtonInterpolateMenu",
     "How frames between keys are filled"_tr},
    {command::kCopyShapeButton, {}, "Copy"_tr, u"ButtonCopyShape", "Copy the shape (Ctrl+C)"_tr},
    {command::kPasteShapeButton,
     {},
     "Paste"_tr,
     u"ButtonPasteShape",
     "Paste the shape (Ctrl+V)"_tr},
    {command::kApplyShape,
     {},
     "Apply shape"_tr,
     u"ButtonApplyShape",
     "Give other frames this shape"_tr},
    {command::kRangeActive,
     {},
     "Active"_tr,
     u"ButtonRangeActive",
     "The zone reacts on the frames of the range"_tr},
    {command::kRangeInactive,
     {},
     "Not active"_tr,
     u"ButtonRangeInactive",
     "The zone does not react on the frames of the range"_tr},
    {command::kClearRange,
     {},
     "Clear the range"_tr,
     u"ButtonClearRange",
     "Clear the range (Esc)"_tr},
    // Of the line at the top.
    {command::kMatchPointsButton,
     {},
     "Match Points"_tr,
     u"ButtonMatchPoints",
     "Give both keys the same number of points"_tr},
    {command::kNewZone,
     {},
     "New Zone"_tr,
     u"ButtonNewZone",
     "Paste the shape as a zone of its own"_tr},
    // Of menus alone.
    {.id = command::kStraight, .text = "Straight"_tr},
    {.id = command::kSmooth, .text = "Smooth"_tr},
    {.id = command::kInterpolateAll, .text = "Interpolate All Gaps"_tr, .icon = u"Interpolate"},
    {.id = command::kMatchPoints, .text = "Match Points"_tr, .icon = u"Match"},
    {.id = command::kDeleteKeys, .text = "Delete the Keys of the Range"_tr, .icon = u"Remove"},
    {.id = command::kApplyRange, .text = "To the range"_tr},
    {.id = command::kApplyOnwards, .text = "From here on"_tr},
    {.id = command::kApplyUpTo, .text = "Up to here"_tr},
    {.id = command::kActiveOnly, .text = "Active from B to E only"_tr},
    {.id = command::kActiveOnwards, .text = "Active from here on"_tr},
    {.id = command::kActiveUpTo, .text = "Active up to here"_tr},
    {.id = command::kInactiveOnwards, .text = "Not active from here on"_tr},
    {.id = command::kInactiveUpTo, .text = "Not active up to here"_tr},
    {.id = command::kEndAdding,
     .group = kZones,
     .text = "End Add many"_tr,
     .keys = {{{platform::Key::enter, {}}}}},
    nudgeCommand(0, "Move the point left by 1 pixel"_tr, platform::Key::left),
    nudgeCommand(1, "Move the point right by 1 pixel"_tr, platform::Key::right),
    nudgeCommand(2, "Move the point up by 1 pixel"_tr, platform::Key::up),
    nudgeCommand(3, "Move the point down by 1 pixel"_tr, platform::Key::down),
    nudgeCommand(4, "Move the point left by 10 pixels"_tr, platform::Key::left),
    nudgeCommand(5, "Move the point right by 10 pixels"_tr, platform::Key::right),
    nudgeCommand(6, "Move the point up by 10 pixels"_tr, platform::Key::up),
    nudgeCommand(7, "Move the point down by 10 pixels"_tr, platform::Key::down),
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
