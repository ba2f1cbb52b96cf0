// Reads and writes elements of the scene file. Used by this module's sources only.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace core {
class File;
}
namespace tinyxml2 {
class XMLDocument;
class XMLElement;
} // namespace tinyxml2

namespace scene {

inline constexpr const char* kSceneNotLoaded = "Unable to load scene";

/// Parses the text of a scene file; its root is in `document`. Null with a `problem`, as it is
/// logged, if it is too large or no such file.
[[nodiscard]] const tinyxml2::XMLElement*
parseScene(std::string_view text, tinyxml2::XMLDocument& document, const char*& problem);
/// The first text inside `element`, including white space; empty if there is none.
[[nodiscard]] std::string elementText(const tinyxml2::XMLElement& element);
/// Logs an unknown element.
void reportUnknownNode(const tinyxml2::XMLElement& element);

/// Receives the lines of a scene file, so that saving and comparing share one description of the
/// format.
class LineSink {
public:
    virtual ~LineSink() = default;
    /// Receives one line in parts, without the line feed. False if no more are wanted: a write
    /// failed, or the texts differ.
    [[nodiscard]] virtual bool line(std::initializer_list<std::string_view> parts) = 0;
};

/// Writes each line separately.
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

/// As TextSink, but texts are escaped so that every one reads back as it is. They stand in the
/// middle of lines of three parts.
class EscapingSink : public TextSink {
public:
    [[nodiscard]] bool line(std::initializer_list<std::string_view> parts) override;
};

/// Compares the lines with a text without building another.
class ComparingSink : public LineSink {
public:
    /// `text` must outlive the sink.
    explicit ComparingSink(std::string_view text) : m_rest(text) {}
    [[nodiscard]] bool line(std::initializer_list<std::string_view> parts) override;
    /// Whether the whole text has been matched.
    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }

private:
    [[nodiscard]] bool skip(std::string_view part);

    std::string_view m_rest;
};

} // namespace scene
