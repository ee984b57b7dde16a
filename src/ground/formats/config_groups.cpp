#include "formats/config_groups.h"

#include "core/file_kinds.h"
#include "core/files.h"
#include "formats/nul_list.h"

namespace kestrova
{

namespace
{

template <std::size_t N>
std::vector<std::array<std::string, N>> TrimmedGroups(std::string_view field)
{
    auto groups = NulGroups<N>(field);
    for (auto& group : groups)
        for (std::string& text : group)
            text = Trim(text);
    return groups;
}

} // namespace

std::vector<StemCopy> DuplicatesOf(const LevelConfig& config)
{
    std::vector<StemCopy> copies;
    for (const auto& [pattern, target] : TrimmedGroups<2>(config.duplicates))
        copies.push_back({pattern, BaseNameOf(target)});
    return copies;
}

std::vector<StemCopy> TomWadsOf(const LevelConfig& config)
{
    std::vector<StemCopy> copies;
    for (const auto& [tom, wads] : TrimmedGroups<2>(config.tomWads))
        copies.push_back({wads, BaseNameOf(tom)});
    return copies;
}

std::vector<ExternWave> ExternWavesOf(const LevelConfig& config)
{
    std::vector<ExternWave> waves;
    for (const auto& [cd, source, target, alternative] : TrimmedGroups<4>(config.externWaves))
        waves.push_back({cd, source, target, alternative});
    return waves;
}

std::vector<WadNeed> WadNeedsOf(const LevelConfig& config)
{
    std::vector<WadNeed> needs;
    for (const auto& [check, url] : TrimmedGroups<2>(config.importWads))
        needs.push_back({check, url});
    return needs;
}

bool IsLevelFileName(std::string_view name)
{
    constexpr std::size_t longest = 255;
    return !name.empty() && name.size() <= longest && SafeName(name) && IsUtf8(name) &&
           !name.starts_with('.') && !HasWildcard(name) && Trim(name) == name &&
           ReplaceForbiddenChars(name) == name && ListableName(name) == name;
}

std::string ListedForm(std::string_view name)
{
    return FoldCase(FromWindows1252(ToWindows1252(name)));
}

} // namespace kestrova
