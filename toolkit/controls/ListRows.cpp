#include "toolkit/controls/ListRows.h"

#include <algorithm>
#include <utility>

namespace toolkit {

int ListRows::placeOf(int index) const {
    const auto found = std::lower_bound(m_made.begin(), m_made.end(), index,
                                        [](const Made& made, int row) { return made.row < row; });
    return static_cast<int>(found - m_made.begin());
}

int ListRows::rowAtPlace(int place) const {
    return m_made[static_cast<std::size_t>(place)].row;
}

CControlUI* ListRows::madeAt(int place) const {
    return m_made[static_cast<std::size_t>(place)].control.get();
}

CControlUI* ListRows::made(int index) const {
    const int place = placeOf(index);
    return place < madeCount() && rowAtPlace(place) == index ? madeAt(place) : nullptr;
}

bool ListRows::takePlacing(int index, int layout) {
    return std::exchange(m_made[static_cast<std::size_t>(placeOf(index))].layout, layout) != layout;
}

int ListRows::indexOf(const CControlUI* control) const {
    // Mostly asked for one row after the other.
    for (const std::size_t place : {m_found, m_found + 1, m_found - 1}) {
        if (place < m_made.size() && m_made[place].control.get() == control) {
            m_found = place;
            return m_made[place].row;
        }
    }
    const auto found = std::find_if(m_made.begin(), m_made.end(), [control](const Made& made) {
        return made.control.get() == control;
    });
    if (found == m_made.end()) {
        return -1;
    }
    m_found = static_cast<std::size_t>(found - m_made.begin());
    return found->row;
}

void ListRows::insert(int index, Control control) {
    const int place = placeOf(index);
    for (auto later = m_made.begin() + place; later != m_made.end(); ++later) {
        ++later->row;
    }
    if (control != nullptr) {
        m_made.insert(m_made.begin() + place, {index, false, std::move(control), 0});
    }
    m_selected.insert(m_selected.begin() + index, false);
    m_measured = std::min(m_measured, index);
}

void ListRows::append(int count) {
    m_selected.resize(m_selected.size() + static_cast<std::size_t>(count));
}

void ListRows::make(int index, Control control) {
    m_made.insert(m_made.begin() + placeOf(index), {index, true, std::move(control), 0});
}

ListRows::Control ListRows::remove(int index) {
    const int place = placeOf(index);
    Control removed;
    auto later = m_made.begin() + place;
    if (later != m_made.end() && later->row == index) {
        removed = std::move(later->control);
        later = m_made.erase(later);
    }
    for (; later != m_made.end(); ++later) {
        --later->row;
    }
    m_selected.erase(m_selected.begin() + index);
    m_measured = std::min(m_measured, index);
    return removed;
}

std::vector<ListRows::Control> ListRows::clear() {
    std::vector<Control> controls;
    for (Made& made : std::exchange(m_made, {})) {
        controls.push_back(std::move(made.control));
    }
    m_selected.clear();
    m_tops.clear();
    m_measured = 0;
    return controls;
}

std::vector<ListRows::Control>
ListRows::unmake(int first, int last, const std::function<bool(const CControlUI&)>& spare) {
    std::vector<Control> controls;
    for (Made& made : m_made) {
        if (made.announced && (made.row < first || made.row >= last) && spare(*made.control)) {
            controls.push_back(std::move(made.control));
        }
    }
    std::erase_if(m_made, [](const Made& made) { return made.control == nullptr; });
    return controls;
}

void ListRows::measure(int announced, const std::function<int(const CControlUI&)>& height) {
    m_tops.resize(m_selected.size() + 1);
    int place = placeOf(m_measured);
    for (int row = m_measured; row < count(); ++row) {
        const bool isMade = place < madeCount() && rowAtPlace(place) == row;
        m_tops[static_cast<std::size_t>(row) + 1] =
            top(row) + (isMade ? height(*madeAt(place++)) : announced);
    }
    m_measured = count();
}

int ListRows::rowAt(int y) const {
    const auto after = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    const auto row = static_cast<int>(after - m_tops.begin()) - 1;
    return std::min(std::max(row, 0), count() - 1);
}

} // namespace toolkit
