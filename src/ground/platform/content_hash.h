#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>

struct XXH3_state_s;

namespace kestrova::platform
{

/// The hash of `HashOf` over bytes that come piece by piece.
class ContentHash
{
public:
    ContentHash();
    ~ContentHash();
    ContentHash(const ContentHash&) = delete;
    ContentHash& operator=(const ContentHash&) = delete;

    /// Begins anew.
    void Clear();
    void Add(std::span<const std::byte> bytes);
    [[nodiscard]] std::string Digits() const;

private:
    XXH3_state_s* state_;
};

} // namespace kestrova::platform
