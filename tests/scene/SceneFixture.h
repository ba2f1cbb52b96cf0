// A folder of its own, the log's lines, and the bytes of scene files, for the scene tests.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <tinyxml2.h>

#include "core/File.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"

namespace scene_tests {

using Lines = std::vector<std::string>;

class SceneFixture : public support::TempFolderTest {
protected:
    /// What `item` writes, in binary mode: the file's line ends are another test's matter.
    template <typename Item>
    std::string written(const Item& item) {
        core::File file;
        EXPECT_TRUE(file.open("written", "wb") && item.Write(file) && file.close());
        return support::readBytes("written");
    }

    /// The root element of `text`; valid until the next call.
    const tinyxml2::XMLElement& element(const std::string& text) {
        EXPECT_EQ(m_document.Parse(text.c_str()), tinyxml2::XML_SUCCESS) << text;
        return *m_document.RootElement();
    }

    /// The error lines since the last call.
    Lines newErrors() {
        Lines fresh = m_log->errors();
        if (!fresh.empty()) {
            m_log.reset(); // puts back what this one hides
            m_log.emplace();
        }
        return fresh;
    }

private:
    std::optional<support::LogCapture> m_log{std::in_place};
    tinyxml2::XMLDocument m_document;
};

} // namespace scene_tests
