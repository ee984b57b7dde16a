#include "formats/level_config.h"
#include "formats/nul_list.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using namespace std::string_literals;

struct Field {
    std::string LevelConfig::*text;
    std::size_t place;
    std::size_t width;
};
constexpr Field fields[] = {
    {&LevelConfig::name, 0, 256},
    {&LevelConfig::note, 256, 256},
    {&LevelConfig::author, 512, 80},
    {&LevelConfig::authorNote, 592, 256},
    {&LevelConfig::authorEmails, 848, 256},
    {&LevelConfig::authorSites, 1104, 256},
    {&LevelConfig::externWaves, 1360, 4096},
    {&LevelConfig::importWads, 5456, 2048},
    {&LevelConfig::importNotes, 7504, 512},
    {&LevelConfig::duplicates, 8016, 600},
    {&LevelConfig::moreInfo, 8616, 80},
    {&LevelConfig::exeFormat, 8696, 10},
};

LevelConfig Example()
{
    LevelConfig config;
    for (const Field& field : fields)
        config.*field.text = "at" + std::to_string(field.place);
    config.authorEmails = "a@b\0c@d"s;
    config.name = "Caf\u00e9";
    config.files = {{"c:\\x\\y.tr4", 5}, {"/home/me/load.bmp", 0x01020304}, {"", -1}};
    config.tomWads = "one.tom\0city.*"s;
    return config;
}

std::string Bytes(const LevelConfig& config)
{
    const auto bytes = FormatLevelConfig(config);
    EXPECT_TRUE(bytes);
    return bytes ? *bytes : std::string{};
}

std::string I16(int value)
{
    return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
}

TEST(LevelConfig, LettersThatAFieldCannotHoldComeBackFromBehindTheList)
{
    LevelConfig config = Example();
    const std::string before = Bytes(config);
    config.name = "\u017b\u00f3\u0142w";
    config.author = std::string(79, 'x') + "\u0416\u0416\u0416";
    config.moreInfo = std::string(90, 'd') + "\u0416.txt";
    const std::string bytes = Bytes(config);
    const auto read = ParseLevelConfig(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->name, config.name);
    EXPECT_EQ(read->author, config.author);
    EXPECT_EQ(read->moreInfo, config.moreInfo);
    EXPECT_EQ(read->tomWads, config.tomWads);
    EXPECT_EQ(bytes.substr(0, 5), "?\xf3?w ") << "what other readers see";

    std::string changed = bytes; // by a program that knows nothing of it
    changed[0] = 'Z';
    EXPECT_EQ(ParseLevelConfig(changed)->name, "Z\u00f3?w");
    for (std::size_t length = before.size(); length < bytes.size(); ++length) {
        const auto cut = ParseLevelConfig(bytes.substr(0, length));
        ASSERT_TRUE(cut) << length;
        EXPECT_TRUE(cut->moreInfo == std::string(80, 'd') && cut->tomWads == config.tomWads)
            << length;
    }
}

TEST(LevelConfig, EveryByteHasItsPlace)
{
    const std::string bytes = Bytes(Example());
    for (const Field& field : fields) {
        std::string text = Example().*field.text;
        if (field.place == 0)
            text = "Caf\xE9";
        text.resize(field.width, ' ');
        EXPECT_EQ(bytes.substr(field.place, field.width), text) << field.place;
    }
    EXPECT_EQ(bytes.substr(8706), "\3\0\0\0"
                                  "\5\0y.tr4\5\0\0\0"
                                  "\10\0load.bmp\4\3\2\1"
                                  "\0\0\xFF\xFF\xFF\xFF"
                                  "\16\0one.tom\0city.*"s);

    const auto read = ParseLevelConfig(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->name, "Caf\u00e9");
    EXPECT_EQ(read->files[1].name, "load.bmp");
    EXPECT_EQ(read->files[1].size, 0x01020304);
    EXPECT_EQ(read->tomWads, Example().tomWads);
    EXPECT_EQ(Bytes(*read), bytes);
    // Blanks before a text stay in the record; only its padding goes.
    EXPECT_EQ(ParseLevelConfig("  x " + bytes.substr(4))->name, "  x");
}

