// The zone editor: shows one video frame by frame and lets the author draw its zones with the
// mouse. Works on the current zone manager, which it makes for the video, and on the video path of
// the screen state. UI thread only.
//
// Its code is split by subject: ZoneEdit.cpp (window, video), ZoneEditFrames.cpp (stepping),
// ZoneEditZones.cpp (the list of zones, saving), ZoneEditMouse.cpp (the point tools).
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ui/ConfirmCallback.h"
#include "ui/EditorWindow.h"
#include "ui/NameList.h"
#include "zone/ZoneManager.h"

namespace video {
class CVideoUI;
class Video;
} // namespace video
namespace zoneedit {

class ZoneEdit final : public ui::ConfirmCallback,
                       public ui::EditorWindow,
                       public std::enable_shared_from_this<ZoneEdit> {
public:
    /// Never empty; the form of all window factories.
    [[nodiscard]] static std::shared_ptr<ZoneEdit> create(const ui::WindowContext& context);
    /// For create(): only a shared window can close itself.
    explicit ZoneEdit(const ui::WindowContext& context);

    /// Shows the window until it is closed. True when there was one, also when its video could not
    /// be loaded and it closed by itself. False when no window could be made.
    [[nodiscard]] bool run();
    /// For the branch editor, after that.
    [[nodiscard]] const app_state::ScreenResult& result() const { return m_result; }

    [[nodiscard]] const zone::EditContext& editing() const { return *m_editing; }

    [[nodiscard]] platform::NativeWindow* GetParentWindow() override { return GetNative(); }
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"ZoneEditWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override;
    void InitWindow() override;
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view className) override;
    void OnItemSelect(toolkit::TNotifyUI& message) override;
    void OnSelectChanged(toolkit::TNotifyUI& message) override;
    void OnKillFocus(toolkit::TNotifyUI& message) override;
    bool MessageHandler(const platform::Event& event) override;
    bool HandleMessage(const platform::Event& event) override;

private:
    using Control = toolkit::CControlUI;
    enum class Tool { movePoint = 0, addPoint = 1, addMultiPoint = 2, deletePoint = 3 };

    // The video.
    [[nodiscard]] bool loadVideo();
    [[nodiscard]] bool makeZoneManager();
    /// Between the picture area and the pixels of the clip.
    [[nodiscard]] std::optional<zone::Scale> scale() const;
    void postClose();
    /// The control, or null after a log line with `line`.
    [[nodiscard]] video::CVideoUI* checkedVideo(int line) const;
    /// The loaded video; null when there is none.
    [[nodiscard]] video::Video* loadedVideo() const;
    /// Whether there is a video and it says how long it is.
    [[nodiscard]] bool hasFrames() const;
    /// The frame on show, 0 without a video, -1 for one without frames.
    [[nodiscard]] int currentFrame() const;
    void repaintVideo();
    /// Before it returns: the next move must hit the centre handle where it is drawn.
    void repaintVideoNow();

    // Frames.
    void stepBack();
    void stepBackTen();
    void stepForward();
    void stepForwardTen();
    void step(void (video::CVideoUI::*move)());
    void goToTypedFrame(Control& sender);
    [[nodiscard]] std::u16string frameText() const;
    void showFrame();
    /// Gives the edit that has the keyboard back what it showed before the author typed.
    void restoreText();
    void repaintDueFrame();
    void showActive();
    void changeActive(Control& sender);
    void changeProgress(Control& sender);

    // Zones.
    [[nodiscard]] int selectedZone() const;
    void fillZones(int select);
    void chooseZone(Control& sender);
    void showZone();
    void renameZone(Control& sender);
    void addZone();
    void removeZone();
    void saveZones();
    void closeEditor();
    /// After every change of the zones: what the header said of the last save no longer holds.
    void noteEdit();
    /// In place of what the header says otherwise, but for a failed save.
    void showNotice(std::u16string_view text);
    [[nodiscard]] std::u16string problemText() const;
    void showCaption();
    void updateEnabled();

    // Point tools.
    void chooseTool(Control& sender);
    void selectTool(Tool tool);
    bool handleMouse(const platform::Event& event);
    bool mouseDown(platform::Point position);
    bool mouseMove(platform::Point position);
    bool mouseUp(platform::Point position);
    void applyTool(int zone, int frame, platform::Point at);
    void capture();

    platform::Size m_displaySize;       ///< of the picture area, fixed for the window's life
    video::CVideoUI* m_video = nullptr; ///< owned by the layout
    std::shared_ptr<zone::ZoneManager> m_zones;
    std::shared_ptr<zone::EditContext> m_editing = std::make_shared<zone::EditContext>();
    Tool m_tool = Tool::movePoint;
    app_state::ScreenResult m_result;
    bool m_captured = false;
    bool m_loaded = false;
    int m_zoneCounter = 0;      ///< never decreases: names repeat only in another window
    std::u16string m_shownName; ///< what the program last put into the name edit
    ui::NameList m_zoneNames;
    std::u16string m_saved;  ///< about the last save; empty after a failed one and after a change
    std::u16string m_notice; ///< about what was typed last; gone with the next thing done
};

} // namespace zoneedit
