#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The help, one plain text in Windows-1252, so that a place in it is a letter's and a byte's at
/// once. Three marks: `#2#` is a tag that commands jump to, `[…]` a main topic, `{…}` a sub-topic.
namespace kestrova
{

/// Where `what` stands first from `from` on, without regard to case; nothing for an empty text.
std::optional<std::size_t> FindInHelp(std::string_view help, std::string_view what,
                                      std::size_t from = 0);
/// Where it stands last, all of it before `end`.
std::optional<std::size_t> FindInHelpBefore(std::string_view help, std::string_view what,
                                            std::size_t end);

struct HelpWord {
    std::size_t from = 0;
    std::size_t length = 0;
    bool operator==(const HelpWord&) const = default;
};
/// The word or bracketed phrase about the letter at `caret`, as a mouse picks it; nothing on a
/// blank text. Brackets count up to 30 letters away, and what has no end in reach runs to the end
/// of the text.
std::optional<HelpWord> HelpWordAt(std::string_view help, std::size_t caret);

/// Topics with their brackets, so that a search for one finds its place.
struct HelpTopics {
    std::vector<std::string> main; ///< in the text's order, with every occurrence
    std::vector<std::string> sub;  ///< each once, without regard to case, in its first spelling
};
/// At most 100,000 of each kind.
HelpTopics TopicsOf(std::string_view help);

/// The numbers of the tags that the text holds, each once, ascending.
std::vector<int> TagsOf(std::string_view help);

} // namespace kestrova
