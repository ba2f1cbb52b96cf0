// How the scene file's elements are read and written; shared by this module's sources only.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace core {
class File;
}
namespace tinyxml2 {
class XMLElement;
}

namespace scene {

/// The first text inside `element`, white space kept; empty when it holds none.
[[nodiscard]] std::string elementText(const tinyxml2::XMLElement& element);
/// Logs an element that nothing here knows.
void reportUnknownNode(const tinyxml2::XMLElement& element);

/// Where the lines of a scene file go. Saving and telling whether there is something to save share
/// the one description of the format that way.
class LineSink {
public:
    virtual ~LineSink() = default;
    /// Takes one line, given in parts, without its line feed. False when no more are wanted: a
    /// write failed, or the answer is known.
    [[nodiscard]] virtual bool line(std::initializer_list<std::string_view> parts) = 0;
};

/// Each line is a write of its own.
class FileSink : public LineSink {
public:
    explicit FileSink(core::File& file) : m_file(file) {}
    [[nodiscard]] bool line(std::initializer_list<std::string_view> parts) override;

private:
    core::File& m_file;
    std::string m_line;
};

class TextSink : public LineSink {
public:
    [[nodiscard]] bool line(std::initializer_list<std::string_view> parts) override;
    [[nodiscard]] std::string takeText() { return std::move(m_text); }

private:
    std::string m_text;
};

/// Compares with a text without making another.
class ComparingSink : public LineSink {
public:
    /// `text` outlives the sink.
    explicit ComparingSink(std::string_view text) : m_rest(text) {}
    [[nodiscard]] bool line(std::initializer_list<std::string_view> parts) override;
    /// Whether all of the text has been met.
    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }

private:
    [[nodiscard]] bool skip(std::string_view part);

    std::string_view m_rest;
};

} // namespace scene
