// The Publish window: where a scene goes as a web page and what that offers, how far it is, and
// what has become of it. It takes the input of the editor that opened it. UI thread only.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "check/Finding.h"
#include "edit/Observers.h"
#include "publish/PublishJob.h"
#include "toolkit/window/Notification.h"
#include "ui/ConfirmCallback.h"
#include "ui/EditorWindow.h"
#include "ui/WindowContext.h"
#include "ui/publishing/PublishForm.h"
#include "ui/publishing/PublishRun.h"

namespace ui {

/// The scene that is published, which is that of the context's session.
struct PublishTask {
    std::string folder; ///< of the scene, ending in a separator
    /// That would stop a learner.
    std::vector<check::Finding> findings{};
    /// Saves the scene; whether that succeeded.
    std::function<bool()> save{};
    /// Called once the window is closed, for a finding that the author wants to see.
    std::function<void(const check::Finding&)> showPlace{};
};

class PublishWindow final : public EditorWindow {
public:
    PublishWindow(const WindowContext& context, PublishTask task);
    ~PublishWindow() override;

    /// Shows the window above `owner` until it is closed.
    static void show(const WindowContext& context, ConfirmCallback& owner, PublishTask task);

    /// What the window tells while it runs, and after.
    void showProgress(const publish::PublishProgress& progress);
    void showResult(publish::PublishResult result);

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"PublishWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "Publish.xml"; }
    void InitWindow() override;
    void Close(int code = 0) override;
    void Notify(toolkit::TNotifyUI& message) override;

private:
    enum class Phase { asking, running, done };

    void bindCommands();
    void show(Phase phase);
    void showFindings();
    /// Whether saving comes first, and why publishing is not possible now.
    void showState();
    [[nodiscard]] const std::string& sceneName() const;
    [[nodiscard]] bool isModified() const;
    [[nodiscard]] bool isImporting() const;
    void publish();
    [[nodiscard]] publish::PublishRequest request() const;
    void showPercent(int percent);
    void showDone();
    void chooseFolder();

    PublishTask m_task;
    PublishForm m_form{controls()};
    Phase m_phase = Phase::asking;
    bool m_showsFinding = false; ///< once it is closed
    publish::PublishResult m_result;
    edit::Subscription m_importsChanged;
    PublishRun m_run; ///< last: it uses all of the above
};

} // namespace ui
