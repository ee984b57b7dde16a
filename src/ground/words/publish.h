#pragma once

#include "words/message.h"

// clang-format off

/// The author's data.
namespace kestrova::Msg
{

inline constexpr Message ChangeAuthorTitle{"Change author data"};
inline constexpr Message AskNewEmail{"Insert new email address"};
inline constexpr Message AskNewSite{"Insert new url address"};
inline constexpr Message AskChangeEmail{"Change current email address"};
inline constexpr Message AskChangeSite{"Change current url address"};
inline constexpr Message NoSelectedSite{"No selected site"};
inline constexpr Message NoWebAddress{"This is not the address of a web site, so it was not opened: ~1"};
inline constexpr Message EmailsTooLong{"Emails field too long. Remove any email address"};
inline constexpr Message SitesTooLong{"Sites field too long. Remove any url address"};
inline constexpr Message AuthorNameTooLong{"Game designer name too long"};
inline constexpr Message AuthorNoteTooLong{"Author's note too long"};

} // namespace kestrova::Msg
