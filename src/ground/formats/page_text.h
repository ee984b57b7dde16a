#pragma once

#include <string>
#include <string_view>

namespace kestrova::OnDisk
{

inline constexpr std::string_view PageTag = "<html";
inline constexpr std::string_view PageDeclaration = "<!doctype";

} // namespace kestrova::OnDisk

/// What a person reads of a document that marks its text up.
namespace kestrova
{

/// True when the beginning is that of a page of the web.
bool IsPage(std::string_view bytes);
/// The words of such a page: without tags, comments, scripts and styles; the usual entities as the
/// letters that they stand for. Takes anything, and never gives more bytes than it got.
std::string TextOfPage(std::string_view page);

/// True for two bytes a letter, told by the mark at the beginning.
bool IsUtf16(std::string_view bytes);
/// Such a text as UTF-8; what is no letter becomes `?`.
std::string FromUtf16(std::string_view bytes);

} // namespace kestrova
