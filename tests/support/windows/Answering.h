// Answers a confirmation dialog by real events, for WindowDriver::clickThen.
#pragma once

#include <functional>
#include <string>

namespace test {

enum class Answer { yes, no, escape, close };

/// A task that answers the question on the screen; `asked`, if any, receives "title|message".
[[nodiscard]] std::function<void()> answering(Answer answer, std::string* asked = nullptr);

} // namespace test
