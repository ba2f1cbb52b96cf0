// The bar of the open scene window that asks for the name of a copy of a scene and makes it in the
// background. Hidden while it is not asked for. UI thread only.
#pragma once

#include <functional>
#include <string>

#include "jobs/FolderCopy.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "ui/Controls.h"

namespace ui {

class DuplicateBar {
public:
    /// `made` is called with the name of each new scene, `changed` after all that enables or
    /// disables buttons.
    DuplicateBar(Controls controls, platform::EventLoop& loop, platform::FileSystem& files,
                 std::function<void(const std::string& name)> made, std::function<void()> changed);

    /// Shows the bar with a free name for a copy of this scene.
    void ask(const std::string& scene);
    /// Makes the copy under the name in the field.
    void make();
    /// Hides the bar; a running copy is cancelled, and the bar goes when it has been removed.
    void hide();
    [[nodiscard]] bool isShown() const;
    [[nodiscard]] bool isCopying() const { return m_copy.isRunning(); }

private:
    void show(bool shown);
    void showProgress();
    void done(const std::string& name, const std::string& failure);
    /// Why there is to be no scene of that name; empty if there may be.
    [[nodiscard]] std::u16string objectionTo(const std::string& name) const;
    void showProblem(const std::u16string& text) const;

    Controls m_controls;
    platform::FileSystem& m_files;
    std::function<void(const std::string&)> m_made;
    std::function<void()> m_changed;
    std::string m_scene; ///< to be copied
    jobs::FolderCopy m_copy;
};

} // namespace ui
