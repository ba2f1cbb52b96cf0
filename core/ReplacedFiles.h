// What a save hands the files to that it is about to replace, so that they can be kept. The
// sessions hold one such object; recovery/ implements it. UI thread only.
//
//   KeepReplaced kept(keeper, paths, Need::wish);               // before anything is written
//   good = writeNewFiles() && kept.isReady() && renameThem();   // isReady: right before the rename
//   if (good) kept.replaced();
#pragma once

#include <string>
#include <vector>

#include "core/FileError.h"

namespace core {

class ReplacedFiles {
public:
    /// wish: a failure is the keeper's own business, and the save goes on.
    /// must: the files hold work that was not read; a save that cannot keep them must not go on.
    enum class Need { wish, must };

    virtual ~ReplacedFiles() = default;
    /// A save of `paths` begins; those that do not exist are passed over. Throws nothing.
    virtual void begin(const std::vector<std::string>& paths, Need need) noexcept = 0;
    /// The files are replaced next. Not empty only with Need::must: why they cannot be kept.
    [[nodiscard]] virtual FileError beforeReplace() noexcept = 0;
    /// The save is over. Unless a file was `replaced`, what was kept of it goes again.
    virtual void end(bool replaced) noexcept = 0;
};

/// One save's use of it. Without a keeper nothing is kept.
class KeepReplaced {
public:
    KeepReplaced(ReplacedFiles* keeper, const std::vector<std::string>& paths,
                 ReplacedFiles::Need need)
        : m_keeper(keeper) {
        if (m_keeper != nullptr) {
            m_keeper->begin(paths, need);
        }
    }
    ~KeepReplaced() {
        if (m_keeper != nullptr) {
            m_keeper->end(m_replaced);
        }
    }
    KeepReplaced(const KeepReplaced&) = delete;
    KeepReplaced& operator=(const KeepReplaced&) = delete;

    /// Whether the files may be replaced now.
    [[nodiscard]] bool isReady() {
        m_failure = m_keeper != nullptr ? m_keeper->beforeReplace() : FileError{};
        return m_failure.empty();
    }
    void replaced() { m_replaced = true; }
    /// Why not.
    [[nodiscard]] const FileError& failure() const { return m_failure; }

private:
    ReplacedFiles* m_keeper;
    FileError m_failure;
    bool m_replaced = false;
};

} // namespace core
