#include "platform/content_hash.h"

#include <xxhash.h>

namespace kestrova::platform
{

ContentHash::ContentHash() : state_(XXH3_createState())
{
    Clear();
}

ContentHash::~ContentHash()
{
    XXH3_freeState(state_);
}

void ContentHash::Clear()
{
    XXH3_128bits_reset(state_);
}

void ContentHash::Add(std::span<const std::byte> bytes)
{
    XXH3_128bits_update(state_, bytes.data(), bytes.size());
}

std::string ContentHash::Digits() const
{
    constexpr int halfByte = 4;
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, XXH3_128bits_digest(state_));
    std::string text;
    for (const unsigned char byte : canonical.digest) {
        text += "0123456789abcdef"[byte >> halfByte];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

} // namespace kestrova::platform
