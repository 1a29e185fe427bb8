#include "platform/RandomSource.h"

#include <bit>

std::uint64_t MixingRandom::step()
{
    std::uint64_t z = (m_state += 0x9e3779b97f4a7c15ULL);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31);
}

double MixingRandom::next()
{
    // 53 random bits give every double of [0, 1) that a uniform draw needs.
    return static_cast<double>(step() >> 11) * 0x1.0p-53;
}

void MixingRandom::reseed(float seed)
{
    const std::uint64_t bits = std::bit_cast<std::uint32_t>(seed);
    m_state ^= bits * 0xd6e8feb86659fd93ULL;
    step();
}
