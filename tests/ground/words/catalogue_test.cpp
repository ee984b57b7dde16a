#include "words/catalogue.h"
#include "words/message.h"

#include <gtest/gtest.h>
#include <thread>

namespace kestrova::testing
{
namespace
{

std::string Bytes(std::uint32_t number)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i, number >>= 8)
        bytes += static_cast<char>(number & 0xFFU);
    return bytes;
}

using Pair = std::pair<std::string, std::string>;

/// What gettext makes of these texts.
std::string MadeOf(const std::vector<Pair>& pairs)
{
    const auto count = static_cast<std::uint32_t>(pairs.size());
    const std::uint32_t tables = 28;
    std::string told;
    std::string translated;
    std::string texts;
    const auto put = [&](std::string& table, const std::string& text) {
        table += Bytes(static_cast<std::uint32_t>(text.size()));
        table += Bytes(static_cast<std::uint32_t>(tables + 16 * count + texts.size()));
        texts += text + '\0';
    };
    for (const Pair& pair : pairs)
        put(told, pair.first);
    for (const Pair& pair : pairs)
        put(translated, pair.second);
    return Bytes(0x950412de) + Bytes(0) + Bytes(count) + Bytes(tables) + Bytes(tables + 8 * count) +
           Bytes(0) + Bytes(0) + told + translated + texts;
}

const std::vector<Pair> german{
    {"", "Language: de\n"}, {"Level ~1 of ~2", "Von ~2 das Level ~1"}, {"Yes", "Ja"}, {"No", ""}};

class Speaks
{
public:
    explicit Speaks(const Catalogue& catalogue) { SpeakBy(&catalogue); }
    ~Speaks() { SpeakBy(nullptr); }
    Speaks(const Speaks&) = delete;
    Speaks& operator=(const Speaks&) = delete;
};

} // namespace

TEST(Catalogue, ShowsTextsInItsLanguageAndLeavesWhatIsTold)
{
    constexpr Message level{"Level ~1 of ~2"};
    constexpr Message unknown{"It has no row"};
    const auto catalogue = Catalogue::Read(MadeOf(german));
    ASSERT_TRUE(catalogue);
    EXPECT_EQ(GetMsg(level, {"3", "7"}), "Level 3 of 7");
    {
        const Speaks speaks{*catalogue};
        EXPECT_EQ(GetMsg(level, {"3", "7"}), "Von 7 das Level 3");
        EXPECT_EQ(Told(level, {"3", "7"}), "Level 3 of 7");
        EXPECT_EQ(Shown(Message{"Yes"}), "Ja");
        EXPECT_EQ(Shown(unknown), unknown.text);
        EXPECT_EQ(Shown(Message{"No"}), "No") << "an empty translation is none";
        EXPECT_EQ(Shown(Message{}), "") << "not the head lines";
        EXPECT_EQ(ShownAsSpoken("Yes"), "Ja");
        EXPECT_EQ(ShownAsSpoken("a player's own words"), "a player's own words");
    }
    EXPECT_EQ(Shown(Message{"Yes"}), "Yes");
}

TEST(Catalogue, OfAnyOtherBytesIsNone)
{
    const std::string whole = MadeOf(german);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(Catalogue::Read(whole.substr(0, size))) << size;
    // Counts and places beyond the end, and those that would wrap around.
    for (const std::size_t place : {8U, 12U, 16U, 28U, 32U, 60U, 64U})
        for (const std::uint32_t wrong : {0xFFFFFFFFU, 0xFFFFFFF8U, 0x80000000U, 0x1FFFFFFFU}) {
            std::string bytes = whole;
            bytes.replace(place, 4, Bytes(wrong));
            EXPECT_FALSE(Catalogue::Read(bytes)) << place << " " << wrong;
        }
    std::string other = whole;
    other.replace(0, 4, "\x95\x04\x12\xde"); // of another kind of machine
    EXPECT_FALSE(Catalogue::Read(other));
    other = whole;
    other[6] = 2; // a major revision that nobody knows
    EXPECT_FALSE(Catalogue::Read(other));
}

TEST(Catalogue, IsExchangedWhileOthersShowTexts)
{
    const auto one = Catalogue::Read(MadeOf(german));
    const auto other = Catalogue::Read(MadeOf({{"Yes", "Sì"}}));
    ASSERT_TRUE(one && other);
    std::atomic<bool> ended{false};
    std::vector<std::thread> workers;
    for (int i = 0; i < 3; ++i)
        workers.emplace_back([&] {
            while (!ended) {
                const std::string shown = GetMsg(Message{"Yes"});
                EXPECT_TRUE(shown == "Yes" || shown == "Ja" || shown == "Sì") << shown;
            }
        });
    for (int i = 0; i < 1000; ++i)
        SpeakBy(i % 3 == 0 ? nullptr : i % 3 == 1 ? &*one : &*other);
    SpeakBy(nullptr);
    ended = true;
    for (std::thread& worker : workers)
        worker.join();
}

} // namespace kestrova::testing
