// Where a window of the editor stands: where the author left it, at the next start too, as long as
// its caption can be reached there; else in the middle of the screen. UI thread only.
#pragma once

#include <optional>
#include <string>

#include "platform/Geometry.h"

namespace core {
class EditorSettings;
}
namespace platform {
class NativeWindow;
}

namespace ui {

class WindowPlace {
public:
    /// The settings outlive it; without them nothing is remembered. `name` tells the windows apart.
    WindowPlace(core::EditorSettings* settings, const std::string& name)
        : m_settings(settings), m_key("place." + name) {}

    /// Puts the window, not shown yet, into its place. `least` is its least size, empty for a
    /// window of a fixed size; others get no larger than the screen.
    void apply(platform::NativeWindow& window, platform::Size least) const;
    /// The first input: where the system has let the window stand, which is nobody's choice.
    void noteOpened(const platform::NativeWindow& window);
    /// Before the window goes. Does nothing if it stands as it was opened.
    void keep(const platform::NativeWindow& window) const;

private:
    struct Place {
        platform::Rect normal;
        bool isMaximized = false;
        bool operator==(const Place&) const = default;
    };
    [[nodiscard]] static Place placeOf(const platform::NativeWindow& window);
    [[nodiscard]] std::optional<Place> remembered() const;
    /// Whether enough of the caption of the window at `place` is on a screen.
    [[nodiscard]] static bool isInReach(const platform::NativeWindow& window,
                                        const platform::Rect& place);

    core::EditorSettings* m_settings;
    std::string m_key;
    std::optional<Place> m_opened;
};

} // namespace ui
