// The Import window: files to convert, how, and what becomes of each. It stands beside the branch
// editor; converting goes on when it is closed. UI thread only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "edit/Observers.h"
#include "import/ImportTypes.h"
#include "platform/Event.h"
#include "ui/EditorWindow.h"
#include "ui/WindowContext.h"

namespace toolkit {
class CControlUI;
class CListUI;
struct TNotifyUI;
} // namespace toolkit

namespace ui {

class SceneImports;

class ImportVideo final : public EditorWindow {
public:
    /// Empty without an open scene.
    [[nodiscard]] static std::shared_ptr<ImportVideo> create(const WindowContext& context);
    ImportVideo(const WindowContext& context, std::shared_ptr<SceneImports> imports);
    ~ImportVideo() override;

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"ImportWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "ImportVideo.xml"; }
    void InitWindow() override;
    void OnClick(toolkit::TNotifyUI& message) override;
    void OnItemSelect(toolkit::TNotifyUI& message) override;
    void OnSelectChanged(toolkit::TNotifyUI& message) override;
    bool HandleMessage(const platform::Event& event) override;

private:
    void bindCommands();
    void fillQuality();
    void takeSettings();
    /// Shows what the imports are now.
    void refresh();
    void showRows(toolkit::CListUI& list);
    void showWhole();
    void addFiles();
    void findConverter();
    [[nodiscard]] const imports::ImportItem* chosen();
    [[nodiscard]] const imports::ImportItem* itemOf(const toolkit::CControlUI& button);
    /// Cancels what is under way, takes what is over off the list.
    void end(int id);
    void remedy(int id);
    void clear();

    std::shared_ptr<SceneImports> m_imports;
    std::vector<int> m_ids; ///< of the items, by row
    edit::Subscription m_changed;
};

} // namespace ui
