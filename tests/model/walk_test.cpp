#include "world.h"

#include "sandbox/faults.h"

#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// A number of the environment, for longer runs by hand.
int Setting(const char* name, int otherwise)
{
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::atoi(value);
}

/// False when something did not hold; the test's failures then say what, and how it came.
bool WalkHolds(std::uint32_t seed, int steps)
{
    ModelWorld world{seed};
    for (int step = 0; step < steps && !::testing::Test::HasFailure(); ++step)
        world.Step();
    if (!::testing::Test::HasFailure())
        return true;
    ADD_FAILURE() << "seed " << seed << ", the last steps:\n" << world.Trail();
    return false;
}

} // namespace

TEST(RandomPlay, LosesNothingAndAlwaysGoesOn)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::minutes{Setting("KESTROVA_ENDURE_MINUTES", 0)};
    const int first = Setting("KESTROVA_ENDURE_SEED", 1);
    const int walks = Setting("KESTROVA_ENDURE_WALKS", (3 + WalkStride()) / WalkStride());
    for (int walk = 0; walk < walks || Clock::now() < end; ++walk)
        if (!WalkHolds(static_cast<std::uint32_t>(first + walk), 40))
            return;
}

} // namespace kestrova::testing
