// A flag that is set while something is going on.
#pragma once

namespace ui {

/// Sets the flag for its own lifetime; the flag outlives it.
class FlagScope {
public:
    explicit FlagScope(bool& flag) : m_flag(flag) { flag = true; }
    ~FlagScope() { m_flag = false; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& m_flag;
};

} // namespace ui
