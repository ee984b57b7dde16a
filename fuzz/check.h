#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// What every fuzz program needs: its input as text, and a promise that ends it when it is broken.
namespace kestrova::fuzz
{

inline std::string_view TextOfInput(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

inline void Promise(bool kept, const char* what)
{
    if (kept)
        return;
    std::fprintf(stderr, "broken promise: %s\n", what);
    std::abort();
}

/// A run of bytes in which a record need not give back what it read: any number that is not -1 is
/// a False, which is written as 0.
struct Loose {
    std::size_t from;
    std::size_t size;
};

/// Every byte of `written` is that of `read` but for the loose ones.
template <class Runs> bool SameBut(std::string_view written, std::string_view read, Runs loose)
{
    for (std::size_t i = 0; i < written.size(); ++i) {
        bool free = false;
        for (const Loose& run : loose)
            free = free || (i >= run.from && i - run.from < run.size);
        if (!free && written[i] != read[i])
            return false;
    }
    return true;
}

} // namespace kestrova::fuzz
