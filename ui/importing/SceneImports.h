// The videos that are being imported into the open scene. Windows come and go meanwhile: this goes
// on until the scene is left, and adds each finished video to the scene as a step. One for each
// scene, made by the branch editor. UI thread only.
//
//   m_watch = imports.observe([this] { show(imports.items()); });
//   imports.add({"/home/ann/reception.mov"});
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "edit/Observers.h"
#include "import/Converter.h"
#include "import/ImportQueue.h"
#include "import/ImportTypes.h"
#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"

namespace core {
class EditorSettings;
}
namespace scene {
class SceneSession;
}

namespace ui {

class SceneImports {
public:
    enum class ConverterState { looking, missing, found };

    /// Looks for the converter, first at what the author has chosen. Called on a thread.
    using Finder = std::function<imports::Converter(const std::string& chosen)>;

    /// `folder` is the scene's, as scene::sceneFolderPath() has it. `loop` and `files`, which is
    /// used on threads, outlive the object. Without a finder the usual places are searched.
    SceneImports(platform::EventLoop& loop, platform::FileSystem& files,
                 std::shared_ptr<scene::SceneSession> session,
                 std::shared_ptr<core::EditorSettings> settings, std::string folder,
                 Finder find = {});
    /// Ends what runs; what waits is forgotten.
    ~SceneImports();
    SceneImports(const SceneImports&) = delete;
    SceneImports& operator=(const SceneImports&) = delete;

    [[nodiscard]] const std::string& folder() const { return m_folder; }
    [[nodiscard]] edit::Subscription observe(std::function<void()> listener) {
        return m_changes.add(std::move(listener));
    }
    /// Told of each file once, when it is done or has failed.
    [[nodiscard]] edit::Subscription
    observeEnds(std::function<void(const imports::ImportItem&)> listener) {
        return m_ends.add(std::move(listener));
    }

    // The converter is looked for in the background, at first and on request. Files that are added
    // before it is found wait for it.
    [[nodiscard]] ConverterState converterState() const { return m_converterState; }
    [[nodiscard]] const imports::Converter& converter() const { return m_converter; }
    void lookAgain();

    /// Imports these files, UTF-8 paths, one after the other.
    void add(const std::vector<std::string>& sources);
    /// Makes a clip of the scene anew, and has all its branches show the new one, as one step.
    void remake(const std::string& clip);
    /// Imports a file that failed after all, if there is a way: under another name, or what is
    /// readable of it. False if there is none.
    bool retry(int id);
    [[nodiscard]] imports::ImportQueue& queue() { return m_queue; }
    [[nodiscard]] const std::vector<imports::ImportItem>& items() const { return m_queue.items(); }
    /// The clips that are being made anew.
    [[nodiscard]] std::vector<std::string> clipsBeingRemade() const;
    /// Remembered for the next time.
    void setSettings(const imports::ImportSettings& settings);

    // For the strip, which says how far it is while no window does.
    [[nodiscard]] bool isWindowOpen() const { return m_isWindowOpen; }
    void setWindowOpen(bool open);

private:
    void takeConverter(const imports::Converter& converter);
    void changed();
    void tellEnds();
    void joinScene(const imports::ImportItem& item);
    [[nodiscard]] imports::ImportSettings rememberedSettings() const;

    Finder m_find;
    std::shared_ptr<scene::SceneSession> m_session;
    std::shared_ptr<core::EditorSettings> m_settings; ///< may be null
    std::string m_folder;
    ConverterState m_converterState = ConverterState::looking;
    imports::Converter m_converter;
    struct Request {
        std::string file;
        bool isRemake = false;
    };
    std::vector<Request> m_waiting; ///< for a converter
    std::vector<int> m_open;        ///< ids of items whose end was not told yet
    bool m_looksAgain = false;
    bool m_isWindowOpen = false;
    edit::Observers<> m_changes;
    edit::Observers<const imports::ImportItem&> m_ends;
    imports::ImportQueue m_queue;
    jobs::BackgroundJob m_looking; ///< last: it uses all of the above
};

/// The key under which the settings keep where the converter is.
inline constexpr std::string_view kConverterKey = "converter";

} // namespace ui
