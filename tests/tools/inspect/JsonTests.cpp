#include <cmath>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include "tools/inspect/Json.h"

namespace {

TEST(Json, EscapesTextAndShowsWhatIsNoUtf8) {
    struct Case {
        std::string text;
        const char* json;
    };
    const Case cases[] = {
        {"", R"("")"},
        {"a\"b\\c/", R"("a\"b\\c/")"},
        {"\r\n\t\x01\x1F\x7F", R"("\r\n\t\u0001\u001f\u007f")"},
        {std::string("\0", 1), R"("\u0000")"},
        {"\xC3\x9C\xF0\x9F\x98\x80", "\"\xC3\x9C\xF0\x9F\x98\x80\""},
        {"a\xFF\xC3", "\"a\xEF\xBF\xBD\xEF\xBF\xBD\""},
    };
    for (const Case& c : cases) {
        std::ostringstream out;
        inspect::Json(out).value(c.text);
        EXPECT_EQ(out.str(), c.json);
    }
}

TEST(Json, NumbersReadBackAsTheSameAndWhatIsNoNumberAsNull) {
    std::ostringstream out;
    inspect::Json json(out);
    json.beginArray();
    for (const double number : {0.1, 29.97, 25.0, 1e300, -0.5, HUGE_VAL, std::nan("")}) {
        json.value(number);
    }
    json.value(std::numeric_limits<std::int64_t>::min());
    json.endArray();
    EXPECT_EQ(out.str(), "[0.1,29.97,25,1e+300,-0.5,null,null,-9223372036854775808]");
}

} // namespace
