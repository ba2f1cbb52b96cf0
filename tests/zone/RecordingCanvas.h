// A canvas that draws nothing and notes every call as a line of text, in order.
#pragma once

#include <string>
#include <vector>

#include "core/Text.h"
#include "platform/Canvas.h"

namespace zone_tests {

class RecordingCanvas final : public platform::Canvas {
public:
    [[nodiscard]] platform::Rect clip() const override { return {0, 0, 1280, 720}; }
    void pushClip(const platform::Rect&) override { calls.push_back("pushClip"); }
    void popClip() override { calls.push_back("popClip"); }
    void fillRect(const platform::Rect&, platform::Color) override { calls.push_back("fillRect"); }
    void drawBitmap(const platform::Bitmap&, const platform::Rect&,
                    const platform::Rect&) override {
        calls.push_back("drawBitmap");
    }
    void drawFrame(const platform::FrameBuffer&, const platform::Rect&) override {
        calls.push_back("drawFrame");
    }
    void drawLine(platform::Point from, platform::Point to, platform::Color color) override {
        calls.push_back("line " + numbers({from.x, from.y, to.x, to.y}) + hex(color));
    }
    void drawEllipse(const platform::Rect& box, platform::Color outline,
                     platform::Color fill) override {
        calls.push_back("ellipse " + numbers({box.left, box.top, box.right, box.bottom}) +
                        hex(outline) + " " + hex(fill));
    }
    void drawText(std::u16string_view text, const platform::Rect& box, platform::FontHandle font,
                  platform::Color color, platform::TextAlign align) override {
        calls.push_back("text " + core::storedText(text) + " " +
                        numbers({box.left, box.top, box.right, box.bottom, font}) + hex(color) +
                        (align == platform::TextAlign::center ? " center" : ""));
    }

    std::vector<std::string> calls;

private:
    static std::string numbers(std::initializer_list<int> values) {
        std::string text;
        for (const int value : values) {
            text += std::to_string(value) + " ";
        }
        return text;
    }
    static std::string hex(platform::Color color) {
        constexpr const char* kDigits = "0123456789abcdef";
        std::string text;
        for (int shift = 20; shift >= 0; shift -= 4) {
            text += kDigits[color >> shift & 0xFU];
        }
        return text;
    }
};

} // namespace zone_tests
