// A canvas that draws nothing and notes every line, ellipse and text, in order.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "core/Text.h"
#include "platform/Canvas.h"

namespace zone_tests {

class RecordingCanvas final : public platform::Canvas {
public:
    [[nodiscard]] platform::Rect clip() const override { return {0, 0, 1280, 720}; }
    void pushClip(const platform::Rect&) override {}
    void popClip() override {}
    void fillRect(const platform::Rect&, platform::Color) override {}
    void fillFrame(const platform::Rect&, const platform::Rect&, platform::Color) override {}
    void drawBitmap(const platform::Bitmap&, const platform::Rect&,
                    const platform::Rect&) override {}
    void drawFrame(const platform::FrameBuffer&, const platform::Rect&) override {}
    void drawFrameSmoothly(const platform::FrameBuffer&, const platform::Rect&) override {}
    void drawLine(platform::Point from, platform::Point to, platform::Color color) override {
        note("line", {from.x, from.y, to.x, to.y}, color);
    }
    void drawEllipse(const platform::Rect& box, platform::Color outline,
                     platform::Color fill) override {
        note(outline == platform::rgb(250, 0, 0) ? "handle" : "ellipse",
             {box.left, box.top, box.right, box.bottom}, fill);
    }
    void fillPath(const platform::Path&, platform::Color) override {}
    void drawStill(const platform::Bitmap&, const platform::Rect&) override {}
    void drawMask(const platform::Bitmap&, const platform::Rect&, const platform::Rect&,
                  platform::Color) override {}
    void drawText(std::u16string_view text, const platform::Rect& box, platform::FontHandle font,
                  platform::Color color, platform::TextAlign align) override {
        note((align == platform::TextAlign::center ? "centred " : "text ") + core::storedText(text),
             {box.left, box.top, box.right, box.bottom, font}, color);
    }

    std::vector<std::string> calls;
    platform::Rect drawn; ///< around all of it

private:
    void note(const std::string& what, std::initializer_list<int> numbers, platform::Color color) {
        std::ostringstream text;
        text << what;
        for (const int number : numbers) {
            text << ' ' << number;
        }
        const int* at = numbers.begin();
        const platform::Rect box{std::min(at[0], at[2]), std::min(at[1], at[3]),
                                 std::max(at[0], at[2]) + 1, std::max(at[1], at[3]) + 1};
        drawn = drawn.isEmpty() ? box : drawn.united(box);
        text << ' ' << std::hex << (color & 0xFFFFFFU);
        calls.push_back(text.str());
    }
};

} // namespace zone_tests
