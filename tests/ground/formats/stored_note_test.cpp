#include "formats/stored_note.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

constexpr const char* one = "00112233445566778899aabbccddeeff";
constexpr const char* other = "ffeeddccbbaa99887766554433221100";

} // namespace

TEST(StoredNoteText, ReadsWhatItWritesAndKeepsOddNames)
{
    StoredNote note{true, true, {}};
    note.files.push_back(
        {"dawn.tr4.zl", 4711, 1'700'000'000, one, StoredOrigin{"dawn.tr4", 9, other}});
    note.files.push_back({"100%\xff.txt", 0, -5, other, {}});
    const auto read = ParseStoredNote(FormatStoredNote(note));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, note);
    ASSERT_NE(read->Find("dawn.tr4.zl"), nullptr);
    EXPECT_EQ(read->Find("DAWN.tr4.zl"), nullptr) << "a case twin is another file";
}

TEST(StoredNoteText, BelievesNoNameThatLeadsOutAndNoEntryThatIsNone)
{
    const auto with = [](const std::string& entry) {
        return ParseStoredNote(R"({"version":1,"whole":false,"changing":false,"files":[)" + entry +
                               "]}");
    };
    const std::string rest = R"(","size":1,"time":1,"hash":")" + std::string{one} + "\"";
    for (const char* name : {"../a", "a/b", "..", "c:a", "", "a\\\\b"}) {
        const auto note = with(R"({"name":")" + (name + rest) + "}");
        ASSERT_TRUE(note) << name;
        EXPECT_TRUE(note->files.empty()) << name;
    }
    const auto twice = with(R"({"name":"a)" + rest + "},7,{\"name\":\"a" + rest + "}");
    ASSERT_TRUE(twice);
    EXPECT_EQ(twice->files.size(), 1U);
    const auto origin =
        with(R"({"name":"a)" + rest + R"(,"from":{"name":"../b","size":1,"hash":")" + one + "\"}}");
    ASSERT_TRUE(origin);
    EXPECT_TRUE(origin->files.empty());
}

TEST(StoredNoteText, IsDamagedWhereverItIsCut)
{
    const std::string text = FormatStoredNote({true, false, {{"a", 1, 2, one, {}}}});
    for (std::size_t length = 0; length + 1 < text.size(); ++length)
        EXPECT_FALSE(ParseStoredNote(text.substr(0, length))) << length;
}

} // namespace kestrova::testing
