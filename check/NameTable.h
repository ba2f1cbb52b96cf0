// Numbers for the names in a scene, so that a check after an edit compares numbers instead of
// texts. What is known of a name is found out once. This module's sources only.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "check/Names.h"

namespace check {

class NameTable {
public:
    struct Entry {
        std::string text;
        std::optional<NameFault> fault;
        int folded; ///< of names that are alike but for case and blanks the same number
    };

    /// Always the same for the same name.
    int numberOf(const std::string& name) {
        const auto found = m_numbers.find(name);
        if (found != m_numbers.end()) {
            return found->second;
        }
        const int folded =
            m_folded.try_emplace(foldedName(name), static_cast<int>(m_folded.size())).first->second;
        const int number = static_cast<int>(m_entries.size());
        m_entries.push_back({name, faultOf(name), folded});
        m_numbers.emplace(name, number);
        return number;
    }
    [[nodiscard]] const Entry& operator[](int number) const {
        return m_entries[static_cast<std::size_t>(number)];
    }
    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] std::size_t foldedCount() const { return m_folded.size(); }

private:
    std::vector<Entry> m_entries;
    std::unordered_map<std::string, int> m_numbers;
    std::unordered_map<std::string, int> m_folded;
};

} // namespace check
