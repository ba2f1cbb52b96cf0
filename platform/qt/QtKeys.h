// Keys and modifiers between Qt and our events.
#pragma once

#include <Qt>
#include <QtGlobal>

#include "platform/Event.h"

namespace platform::qt {

[[nodiscard]] Key keyFromQt(int qtKey);
/// The Qt::Key for a key of ours; Qt::Key_unknown for Key::other.
[[nodiscard]] int keyToQt(Key key);
[[nodiscard]] Modifiers modifiersFromQt(Qt::KeyboardModifiers modifiers);
[[nodiscard]] Qt::KeyboardModifiers modifiersToQt(Modifiers modifiers);
[[nodiscard]] MouseButton buttonFromQt(Qt::MouseButton button);
[[nodiscard]] Qt::MouseButton buttonToQt(MouseButton button);

} // namespace platform::qt
