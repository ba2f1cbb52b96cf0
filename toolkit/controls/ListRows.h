// The rows of a list without their list: which of them are made, where each begins, and which are
// selected. Rows are either added as controls or only announced, and made when they are needed.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "toolkit/controls/CControlUI.h"

namespace toolkit {

class ListRows {
public:
    using Control = std::unique_ptr<CControlUI>;

    [[nodiscard]] int count() const { return static_cast<int>(m_selected.size()); }
    [[nodiscard]] bool contains(int index) const { return index >= 0 && index < count(); }
    /// Null for a row that is not made, and for no row.
    [[nodiscard]] CControlUI* made(int index) const;
    /// -1 when `control` is no row.
    [[nodiscard]] int indexOf(const CControlUI* control) const;
    [[nodiscard]] int madeCount() const { return static_cast<int>(m_made.size()); }
    /// The row that is made as number `place` of those that are. Must exist.
    [[nodiscard]] CControlUI* madeAt(int place) const;
    /// The place of the first made row at `index` or beyond; madeCount() when there is none.
    [[nodiscard]] int placeOf(int index) const;
    [[nodiscard]] int rowAtPlace(int place) const;
    /// Whether layout number `layout`, above 0, has yet to place the row, which it then has done.
    bool takePlacing(int index, int layout);

    /// A null control announces a row.
    void insert(int index, Control control);
    /// Announces `count` rows behind the others.
    void append(int count);
    /// Gives an announced row its control.
    void make(int index, Control control);
    /// Its control, null if it had none. Must exist.
    Control remove(int index);
    /// The controls that were made.
    std::vector<Control> clear();
    /// The controls of announced rows before `first` and from `last` on for which `spare` holds;
    /// these rows are only announced from then on.
    std::vector<Control> unmake(int first, int last,
                                const std::function<bool(const CControlUI&)>& spare);

    // Heights: tops are valid from the call of measure() until rows come or go.
    /// `height` is called for the control of each row that is made; others are `announced` high.
    void measure(int announced, const std::function<int(const CControlUI&)>& height);
    void forgetHeights() { m_measured = 0; }
    [[nodiscard]] bool isMeasured() const { return m_measured == count() && !m_tops.empty(); }
    /// Of a row in the content; of count(): where the last one ends.
    [[nodiscard]] int top(int index) const { return m_tops[static_cast<std::size_t>(index)]; }
    /// The row at a height of the content: the first one above it, the last one below it, -1
    /// without rows.
    [[nodiscard]] int rowAt(int y) const;

    [[nodiscard]] bool isSelected(int index) const {
        return contains(index) && m_selected[static_cast<std::size_t>(index)];
    }
    void select(int index, bool selected) {
        m_selected[static_cast<std::size_t>(index)] = selected;
    }

private:
    struct Made {
        int row;
        bool announced; ///< its control can be made again
        Control control;
        int layout = 0; ///< the one that placed it last
    };

    std::vector<Made> m_made; ///< by row
    std::vector<bool> m_selected;
    std::vector<int> m_tops;         ///< one more than rows
    int m_measured = 0;              ///< rows whose ends are known
    mutable std::size_t m_found = 0; ///< place of the row that was looked for last
};

} // namespace toolkit
