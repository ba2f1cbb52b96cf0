// What the Windows calls are given and give back: every name keeps its way there and back, also one
// that is no text.
#include <string>

#include <gtest/gtest.h>

#include "platform/win32/WideText.h"
#include "platform/win32/Win32Path.h"

using platform::win32::narrow;
using platform::win32::wide;

TEST(WideText, EveryNameComesBackAsItWas) {
    const struct {
        std::wstring name;
        std::string bytes;
    } cases[] = {
        {L"", ""},
        {L"Stra\u00DFe", "Stra\xC3\x9F"
                         "e"},
        {L"\U0001F600", "\xF0\x9F\x98\x80"},
        {{L'b', wchar_t{0xD800}, L'd'},
         "b\xED\xA0\x80"
         "d"},
        {{wchar_t{0xDFFF}}, "\xED\xBF\xBF"},
        {{wchar_t{0xDC00}, wchar_t{0xD800}, L'\u20AC'}, "\xED\xB0\x80\xED\xA0\x80\xE2\x82\xAC"},
        {{wchar_t{0xD83D}, wchar_t{0xD83D}, wchar_t{0xDE00}}, "\xED\xA0\xBD\xF0\x9F\x98\x80"},
        {L"\uD7FF\uE000", "\xED\x9F\xBF\xEE\x80\x80"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(narrow(c.name), c.bytes);
        EXPECT_EQ(wide(c.bytes), c.name) << c.bytes;
    }
}

TEST(WideText, WhatNoNameGaveIsMarked) {
    for (const char* bytes : {"a\xFFz", "a\xC3", "\xED\xA0", "\xED"}) {
        EXPECT_NE(wide(bytes).find(L'\uFFFD'), std::wstring::npos) << bytes;
    }
}

TEST(WidePath, LeadsToNoOtherFile) {
    using platform::win32::widePath;
    EXPECT_EQ(widePath("C:/Scenes/A\\clip.ogv"), L"C:\\Scenes\\A\\clip.ogv");
    EXPECT_EQ(widePath("C:clip.ogv"), L"C:clip.ogv");
    for (const std::string& path :
         {std::string("a\0b", 3), std::string("Scenes/A/C:x.ogv"), std::string("A/a:b.ogv"),
          std::string(":b"), std::string("C:\\clip.ogv:hidden")}) {
        EXPECT_EQ(widePath(path), L"") << path;
    }
}
