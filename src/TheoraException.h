// The one exception type of the playback library. It leaves the library only from loading a clip,
// from setOutputMode and from making a LumaReader; nothing is thrown out of a worker thread.
#pragma once

#include <exception>
#include <string>

namespace theora {

class TheoraGenericException : public std::exception {
public:
    /// file: source name without extension, as shown in messages ("src\TheoraDataSource").
    TheoraGenericException(std::string message, std::string file, int line,
                           std::string type = "TheoraGenericException");

    /// The message alone.
    [[nodiscard]] const std::string& getMessage() const noexcept { return m_message; }
    [[nodiscard]] const std::string& getFile() const noexcept { return m_file; }
    /// "[TheoraGenericException: src\TheoraDataSource.cpp:40] - message".
    [[nodiscard]] const std::string& getErrorText() const noexcept { return m_errorText; }
    /// The error text.
    [[nodiscard]] const char* what() const noexcept override { return m_errorText.c_str(); }

private:
    std::string m_message;
    std::string m_type;
    std::string m_file;
    int m_line;
    std::string m_errorText;
};

} // namespace theora
