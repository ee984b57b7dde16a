#include "core/record_io.h"
#include "formats/archive_file.h"
#include "formats/preferences.h"
#include "formats/savegame_records.h"
#include "formats/tr4_inf.h"
#include "sandbox/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova
{

namespace
{

/// The bytes of a field at its place, as the tables in the headers have it.
std::string At(const std::string& bytes, std::size_t place, std::size_t width)
{
    return bytes.substr(place, width);
}

std::string Padded(const std::string& text, std::size_t width)
{
    return text + std::string(width - text.size(), ' ');
}

template <class T> std::string Raw(T value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

ArchiveContent SomeArchive()
{
    ArchiveContent content;
    content.header.mainFolder = "/home/levels";
    content.header.secondaryFolder = "/home/Grün";
    content.header.cdCount = 2;
    content.header.compressLevels = true;
    content.header.cdMovePending = true;
    content.header.mainFolderSize = 3e9;
    content.header.secondaryFolderSize = 12;
    LevelRecord level;
    level.levelName = std::string(256, 'N');
    level.levelNote = "€ note";
    level.authorName = "author";
    level.authorEmails = std::string("a@x\0b@y", 7);
    level.authorSites = "site";
    level.authorNote = "by";
    level.levelCode = 12;
    level.cdNumber = 1;
    level.moreInfoFile = "readme.txt";
    level.filesSize = 100;
    level.extrasSize = 200;
    level.extrasDirty = true;
    content.levels = {LevelRecord{}, level};
    return content;
}

TEST(ArchiveFile, EveryFieldStandsAtItsPlace)
{
    const std::string bytes = FormatArchive(SomeArchive());
    ASSERT_EQ(bytes.size(), archiveHeaderSize + 2 * levelRecordSize);
    EXPECT_EQ(At(bytes, 0, 4), Raw(std::int32_t{1}));
    EXPECT_EQ(At(bytes, 4, 256), Padded("/home/levels", 256));
    EXPECT_EQ(At(bytes, 260, 256), Padded("/home/Gr\xFCn", 256));
    EXPECT_EQ(At(bytes, 516, 4), Raw(std::int32_t{2})) << "the count follows the levels";
    EXPECT_EQ(At(bytes, 520, 4), Raw(std::int32_t{2}));
    EXPECT_EQ(At(bytes, 524, 6), "\xFF\xFF" + std::string(2, '\0') + "\xFF\xFF");
    EXPECT_EQ(At(bytes, 530, 8), Raw(3e9));
    EXPECT_EQ(At(bytes, 538, 8), Raw(12.0));
    const std::string level = bytes.substr(546 + 1634);
    EXPECT_EQ(At(level, 0, 256), std::string(256, 'N'));
    EXPECT_EQ(At(level, 256, 256), Padded("\x80 note", 256));
    EXPECT_EQ(At(level, 512, 80), Padded("author", 80));
    EXPECT_EQ(At(level, 592, 256), Padded(std::string("a@x\0b@y", 7), 256));
    EXPECT_EQ(At(level, 848, 256), Padded("site", 256));
    EXPECT_EQ(At(level, 1104, 256), Padded("by", 256));
    EXPECT_EQ(At(level, 1360, 8), Raw(std::int32_t{12}) + Raw(std::int32_t{1}));
    EXPECT_EQ(At(level, 1368, 256), Padded("readme.txt", 256));
    EXPECT_EQ(At(level, 1624, 10), Raw(std::int32_t{100}) + Raw(std::int32_t{200}) + "\xFF\xFF");
    EXPECT_EQ(FormatArchive({{}, {LevelRecord{}}}).size(), 2180U);
}

TEST(ArchiveFile, ComesBackAndIgnoresWhatStandsBehindItsCount)
{
    const std::string bytes = FormatArchive(SomeArchive());
    for (const std::string& file : {bytes, bytes + "old tail", bytes + std::string(5000, 'x')}) {
        const auto content = ParseArchive(file);
        ASSERT_TRUE(content);
        EXPECT_EQ(content->levels.size(), 2U);
        EXPECT_EQ(content->levels[1].levelNote, "€ note");
        EXPECT_EQ(content->levels[1].authorEmails, (std::string("a@x\0b@y", 7)));
        EXPECT_EQ(FormatArchive(*content), bytes);
    }
    std::string flag = bytes;
    flag[524] = 1;
    flag[525] = 0;
    EXPECT_FALSE(ParseArchive(flag)->header.compressLevels) << "only exactly -1 is True";
}

TEST(ArchiveFile, EveryShorterLengthIsDamaged)
{
    const std::string bytes = FormatArchive(SomeArchive());
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const auto content = ParseArchive(std::string_view{bytes}.substr(0, length));
        ASSERT_FALSE(content) << length;
        EXPECT_EQ(content.Error().code, ErrorCode::Damaged);
    }
    for (const std::int32_t count : {0, -1, 3, 0x7FFFFFFF, INT32_MIN}) {
        std::string wrong = bytes;
        wrong.replace(516, 4, Raw(count));
        EXPECT_FALSE(ParseArchive(wrong)) << count;
    }
}

TEST(ArchiveFile, IsReadFromTheDiskAsFromMemory)
{
    const testing::Sandbox box;
    const Path file = box / "my.kva";
    const auto read = [&](std::string_view bytes) {
        box.Write("my.kva", bytes);
        return ReadArchiveFile(file);
    };
    EXPECT_EQ(ReadArchiveFile(file).Error().code, ErrorCode::CannotRead);
    EXPECT_EQ(read("").Error().code, ErrorCode::Damaged);
    ArchiveContent many = SomeArchive();
    for (const std::size_t count : {1U, 99U, 100U, 101U, 1234U}) {
        many.levels.resize(count);
        for (std::size_t i = 0; i < count; ++i)
            many.levels[i].levelName = "level " + std::to_string(i);
        const std::string bytes = FormatArchive(many);
        const auto content = read(bytes + "tail");
        ASSERT_TRUE(content) << count;
        EXPECT_EQ(FormatArchive(*content), bytes) << count;
        const auto cut = read(std::string_view{bytes}.substr(0, bytes.size() - 1));
        ASSERT_FALSE(cut);
        EXPECT_EQ(cut.Error().code, ErrorCode::Damaged);
        EXPECT_EQ(cut.Error().subject, TextOf(file));
    }
}

TEST(Preferences, EveryFieldStandsAtItsPlace)
{
    PreferencesRecord record = DefaultPreferences();
    record.archivePath = "/a.kva";
    record.trlePath = "/trle";
    record.fullBackup = true;
    const std::string bytes = FormatPreferences(record);
    ASSERT_EQ(bytes.size(), 1296U);
    EXPECT_EQ(At(bytes, 0, 10), std::string("\xFF\xFF\0\0\0\0\xFF\xFF\0\0", 10));
    EXPECT_EQ(At(bytes, 10, 256), Padded("/a.kva", 256));
    EXPECT_EQ(At(bytes, 266, 256), Padded("/trle", 256));
    EXPECT_EQ(At(bytes, 522, 256), Padded("tom2pc.exe", 256));
    EXPECT_EQ(At(bytes, 778, 256), Padded("tomb4.exe", 256));
    EXPECT_EQ(At(bytes, 1034, 256), Padded("c:\\", 256));
    EXPECT_EQ(At(bytes, 1290, 6), "\xFF\xFF\xFF\xFF\xFF\xFF");
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        const PreferencesRecord cut = ParsePreferences(std::string_view{bytes}.substr(0, length));
        EXPECT_EQ(cut.fullBackup, length >= 1294) << length;
        EXPECT_EQ(cut.tombExeName, "tomb4.exe") << length;
        if (length >= 522) {
            EXPECT_EQ(cut.trlePath, "/trle") << length;
        }
        if (length == 0) {
            EXPECT_EQ(FormatPreferences(cut), FormatPreferences(DefaultPreferences()));
        }
    }
}

TEST(SavegameRecords, EveryFieldStandsAtItsPlace)
{
    SavegameArchiveHeader header{"slot", "/root", "/live", "/live/tomb4.exe", 15, 77};
    const std::string bytes = FormatSavegameArchiveHeader(header);
    EXPECT_EQ(bytes, Padded("slot", 256) + Padded("/root", 256) + Padded("/live", 256) +
                         Padded("/live/tomb4.exe", 256) + Raw(std::int16_t{15}) +
                         Raw(std::int32_t{77}));
    SavegameToolPrefs tool;
    tool.archivePath = "/a";
    tool.shotFolder = "/s";
    tool.toolCapture = -1;
    const std::string prefs = FormatSavegameToolPrefs(tool);
    EXPECT_EQ(prefs, Padded("/a", 256) + Raw(std::int16_t{0}) + Padded("/s", 256) +
                         "\xFF\xFF\xFF\xFF" + Raw(std::int16_t{0}) + "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(bytes.size(), savegameArchiveHeaderSize);
    EXPECT_EQ(prefs.size(), savegameToolPrefsSize);
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(ParseSavegameArchiveHeader(std::string_view{bytes}.substr(0, length)));
    for (std::size_t length = 0; length < prefs.size(); ++length)
        EXPECT_FALSE(ParseSavegameToolPrefs(std::string_view{prefs}.substr(0, length)));
    EXPECT_EQ(FormatSavegameArchiveHeader(*ParseSavegameArchiveHeader(bytes + "tail")), bytes);
    EXPECT_EQ(FormatSavegameToolPrefs(*ParseSavegameToolPrefs(prefs + "tail")), prefs);
}

TEST(Tr4Inf, EveryFieldStandsAtItsPlaceAndTheCountRules)
{
    const std::string bytes = FormatTr4Inf({{"level1.tr4", 38000.5, 5000}, {"Grün.tr4", 1, 2}});
    EXPECT_EQ(bytes, Raw(std::int32_t{2}) + Padded("level1.tr4", 80) + Raw(38000.5) +
                         Raw(std::int32_t{5000}) + Padded("Gr\xFCn.tr4", 80) + Raw(1.0) +
                         Raw(std::int32_t{2}));
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(ParseTr4Inf(std::string_view{bytes}.substr(0, length))) << length;
    const auto entries = ParseTr4Inf(bytes + "old tail");
    ASSERT_TRUE(entries);
    EXPECT_EQ(entries->at(1).name, "Grün.tr4");
    EXPECT_EQ(FormatTr4Inf(*entries), bytes);
    EXPECT_FALSE(ParseTr4Inf(Raw(std::int32_t{-1}) + std::string(500, ' ')));
    EXPECT_FALSE(ParseTr4Inf(Raw(std::int32_t{0x7FFFFFFF}) + std::string(500, ' ')));
    EXPECT_TRUE(ParseTr4Inf(Raw(std::int32_t{0}))->empty());
}

TEST(RecordIo, ATextIsCutAtItsFieldAndAReaderFailsForGood)
{
    RecordWriter writer;
    writer.Text("too long", 4);
    writer.Text("", 2);
    EXPECT_EQ(writer.Bytes(), "too   ");
    RecordReader reader{"ab"};
    std::string text = "before";
    std::int32_t number = 5;
    reader.I32(number);
    EXPECT_FALSE(reader.Good());
    reader.Text(text, 2);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(text, "") << "nothing is read behind a failure";
    EXPECT_FALSE(reader.Good());
}

} // namespace

} // namespace kestrova
