#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The help's topics as a person asks for them by name, without brackets, in UTF-8.
namespace kestrova
{

/// One topic's part of the text, without brackets about its heading and without tags: from its
/// heading, a line that begins with it, to the next heading of its kind. A sub-topic ends at the
/// next main topic too. `name` without regard to case, or a piece of one that only one topic has.
std::optional<std::string> HelpOf(std::string_view help, const std::string& name);

/// Topics that somebody who wrote `name` may have meant: those that hold it, or are spelled nearly
/// so; not more than `most`.
std::vector<std::string> TopicsNear(std::string_view help, const std::string& name,
                                    std::size_t most);

/// Every heading in the text's order, sub-topics behind two blanks.
std::string ListOfTopics(std::string_view help);

/// Lines of at most that many letters, broken between words; what a line is indented by, and the
/// mark of a list's item, its further lines are indented by too.
std::string Wrapped(std::string_view text, std::size_t width);

} // namespace kestrova
