#pragma once

#include "core/text.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace kestrova
{

/// Names without regard to case, for those who ask for thousands of them.
class NameSet
{
public:
    void Add(std::string_view name) { folded_.insert(FoldCase(name)); }
    [[nodiscard]] bool Has(std::string_view name) const
    {
        return !folded_.empty() && folded_.contains(FoldCase(name));
    }

private:
    std::unordered_set<std::string> folded_;
};

} // namespace kestrova
