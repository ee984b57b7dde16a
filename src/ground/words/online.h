#pragma once

#include "words/message.h"

// clang-format off

/// The list of web addresses, downloads, the online database of configuration files.
namespace kestrova::Msg
{

inline constexpr Message UrlKindLevels{"Where download new custom levels"};
inline constexpr Message UrlKindEditor{"Where download Tomb Raider Level Editor"};
inline constexpr Message UrlKindProgram{"Where download patch and updates for Kestrova"};
inline constexpr Message UrlKindForums{"Forums and informations about Level Editor' World"};
inline constexpr Message UrlKindTools{"Tools and programs for Level Editor"};
inline constexpr Message UrlKindConfigs{"Configuration files to install 'difficult' levels"};
inline constexpr Message UrlUserMark{"{User} "};
inline constexpr Message UrlGoesOn{" ..."};
inline constexpr Message SiteByDate{"Sorted by enter date"};
inline constexpr Message SiteByRating{"Sorted by rating"};
inline constexpr Message SiteByKeywords{"Search whereby keywords"};
inline constexpr Message SiteByTitle{"Sorted by title"};
inline constexpr Message SiteLevels{"Levels"};
inline constexpr Message SiteByAuthor{"Sorted by author name"};
inline constexpr Message SiteReviews{"reviews"};
inline constexpr Message SiteWith{" with "};
inline constexpr Message SiteVarious{"Various sorting standards"};
inline constexpr Message SiteLanguage{"Language: "};
inline constexpr Message SiteAnd{" and "};
inline constexpr Message SiteWalkthroughs{"Walkthroughs"};
inline constexpr Message SiteBetween{" - "};
inline constexpr Message NoticeDownloadNow{"Do you want download it now?"};
inline constexpr Message NoticeNewVersion{"There is a new version of Kestrova: version ~1Do you want download it now?"};

} // namespace kestrova::Msg
