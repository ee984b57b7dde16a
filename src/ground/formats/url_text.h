#pragma once

#include "formats/url_list.h"
#include "words/message.h"

#include <span>
#include <string>
#include <string_view>

/// Web addresses and what stands beside them, as text.
namespace kestrova
{

/// The part behind the last slash or backslash; the whole text when there is none.
std::string UrlFileName(std::string_view url);
/// `http://host` of `http://host/file`: the text up to the first slash behind "//"; the whole text
/// when there is no "//", or no slash behind it.
std::string UrlHostPart(std::string_view url);
/// True for an address of http or https.
bool IsWebAddress(std::string_view url);
/// The same for one that downloads may be made from: it holds no name and no password.
bool IsServerAddress(std::string_view url);
/// An address whose letters the list cannot hold, with them encoded as a browser does.
std::string StorableUrl(const std::string& url);
/// True for what may be handed to the desktop: http, https, mailto.
bool IsOpenable(std::string_view url);

/// A server's text about a site in the words of this program: in what stands behind the first "-"
/// the known phrases are exchanged, without regard to case.
std::string LocalizeSiteText(std::string_view text);

/// The kinds that a person sees, in the order of their choice.
struct ListedUrlKind {
    UrlKind kind;
    Message caption;
};
std::span<const ListedUrlKind> ListedUrlKinds();

/// What a list shows for a record.
std::string UrlRowText(const UrlRecord& record);
/// What a search looks through: the same, and behind a line end the address, both folded.
std::string SearchedText(const UrlRecord& record);
/// The first 75 letters of an address, and a mark when there are more.
std::string ShownAddress(std::string_view url);
/// `21/11/2026  14:05:09`; empty for a number that is no date.
std::string UpdateDateText(double date);

} // namespace kestrova
