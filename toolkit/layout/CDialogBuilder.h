// Reads a layout and builds a window's controls from it. docs/skin.md describes the vocabulary.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"

namespace toolkit {

class CControlUI;
class CContainerUI;
class CPaintManagerUI;
class IDialogBuilderCallback;

class CDialogBuilder {
public:
    static constexpr std::size_t kMaxLayoutBytes = std::size_t{4} << 20U;
    static constexpr int kMaxControls = 20000;
    static constexpr int kMaxWindowSide = 8192;

    CDialogBuilder();
    ~CDialogBuilder();

    /// Parses a layout. False when it is no well-formed XML with a Window at its root, or has no
    /// size; problem() says what is wrong. Builds nothing.
    [[nodiscard]] bool Load(std::span<const std::uint8_t> xml);
    [[nodiscard]] const std::string& problem() const { return m_problem; }
    /// The file of the layout that this one changes; empty: it stands for itself.
    [[nodiscard]] const std::string& baseFile() const { return m_baseFile; }
    /// Takes from that layout, which must have no base itself, all but the window's sizes where
    /// this one has its own. As Load.
    [[nodiscard]] bool LoadBase(std::span<const std::uint8_t> xml);
    /// The window's client size in pixels, 1 to kMaxWindowSide a side; after Load.
    [[nodiscard]] platform::Size windowSize() const { return m_size; }
    /// The least size of a window that the user can size; else empty.
    [[nodiscard]] platform::Size leastSize() const { return m_leastSize; }

    /// Makes fonts, defaults and controls and hands them to `manager`. Elements unknown to both
    /// the toolkit and `callback` (may be null) are skipped with their content. False when there
    /// are more than kMaxControls. `file`: the name of the layout that was loaded, for its texts.
    [[nodiscard]] bool Build(CPaintManagerUI& manager, IDialogBuilderCallback* callback,
                             std::string_view file = {});
    /// Elements and attributes of the last Build that are unknown, one line of text each.
    [[nodiscard]] const std::vector<std::string>& remarks() const { return m_remarks; }

private:
    struct Document;
    struct Building;

    bool parse(Document& document, std::span<const std::uint8_t> xml);
    [[nodiscard]] const char* windowAttribute(const char* name) const;
    bool readWindow();

    std::unique_ptr<Document> m_document;
    std::unique_ptr<Document> m_base; ///< null for a layout that stands for itself
    std::string m_problem;
    std::string m_baseFile;
    std::string m_area; ///< under which its texts are looked up first
    std::vector<std::string> m_remarks;
    platform::Size m_size;
    platform::Size m_leastSize;
};

} // namespace toolkit
