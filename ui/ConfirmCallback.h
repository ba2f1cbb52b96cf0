// The side of a window that asks yes/no questions: the confirmation dialog writes its answer here.
// Used by the branch editor and the zone editor. UI thread only.
#pragma once

#include <cstdint>

#include "ui/Companions.h"

namespace platform {
class NativeWindow;
}

namespace ui {

class ConfirmCallback {
public:
    static constexpr std::uint8_t kNo = 0;
    static constexpr std::uint8_t kYes = 1;

    virtual ~ConfirmCallback() = default;
    /// kYes or kNo. Written by the dialog only when a button is pressed: the asker sets the answer
    /// that a dismissal shall mean before it asks.
    virtual void SetAnswer(std::uint8_t answer) { m_answer = answer; }
    /// The dialog's owner; null when the asking window is gone. Not owned.
    [[nodiscard]] virtual platform::NativeWindow* GetParentWindow() = 0;
    /// The asker's modeless windows, which take no input while a question is on the screen; null
    /// when it has none.
    [[nodiscard]] virtual Companions* askersCompanions() { return nullptr; }

    [[nodiscard]] std::uint8_t answer() const { return m_answer; }
    /// True while a question is on the screen: the asking window must not be closed under it.
    [[nodiscard]] bool isAsking() const { return m_asking; }

private:
    friend class AskingScope;

    std::uint8_t m_answer = kNo;
    bool m_asking = false;
};

/// A question, or a dialog of the system, is on the screen for the lifetime of this object, which
/// the asker outlives.
class AskingScope {
public:
    explicit AskingScope(ConfirmCallback& asker) : m_asker(asker) { set(true); }
    ~AskingScope() { set(false); }
    AskingScope(const AskingScope&) = delete;
    AskingScope& operator=(const AskingScope&) = delete;

private:
    void set(bool asking) {
        m_asker.m_asking = asking;
        if (Companions* companions = m_asker.askersCompanions()) {
            companions->setEnabled(!asking);
        }
    }

    ConfirmCallback& m_asker;
};

} // namespace ui
