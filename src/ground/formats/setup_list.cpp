#include "formats/setup_list.h"

#include "core/names.h"
#include "core/text.h"

namespace kestrova
{

namespace
{

/// No file system holds a longer path.
constexpr std::size_t longestSetupName = 4096;

} // namespace

std::string_view NextSetupName(std::string_view& list)
{
    while (!list.empty()) {
        const std::string_view line = list.substr(0, list.find_first_of("\r\n"));
        list.remove_prefix(std::min(list.size(), line.size() + 1));
        if (const std::string_view name = Trim(line); !name.empty())
            return name;
    }
    return {};
}

std::string SetupKey(std::string_view name)
{
    if (name.size() > longestSetupName)
        return {};
    const auto relative = SafeRelative(ReplaceAll(Readable(name), "/", "\\"));
    return relative ? FoldCase(relative->native()) : std::string{};
}

} // namespace kestrova
