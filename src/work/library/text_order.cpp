#include "library/text_order.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

void TextOrder::Add(std::string_view text)
{
    Key key{0, static_cast<std::uint32_t>(folded_.size()), 0,
            static_cast<std::uint32_t>(keys_.size())};
    folded_ += FoldCase(text);
    key.size = static_cast<std::uint32_t>(folded_.size()) - key.begin;
    for (std::uint32_t i = 0; i < sizeof key.first; ++i)
        key.first = key.first << 8 |
                    (i < key.size ? static_cast<unsigned char>(folded_[key.begin + i]) : 0U);
    keys_.push_back(key);
}

std::vector<std::uint32_t> TextOrder::Sorted()
{
    std::sort(keys_.begin(), keys_.end(), [this](const Key& a, const Key& b) {
        if (a.first != b.first)
            return a.first < b.first;
        const int order = TextOf(a).compare(TextOf(b));
        return order != 0 ? order < 0 : a.row < b.row;
    });
    std::vector<std::uint32_t> rows;
    rows.reserve(keys_.size());
    for (const Key& key : keys_)
        rows.push_back(key.row);
    return rows;
}

} // namespace kestrova
