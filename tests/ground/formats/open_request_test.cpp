#include "formats/open_request.h"

#include <gtest/gtest.h>

namespace kestrova
{

TEST(OpenRequest, ComesBackHoweverItArrivesAndNothingElseCounts)
{
    const OpenRequest request{"desktop_TIME42", {"/a b/my.kva", "/Zażółć\n\xff", "/"}};
    const std::string bytes = FormatOpenRequest(request);
    OpenRequest read;
    std::size_t used = 0;
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_EQ(ParseOpenRequest(std::string_view{bytes}.substr(0, length), read, used),
                  Arrived::Part)
            << length;
    ASSERT_EQ(ParseOpenRequest(bytes + "go\n", read, used), Arrived::Whole);
    EXPECT_EQ(used, bytes.size());
    EXPECT_EQ(read.activation, request.activation);
    EXPECT_EQ(read.items, request.items);
    ASSERT_EQ(ParseOpenRequest(FormatOpenRequest({}), read, used), Arrived::Whole);
    EXPECT_TRUE(read.activation.empty() && read.items.empty());

    using namespace std::string_literals;
    const std::string head = "kestrova open 1\n";
    for (const std::string& wrong :
         {"x"s, "kestrova open 2\n"s, head + "x\n", head + "-1\n", head + "12345678",
          head + "1048577\n", head + "0\n", head + "3\nabc", head + "6\n\0a.kva"s,
          head + "5\n\0a.b\0"s, head + "5\n\x1b[m\0\0"s, head + "3\n\0\0\0"s})
        EXPECT_EQ(ParseOpenRequest(wrong, read, used), Arrived::Wrong) << wrong;
}

TEST(OpenRequest, IsBounded)
{
    EXPECT_FALSE(FormatOpenRequest({{}, std::vector<std::string>(mostOpenItems, "/x")}).empty());
    EXPECT_TRUE(FormatOpenRequest({{}, std::vector<std::string>(mostOpenItems + 1, "/x")}).empty());
    const std::string longest = '/' + std::string(4095, 'x');
    EXPECT_FALSE(FormatOpenRequest({{}, std::vector<std::string>(255, longest)}).empty());
    EXPECT_TRUE(FormatOpenRequest({{}, std::vector<std::string>(256, longest)}).empty());
    EXPECT_TRUE(FormatOpenRequest({{}, {longest + 'x'}}).empty());
    EXPECT_TRUE(FormatOpenRequest({{}, {"relative"}}).empty());
    // A desktop's word that is none is left out; the window comes all the same.
    OpenRequest read;
    std::size_t used = 0;
    ASSERT_EQ(ParseOpenRequest(FormatOpenRequest({"a\nb", {"/x"}}), read, used), Arrived::Whole);
    EXPECT_EQ(read.activation, "");
}

} // namespace kestrova
