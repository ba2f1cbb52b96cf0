// The scenes in the order in which they were opened or saved, the last one first, each with a
// still, counts, the number of its findings and a date: the second list of the open scene window.
// What stands in the files is read in the background and shown as it comes; scenes are checked only
// once their rows are near the visible ones. UI thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/SceneCheck.h"
#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "scene/SceneFolders.h"
#include "scene/SceneSummary.h"
#include "stills/Still.h"
#include "stills/StillService.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "ui/Controls.h"
#include "ui/SceneFacts.h"

namespace ui {

class SceneCards {
public:
    /// `scenes` in the order of the other list. All references outlive the cards; without `stills`
    /// there are none.
    SceneCards(Controls controls, platform::EventLoop& loop, platform::FileSystem& files,
               stills::StillService* stills, std::vector<scene::ListedScene> scenes);
    ~SceneCards();
    SceneCards(const SceneCards&) = delete;
    SceneCards& operator=(const SceneCards&) = delete;

    /// Chooses the scene by its place in the other list.
    void choose(int scene, bool reveals);
    /// Its place there; -1 for none.
    [[nodiscard]] int chosen() const;

private:
    struct Card {
        std::size_t scene; ///< its place in the other list
        std::int64_t time; ///< when it was opened or saved
        bool isRead = false;
        std::optional<scene::SceneSummary> summary{};
        bool isCounted = false;
        check::Counts findings{};
    };

    [[nodiscard]] toolkit::CListUI* list() const;
    [[nodiscard]] std::unique_ptr<toolkit::CControlUI> makeRow(int row);
    void factsArrived(std::size_t row, const std::optional<scene::SceneSummary>& summary);
    /// Fills the row, if it is made.
    void showFacts(int row);
    /// Asks for what the rows that are made do not show yet, once the running event is over.
    void wantMore();
    void wantStills();
    /// Counts the findings of one scene after another.
    void countNext();
    /// Those that are visible first.
    [[nodiscard]] std::vector<std::size_t> madeRows() const;
    [[nodiscard]] stills::StillRequest requestOf(const Card& card) const;
    [[nodiscard]] std::u16string countsOf(const Card& card) const;

    Controls m_controls;
    platform::EventLoop& m_loop;
    platform::FileSystem& m_files;
    std::vector<scene::ListedScene> m_scenes;
    std::vector<Card> m_cards; ///< by row
    SceneFacts m_facts;
    jobs::BackgroundJob m_counting;
    std::unique_ptr<stills::StillClient> m_stills; ///< null for none
    bool m_isWanting = false;
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
};

} // namespace ui
