// Writes JSON on one line, piece by piece. Used by the commands of quorvel-inspect.
//
//   Json json(out);
//   json.beginObject();
//   json.key("name").value(scene.Name());
//   json.key("branches").beginArray(); ... json.endArray();
//   json.endObject();
//
// Format: RFC 8259. Correct nesting is up to the caller and not checked.
#pragma once

#include <cstdint>
#include <ostream>
#include <string_view>

namespace inspect {

class Json {
public:
    /// `out` must outlive it.
    explicit Json(std::ostream& out) : m_out(out) {}

    Json& beginObject() { return open('{'); }
    Json& endObject() { return close('}'); }
    Json& beginArray() { return open('['); }
    Json& endArray() { return close(']'); }
    /// The name of the next value.
    Json& key(std::string_view name);

    /// UTF-8; invalid bytes are printed as U+FFFD.
    Json& value(std::string_view text);
    Json& value(const char* text) { return value(std::string_view(text)); }
    Json& value(bool truth);
    Json& value(std::int64_t number);
    Json& value(int number) { return value(static_cast<std::int64_t>(number)); }
    /// The shortest text that reads back as the same number; null for infinities and NaN.
    Json& value(double number);

private:
    Json& open(char bracket);
    Json& close(char bracket);
    void separate();
    void quote(std::string_view text);

    std::ostream& m_out;
    bool m_needsComma = false;
};

} // namespace inspect
