#include "formats/iso_directory.h"

#include "formats/sectors.h"

#include <cstring>
#include <gtest/gtest.h>
#include <map>

namespace kestrova
{

namespace
{

/// A disc put together by hand: a descriptor, and folders of records.
class HandMadeDisc
{
public:
    HandMadeDisc()
    {
        std::string descriptor(discSector, '\0');
        descriptor.replace(0, 7, "\1CD001\1");
        descriptor.replace(40, 32, "HAND MADE                       ");
        Put(descriptor, 80, 40);
        descriptor.replace(156, 34, Record(20, discSector, 2, std::string(1, '\0')));
        sectors_[16] = descriptor;
        Folder(20, {});
    }

    static void Put(std::string& bytes, std::size_t at, std::uint32_t number)
    {
        for (std::size_t i = 0; i < 4; ++i)
            bytes[at + i] = static_cast<char>(number >> (8 * i));
    }
    static std::string Record(std::uint32_t sector, std::uint32_t size, int flags,
                              const std::string& name, const std::string& fields = {})
    {
        std::string record(33, '\0');
        Put(record, 2, sector);
        Put(record, 10, size);
        record[25] = static_cast<char>(flags);
        record[32] = static_cast<char>(name.size());
        record += name;
        if (name.size() % 2 == 0)
            record += '\0';
        record += fields;
        record[0] = static_cast<char>(record.size());
        return record;
    }
    /// With the records of itself and the folder above in front, as `root` has them.
    void Folder(std::uint32_t sector, const std::vector<std::string>& records,
                const std::string& fields = {})
    {
        std::string bytes = Record(sector, discSector, 2, std::string(1, '\0'), fields) +
                            Record(20, discSector, 2, "\1");
        for (const std::string& record : records)
            bytes += record;
        bytes.resize(discSector);
        sectors_[sector] = bytes;
    }
    [[nodiscard]] Result<IsoDirectory> Read() const
    {
        return ReadIsoDirectory([this](std::uint64_t offset, std::span<std::byte> into) {
            const auto found = sectors_.find(offset / discSector);
            if (found == sectors_.end() || into.size() != discSector)
                return false;
            std::memcpy(into.data(), found->second.data(), into.size());
            return true;
        });
    }

private:
    std::map<std::uint64_t, std::string> sectors_;
};

TEST(IsoDirectory, PiecesOfALargeFileAreOneFile)
{
    HandMadeDisc disc;
    disc.Folder(20, {HandMadeDisc::Record(30, 0xFFFFF800, 0x80, "LARGE.DAT;1"),
                     HandMadeDisc::Record(2'097'181, 5000, 0, "LARGE.DAT;1"),
                     HandMadeDisc::Record(25, discSector, 2, "SUB"),
                     HandMadeDisc::Record(31, 3, 0, "PLAIN.;1")});
    disc.Folder(25, {HandMadeDisc::Record(32, 9, 0, "IN.TXT;1")});
    const auto read = disc.Read();
    ASSERT_TRUE(read) << read.Error().sentence;
    EXPECT_EQ(read->label, "HAND MADE");
    EXPECT_EQ(read->bytes, 40 * discSector);
    ASSERT_EQ(read->files.size(), 4U);
    EXPECT_EQ(read->files[0].path, "LARGE.DAT");
    EXPECT_EQ(read->files[0].size, UINT64_C(0xFFFFF800) + 5000);
    EXPECT_EQ(read->files[0].extents[1], (IsoExtent{UINT64_C(2'097'181) * discSector, 5000}));
    EXPECT_EQ(read->files[2].path, "PLAIN");
    EXPECT_EQ(read->files[3].path, "SUB/IN.TXT");
}

TEST(IsoDirectory, NamesOfRockRidgeMayGoOnElsewhereAndFoldersMayBeMoved)
{
    HandMadeDisc disc;
    const std::string has{"SP\7\1\xBE\xEF\0", 7};
    // Both numbers stand twice, as all of them do.
    std::string more{"CE\x1C\1", 4};
    more.resize(28, '\0');
    HandMadeDisc::Put(more, 4, 26);
    HandMadeDisc::Put(more, 12, 2 * 34);
    HandMadeDisc::Put(more, 20, 9);
    std::string moved{"CL\x0C\1", 4};
    moved.resize(12, '\0');
    HandMadeDisc::Put(moved, 4, 27);
    disc.Folder(20,
                {HandMadeDisc::Record(30, 1, 0, "A.;1", std::string{"NM\7\1\1"} + "it" + more),
                 HandMadeDisc::Record(31, 1, 0, "GONE.;1", std::string{"NM\7\1\0go", 7}),
                 HandMadeDisc::Record(30, 1, 0, "HERE", moved + std::string{"NM\7\1\0in", 7}),
                 HandMadeDisc::Record(28, discSector, 2, "MOVED", std::string{"RE\4\1", 4})},
                has);
    disc.Folder(26, {std::string{"NM\x09\1\0self", 9}});
    disc.Folder(27, {HandMadeDisc::Record(33, 4, 0, "X.;1", std::string{"NM\6\1\0x", 6})});
    const auto read = disc.Read();
    ASSERT_TRUE(read) << read.Error().sentence;
    ASSERT_EQ(read->files.size(), 4U);
    EXPECT_EQ(read->files[0].path, "itself");
    EXPECT_EQ(read->files[2].path, "in");
    EXPECT_EQ(read->files[2].kind, IsoKind::Folder);
    EXPECT_EQ(read->files[3].path, "in/x");
}

TEST(IsoDirectory, WhatLeadsInACircleOrOutOfTheDiscIsDamaged)
{
    const auto broken = [](const std::string& record) {
        HandMadeDisc disc;
        disc.Folder(20, {record});
        const auto read = disc.Read();
        return !read && read.Error().code == ErrorCode::Damaged;
    };
    EXPECT_TRUE(broken(HandMadeDisc::Record(20, discSector, 2, "ROOT")));
    EXPECT_TRUE(broken(HandMadeDisc::Record(999, discSector, 2, "NOWHERE")));
    EXPECT_TRUE(broken(HandMadeDisc::Record(30, 1, 0, "../../etc")));
    EXPECT_TRUE(broken(HandMadeDisc::Record(30, 1, 0, "..;1")));
    EXPECT_TRUE(broken(HandMadeDisc::Record(30, 1, 0x80, "ENDLESS.;1")));
    EXPECT_TRUE(broken(HandMadeDisc::Record(20, 0xFFFFFFFF, 2, "HUGE")));
    std::string lies = HandMadeDisc::Record(30, 1, 0, "LONG.;1");
    lies[32] = '\xFF';
    EXPECT_TRUE(broken(lies));
    EXPECT_FALSE(ReadIsoDirectory([](std::uint64_t, std::span<std::byte>) { return false; }));
}

} // namespace

} // namespace kestrova
