// Imports as the branch editor shows them: how far they are and what came of them in the strip,
// files dropped into the window, and converting a clip that the findings complain of. UI thread
// only.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "check/Finding.h"
#include "edit/Observers.h"
#include "import/ImportTypes.h"
#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"

namespace ui {

class SceneImports;
class StripPresenter;
class VideoAdder;

class ImportPresenter {
public:
    /// All of these outlive the presenter. `openWindow` shows the Import window, `changed` is
    /// called when other clips are being remade, or a new one is there.
    struct Parts {
        platform::EventLoop& loop;
        StripPresenter& strip;
        VideoAdder& adder;
        std::function<void()> openWindow;
        std::function<void()> changed;
    };
    /// `imports` is null without a scene's folder: nothing can be imported then.
    ImportPresenter(Parts parts, std::shared_ptr<SceneImports> imports);
    ~ImportPresenter();
    ImportPresenter(const ImportPresenter&) = delete;
    ImportPresenter& operator=(const ImportPresenter&) = delete;

    [[nodiscard]] bool canImport() const { return m_imports != nullptr; }
    [[nodiscard]] bool isBusy() const;
    /// The clips that are being made anew.
    [[nodiscard]] std::vector<std::string> remade() const;
    void open() { m_parts.openWindow(); }

    /// Adds Ogg Theora files to the scene, imports other videos, and names the rest in the strip.
    void drop(const std::vector<std::string>& paths);
    /// What the last drop left out, once, to be said with what came of the rest; empty for nothing.
    [[nodiscard]] std::u16string takeLeftOut() { return std::exchange(m_leftOut, {}); }
    /// After files were added that are no Theora videos: `problem` says so, and the strip offers to
    /// import them.
    void offerImport(const std::u16string& problem, const std::vector<std::string>& paths);
    /// Offers to convert the clip of a finding, if that mends it. False if it does not.
    bool offerRemedy(const check::Finding& finding);

private:
    struct Dropped;

    void lookAtDropped();
    void takeDropped(const Dropped& dropped);
    void sayTooLittleMemory();
    void showProgress();
    void ended(const imports::ImportItem& item);
    void import(const std::vector<std::string>& paths);

    Parts m_parts;
    std::shared_ptr<SceneImports> m_imports;
    int m_shownId = 0; ///< of the item that the strip tells of
    std::vector<std::string> m_remade;
    edit::Subscription m_changes;
    edit::Subscription m_ends;
    std::vector<std::string> m_dropped; ///< still to be looked at
    std::u16string m_leftOut;
    jobs::BackgroundJob m_looking;
};

} // namespace ui
