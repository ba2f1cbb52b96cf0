// The text of a single-line edit with its caret, selection and undo. No window: pure text work.
// Positions count code units and never stand inside a surrogate pair or before a combining mark.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

class EditModel {
public:
    /// Longest text an edit takes, in code units.
    static constexpr std::size_t kMaxLength = 32767;

    [[nodiscard]] const std::u16string& text() const { return m_text; }
    [[nodiscard]] std::size_t caret() const { return m_caret; }
    [[nodiscard]] std::size_t selectionBegin() const {
        return m_caret < m_anchor ? m_caret : m_anchor;
    }
    [[nodiscard]] std::size_t selectionEnd() const {
        return m_caret < m_anchor ? m_anchor : m_caret;
    }
    [[nodiscard]] bool hasSelection() const { return m_caret != m_anchor; }
    [[nodiscard]] std::u16string_view selectedText() const;

    void setMaxLength(std::size_t units) { m_maxLength = units < kMaxLength ? units : kMaxLength; }
    /// Replaces everything and forgets the undo steps; the caret goes to the end.
    void setText(std::u16string_view text);
    void setCaret(std::size_t position, bool extend);
    /// Selects [begin, end), caret at the end.
    void select(std::size_t begin, std::size_t end);
    void selectAll() { select(0, m_text.size()); }
    void selectWordAt(std::size_t position);

    void moveLeft(bool word, bool extend);
    void moveRight(bool word, bool extend);
    void moveHome(bool extend) { setCaret(0, extend); }
    void moveEnd(bool extend) { setCaret(m_text.size(), extend); }

    /// The changes return whether the text is another one afterwards. Line ends, tabs and other
    /// control characters are dropped; unpaired surrogates become U+FFFD.
    bool insert(std::u16string_view text);
    bool eraseBack(bool word);
    bool eraseForward(bool word);
    bool eraseSelection();
    bool undo();
    bool redo();
    [[nodiscard]] bool canRedo() const { return !m_redo.empty(); }

private:
    struct Step {
        std::u16string text;
        std::size_t caret = 0;
        std::size_t anchor = 0;
    };
    enum class Change { none, typing, erasing, other };

    void remember(Change change, Step former);
    [[nodiscard]] Step present() const { return {m_text, m_caret, m_anchor}; }
    void restore(std::vector<Step>& from, std::vector<Step>& to);
    void replace(std::size_t begin, std::size_t end, std::u16string_view with);
    [[nodiscard]] bool isInsidePair(std::size_t position) const;
    [[nodiscard]] bool isInsideCharacter(std::size_t position) const;
    [[nodiscard]] std::size_t characterBegin(std::size_t position) const;
    [[nodiscard]] std::size_t characterEnd(std::size_t position) const;
    [[nodiscard]] std::size_t before(std::size_t position) const;
    [[nodiscard]] std::size_t after(std::size_t position) const;
    [[nodiscard]] std::size_t wordBefore(std::size_t position) const;
    [[nodiscard]] std::size_t wordAfter(std::size_t position) const;

    std::u16string m_text;
    std::size_t m_caret = 0;
    std::size_t m_anchor = 0;
    std::size_t m_maxLength = kMaxLength;
    std::vector<Step> m_undo;
    std::vector<Step> m_redo;
    Change m_lastChange = Change::none;
};

} // namespace toolkit
