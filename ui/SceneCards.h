// The scenes in the order in which they were opened or saved, the last one first, each with a
// still, counts and a date: the second list of the open scene window. What stands in the files is
// read in the background and shown as it comes. UI thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

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
    };

    [[nodiscard]] toolkit::CListUI* list() const;
    [[nodiscard]] std::unique_ptr<toolkit::CControlUI> makeRow(int row);
    void factsArrived(std::size_t row, const std::optional<scene::SceneSummary>& summary);
    /// Fills the row, if it is made.
    void showFacts(int row);
    /// Asks for the stills of the rows that are made, once the running event is over.
    void wantStills();
    void wantStillsNow();
    [[nodiscard]] stills::StillRequest requestOf(const Card& card) const;
    [[nodiscard]] std::u16string countsOf(const Card& card) const;

    Controls m_controls;
    platform::EventLoop& m_loop;
    std::vector<scene::ListedScene> m_scenes;
    std::vector<Card> m_cards; ///< by row
    SceneFacts m_facts;
    std::unique_ptr<stills::StillClient> m_stills; ///< null for none
    bool m_isWanting = false;
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
};

} // namespace ui
