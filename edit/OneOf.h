// An operation of one of several kinds, held by value. Each kind is a small struct with the four
// functions required by edit/History.h; it may also have `prepare` and `absorb`.
//
//   using SceneOperation = edit::OneOf<SceneManager, SceneChange, AddAction, RemoveAction>;
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace edit {

template <class Model, class Change, class... Kinds>
class OneOf {
public:
    template <class Kind>
    requires(std::is_same_v<std::remove_cvref_t<Kind>, Kinds> || ...) OneOf(Kind&& kind)
        : m_kind(std::forward<Kind>(kind)) {} // NOLINT: wanted as a conversion

    void apply(Model& model) {
        std::visit([&](auto& kind) { kind.apply(model); }, m_kind);
    }
    void prepare(Model& model) {
        std::visit(
            [&](auto& kind) {
                if constexpr (requires { kind.prepare(model); }) {
                    kind.prepare(model);
                }
            },
            m_kind);
    }
    void revert(Model& model) noexcept {
        std::visit([&](auto& kind) { kind.revert(model); }, m_kind);
    }
    [[nodiscard]] std::vector<Change> changes() const {
        return std::visit([](const auto& kind) { return kind.changes(); }, m_kind);
    }
    [[nodiscard]] std::size_t bytes() const {
        return std::visit([](const auto& kind) { return kind.bytes(); }, m_kind);
    }
    /// A kind absorbs only its own kind.
    bool absorb(OneOf& next) {
        return std::visit(
            [&](auto& kind) {
                using Kind = std::remove_reference_t<decltype(kind)>;
                Kind* other = std::get_if<Kind>(&next.m_kind);
                if constexpr (requires { kind.absorb(*other); }) {
                    return other != nullptr && kind.absorb(*other);
                } else {
                    return false;
                }
            },
            m_kind);
    }

private:
    std::variant<Kinds...> m_kind;
};

} // namespace edit
