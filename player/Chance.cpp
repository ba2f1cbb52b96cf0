#include "player/Chance.h"

namespace player {
namespace {

constexpr std::uint32_t kStep = 0x9E3779B9;
constexpr std::uint32_t kFirstFactor = 0x21F0AAAD;
constexpr std::uint32_t kSecondFactor = 0x735A2D97;

} // namespace

int Chance::pick(int count) {
    m_state += kStep;
    std::uint32_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 16U)) * kFirstFactor;
    mixed = (mixed ^ (mixed >> 15U)) * kSecondFactor;
    mixed ^= mixed >> 15U;
    return static_cast<int>((std::uint64_t{mixed} * static_cast<std::uint64_t>(count)) >> 32U);
}

} // namespace player
