#include "packages/zip_writer.h"

#include "formats/zip_directory.h"
#include "packages/unzip.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// Bytes that nothing makes smaller.
std::string Noise(std::size_t size)
{
    std::string bytes;
    std::uint32_t state = 1;
    while (bytes.size() < size)
        bytes += static_cast<char>((state = state * 1664525U + 1013904223U) >> 24U);
    return bytes;
}

class ZipWriter : public ::testing::Test
{
protected:
    Result<bool> Write(const ZipLine& added, const Heartbeat& heartbeat = {})
    {
        return WriteZip(box / "a.zip", ListFiles(box / "in", "*").ValueOr({}), added, heartbeat);
    }
    ToolBox box;
};

TEST_F(ZipWriter, WritesWhatTheUnpackingToolReads)
{
    box.UseRealTools();
    box.Write("in/a.txt", std::string(100000, 'a'));
    box.Write("in/Łódź.dat", "letters");
    box.Write("in/empty", "");
    box.Write("in/noise", Noise(70000));
    ASSERT_FALSE(platform::SetModified(box / "in/a.txt", INT64_C(1'000'000'001'000'000'000)));
    const auto before = box.Snapshot("in");
    std::vector<std::string> lines;
    const auto written = Write([&](const std::string& line) {
        lines.push_back(line);
        return true;
    });
    ASSERT_TRUE(written && *written);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "  adding: a.txt (deflated 100%)", "  adding: empty (stored 0%)",
                         "  adding: noise (stored 0%)", "  adding: Łódź.dat (stored 0%)"}));
    const ZipDirectory directory = ReadZipDirectory(box / "a.zip");
    ASSERT_EQ(directory.names.size(), 4U);
    EXPECT_TRUE(directory.isWhole && directory.names[3].isUtf8 && !directory.names[0].isUtf8);
    ToolWatch state;
    ASSERT_TRUE(
        state.Done(UnzipWithProgress(ToolsOf(box.session), box / "a.zip", box / "out", {}, state)))
        << state.error << state.details;
    EXPECT_EQ(box.Snapshot("out"), before);
    EXPECT_EQ(platform::FactsOf(box / "out/a.txt").modifiedNs, INT64_C(1'000'000'001'000'000'000));
}

TEST_F(ZipWriter, LeavesNothingWhenItStopsOrCannot)
{
    const auto goOn = [](const std::string&) { return true; };
    EXPECT_FALSE(*Write(goOn)) << "no files";
    box.Write("in/a", "a");
    box.Write("in/b", "b");
    const auto stopped = Write([](const std::string&) { return false; });
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.Error().code, ErrorCode::Stopped);
    EXPECT_FALSE(Write(goOn, [] { return false; }));
    const auto gone = WriteZip(box / "a.zip", {box / "in/a", box / "in/gone"}, goOn, {});
    EXPECT_TRUE(gone && !*gone);
    EXPECT_FALSE(box.Has("a.zip"));
    box.Write("a.zip", "another's");
    EXPECT_FALSE(*Write(goOn));
    EXPECT_EQ(box.Read("a.zip"), "another's");
}

} // namespace

} // namespace kestrova::testing
