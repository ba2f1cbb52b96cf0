// The attributes of one control kind as a table from name to setter. A kind looks into its own
// table first and asks its base for the rest.
#pragma once

#include <initializer_list>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace toolkit {

template <class Control>
class AttributeTable {
public:
    using Setter = void (*)(Control&, std::u16string_view value);

    AttributeTable(std::initializer_list<std::pair<const std::u16string_view, Setter>> entries)
        : m_setters(entries) {}

    /// False when the kind has no attribute `name`.
    bool apply(Control& control, std::u16string_view name, std::u16string_view value) const {
        const auto found = m_setters.find(name);
        if (found == m_setters.end()) {
            return false;
        }
        found->second(control, value);
        return true;
    }

private:
    std::unordered_map<std::u16string_view, Setter> m_setters;
};

/// Stores a parsed value; text that is not a value leaves `target` unchanged.
template <class Target, class Value>
void assignIf(Target& target, const std::optional<Value>& value) {
    if (value) {
        target = *value;
    }
}

/// Hands a parsed value to a setter; nothing is called for text that is not a value.
template <class Control, class Base, class Argument, class Value>
void setIf(Control& control, void (Base::*setter)(Argument), const std::optional<Value>& value) {
    if (value) {
        (control.*setter)(*value);
    }
}

} // namespace toolkit
