#pragma once

#include "core/text.h"

#include <array>

/// Lists of texts inside one field of a record, joined by NUL, with no NUL behind the last. An
/// empty field is no list at all.
namespace kestrova
{

/// The field is trimmed first.
inline std::vector<std::string> SplitNulList(std::string_view field)
{
    field = Trim(field);
    return field.empty() ? std::vector<std::string>{} : Split(field, '\0');
}

inline std::string JoinNulList(const std::vector<std::string>& texts)
{
    return Join(texts, std::string_view{"\0", 1});
}

/// A list in groups of `N` texts; what is left of an incomplete last group is passed over.
template <std::size_t N> std::vector<std::array<std::string, N>> NulGroups(std::string_view field)
{
    std::vector<std::string> texts = SplitNulList(field);
    std::vector<std::array<std::string, N>> groups(texts.size() / N);
    for (std::size_t i = 0; i < groups.size() * N; ++i)
        groups[i / N][i % N] = std::move(texts[i]);
    return groups;
}

} // namespace kestrova
