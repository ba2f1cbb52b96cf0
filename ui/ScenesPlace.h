// Where the author's scenes are, as Settings shows it; and the choice of another folder, in an
// installation that all users of a computer share. UI thread only.
#pragma once

#include <string>

#include "ui/Companions.h"
#include "ui/Controls.h"
#include "ui/WindowContext.h"

namespace platform {
class NativeWindow;
}

namespace ui {

class ScenesPlace {
public:
    ScenesPlace(const WindowContext& context, Controls controls)
        : m_context(context), m_controls(controls) {}

    void show();
    /// Asks for a folder. What it says then counts from the next start on.
    void choose(platform::NativeWindow* owner, Companions& beside);

private:
    void showFolder(const std::string& folder);

    WindowContext m_context;
    Controls m_controls;
};

} // namespace ui
