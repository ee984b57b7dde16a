#include "formats/start_note.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(StartNote, ComesBackAsItWasWrittenAndNothingElseIsOne)
{
    const StartNote note{"/spiele \xFF/100%/trle", "/levels ü/my.kva", true, false, true};
    const std::string text = FormatStartNote(note);
    const auto back = ParseStartNote(text);
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, note);
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_FALSE(ParseStartNote(std::string_view{text}.substr(0, length))) << length;
    for (const auto& [what, with] :
         {std::pair{"\"version\":1", "\"version\":2"},
          std::pair{"\"compact\":true", "\"compact\":1"}, std::pair{"/levels", "/lev\\u0000els"},
          std::pair{"\"trle\"", "\"tool\""}}) {
        std::string other = text;
        const std::size_t at = other.find(what);
        ASSERT_NE(at, std::string::npos) << what;
        EXPECT_FALSE(ParseStartNote(other.replace(at, std::string_view{what}.size(), with)))
            << with;
    }
}

} // namespace kestrova::testing
