#include "formats/url_list.h"

#include "core/text.h"
#include "formats/config_entry.h"
#include "formats/url_changes.h"
#include "formats/url_json.h"
#include "formats/url_text.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <map>

namespace kestrova
{

namespace
{

template <class T> std::string RawNumber(T value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

std::string RawText(const std::string& text)
{
    return RawNumber(static_cast<std::int16_t>(text.size())) + text;
}

UrlList SomeList()
{
    UrlList list;
    list.updateDate = 45123.25;
    list.records = {{"http://a.example/l", "Größe - Levels", UrlKindLevels, false},
                    {"http://a.example/m", "", UrlKindLevels, true},
                    {"http://b.example/c.zip", "My level - data\\a.tr4;5", UrlKindConfig, false},
                    {"*", "hello", UrlKindNotice, false},
                    {"http://h.example", "***hidden", UrlKindLevels, true},
                    {"x", "odd", 77, false}};
    return list;
}

TEST(UrlList, StandsInTheFileByteForByte)
{
    UrlList list = SomeList();
    list.records.resize(2);
    const std::string bytes =
        RawNumber(std::int32_t{2}) + RawNumber(45123.25) + RawText("http://a.example/l") +
        RawText("Gr\xF6\xDF"
                "e - Levels") +
        RawNumber(std::int32_t{1}) + RawNumber(std::int16_t{0}) + RawText("http://a.example/m") +
        RawText("") + RawNumber(std::int32_t{1}) + RawNumber(std::int16_t{-1});
    EXPECT_EQ(FormatUrlList(list), bytes);
    EXPECT_EQ(ParseUrlList(bytes), list);
    EXPECT_EQ(ParseUrlList(bytes + "an old tail"), list);
    EXPECT_EQ(ParseUrlList(RawNumber(std::int32_t{0}) + RawNumber(1.0))->records.size(), 0u);
}

TEST(UrlList, ACutOrLyingFileIsNone)
{
    const std::string bytes = *FormatUrlList(SomeList());
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(ParseUrlList(std::string_view{bytes}.substr(0, length))) << length;

    const std::string date = RawNumber(1.0);
    const std::string rest(1000, '\0');
    for (const std::int32_t count : {-1, std::numeric_limits<std::int32_t>::max(), 1'000})
        EXPECT_FALSE(ParseUrlList(RawNumber(count) + date + rest)) << count;
    EXPECT_FALSE(
        ParseUrlList(RawNumber(std::int32_t{1}) + date + RawNumber(std::int16_t{-2}) + rest));
    // A length of 65535 is one below nothing.
    EXPECT_FALSE(FormatUrlList({0, {{std::string(40'000, 'x'), ""}}}));
}

TEST(UrlList, KeepsAHundredThousandRecordsWhateverTheyHold)
{
    UrlList list;
    for (int i = 0; i < 100'000; ++i)
        list.records.push_back(
            {"http://" + std::to_string(i) + ".example/\r\n", "line\r\nends", i % 10, i % 3 == 0});
    EXPECT_EQ(ParseUrlList(*FormatUrlList(list)), list);
    EXPECT_EQ(ListedRecords(list, UrlKindTools).size(), 10'000u);
    EXPECT_EQ(UrlRowText(list.records[1]), "line  ends");
}

TEST(UrlList, ShowsWhatAPersonMaySee)
{
    const UrlList list = SomeList();
    EXPECT_EQ(ListedRecords(list, UrlKindLevels), (std::vector<std::size_t>{0, 1}));
    EXPECT_TRUE(ListedRecords(list, UrlKindNotice).empty());
    UrlRecord record{"u", "Site-levels and REVIEWS", UrlKindLevels, true};
    EXPECT_EQ(UrlRowText(record), "{User} Site - Levels and reviews");
    record.kind = UrlKindForums;
    EXPECT_EQ(UrlRowText(record), "{User} Site-levels and REVIEWS");

    const std::string letters(74, 'x');
    EXPECT_EQ(ShownAddress(letters + "ä"), letters + "ä");
    EXPECT_EQ(ShownAddress(letters + "äy"), letters + "ä ...");

    EXPECT_EQ(UpdateDateText(45123.25), "16/07/2023  06:00:00");
    EXPECT_EQ(UpdateDateText(0), "30/12/1899  00:00:00");
    EXPECT_EQ(UpdateDateText(45122.9999999), "16/07/2023  00:00:00");
    for (const double odd : {std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(), 1e300, -1e300})
        EXPECT_EQ(UpdateDateText(odd), "") << odd;
}

TEST(SiteText, IsExchangedBehindTheFirstDash)
{
    EXPECT_EQ(LocalizeSiteText("Levels site -  reviews, Reviews with levels - Levels"),
              "Levels site - reviews, reviews with Levels - Levels");
    EXPECT_EQ(LocalizeSiteText("REVIEWS"), "reviews");
    EXPECT_EQ(LocalizeSiteText(" - sorted BY rating"), "Sorted by rating");
    EXPECT_EQ(LocalizeSiteText(""), "");
    EXPECT_EQ(LocalizeSiteText("a-"), "a - ");
    EXPECT_EQ(LocalizeSiteText("~1 - ~2"), "~1 - ~2");
}

TEST(SiteText, IsSearchedInTheWordsThatAreShown)
{
    for (const char* text :
         {"Tom-Levels And reviews WITH walkthroughs", " - Sorted by ENTER date, sorted by rating",
          "search whereby keywords", "Ünder - Sorted by title\nSorted by author name",
          "a - various sorting standards - language: Łatin", ""})
        for (const bool user : {false, true})
            for (const std::int32_t kind : {UrlKindLevels, UrlKindForums}) {
                const UrlRecord record{"http://A.example", text, kind, user};
                EXPECT_EQ(SearchedText(record),
                          FoldCase(UrlRowText(record)) + "\nhttp://a.example");
            }
}

TEST(Urls, HaveAFileAHostAndAScheme)
{
    EXPECT_EQ(UrlFileName("http://a/b/c.zip"), "c.zip");
    EXPECT_EQ(UrlFileName("http://a/b\\c.zip"), "c.zip");
    EXPECT_EQ(UrlFileName("c.zip"), "c.zip");
    EXPECT_EQ(UrlFileName("http://a/"), "");
    EXPECT_EQ(UrlHostPart("http://host:80/a//b"), "http://host:80");
    EXPECT_EQ(UrlHostPart("http://host"), "http://host");
    EXPECT_EQ(UrlHostPart("host/a"), "host/a");
    for (const char* url : {"http://a", "HTTPS://a/b", "mailto:a@b"})
        EXPECT_TRUE(IsOpenable(url)) << url;
    for (const char* url : {"", "a", "file:///etc/passwd", "http:a", "/bin/sh", "ftp://a",
                            "javascript:x", "http://a\nfile://b", "httpx://a"})
        EXPECT_FALSE(IsOpenable(url)) << url;
}

TEST(UrlChanges, AnUpdateKeepsThePersonsOwnAheadOfTheServers)
{
    const UrlList own = SomeList();
    UrlList server;
    server.records = {{"http://new.example", "new", UrlKindTools, false},
                      {"http://a.example/m", "claims to be the person's", UrlKindLevels, true}};
    const UrlList merged = MergedUrls(own, server, 46000.5);
    EXPECT_EQ(merged.updateDate, 46000.5);
    ASSERT_EQ(merged.records.size(), 4u);
    EXPECT_EQ(merged.records[0], own.records[1]);
    EXPECT_EQ(merged.records[1], own.records[4]);
    EXPECT_EQ(merged.records[2], server.records[0]);
    EXPECT_EQ(merged.records[3].description, "claims to be the person's");
    EXPECT_FALSE(merged.records[3].user); // or each update would keep one more of it
}

TEST(UrlChanges, DoublesAreOfOneKindByAddressOrHost)
{
    const UrlList list = SomeList();
    const auto doubles = DoublesOf(list, {"HTTP://A.example/M", "", UrlKindLevels, true});
    ASSERT_EQ(doubles.size(), 2u);
    EXPECT_EQ(doubles[0].record, 0u);
    EXPECT_FALSE(doubles[0].sameUrl);
    EXPECT_EQ(doubles[1].record, 1u);
    EXPECT_TRUE(doubles[1].sameUrl);
    EXPECT_EQ(DoublesOf(list, list.records[1], 1).size(), 1u);
    EXPECT_TRUE(DoublesOf(list, {"http://a.example/m", "", UrlKindForums, true}).empty());
}

TEST(UrlChanges, NoticesTellAndAskInTheListsOrder)
{
    UrlList list;
    list.records = {{" * ", "only told", UrlKindNotice},
                    {" http://n ", "asked", UrlKindNotice},
                    {"http://v", "Version 104 of the program: mends much ", UrlKindVersion},
                    {"http://v", "103", UrlKindVersion},
                    {"http://v", "none", UrlKindVersion},
                    {"http://v", "99999999999999999999", UrlKindVersion},
                    {"http://s", "no notice 999", UrlKindLevels}};
    const std::vector<UrlNotice> notices = NoticesOf(list, 103);
    ASSERT_EQ(notices.size(), 3u);
    EXPECT_EQ(notices[0], (UrlNotice{"only told"}));
    EXPECT_EQ(notices[1], (UrlNotice{"asked\r\nDo you want download it now?", "http://n", true}));
    EXPECT_EQ(notices[2], (UrlNotice{"There is a new version of Kestrova: version 1.04\r\nmends "
                                     "much\r\nDo you want download it now?",
                                     "http://v", true}));
}

bool MatchesFolder(const std::string& description,
                   const std::map<std::string, std::uint64_t>& folder)
{
    const auto entry = ParseConfigEntry(description);
    return entry && Matches(*entry, [&](const Path& relative) -> std::optional<std::uint64_t> {
               const auto found = folder.find(relative.native());
               return found == folder.end() ? std::nullopt : std::optional{found->second};
           });
}

TEST(ConfigEntry, KnowsALevelByAllItsFilesAndTheirSizes)
{
    const std::map<std::string, std::uint64_t> folder{{"data/level.tr4", 1234567},
                                                      {"script.dat", 4096}};
    const auto entry =
        ParseConfigEntry(" Name of level - data\\level.tr4 ; 1234567;script.dat;4096 - more");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->level, "Name of level");
    ASSERT_EQ(entry->files.size(), 2u);
    EXPECT_EQ(entry->files[0].relative, "data/level.tr4");

    for (const char* match : {"A - data\\level.tr4;1234567;script.dat;4096", "A - script.dat;4096;",
                              "A-\\script.dat;4096", "A -", "-"})
        EXPECT_TRUE(MatchesFolder(match, folder)) << match;
    for (const char* other :
         {"A", "", "A - script.dat;4097", "A - script.dat", "A - script.dat;", "A - missing;1",
          "A - script.dat;4096;;", "A - ;", "A - ;0", "A - script.dat;4096x", "A - script.dat;-1",
          "A - script.dat; 99999999999999999999", "My-level - script.dat;4096",
          "A - ..\\script.dat;4096", "A - C:\\script.dat;4096", "A - \\\\script.dat;4096"})
        EXPECT_FALSE(MatchesFolder(other, folder)) << other;
}

TEST(ConfigEntry, IsWrittenOnlyAsItWouldBeRead)
{
    const ConfigEntry entry{"My level", {{"data/level.tr4", 12}, {"script.dat", 4096}}};
    const auto text = FormatConfigEntry(entry);
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, "My level - data\\level.tr4;12;script.dat;4096");
    EXPECT_EQ(ParseConfigEntry(*text), entry);
    for (const ConfigEntry& odd :
         {ConfigEntry{"My-level", {{"a", 1}}}, ConfigEntry{"A", {}}, ConfigEntry{" ", {{"a", 1}}},
          ConfigEntry{"A", {{"a-b", 1}}}, ConfigEntry{"A", {{"a;b", 1}}},
          ConfigEntry{"A", {{"a", {}}}}, ConfigEntry{"A", {{"../a", 1}}},
          ConfigEntry{"A", {{"Ł", 1}}}, ConfigEntry{"A", {{"", 1}}}})
        EXPECT_FALSE(FormatConfigEntry(odd));
}

TEST(UrlJson, GoesBothWays)
{
    const UrlList list = SomeList();
    UrlJsonFault fault;
    const auto draft = ParseUrlJson(FormatUrlJson(list), fault);
    ASSERT_TRUE(draft);
    EXPECT_EQ(draft->updateDate, list.updateDate);
    ASSERT_EQ(draft->records.size(), list.records.size());
    for (std::size_t i = 0; i < list.records.size(); ++i)
        EXPECT_EQ(draft->records[i].record, list.records[i]);

    const auto made =
        ParseUrlJson(R"([{"kind":8,"url":"u","level":"l","files":["a","b"]}])", fault);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->records[0].files, (std::vector<std::string>{"a", "b"}));
    EXPECT_FALSE(made->updateDate);
}

TEST(UrlJson, NamesTheFirstRecordThatIsNone)
{
    const std::string whole = R"({"kind":1,"url":"u","description":"d"})";
    for (const std::string odd :
         {"1", R"({"kind":"1","url":"u","description":"d"})", R"({"url":"u","description":"d"})",
          R"({"kind":1,"description":"d"})", R"({"kind":1,"url":"u"})",
          R"({"kind":1,"url":2,"description":"d"})", R"({"kind":8,"url":"u"})",
          R"({"kind":8,"url":"u","files":[1]})",
          R"({"kind":9999999999,"url":"u","description":""})",
          R"({"kind":1,"url":"u","description":"d","user":1})"}) {
        UrlJsonFault fault;
        EXPECT_FALSE(ParseUrlJson("[" + whole + "," + odd + "]", fault)) << odd;
        EXPECT_EQ(fault.record, 2u) << odd;
    }
    for (const char* odd :
         {"", "{", "7", "{}", R"({"records":1})", R"({"updated":"x","records":[]})"}) {
        UrlJsonFault fault;
        EXPECT_FALSE(ParseUrlJson(odd, fault)) << odd;
        EXPECT_EQ(fault.record, 0u) << odd;
    }
}

} // namespace

} // namespace kestrova
