#include "formats/library_note.h"

#include "formats/played_note.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

const std::string tokenOfSeven(32, 'a');

LibraryFile TwoLevels()
{
    LibraryFile library;
    library.levels.push_back({7, tokenOfSeven, "Łódź", {}, {}});
    LevelNote& note = library.levels[0].note;
    note = {1'700'000'000,
            1'700'000'500,
            5400,
            LevelStatus::GivenUp,
            3,
            {"Dark", "jungle"},
            "Lever behind\nthe idol: \"left\"",
            "sh\xFFot%.jpg"};
    library.levels.push_back({7, std::string(32, 'b'), "Another one", {}, "{\"later\":[1]}"});
    library.damaged.push_back("{\"code\":-1}");
    library.others = "{\"who\":\"me\"}";
    return library;
}

/// The one level that the text has.
LibraryEntry EntryOf(const std::string& members)
{
    const auto library = ParseLibrary("{\"levels\":[{\"code\":7," + members + "}]}");
    EXPECT_TRUE(library && library->levels.size() == 1) << members;
    return library && !library->levels.empty() ? library->levels[0] : LibraryEntry{};
}

} // namespace

TEST(LibraryNote, ComesBackAsItWasWrittenAndIsNothingWhereItIsCut)
{
    const std::string text = FormatLibrary(TwoLevels());
    const auto back = ParseLibrary(text);
    ASSERT_TRUE(back) << text;
    EXPECT_EQ(*back, TwoLevels()) << text;
    EXPECT_EQ(FormatLibrary(*back), text);
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_FALSE(ParseLibrary(std::string_view{text}.substr(0, length))) << length;
    const auto empty = ParseLibrary(FormatLibrary({}));
    EXPECT_TRUE(empty && *empty == LibraryFile{});
}

TEST(LibraryNote, KeepsWhatItDoesNotUnderstandAndWritesItAgain)
{
    const char* const strange[] = {"\"stars\":9",
                                   "\"stars\":-1",
                                   "\"stars\":\"five\"",
                                   "\"status\":\"bought\"",
                                   "\"tags\":\"jungle\"",
                                   "\"tags\":[1]",
                                   "\"added\":1e300",
                                   "\"added\":18446744073709551615",
                                   "\"lastPlayed\":-5",
                                   "\"secondsPlayed\":2.5",
                                   "\"cover\":\"../../etc/passwd\"",
                                   "\"cover\":\"a/b.jpg\"",
                                   "\"note\":null",
                                   "\"token\":\"../x\"",
                                   "\"wishes\":{\"a\":[1,null,\"é\"]}"};
    for (const char* members : strange) {
        const LibraryEntry entry = EntryOf(members);
        EXPECT_EQ(entry.note, LevelNote{}) << members;
        EXPECT_TRUE(entry.token.empty());
        const std::string written = FormatLibrary({{entry}, {}, {}});
        EXPECT_EQ(EntryOf(entry.others.substr(1, entry.others.size() - 2)), entry) << written;
        EXPECT_FALSE(entry.others.empty()) << members;
    }
    LibraryEntry entry = EntryOf("\"stars\":9");
    entry.note.stars = 2;
    EXPECT_NE(FormatLibrary({{entry}, {}, {}}).find("\"stars\":2"), std::string::npos);
    for (const char* none : {"7", "null", "{}", "{\"code\":\"7\"}", "{\"code\":4294967296}"}) {
        const auto library = ParseLibrary("{\"levels\":[" + std::string{none} + "]}");
        ASSERT_TRUE(library) << none;
        EXPECT_TRUE(library->levels.empty());
        EXPECT_EQ(library->damaged, std::vector<std::string>{none});
    }
}

TEST(LibraryNote, IsDamagedAsAWholeWhereItIsNoSuchFile)
{
    const std::string deep(5000, '[');
    for (const std::string& text :
         {std::string{}, std::string{"[]"}, std::string{"{}"}, std::string{"{\"levels\":{}}"},
          "{\"levels\":[" + deep, "{\"levels\":[],\"x\":" + deep + std::string(5000, ']') + "}",
          std::string{"{\"levels\":[]} x"}, std::string{"{\"levels\":[{\"name\":\"\xFF\"}]}"}})
        EXPECT_FALSE(ParseLibrary(text)) << text.substr(0, 40);
    EXPECT_TRUE(ParseLibrary("{\"levels\":[{\"code\":1,\"note\":\"" + deep + "\\\"\"}]}"))
        << "brackets within a text are no depth";
}

TEST(LibraryNote, HoldsTextsAndTagsWithinTheirBounds)
{
    LevelNote note;
    note.tags = {" jungle ",
                 "Dark",
                 "JUNGLE",
                 "",
                 "dark\nred",
                 "\xE9t\xE9",
                 std::string(longestTag - 1, 'x') + "éé"};
    note.ownNote = std::string{"one\r\ntwo\x01\0three \n\0\n", 19};
    note.stars = 70;
    note.secondsPlayed = -4;
    note.added = INT64_MAX;
    note.cover = "../x";
    MakeTidy(note);
    EXPECT_EQ(note.tags, (std::vector<std::string>{"Dark", "dark red", "jungle",
                                                   std::string(longestTag - 1, 'x'), "été"}));
    EXPECT_EQ(note.ownNote, "one\ntwo  three");
    EXPECT_EQ(note.stars, mostStars);
    EXPECT_EQ(note.secondsPlayed, 0);
    EXPECT_TRUE(note.cover.empty());
    LevelNote again = note;
    MakeTidy(again);
    EXPECT_EQ(again, note);
    for (std::size_t i = 0; i < 2 * mostTags; ++i)
        note.tags.push_back("tag " + std::to_string(i));
    note.ownNote.assign(2 * longestOwnNote, 'n');
    MakeTidy(note);
    EXPECT_EQ(note.tags.size(), mostTags);
    EXPECT_EQ(note.ownNote.size(), longestOwnNote);
}

TEST(PlayedNote, ComesBackAsItWasWrittenAndNothingElse)
{
    PlayedNote note;
    note.games = {{7, "/levels/LEVEL_0007 \xFF%", tokenOfSeven, 0, "boot", 5, 60, 7},
                  {0, "/home/LEVEL_0000", {}, 4711, "boot", 1'000'000'000'000, 0, 0}};
    const std::string text = FormatPlayedNote(note);
    const auto back = ParsePlayedNote(text);
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, note);
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_FALSE(ParsePlayedNote(std::string_view{text}.substr(0, length))) << length;
    const std::pair<std::string_view, std::string_view> changes[] = {
        {"\"seconds\": 60", "\"seconds\": -60"},
        {"\"seconds\": 60", "\"seconds\": 99999999"},
        {"4711", "-4711"},
        {"\"code\": 7", "\"code\": -7"}};
    for (const auto& [what, with] : changes) {
        std::string bad = text;
        const std::size_t at = bad.find(what);
        ASSERT_NE(at, std::string::npos) << what;
        EXPECT_FALSE(ParsePlayedNote(bad.replace(at, what.size(), with))) << with;
    }
}

} // namespace kestrova::testing
