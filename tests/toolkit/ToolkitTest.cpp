#include "tests/toolkit/ToolkitTest.h"

#include <cstddef>
#include <stdexcept>

#include "core/Text.h"

namespace toolkit_test {

void RecordingWindow::Notify(toolkit::TNotifyUI& message) {
    std::string note =
        core::storedText(message.sType) + " " + core::storedText(message.pSender->GetName());
    if (message.sType == toolkit::kItemSelect) {
        note += " " + std::to_string(message.wParam);
    }
    notes.push_back(note);
    const auto reaction = reactions.find(note);
    if (reaction != reactions.end()) {
        reaction->second(*message.pSender);
    }
}

RecordingWindow& ToolkitTest::open(const std::string& controls,
                                   const std::string& windowAttributes) {
    support::writeBytes("UI/Test.xml", "<Window size=\"400,300\" " + windowAttributes + ">" +
                                           controls + "</Window>");
    m_window = std::make_shared<RecordingWindow>(test::gui());
    if (!m_window->Create(nullptr, u"Test", 0, 0)) {
        throw std::runtime_error("the window cannot be created");
    }
    driver().show();
    return *m_window;
}

std::string bmp(int width, int height, const std::vector<std::uint32_t>& pixels) {
    const auto count = static_cast<std::uint32_t>(pixels.size() * 4);
    constexpr std::uint32_t kFileHeader = 14;
    constexpr std::uint32_t kHeader = 40;
    std::vector<std::uint32_t> words{kFileHeader + kHeader + count, 0, kFileHeader + kHeader};
    words.insert(words.end(), {kHeader, static_cast<std::uint32_t>(width),
                               static_cast<std::uint32_t>(height), 32U << 16U | 1U, 0, count});
    words.resize(words.size() + 4); // resolution and palette: none
    for (auto end = pixels.end(); end != pixels.begin(); end -= width) {
        words.insert(words.end(), end - width, end);
    }
    std::string bytes = "BM";
    for (const std::uint32_t word : words) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            bytes.push_back(static_cast<char>(word >> shift));
        }
    }
    return bytes;
}

std::string bmp(int width, int height, std::uint32_t pixel) {
    return bmp(width, height, std::vector(static_cast<std::size_t>(width * height), pixel));
}

} // namespace toolkit_test
