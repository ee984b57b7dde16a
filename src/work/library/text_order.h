#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrova
{

/// The order of rows by their folded texts, equal ones as they were added. Ten thousand rows are
/// sorted while a window opens, so keys lie in one piece of memory and are small.
class TextOrder
{
public:
    void Add(std::string_view text);
    /// Numbers of the rows as they were added; what was added is given up.
    std::vector<std::uint32_t> Sorted();

private:
    struct Key {
        std::uint64_t first; ///< the first letters as a number, which decides nearly every time
        std::uint32_t begin;
        std::uint32_t size;
        std::uint32_t row;
    };
    [[nodiscard]] std::string_view TextOf(const Key& key) const
    {
        return std::string_view{folded_}.substr(key.begin, key.size);
    }

    std::string folded_;
    std::vector<Key> keys_;
};

} // namespace kestrova
