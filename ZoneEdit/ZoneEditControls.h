// The names of the zone editor's controls, and the fixed places that its log lines name.
#pragma once

#include <string_view>

namespace zoneedit {

inline constexpr std::u16string_view kVideo = u"Video";
inline constexpr std::u16string_view kZoneCombo = u"ComboZone";
inline constexpr std::u16string_view kZoneEdit = u"EditZone";
inline constexpr std::u16string_view kActiveOption = u"OptionToggleActive";
inline constexpr std::u16string_view kProgressOption = u"OptionProgressChanges";
inline constexpr std::u16string_view kFrameEdit = u"EditCurrentFrame";
inline constexpr std::u16string_view kPlayButton = u"ButtonPlayVideo";
inline constexpr std::u16string_view kTimeline = u"Timeline";
inline constexpr std::u16string_view kTimeLabel = u"LabelTime";
inline constexpr std::u16string_view kDurationLabel = u"LabelDuration";
inline constexpr std::u16string_view kRangeFromEdit = u"EditRangeFrom";
inline constexpr std::u16string_view kRangeToEdit = u"EditRangeTo";
inline constexpr std::u16string_view kTotalEdit = u"EditTotalFrames";
inline constexpr std::u16string_view kTitleLabel = u"LabelTitle";
inline constexpr std::u16string_view kVideoLabel = u"LabelVideo";
inline constexpr std::u16string_view kStateLabel = u"LabelState";
inline constexpr std::u16string_view kNoticePanel = u"PanelNotice";
inline constexpr std::u16string_view kNoticeText = u"LabelNotice";
inline constexpr std::u16string_view kNoticeSign = u"NoticeSign";
inline constexpr std::u16string_view kNoticeUndoButton = u"ButtonNoticeUndo";
inline constexpr std::u16string_view kOnlyThisFrameButton = u"ButtonOnlyThisFrame";
inline constexpr std::u16string_view kOnAllFramesButton = u"ButtonOnAllFrames";
inline constexpr std::u16string_view kMatchPointsButton = u"ButtonMatchPoints";
inline constexpr std::u16string_view kNewZoneButton = u"ButtonNewZone";
inline constexpr std::u16string_view kRestoreDraftButton = u"ButtonRestoreDraft";
inline constexpr std::u16string_view kCloseNoticeButton = u"ButtonCloseNotice";
inline constexpr std::u16string_view kZoomCombo = u"ComboZoom";
inline constexpr std::u16string_view kAllZonesOption = u"CheckAllZones";
inline constexpr std::u16string_view kOnionOption = u"CheckOnion";
inline constexpr std::u16string_view kLoupeOption = u"CheckLoupe";
inline constexpr std::u16string_view kPanelOption = u"CheckPanel";
inline constexpr std::u16string_view kZonesPane = u"PaneZones";
inline constexpr std::u16string_view kOverview = u"Overview";
inline constexpr std::u16string_view kLoupe = u"Loupe";
inline constexpr std::u16string_view kLoupeHead = u"PaneLoupe";
inline constexpr std::u16string_view kZonesList = u"ListZones";
// In each row of the list.
inline constexpr std::u16string_view kRowDot = u"DotRow";
inline constexpr std::u16string_view kRowName = u"LabelRowName";
inline constexpr std::u16string_view kRowEdit = u"EditRowName";
inline constexpr std::u16string_view kRowState = u"LabelRowActive";
inline constexpr std::u16string_view kRowEye = u"CheckRowOutline";
inline constexpr std::u16string_view kFollowPanel = u"PanelFollow";
inline constexpr std::u16string_view kFollowSign = u"FollowSign";
inline constexpr std::u16string_view kFollowLabel = u"LabelFollow";
inline constexpr std::u16string_view kFollowProgress = u"ProgressFollow";
inline constexpr std::u16string_view kMatchLabel = u"LabelMatch";
inline constexpr std::u16string_view kFollowStopButton = u"ButtonFollowStop";
inline constexpr std::u16string_view kFollowDiscardButton = u"ButtonFollowDiscard";
inline constexpr std::u16string_view kHintLabel = u"LabelHint";
inline constexpr std::u16string_view kHintPane = u"PaneHint";
inline constexpr std::u16string_view kRangePanel = u"PanelRange";
inline constexpr std::u16string_view kPointLabel = u"LabelPoint";
inline constexpr std::u16string_view kPointXEdit = u"EditPointX";
inline constexpr std::u16string_view kPointYEdit = u"EditPointY";
inline constexpr std::u16string_view kShapeLabel = u"LabelShape";
inline constexpr std::u16string_view kShapeWidthEdit = u"EditShapeWidth";
inline constexpr std::u16string_view kShapeAngleEdit = u"EditShapeAngle";
inline constexpr std::u16string_view kGestureLabel = u"LabelGesture";
inline constexpr std::u16string_view kEmptyLine = u"EmptyLine";
inline constexpr std::u16string_view kNoteLabel = u"LabelNote";
inline constexpr std::u16string_view kProblemLabel = u"LabelProblem";
/// Those of the bar that show in some notices only.
inline constexpr std::u16string_view kNoticeButtons[] = {kNoticeUndoButton,  kOnlyThisFrameButton,
                                                         kOnAllFramesButton, kMatchPointsButton,
                                                         kNewZoneButton,     kRestoreDraftButton};
/// The index is the tool's number.
inline constexpr std::u16string_view kToolOptions[] = {
    u"OptionMovePoint", u"OptionAddPoint", u"OptionAddMultiPoint", u"OptionDeletePoint"};

/// While one of these or nothing has the focus, letters, digits and Space are commands.
inline constexpr std::u16string_view kTypingControls[] = {kVideo, kTimeline};

/// Places of "VideoUI is invalid" in the log.
inline constexpr int kStepLine = 214;
inline constexpr int kTypedFrameLine = 236;
inline constexpr int kAddZoneLine = 305;
inline constexpr int kMouseDownLine = 402;
inline constexpr int kMouseMoveLine = 447;
inline constexpr int kMouseUpLine = 471;

} // namespace zoneedit
