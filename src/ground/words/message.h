#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace kestrova
{

/// A text that a person can see. Every one of them is a constant `Msg::Name` in the header of its
/// part of the program (`words/PART.h`), in told English; `words/catalogue.h` has other languages.
struct Message {
    std::string_view text; ///< UTF-8; line breaks and values as markers `~1`, `~2` …
    bool operator==(const Message&) const = default;
};

/// The text in the language that is spoken now, with its markers filled from the left: element 0
/// fills `~1`. Of each marker only the first occurrence is filled, one round a marker in ascending
/// order; a marker without an argument stays, and an argument's own markers are not protected from
/// a later round. A marker that stands for a line break is given `lineBreak`.
std::string GetMsg(Message message, std::initializer_list<std::string_view> args = {});

/// The same in told English, whatever is spoken: what goes into a file, what is compared with what
/// another run or program wrote, and what scripts read.
std::string Told(Message message, std::initializer_list<std::string_view> args = {});

/// The text with its markers as they are, in the language that is spoken now. Valid as long as the
/// program runs.
std::string_view Shown(Message message);

/// What a file keeps in told English, in the language that is spoken now; as it is when it is
/// none of the texts.
std::string ShownAsSpoken(const std::string& told);

/// A name on the disk (`\\LEVEL_~1`) with its markers filled as those of a text.
std::string Filled(std::string_view pattern, std::initializer_list<std::string_view> args);

inline constexpr std::string_view lineBreak = "\r\n";

} // namespace kestrova
