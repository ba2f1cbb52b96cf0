// The pane left of the branch editor's column, with its pages: the map and the preview. A wide
// window has room for both; in a narrow one the pane takes the column's place for as long as it is
// asked for. Used by the branch editor.
#pragma once

#include "ui/Controls.h"

namespace core {
class EditorSettings;
}

namespace ui {

/// UI thread only.
class LeftPane {
public:
    enum class Page { map, preview };

    /// `settings`, which may be null, outlive it: there the pane's state and the columns' widths
    /// are kept.
    LeftPane(Controls controls, core::EditorSettings* settings);

    [[nodiscard]] bool isShown() const;
    [[nodiscard]] bool isShown(Page page) const { return isShown() && m_page == page; }
    void show(bool shown);
    /// Shows the pane with that page.
    void showPage(Page page);
    /// The same in the column's place. False: there is room for both, or the pane is there already.
    bool putInPlace(Page page);
    /// The author has chosen a tab.
    void turnPage();
    /// Whether it stands in the column's place.
    [[nodiscard]] bool isInPlace() const { return m_isInPlace; }
    /// A narrow window shows the column again.
    void leave();
    /// The window has another size.
    void windowSized() { arrange(); }
    /// The author has moved the splitter.
    void keepWidths() const;

private:
    [[nodiscard]] bool isWide() const;
    void arrange();

    Controls m_controls;
    core::EditorSettings* m_settings;
    Page m_page = Page::map;
    bool m_isWanted;          ///< in a wide window
    bool m_isInPlace = false; ///< of the column, in a narrow one
};

} // namespace ui
