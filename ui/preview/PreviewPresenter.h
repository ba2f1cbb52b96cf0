// The preview in the left pane: its picture, the buttons below, what can happen now and the way
// taken. Plays the scene as it is edited; edits count at once and disturb nothing. UI thread only.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "edit/Observers.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "playback/Preview.h"
#include "playback/SceneStory.h"
#include "player/Player.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"
#include "ui/preview/PreviewRow.h"
#include "ui/preview/VideoPreview.h"

namespace core {
class EditorSettings;
}

namespace ui {

class PreviewPresenter final : private VideoPreview::Listener {
public:
    class Listener {
    public:
        virtual ~Listener() = default;
        /// Something worth a line at the foot of the window.
        virtual void previewNotes(const std::u16string& text) = 0;
        /// What the buttons can do is another thing now.
        virtual void previewChanged() = 0;
    };

    /// All outlive the presenter; `settings` may be null. `folder`: the scene's.
    PreviewPresenter(Controls controls, scene::SceneSession& session, const std::string& folder,
                     platform::Gui& gui, core::EditorSettings* settings, Listener& listener);
    ~PreviewPresenter() override;

    /// Begins anew.
    void playFirst();
    void playBranch(int branch);
    /// There is a preview, playing or not.
    [[nodiscard]] bool isOpen() const { return m_preview != nullptr; }
    /// A branch is on show that could play.
    [[nodiscard]] bool isPlaying() const;
    [[nodiscard]] bool canGoBack() const;
    void restart();
    void togglePause();
    void pause();
    void back();
    void setSpeed(double speed);
    [[nodiscard]] bool isSpeed(double speed) const;
    void stop();
    void copyPath() const;
    /// The author has switched sound or outlines.
    void takeSwitches();
    /// Does what the selected row of the choices says.
    void takeChoice();
    /// The branch of the selected row of the path; -1 for none.
    [[nodiscard]] int selectedBranch() const;

private:
    void open();
    void tick() override;
    void clicked(platform::Point pixel) override;
    void typed(char letter) override;
    void changed();
    void showAll();
    void showBranch();
    void showTime();
    void showOutlines();
    void showChoices();
    void showPath();
    void showPause();
    void showSound();
    [[nodiscard]] PreviewRowLook choiceLook(const player::Choice& choice) const;
    [[nodiscard]] std::vector<PreviewRowLook> pathLooks() const;
    [[nodiscard]] double secondsLeft() const;
    void fillPath(std::vector<PreviewRowLook> looks);
    void listChoices(int count);
    [[nodiscard]] bool isOn(std::u16string_view option) const;
    [[nodiscard]] VideoPreview* picture() const;

    Controls m_controls;
    scene::SceneSession& m_session;
    const std::string& m_folder;
    platform::Gui& m_gui;
    core::EditorSettings* m_settings;
    Listener& m_listener;
    std::unique_ptr<playback::SceneStory> m_story; ///< what the preview plays
    std::unique_ptr<playback::Preview> m_preview;
    edit::Subscription m_subscription;
    std::vector<player::Choice> m_choices; ///< as listed
    std::vector<PreviewRowLook> m_pathRows;
    int m_stepsBefore = 0; ///< those that have left the path, and its list
    bool m_hasNotedSilence = false;
    int m_shownFrame = -1;
    double m_duration = 0.0; ///< of the clip on show last
    double m_seconds = 0.0;
};

} // namespace ui
