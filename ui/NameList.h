// Names of the model together with their texts on the screen. Shared by all lists that show them,
// so that long lists are converted once.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace ui {

struct NameList {
    NameList() = default;
    explicit NameList(std::vector<std::string> names);

    std::vector<std::string> stored; ///< as in the model, valid UTF-8 or not
    /// One for each stored name, with replacement characters where it is no valid UTF-8.
    std::shared_ptr<const std::vector<std::u16string>> shown =
        std::make_shared<std::vector<std::u16string>>();
};

} // namespace ui
