#include "src/TheoraException.h"

#include <utility>

namespace theora {

TheoraGenericException::TheoraGenericException(std::string message, std::string file, int line,
                                               std::string type)
    : m_message(std::move(message)), m_type(std::move(type)), m_file(std::move(file)), m_line(line),
      m_errorText("[" + m_type + ": " + m_file + ".cpp:" + std::to_string(m_line) + "] - " +
                  m_message) {}

} // namespace theora
