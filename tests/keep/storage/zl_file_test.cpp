#include "sandbox/faults.h"
#include "storage/ready_streams.h"
#include "storage/zl_file.h"
#include "world/world.h"

#include <gtest/gtest.h>
#include <random>

namespace kestrova::testing
{

namespace
{

constexpr std::uint64_t noLimit = UINT64_C(1) << 40;

std::string PlainNoise(std::size_t size)
{
    std::mt19937 random{7};
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random() & 0xFF);
    return bytes;
}

TEST(ZlFile, ComesBackWhateverItHolds)
{
    for (const std::string& content : {std::string{}, std::string{"x"}, std::string(70'000, 'a'),
                                       std::string(9'000'000, '\0'), PlainNoise(300'000)}) {
        const std::string stream = CompressZlBytes(content);
        const auto back = ExpandZlBytes(stream, noLimit);
        ASSERT_TRUE(back) << content.size();
        EXPECT_TRUE(*back == content) << content.size();
        // Exactly what is needed is enough, one byte less is not.
        EXPECT_TRUE(ExpandZlBytes(stream, content.size()));
        if (!content.empty()) {
            const auto tight = ExpandZlBytes(stream, content.size() - 1);
            ASSERT_FALSE(tight) << content.size();
            EXPECT_EQ(tight.Error().code, ErrorCode::NoSpace);
        }
    }
}

/// Streams of another maker, by the format's own description: stored, fixed and small windows.
TEST(ZlFile, ReadsStreamsOfAnyMaker)
{
    using namespace std::string_literals;
    EXPECT_EQ(*ExpandZlBytes("\x78\x01\x01\x03\x00\xfc\xff\x61\x62\x63\x02\x4d\x01\x27"s, 100),
              "abc"); // one stored block
    EXPECT_EQ(*ExpandZlBytes("\x78\x9c\x4b\x4c\x4a\x06\x00\x02\x4d\x01\x27"s, 100),
              "abc"); // fixed codes, level 6
    EXPECT_EQ(*ExpandZlBytes("\x18\x95\x4b\x4c\x4a\x06\x00\x02\x4d\x01\x27"s, 100),
              "abc"); // a window of 512 bytes
}

TEST(ZlFile, RefusesWhatIsCutWrongOrFollowedByJunk)
{
    const std::string content = PlainNoise(500) + std::string(500, 'a');
    const std::string stream = CompressZlBytes(content);
    const auto isDamaged = [](const std::string& bytes) {
        const auto result = ExpandZlBytes(bytes, noLimit);
        return !result && result.Error().code == ErrorCode::Damaged;
    };
    for (std::size_t length = 0; length < stream.size(); ++length)
        EXPECT_TRUE(isDamaged(stream.substr(0, length))) << length;
    for (std::size_t place = 0; place < stream.size(); ++place) {
        std::string wrong = stream;
        wrong[place] = static_cast<char>(wrong[place] ^ 0x10);
        const auto result = ExpandZlBytes(wrong, noLimit);
        EXPECT_TRUE(!result || *result == content) << place; // the level mark is no content
    }
    EXPECT_TRUE(isDamaged(stream + "x"));
    EXPECT_TRUE(isDamaged(stream + stream));
    EXPECT_TRUE(isDamaged(content));
}

TEST(ZlFile, IsWholeOrNotThereWhereverItFails)
{
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 100);
        World box;
        box.Write("home/a.tr4", "level data");
        const auto run = WithFaultAt(
            step,
            [&] {
                return bool{CompressToZl(box / "home/a.tr4", box / "home/a.tr4.zl")} &&
                       bool{ExpandZl(box / "home/a.tr4.zl", box / "home/b.tr4", noLimit)};
            },
            std::errc::no_space_on_device);
        if (box.Has("home/a.tr4.zl")) {
            EXPECT_EQ(*ExpandZlBytes(box.Read("home/a.tr4.zl"), noLimit), "level data") << run.call;
        }
        EXPECT_TRUE(!box.Has("home/b.tr4") || box.Read("home/b.tr4") == "level data") << run.call;
        EXPECT_TRUE(!run.answer || box.Has("home/b.tr4")) << run.call;
        if (!run.reached)
            break;
    }
}

TEST(ZlFile, AStreamThatWasMadeAheadIsTakenOnlyForItsOwnSource)
{
    using namespace std::string_literals;
    World box;
    box.Write("home/a.tr4", "abc");
    const std::string stored = "\x78\x01\x01\x03\x00\xfc\xff\x61\x62\x63\x02\x4d\x01\x27"s;
    const std::string own = CompressZlBytes("abc");
    ASSERT_NE(stored, own);
    for (const auto& [made, expected] :
         {std::pair{stored, stored}, std::pair{CompressZlBytes("abd"), own},
          std::pair{stored.substr(0, 9), own}, std::pair{"no stream"s, own}}) {
        ASSERT_TRUE(CompressToZl(box / "home/a.tr4", box / "home/a.tr4.zl", made));
        EXPECT_EQ(box.Read("home/a.tr4.zl"), expected) << made.size();
    }

    ReadyStreams ready;
    ready.Add(platform::FactsOf(box / "home/a.tr4"), "stream");
    std::filesystem::rename(box / "home/a.tr4", box / "home/b.tr4");
    EXPECT_EQ(ready.Of(box / "home/b.tr4"), "stream") << "by another name";
    EXPECT_EQ(ready.Bytes(), 6U);
    box.Write("home/other", "abc");
    EXPECT_EQ(ready.Of(box / "home/other"), "");
    EXPECT_EQ(ready.Of(box / "home/none"), "");
    box.Write("home/b.tr4", "abcd");
    EXPECT_EQ(ready.Of(box / "home/b.tr4"), "") << "it was written to";
}

TEST(ZlFile, KeepsTheSourcesTime)
{
    World box;
    box.Write("home/a.tr4", "level data");
    constexpr std::int64_t time = 1'000'000'000'000'000'000;
    ASSERT_FALSE(platform::SetModified(box / "home/a.tr4", time));
    ASSERT_TRUE(CompressToZl(box / "home/A.TR4", box / "home/a.tr4.zl"));
    ASSERT_TRUE(ExpandZl(box / "home/a.tr4.zl", box / "home/b.tr4", noLimit));
    EXPECT_EQ(platform::FactsOf(box / "home/a.tr4.zl").modifiedNs, time);
    EXPECT_EQ(platform::FactsOf(box / "home/b.tr4").modifiedNs, time);
    EXPECT_EQ(*ExpandedSizeOfZl(box / "home/a.tr4.zl", noLimit), 10U);
    const auto missing = ExpandZl(box / "home/none.zl", box / "home/c", noLimit);
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.Error().code, ErrorCode::CannotRead);
}

TEST(ZlFile, WhateverAStreamBecomesOnlyAPieceOfItIsHeldAtOnce)
{
    World box;
    const std::uint64_t size = zlMemory + (zlMemory >> 1) + 7;
    const std::string stream = CompressZlBytes(std::string(size, 'x'));
    box.Write("big.zl", stream);
    std::uint64_t came = 0;
    std::size_t longest = 0;
    const auto take = [&](std::string_view piece) {
        came += piece.size();
        longest = std::max(longest, piece.size());
        return Status{};
    };
    ASSERT_TRUE(StreamZl(box / "big.zl", maxZlContent, take));
    EXPECT_EQ(came, size);
    EXPECT_LT(longest, zlMemory / 16);
    // Both ways find the same faults.
    const std::string small = CompressZlBytes("small");
    for (const std::string& whole : {stream, small}) {
        for (const std::string& bad : {whole.substr(0, whole.size() - 1), whole + "x",
                                       whole.substr(0, whole.size() - 4) + "sum!"}) {
            box.Write("bad.zl", bad);
            const auto status = StreamZl(box / "bad.zl", maxZlContent, take);
            ASSERT_FALSE(status);
            EXPECT_EQ(status.Error().code, ErrorCode::Damaged) << bad.size();
            EXPECT_EQ(status.Error().subject, (box / "bad.zl").native());
        }
    }
    came = 0;
    EXPECT_EQ(StreamZl(box / "big.zl", size - 1, take).Error().code, ErrorCode::NoSpace);
    EXPECT_LT(came, size);
    EXPECT_EQ(*ExpandedSizeOfZl(box / "big.zl", size), size);
    EXPECT_TRUE(ExpandZl(box / "big.zl", box / "big", size));
    EXPECT_EQ(FileSize(box / "big"), size);
}

} // namespace

} // namespace kestrova::testing
