// The zone editor: shows one video frame by frame and lets the author draw its zones with the
// mouse. The window opens the video and its zones and wires the parts that do the work; all edits
// go through the session of the zones, which tells the parts what changed. UI thread only.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "app/state/ScreenState.h"
#include "edit/Observers.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "ui/Companions.h"
#include "ui/ConfirmCallback.h"
#include "ui/EditorWindow.h"
#include "zone/SessionKeys.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class DraftPresenter;
class EditingParts;
class FollowPresenter;
class HeaderPresenter;
class HistoryPresenter;
class NoticePresenter;
class RenamedZones;
class TimeParts;
class ViewParts;
class ZoneParts;

class ZoneEdit final : public ui::ConfirmCallback,
                       public ui::EditorWindow,
                       public std::enable_shared_from_this<ZoneEdit> {
public:
    /// Never empty; the form of all window factories.
    [[nodiscard]] static std::shared_ptr<ZoneEdit> create(const ui::WindowContext& context);
    /// For create(): only a shared window can close itself.
    explicit ZoneEdit(const ui::WindowContext& context);
    ~ZoneEdit() override;

    /// Shows the window until it is closed. True when there was one, also when its video could not
    /// be loaded and it closed by itself. False when no window could be made.
    [[nodiscard]] bool run();
    /// For the branch editor, after that.
    [[nodiscard]] const app_state::ScreenResult& result() const { return m_result; }

    /// Of no zones until the window is made.
    [[nodiscard]] const zone::ZoneSession& session() const { return *m_session; }

    [[nodiscard]] platform::NativeWindow* GetParentWindow() override { return GetNative(); }
    [[nodiscard]] ui::Companions* askersCompanions() override { return &companions(); }
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"ZoneEditWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override;
    void InitWindow() override;
    void Close(int code = 0) override;
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view className) override;
    void OnClick(toolkit::TNotifyUI& message) override;
    void OnItemActivate(toolkit::TNotifyUI& message) override;
    void OnItemSelect(toolkit::TNotifyUI& message) override;
    void OnSelectChanged(toolkit::TNotifyUI& message) override;
    void OnKillFocus(toolkit::TNotifyUI& message) override;
    bool MessageHandler(const platform::Event& event) override;
    bool HandleMessage(const platform::Event& event) override;

protected:
    void windowSized() override;

private:
    void bindCommands();
    void bindHistory();
    void bindFollow();
    void openVideo();
    [[nodiscard]] bool loadVideo();
    [[nodiscard]] std::string versionsFolder() const;
    void makeParts();
    void makeFollow();
    /// Whether the parts are made.
    [[nodiscard]] bool isReady() const { return m_draft != nullptr; }

    /// Shows the frame and the zone that the last visit of this run ended at.
    void resume();

    // The author went to another one.
    void frameShown();
    void zoneShown();

    void stop();
    void removeZone();
    void saveZones();
    void showVersions();
    void closeEditor();

    platform::Size m_displaySize; ///< of the picture area, fixed for the window's life
    EditedVideo m_video;
    bool m_loaded = false;
    app_state::ScreenResult m_result;
    std::unique_ptr<RenamedZones> m_renamed; ///< empty without a video
    std::shared_ptr<zone::ZoneSession> m_session;
    // Empty until the window is made.
    std::shared_ptr<zone::SessionKeys> m_keys;
    std::unique_ptr<ViewParts> m_view;
    std::unique_ptr<NoticePresenter> m_notice;
    std::unique_ptr<HeaderPresenter> m_header;
    std::unique_ptr<ZoneParts> m_zones;
    std::unique_ptr<TimeParts> m_time;
    std::unique_ptr<EditingParts> m_editing;
    std::unique_ptr<FollowPresenter> m_follow; ///< none without a video
    std::unique_ptr<HistoryPresenter> m_history;
    std::unique_ptr<DraftPresenter> m_draft;
    edit::Subscription m_changes;
    edit::Subscription m_rangeChanges;
};

} // namespace zoneedit
