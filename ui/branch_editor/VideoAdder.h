// Add Video: asks which files, copies them into the scene's folder one after another in the
// background, and says what came of it. Used by the branch editor.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "jobs/BackgroundImport.h"
#include "jobs/ImportOutcome.h"
#include "platform/Gui.h"
#include "ui/ConfirmCallback.h"
#include "ui/branch_editor/VideoPresenter.h"

namespace core {
class EditorSettings;
}

namespace ui {

/// UI thread only.
class VideoAdder {
public:
    /// Whoever shows how far it is. It outlives the adder.
    class Listener {
    public:
        virtual ~Listener() = default;
        /// A copy has begun or has come further.
        virtual void copying(const jobs::CopyStatus& status) = 0;
        /// None is under way any more. `copied`: at least one was.
        virtual void copied(const jobs::ImportOutcome& outcome, bool copied) = 0;
    };

    /// `folder` is the scene's, ending in "\". `gui` and `videos` outlive it.
    VideoAdder(platform::Gui& gui, core::EditorSettings* settings, VideoPresenter& videos,
               std::string folder, Listener& listener);

    /// Asks above the asker's window and begins.
    void ask(ConfirmCallback& asker);
    /// Adds these files, UTF-8 paths, behind those that are still to come.
    void add(const std::vector<std::string>& paths);
    /// Where the files of the last outcome's `notTheora` were copied from.
    [[nodiscard]] const std::vector<std::string>& foreign() const { return m_foreign; }
    [[nodiscard]] bool isRunning() const { return m_import.isRunning(); }
    /// Also gives up the files that are still to come.
    void cancel() { m_import.cancel(); }

private:
    struct Source {
        std::string folder;
        std::string name;
    };

    [[nodiscard]] std::optional<platform::OpenFilesResult> chooseFiles(ConfirmCallback& asker);
    void add(const std::vector<Source>& sources);
    void next();
    void done(const Source& source, const jobs::ImportReport& report);
    [[nodiscard]] jobs::CopyStatus status() const; ///< only while one is under way

    platform::Gui& m_gui;
    core::EditorSettings* m_settings; ///< null: nothing is remembered
    VideoPresenter& m_videos;
    std::string m_folder;
    Listener& m_listener;
    std::deque<Source> m_sources; ///< still to come, the one under way in front
    std::vector<std::string> m_added;
    std::vector<std::string> m_foreign;
    int m_count = 0;
    jobs::ImportOutcome m_outcome;
    jobs::BackgroundImport m_import;
};

} // namespace ui
