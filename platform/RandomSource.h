#pragma once

#include <cstdint>

// Uniform random numbers in [0, 1) with re-seeding from a clock reading.
class RandomSource
{
public:
    virtual ~RandomSource() = default;
    // The next draw, 0 <= r < 1.
    virtual double next() = 0;
    // Mixes a clock reading into the generator.
    virtual void reseed(float seed) = 0;
};

// The program's generator (splitmix64). Re-seeding folds the reading into the
// current state instead of replacing it, so re-seeds at one clock reading (a
// worksheet built within one tick) still lead to different draws.
class MixingRandom final : public RandomSource
{
public:
    explicit MixingRandom(std::uint64_t state = 0x51ad5eedULL) : m_state(state) {}
    double next() override;
    void reseed(float seed) override;

private:
    std::uint64_t step();
    std::uint64_t m_state;
};
