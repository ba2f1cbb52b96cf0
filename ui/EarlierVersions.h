// The window of earlier versions: lists what the saves of a scene, or of a video's zones, replaced,
// shows how a version differs from what is edited, and brings one back as a step. It takes the
// input of the editor that opened it. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/Differences.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/window/Notification.h"
#include "ui/ConfirmCallback.h"
#include "ui/EditorWindow.h"
#include "ui/VersionHistory.h"
#include "ui/VersionReader.h"
#include "ui/WindowContext.h"
#include "ui/map/MapStills.h"

namespace ui {

class EarlierVersions final : public EditorWindow {
public:
    EarlierVersions(const WindowContext& context, VersionHistory history);
    ~EarlierVersions() override;

    /// Shows the window above `owner` until it is closed.
    static void show(const WindowContext& context, ConfirmCallback& owner, VersionHistory history);

    [[nodiscard]] std::u16string GetWindowClassName() const override {
        return u"EarlierVersionsWindow";
    }
    [[nodiscard]] std::string GetSkinFile() const override { return "EarlierVersions.xml"; }
    void InitWindow() override;
    [[nodiscard]] std::unique_ptr<toolkit::CControlUI>
    CreateControl(std::u16string_view className) override;
    void OnSelectChanged(toolkit::TNotifyUI& message) override;
    void OnItemSelect(toolkit::TNotifyUI& message) override;
    void OnItemActivate(toolkit::TNotifyUI& message) override;

private:
    void addRows(const std::vector<VersionReader::Row>& rows);
    void addDay(toolkit::CListUI& list, std::u16string_view day);
    void addVersion(toolkit::CListUI& list, const VersionReader::Row& row);
    void showEmpty();
    void showChosen(int row);
    void showDetails(VersionDetails details);
    void prepareMap();
    /// The map, or the list of what the version holds.
    void showView();
    void listLines(std::u16string_view name, std::vector<check::Line> lines,
                   std::unique_ptr<toolkit::CControlUI> (*makeRow)(const check::Line&));
    void restore();

    VersionReader m_reader;
    /// By the row of the list; days have none.
    std::vector<std::optional<recovery::Version>> m_versions;
    std::u16string m_lastDay;
    std::unique_ptr<MapStills> m_stills; ///< null: versions have no map
    VersionMap m_map;                    ///< of the chosen version
    bool m_hasMap = false;               ///< the chosen version, as far as is known
    bool m_isMapWanted = true;
    std::function<bool()> m_restore; ///< of the chosen version; empty until it is read
};

} // namespace ui
