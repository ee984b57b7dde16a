#include "formats/level_folder_name.h"

#include "core/names.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "words/message.h"

#include <charconv>

namespace kestrova
{

namespace
{

/// What stands behind `LEVEL_`, when those are digits; empty otherwise.
std::string_view LevelDigits(std::string_view name)
{
    const std::string prefix = Filled(OnDisk::FragLevelFolder, {""}).substr(1);
    if (name.size() < prefix.size() || !EqualNames(name.substr(0, prefix.size()), prefix))
        return {};
    const std::string_view digits = name.substr(prefix.size());
    return AreDigits(digits) ? digits : std::string_view{};
}

} // namespace

bool IsLevelFolderName(std::string_view name)
{
    return !LevelDigits(name).empty();
}

std::optional<LevelCode> CodeOfLevelFolder(std::string_view name)
{
    const std::string_view digits = LevelDigits(name);
    LevelCode code = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code);
    return !digits.empty() && read.ec == std::errc{} ? std::optional{code} : std::nullopt;
}

std::string_view NameBeforeAside(std::string_view name)
{
    const std::string mark = Filled(OnDisk::FragSetAside, {"", ""});
    const std::size_t end = name.find(mark);
    const bool isAside = end != std::string_view::npos && end + mark.size() < name.size();
    return isAside ? name.substr(0, end) : std::string_view{};
}

bool IsAsideName(std::string_view name)
{
    return IsLevelFolderName(NameBeforeAside(name));
}

} // namespace kestrova
