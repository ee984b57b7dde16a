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
inline constexpr Message DownloadWaiting{"Waiting response to download "};
inline constexpr Message DownloadedSize{"Downloaded "};
inline constexpr Message DownloadOf{"Download "};
inline constexpr Message DownloadSizes{" (~1 / ~2)"};
inline constexpr Message DownloadTimes{" - Left time = ~1 - Elapsed time = "};
inline constexpr Message DownloadMinutes{"' "};
inline constexpr Message DownloadSeconds{"\""};
inline constexpr Message DownloadError{"Download error: "};
inline constexpr Message HttpBadAddress{"this is no address of http or https, or it holds a password"};
inline constexpr Message HttpNoHost{"nobody knows this server; look at the address and at the connection to the internet"};
inline constexpr Message HttpNoConnection{"the server does not answer"};
inline constexpr Message HttpCertificate{"the server cannot prove that it is the one of this address, so nothing was taken from it"};
inline constexpr Message HttpCut{"the connection ended before the whole file was there; ~1"};
inline constexpr Message HttpOtherPart{"the server sent another part of the file than the one that was asked for; ~1"};
inline constexpr Message DownloadGoesOn{"the next download of it goes on from there"};
inline constexpr Message DownloadBeginsAnew{"nothing of it was kept, so the next download begins anew"};
inline constexpr Message HttpTooLong{"the file is bigger than one of its kind can be"};
inline constexpr Message HttpRedirects{"the server leads in a circle, or to an address that is none of http or https"};
inline constexpr Message HttpSilent{"the server says nothing any more"};
inline constexpr Message HttpOther{"the server's answer cannot be understood"};
inline constexpr Message ServerAnswered{"the server answered ~1"};
inline constexpr Message UrlListUpdating{"Download update url list in progress..."};
inline constexpr Message UrlListNoServer{"No update server is set, so the list of addresses stays as it is. Whoever keeps such a list can tell you its address; to set it: Preferences, Kestrova, Servers; or kestrovactl set update-servers ADDRESS"};
inline constexpr Message UrlListTryMirror{"Error in previous loading attempt.~1Do you want try download from mirror #"};
inline constexpr Message UrlListTryEnd{" ?"};
inline constexpr Message UrlListNotRead{"Error loading (from HD) update list"};
inline constexpr Message UrlListNotDownloaded{"Failed download updated url list"};
inline constexpr Message UrlListNotSaved{"Error saving url list in file: "};
inline constexpr Message UrlListSetAside{"The list of addresses could not be read, so a new one was begun. The old file is kept: ~1"};
inline constexpr Message UrlListDamaged{"this is no list of addresses"};
inline constexpr Message UrlListTooLong{"one of its texts is longer than the list can hold"};
inline constexpr Message UrlListMoreNotices{"The list has ~1 more notices, which are not shown."};
inline constexpr Message UrlInsertTitle{"Insert new site"};
inline constexpr Message UrlInsertDescription{"Insert description for new record"};
inline constexpr Message UrlInsertUrl{"Insert url address"};
inline constexpr Message UrlChangeTitle{"Change current site"};
inline constexpr Message UrlChangeDescription{"Change description of current record"};
inline constexpr Message UrlChangeUrl{"Change url address of current record"};
inline constexpr Message UrlSameUrl{"Warning: current url is same of old record: ~1Do you want insert it anyway?"};
inline constexpr Message UrlSameHost{"Warning: server of current url '~1' is same of old record: ~2Do you want insert it anyway?"};
inline constexpr Message UrlLettersLost{"The list of addresses cannot hold all letters of this description. It would read:~1Do you want to keep it so?"};
inline constexpr Message UrlMoreDoubles{"Warning: ~1 more records have this url or its server.~2Do you want insert it anyway?"};
inline constexpr Message UrlSureRemove{"Are you sure to remove record: "};
inline constexpr Message UrlCopied{"Current url copied in clipboard"};
inline constexpr Message UrlListChanged{"Current url list has been changed.~1Are you sure to want lose last changes?"};
inline constexpr Message UrlNotOpened{"This is not an address of the web or of mail, so it was not opened: ~1"};
inline constexpr Message UrlNotOpenedNow{"The address could not be opened: ~1"};
inline constexpr Message AskLevelUrls{"Do you want see url list where you could download new custom levels?"};
inline constexpr Message AskEditorUrls{"Do you want see url where you could download (compress or flat) Tomb Raider Level Editor? "};
inline constexpr Message OnlineAdviseUpdate{"It's advisable update online database because It's spent 30 days from last updating~1This operation requires only few seconds.~2Update online database?"};
inline constexpr Message OnlineConfigThere{"Probably there is a configuration file in online database for this level.~1Main files of current level coincide with level named '~2If current level is really '~3' it's advisable download now the configuration file to install correctly this level.~4This operation will require only few seconds.~5Do you want now download configuration file for level: "};
inline constexpr Message OnlineConfigWaits{"The list of addresses has a configuration file for this level ('~1'). It was not fetched, since nobody is here to be asked; with --fetch it is."};
inline constexpr Message OnlineConfigEnd{" ?"};
inline constexpr Message OnlineQuote{"'"};
inline constexpr Message OnlineDownloadFailed{"Error trying to download file: "};
inline constexpr Message OnlineUnzipFailed{"Error unzipping file: "};
inline constexpr Message OnlineNoConfig{"there is no level configuration file in it"};
inline constexpr Message UrlJsonRecord{"record ~1 of the list"};
inline constexpr Message UrlJsonWhole{"the text of the list"};
inline constexpr Message UrlJsonWrong{"it is not written in the form that `kestrovactl help urls` shows"};
inline constexpr Message UrlJsonLetters{"the list cannot hold all letters of this text: ~1"};
inline constexpr Message UrlJsonName{"the list cannot hold this name: ~1"};
inline constexpr Message OnlineUnzipping{"Unzipping ~1"};

} // namespace kestrova::Msg
