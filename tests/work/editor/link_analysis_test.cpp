#include "editor/link_analysis.h"

#include <gtest/gtest.h>

#include <chrono>

namespace kestrova::testing
{

namespace
{

using Names = std::vector<std::string>;

/// The wad that the text tells for the first tom file; empty: none.
std::string LinkOf(const std::string& text, const Names& toms, const Names& wads)
{
    const auto links = FindLinks(text, toms, wads);
    EXPECT_TRUE(links);
    EXPECT_EQ(links->size(), toms.size());
    return links->front() ? wads[*links->front()] : std::string{};
}

std::string Apart(std::size_t letters, const std::string& tom = "city.tom")
{
    return tom + std::string(letters - tom.size(), ' ') + "angkor.wad";
}

TEST(FindLinks, AWadCountsWithinTheWindowAboutTheTomFilesName)
{
    const Names wads{"Angkor.WAD", "city9.wad"};
    const std::string far(200, 'x');
    EXPECT_EQ(LinkOf(Apart(30), {"city"}, wads), "Angkor.WAD");
    EXPECT_EQ(LinkOf(far + Apart(33), {"city"}, wads), "Angkor.WAD") << "with its dot inside";
    EXPECT_EQ(LinkOf(far + Apart(34), {"city"}, wads), "");
    EXPECT_EQ(LinkOf(Apart(50), {"city"}, wads), "Angkor.WAD") << "the text begins there";
    EXPECT_EQ(LinkOf(far + Apart(50), {"city"}, wads), "");
    EXPECT_EQ(LinkOf(far + "angkor.wad" + std::string(30, ' ') + "CITY.TOM", {"city"}, wads),
              "Angkor.WAD");
    EXPECT_EQ(LinkOf(far + "angkor.wad" + std::string(31, ' ') + "city.tom", {"city"}, wads), "");
    // Letters are counted, whatever they take.
    std::string umlauts;
    for (int i = 0; i < 22; ++i)
        umlauts += "ü";
    EXPECT_EQ(LinkOf(far + "city.tom" + umlauts + "angkor.wad", {"city"}, wads), "Angkor.WAD");
    EXPECT_EQ(LinkOf("cities angkor.wad", {"city"}, wads), "");
    EXPECT_EQ(LinkOf("city angkor.wad", {"city"}, wads), "") << "a word is no name of a file";
}

TEST(FindLinks, OfSeveralWadsTheLongestCommonPrefixWinsAndThenTheFirst)
{
    EXPECT_EQ(LinkOf("cityb.tom: city.wad, cityb.wad", {"cityb"}, {"city.wad", "cityb.wad"}),
              "cityb.wad");
    EXPECT_EQ(LinkOf("my.tom: b.wad, a.wad", {"my"}, {"a.wad", "b.wad"}), "a.wad");
    EXPECT_EQ(LinkOf("my.tom: b.wad, a.wad", {"my"}, {"b.wad", "a.wad"}), "b.wad");
}

TEST(FindLinks, ALaterPlaceOfTheNameIsTriedToo)
{
    const std::string text = "city.tom" + std::string(90, ' ') + "city.tom uses angkor.wad";
    EXPECT_EQ(LinkOf(text, {"city"}, {"angkor.wad"}), "angkor.wad");
    const auto links = FindLinks("a.tom b.wad" + std::string(90, ' ') + "c.tom d.wad",
                                 {"c", "x", "a", ""}, {"b.wad", "d.wad"});
    EXPECT_EQ(*links, (std::vector<std::optional<std::size_t>>{1, {}, 0, {}}));
}

TEST(FindLinks, AHostileReadmeTakesTheTimeOfItsLength)
{
    Names toms;
    Names wads;
    for (std::size_t i = 1; i <= 300; ++i) {
        toms.push_back(std::string(i % 200, 'a') + "b" + std::to_string(i));
        wads.push_back(std::string(i % 200, 'a') + std::to_string(i) + ".wad");
    }
    toms.emplace_back("a");
    std::string text;
    while (text.size() < (std::size_t{1} << 20))
        text += "a.a.a.a.aaaaaaaaaaa.";
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(FindLinks(text, toms, wads));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
    int beats = 0;
    const auto stopped = FindLinks(text, toms, wads, [&] { return ++beats < 3; });
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.Error().code, ErrorCode::Stopped);
}

} // namespace

} // namespace kestrova::testing
