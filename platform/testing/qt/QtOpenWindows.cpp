#include <QGuiApplication>
#include <vector>

#include "platform/Window.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtWindow.h"
#include "platform/testing/OpenWindows.h"

namespace platform {

std::vector<WindowEvents*> openWindows() {
    std::vector<WindowEvents*> result;
    for (QWindow* window : QGuiApplication::topLevelWindows()) { // in the order of their creation
        const auto* surface = dynamic_cast<qt::QtSurface*>(window);
        const qt::QtWindow* ours = surface != nullptr ? surface->window() : nullptr;
        if (ours != nullptr && ours->events().accessibleRoot() != nullptr) {
            result.push_back(&ours->events());
        }
    }
    return result;
}

} // namespace platform
