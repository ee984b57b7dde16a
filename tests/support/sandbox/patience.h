#pragma once

#include <chrono>

namespace kestrova::testing
{

/// What is heard at once takes less than this on the busiest machine; what is not heard takes many
/// times as long.
constexpr std::chrono::seconds soon{6};

} // namespace kestrova::testing
