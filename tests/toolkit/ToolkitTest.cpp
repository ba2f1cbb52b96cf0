#include "tests/toolkit/ToolkitTest.h"

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
    return open(controls, windowAttributes, [](RecordingWindow&) {});
}

RecordingWindow& ToolkitTest::open(const std::string& controls, const std::string& windowAttributes,
                                   const std::function<void(RecordingWindow&)>& prepare) {
    support::writeBytes("UI/Test.xml", "<Window size=\"400,300\" " + windowAttributes + ">" +
                                           controls + "</Window>");
    m_window = std::make_shared<RecordingWindow>(test::gui());
    prepare(*m_window);
    if (!m_window->Create(nullptr, u"Test", 0, 0)) {
        throw std::runtime_error("the window cannot be created");
    }
    driver().show();
    return *m_window;
}

std::string bmp(int width, int height, const std::vector<std::uint32_t>& pixels) {
    std::string bytes;
    const auto number = [&](std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i) {
            bytes.push_back(static_cast<char>(value >> (8 * i)));
        }
    };
    const auto count = static_cast<std::uint32_t>(width * height * 4);
    bytes += "BM";
    number(14 + 108 + count, 4);
    number(0, 4);
    number(14 + 108, 4);
    number(108, 4); // the header with channel masks, so that alpha counts
    number(static_cast<std::uint32_t>(width), 4);
    number(static_cast<std::uint32_t>(height), 4);
    number(1, 2);
    number(32, 2);
    number(3, 4);
    number(count, 4);
    for (int i = 0; i < 4; ++i) {
        number(0, 4);
    }
    for (const std::uint32_t mask : {0x00FF0000U, 0x0000FF00U, 0x000000FFU, 0xFF000000U}) {
        number(mask, 4);
    }
    bytes.append(52, '\0');
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width; ++x) {
            number(pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                          static_cast<std::size_t>(x)],
                   4);
        }
    }
    return bytes;
}

std::string bmp(int width, int height, std::uint32_t pixel) {
    return bmp(width, height,
               std::vector<std::uint32_t>(
                   static_cast<std::size_t>(width) * static_cast<std::size_t>(height), pixel));
}

} // namespace toolkit_test
