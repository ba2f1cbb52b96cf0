// The names of the branch editor's controls, as its layout gives them and its rows use them.
#pragma once

#include <string_view>

namespace ui::branch_list {

inline constexpr std::u16string_view kAddVideoButton = u"ButtonAddVideo";
inline constexpr std::u16string_view kBranchCombo = u"ComboBranchName";
inline constexpr std::u16string_view kVideoCombo = u"ComboVideoName";
inline constexpr std::u16string_view kNameEdit = u"EditBranchName";
inline constexpr std::u16string_view kFindEdit = u"EditFindBranch";
inline constexpr std::u16string_view kFindHint = u"LabelFindBranch";
inline constexpr std::u16string_view kFirstCheck = u"CheckFirst";
inline constexpr std::u16string_view kLeadsHereButton = u"ButtonLeadsHere";
inline constexpr std::u16string_view kLeadsNames = u"LabelLeadsHere";
inline constexpr std::u16string_view kActionList = u"BranchList";

inline constexpr std::u16string_view kLeftPane = u"PaneLeft";
inline constexpr std::u16string_view kColumnSplitter = u"SplitterColumn";
inline constexpr std::u16string_view kColumn = u"PaneColumn";
inline constexpr std::u16string_view kSpaceLeft = u"SpaceLeft";
inline constexpr std::u16string_view kSpaceRight = u"SpaceRight";

inline constexpr std::u16string_view kMapButton = u"CheckMap";
inline constexpr std::u16string_view kMapTab = u"OptionMap";
inline constexpr std::u16string_view kPreviewTab = u"OptionPreview";
inline constexpr std::u16string_view kMapPage = u"PageMap";
inline constexpr std::u16string_view kPreviewPage = u"PagePreview";
inline constexpr std::u16string_view kSceneMap = u"SceneMap";
inline constexpr std::u16string_view kFindPane = u"PaneFindBranch";
inline constexpr std::u16string_view kZoomOutButton = u"ButtonMapOut";
inline constexpr std::u16string_view kZoomLabel = u"LabelMapZoom";
inline constexpr std::u16string_view kZoomInButton = u"ButtonMapIn";
inline constexpr std::u16string_view kFitButton = u"ButtonMapFit";

inline constexpr std::u16string_view kCheckButton = u"ButtonCheck";
inline constexpr std::u16string_view kCheckBadge = u"LabelFindings";
inline constexpr std::u16string_view kBadgeGround = u"SignFindings";
inline constexpr std::u16string_view kErrorsFilter = u"CheckErrors";
inline constexpr std::u16string_view kWarningsFilter = u"CheckWarnings";
inline constexpr std::u16string_view kNotesFilter = u"CheckNotes";
inline constexpr std::u16string_view kFindingsFold = u"CheckFindings";
inline constexpr std::u16string_view kFindingsBody = u"PaneFindings";
inline constexpr std::u16string_view kCheckPane = u"PaneCheck";
inline constexpr std::u16string_view kFindingsSplitter = u"SplitterFindings";
inline constexpr std::u16string_view kFindingsList = u"ListFindings";
inline constexpr std::u16string_view kNoFindings = u"EmptyFindings";

inline constexpr std::u16string_view kTourPanel = u"PanelTour";

inline constexpr std::u16string_view kSceneLabel = u"LabelScene";
inline constexpr std::u16string_view kStateLabel = u"LabelState";
inline constexpr std::u16string_view kNoticePanel = u"PanelNotice";
inline constexpr std::u16string_view kNoticeText = u"LabelStrip";
inline constexpr std::u16string_view kNoticeUndoButton = u"ButtonNoticeUndo";
inline constexpr std::u16string_view kRetargetButton = u"ButtonRetarget";
inline constexpr std::u16string_view kFixButton = u"ButtonFix";
inline constexpr std::u16string_view kFixOtherButton = u"ButtonFixOther";
inline constexpr std::u16string_view kShowImportButton = u"ButtonShowImport";
inline constexpr std::u16string_view kConvertButton = u"ButtonConvertIt";
inline constexpr std::u16string_view kNoteSign = u"SignNote";
inline constexpr std::u16string_view kCloseNoticeButton = u"ButtonCloseNotice";
inline constexpr std::u16string_view kStatus = u"LabelStatus";
inline constexpr std::u16string_view kOwnVideo = u"LabelOwnVideo";
inline constexpr std::u16string_view kNoVideo = u"LabelNoVideo";
inline constexpr std::u16string_view kZonesHint = u"LabelZonesHint";
inline constexpr std::u16string_view kEmptyHeading = u"EmptyHeading";
inline constexpr std::u16string_view kEmptyLine = u"EmptyLine";

inline constexpr std::u16string_view kRow = u"ListContainer";
inline constexpr std::u16string_view kRowItem = u"ListItem";
inline constexpr std::u16string_view kConditionCombo = u"ComboConditions";
inline constexpr std::u16string_view kParameterCombo = u"ComboParameter";
inline constexpr std::u16string_view kTargetCombo = u"ComboBranches";
inline constexpr std::u16string_view kImmediateCheck = u"CheckImmediate";

} // namespace ui::branch_list