TEST(LevelConfig, BothShapesAreTakenAndOnlyTheTextBehindTheListMayBeCut)
{
    const std::string empty = Bytes({});
    ASSERT_EQ(empty.size(), 8712U);
    const auto old = ParseLevelConfig(std::string_view{empty}.substr(0, 8710));
    ASSERT_TRUE(old);
    EXPECT_EQ(old->tomWads, "");
    EXPECT_EQ(Bytes(*old), empty);

    const std::string whole = Bytes(Example());
    const std::size_t listEnd = whole.size() - 2 - Example().tomWads.size();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const auto read = ParseLevelConfig(std::string_view{whole}.substr(0, size));
        ASSERT_EQ(static_cast<bool>(read), size >= listEnd) << size;
        if (!read) {
            EXPECT_EQ(read.Error().code, ErrorCode::Damaged);
            continue;
        }
        const std::size_t left = size - std::min(size, listEnd + 2);
        EXPECT_EQ(read->tomWads, Example().tomWads.substr(0, left)) << size;
        EXPECT_EQ(read->files.size(), Example().files.size());
    }
    const auto withTail = ParseLevelConfig(whole + "an older, longer file");
    ASSERT_TRUE(withTail);
    EXPECT_EQ(Bytes(*withTail), whole);
}

TEST(LevelConfig, CountsAndLengthsThatLieAreRefused)
{
    const std::string block = Bytes({}).substr(0, 8706);
    for (const std::string& rest :
         {"\xFF\xFF\xFF\x7F"s, "\xFF\xFF\xFF\xFF"s, "\0\0\0\x80"s, "\1\0\0\0"s,
          "\2\0\0\0\0\0\0\0\0\0"s + "\0\0\0"s, "\1\0\0\0"s + I16(-1) + "\0\0\0\0"s,
          "\1\0\0\0"s + I16(32767) + "name\0\0\0\0"s})
        EXPECT_FALSE(ParseLevelConfig(block + rest)) << ::testing::PrintToString(rest);
    EXPECT_EQ(ParseLevelConfig(block + "\0\0\0\0"s + I16(-1) + "text")->tomWads, "");
    EXPECT_EQ(ParseLevelConfig(block + "\0\0\0\0"s + I16(5) + "text")->tomWads, "text");
}

TEST(LevelConfig, WhatIsTooLongIsCutOrRefused)
{
    LevelConfig config;
    config.name = std::string(300, 'n');
    config.tomWads = std::string(32767, 't');
    config.files = {{std::string(32767, 'f'), 1}};
    const auto read = ParseLevelConfig(Bytes(config));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->name, std::string(256, 'n'));
    EXPECT_EQ(read->note, "");
    EXPECT_EQ(read->tomWads, config.tomWads);
    EXPECT_EQ(read->files[0].name, config.files[0].name);

    LevelConfig longText = config;
    longText.tomWads += 't';
    LevelConfig longName = config;
    longName.files[0].name += 'f';
    for (const LevelConfig& tooLong : {longText, longName}) {
        const auto bytes = FormatLevelConfig(tooLong);
        ASSERT_FALSE(bytes);
        EXPECT_EQ(bytes.Error().code, ErrorCode::Refused);
    }
}

TEST(NulList, ListsAndGroupsSurviveTheirField)
{
    LevelConfig config;
    config.externWaves = JoinNulList({"", "", "", ""});
    EXPECT_EQ(config.externWaves, "\0\0\0"s);
    const std::string bytes = Bytes(config);
    EXPECT_EQ(bytes.substr(1360, 4096), "\0\0\0"s + std::string(4093, ' '));
    using Four = std::array<std::string, 4>;
    EXPECT_EQ(NulGroups<4>(ParseLevelConfig(bytes)->externWaves), std::vector<Four>{Four{}});

    EXPECT_EQ(SplitNulList("   "), std::vector<std::string>{});
    EXPECT_EQ(SplitNulList(" a\0 b \0c  "s), (std::vector<std::string>{"a", " b ", "c"}));
    using Two = std::array<std::string, 2>;
    EXPECT_EQ(NulGroups<2>("a\0b\0c"s), (std::vector<Two>{{"a", "b"}}));
}

} // namespace

} // namespace kestrova::testing
