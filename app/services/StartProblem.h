// Why the program cannot start: in English for the log, and for its user in the language that the
// windows would have had. Main thread only, before the services are made.
#pragma once

#include <functional>
#include <string>

namespace app {

struct StartProblem {
    std::string logged; ///< empty: it can start
    std::string shown;

    [[nodiscard]] bool empty() const { return logged.empty(); }
};

/// Where the language and its texts are looked for; any of them may be missing.
struct StartTexts {
    std::string workingFolder;   ///< of the tree: its choice, its settings and texts of its own
    std::string installed{};     ///< the folder of the installed texts
    std::string givenSettings{}; ///< the settings that a new tree gets
};

/// `tell` makes the text; it is called once for each language.
[[nodiscard]] StartProblem startProblem(const StartTexts& texts,
                                        const std::function<std::string()>& tell);

/// What a start script could not prepare, and why.
[[nodiscard]] StartProblem scriptProblem(const std::string& folder, const std::string& installed,
                                         const std::string& reason);

} // namespace app
