#include "src/TheoraTimer.h"

namespace theora {

void TheoraTimer::update(float timeStep) {
    if (!m_paused.load()) {
        m_time.fetch_add(m_speed.load() * timeStep);
    }
}

} // namespace theora
