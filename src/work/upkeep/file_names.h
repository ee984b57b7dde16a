#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view DirUnreadable = "\\unreadable"; // of a level's own folder
inline constexpr std::string_view DirReplaced = "\\replaced"; // of a level's own folder
inline constexpr std::string_view PatternZl = "*.zl";
inline constexpr std::string_view OriginalSites = "http://www.tombraider.com|http://www.eidosinteractive.com";
inline constexpr std::string_view PatTexts = "*.txt";
inline constexpr std::string_view TitleWords = "Level title|Level name|Title|Name of level|Name"; // not shown
inline constexpr std::string_view OriginalInfoPatterns = "*.pdf|*.htm|*.html";

} // namespace kestrova::OnDisk
