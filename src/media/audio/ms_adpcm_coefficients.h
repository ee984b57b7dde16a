#pragma once

#include <array>
#include <cstddef>

namespace kestrova
{

/// The seven usual predictors: what the newer and the older sample weigh, in 256ths.
inline constexpr std::size_t msAdpcmPredictors = 7;
inline constexpr std::array<std::array<int, 2>, msAdpcmPredictors> msAdpcmCoefficients = {
    {{256, 0}, {512, -256}, {0, 0}, {192, 64}, {240, 0}, {460, -208}, {392, -232}}};

inline constexpr int msAdpcmSmallestStep = 16;

} // namespace kestrova
