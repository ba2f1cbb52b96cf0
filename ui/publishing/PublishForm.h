// What the author chooses in the Publish window: folder, title, language and boxes. All but the
// first two are remembered. UI thread only.
#pragma once

#include <string>
#include <string_view>

#include "publish/PageText.h"
#include "ui/Controls.h"

namespace core {
class EditorSettings;
}

namespace ui {

class PublishForm {
public:
    static constexpr std::u16string_view kFolder = u"EditPublishFolder";

    explicit PublishForm(Controls controls) : m_controls(controls) {}

    /// `spoken`: the editor's language, which the page has as well unless another one was chosen.
    /// `settings` may be null, here and below.
    void fill(const std::string& sceneName, const std::string& spoken,
              const core::EditorSettings* settings);
    void setEnabled(bool enabled);
    [[nodiscard]] publish::PageOptions options() const;
    static void remember(const publish::PageOptions& options, core::EditorSettings* settings);

    /// As the author wrote it.
    [[nodiscard]] std::u16string folder() const;
    /// Absolute; empty without one.
    [[nodiscard]] std::string folderPath() const;
    /// A folder that holds something else gets the page of this scene as a folder of its own.
    void setFolder(const std::string& path, const std::string& sceneName);

private:
    Controls m_controls;
};

} // namespace ui
