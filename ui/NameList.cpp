#include "ui/NameList.h"

#include <utility>

#include "core/Text.h"

namespace ui {

NameList::NameList(std::vector<std::string> names) : stored(std::move(names)) {
    auto texts = std::make_shared<std::vector<std::u16string>>();
    texts->reserve(stored.size());
    for (const std::string& name : stored) {
        texts->push_back(core::displayText(name));
    }
    shown = std::move(texts);
}

} // namespace ui
