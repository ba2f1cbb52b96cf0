// The pane left of the branch editor's column. A wide window has room for both; in a narrow one the
// pane takes the column's place for as long as it is asked for. It stays away while the layout puts
// nothing into it. Used by the branch editor.
#pragma once

#include "ui/Controls.h"

namespace core {
class EditorSettings;
}

namespace ui {

/// UI thread only.
class LeftPane {
public:
    /// `settings`, which may be null, outlive it: there the pane's state and the columns' widths
    /// are kept.
    LeftPane(Controls controls, core::EditorSettings* settings);

    [[nodiscard]] bool isShown() const;
    void show(bool shown);
    /// Whether it stands in the column's place.
    [[nodiscard]] bool isInPlace() const { return m_isInPlace; }
    /// A narrow window shows the column again.
    void leave();
    /// The window has another size.
    void windowSized() { arrange(); }
    /// The author has moved the splitter.
    void keepWidths() const;

private:
    [[nodiscard]] bool isFilled() const;
    [[nodiscard]] bool isWide() const;
    void arrange();

    Controls m_controls;
    core::EditorSettings* m_settings;
    bool m_isWanted;          ///< in a wide window
    bool m_isInPlace = false; ///< of the column, in a narrow one
};

} // namespace ui
