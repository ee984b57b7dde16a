#include "editor/document_text.h"

#include "tools/enclosure.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using namespace std::string_literals;

class ReadDocumentTest : public ::testing::Test
{
protected:
    std::string TextOf(const std::string& bytes)
    {
        box.Write("readme", bytes);
        auto text = Read();
        EXPECT_TRUE(text);
        return std::move(text).ValueOr("failed");
    }
    Result<std::string> Read()
    {
        const auto progress = box.host.BeginProgress(ProgressWindow::Wait, {});
        return ReadDocument(ToolsOf(box.session), box / "readme", *progress);
    }
    bool HasReal(const char* name)
    {
        box.machine.tools[name] = platform::FindOnPath(name);
        return !box.machine.tools[name].empty();
    }

    ToolBox box;
};

const std::string word = "\xD0\xCF\x11\xE0"s;
const std::string rtf = R"({\rtf1\ansi\ansicpg1252 Convert {\b my}level.tom using \i city\i0 .wad)"
                        R"(\par caf\'e9})";

TEST_F(ReadDocumentTest, TextsAndPagesNeedNoTool)
{
    EXPECT_EQ(TextOf("caf\xE9 \x96 city.wad"), "café – city.wad");
    EXPECT_EQ(TextOf(""), "");
    EXPECT_EQ(TextOf("\xFF\xFE"
                     "c\0i\0\xE9\0x"s),
              "cié");
    EXPECT_EQ(TextOf("<HTML><p>my<b>level</b>.tom &amp; city&#46;wad<!-- old.wad --></HTML>"),
              "\nmylevel.tom & city.wad");
    const std::string noise = TextOf("\0\1\2{\\rtf \xC3\x28"s);
    EXPECT_NE(noise.find("{\\rtf"), std::string::npos);
}

TEST_F(ReadDocumentTest, WithoutAToolTheBytesAreReadButOfAPdf)
{
    EXPECT_EQ(TextOf(rtf), rtf);
    EXPECT_NE(TextOf(word + " use city.wad").find("use city.wad"), std::string::npos);
    box.Write("readme", "%PDF-1.4");
    const auto pdf = Read();
    ASSERT_FALSE(pdf);
    EXPECT_NE(pdf.Error().reason.find("poppler-utils"), std::string::npos);
    EXPECT_FALSE(CanReadPdf(ToolsOf(box.session)));
}

TEST_F(ReadDocumentTest, TheRealToolsGiveWordsWithoutTheirLooks)
{
    for (const char* tool : {"catdoc", "unrtf"}) {
        box.machine.tools.clear();
        if (HasReal(tool)) {
            EXPECT_NE(TextOf(rtf).find("mylevel.tom using city.wad"), std::string::npos) << tool;
        }
    }
    if (!HasReal("pdftotext"))
        return;
    const std::string words = "BT /F 12 Tf 72 700 Td (mylevel.tom uses city.wad) Tj ET";
    const std::string pdf =
        "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
        "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
        "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R/Resources"
        "<</Font<</F 5 0 R>>>>>>endobj\n"
        "4 0 obj<</Length " +
        std::to_string(words.size()) + ">>stream\n" + words +
        "\nendstream endobj\n"
        "5 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>endobj\n"
        "trailer<</Root 1 0 R>>\n%%EOF\n";
    EXPECT_NE(TextOf(pdf).find("mylevel.tom uses city.wad"), std::string::npos);
}

TEST_F(ReadDocumentTest, AToolThatFailsIsNoHindrance)
{
    const std::string bytes = word + " in bytes: city.wad";
    for (const char* script :
         {"exit 1", "kill -9 $$", "echo half; exit 3", "echo half; kill -11 $$"}) {
        box.AddTool("catdoc", script);
        EXPECT_NE(TextOf(bytes).find("in bytes: city.wad"), std::string::npos) << script;
    }
    box.AddTool("antiword", "echo by the other: city.wad; [ -e \"$5\" ]");
    EXPECT_EQ(TextOf(bytes), "by the other: city.wad\r\n");
    // One that finds no text has done its work, and so has one that leaves a child behind.
    box.AddTool("catdoc", "exit 0");
    EXPECT_EQ(TextOf(bytes), "");
    box.AddTool("catdoc", "sleep 30 & echo early");
    EXPECT_EQ(TextOf(bytes), "early\r\n");
}

TEST_F(ReadDocumentTest, AToolReachesTheDocumentAlone)
{
    if (!HasReal("bwrap") || EncloserOf(ToolsOf(box.session)).empty())
        GTEST_SKIP() << "programs cannot be enclosed here";
    box.Write("private/letter", "a letter");
    const std::string at = box.root.native();
    box.AddTool("catdoc", "echo new >'" + at + "/private/new'; cat '" + at +
                              "/private/letter'; for last; do :; done; tail -c 9 \"$last\"; echo "
                              "changed >\"$last\"; exit 0");
    EXPECT_EQ(TextOf(word + " city.wad"), " city.wad");
    EXPECT_FALSE(box.Has("private/new"));
    EXPECT_EQ(box.Read("readme"), word + " city.wad");
    if (HasReal("pdftotext") && HasReal("catdoc")) {
        std::filesystem::remove(box.session.programFolder / "catdoc");
        EXPECT_NE(TextOf(rtf).find("using city.wad"), std::string::npos)
            << "the real one works there";
    }
}

TEST_F(ReadDocumentTest, NothingIsReadWithoutBounds)
{
    box.Write("readme", std::string(std::size_t{17} << 20, 'x') + "the end");
    EXPECT_EQ(Read()->size(), std::size_t{16} << 20);
    box.AddTool("catdoc", "yes city.wad");
    const std::string flood = TextOf(word);
    EXPECT_EQ(flood.substr(0, 9), "city.wad\r");
    EXPECT_LE(flood.size(), std::size_t{16} << 20);
    box.AddTool("catdoc", "sleep 60");
    box.host.StopAtStep(1);
    const auto stopped = Read();
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.Error().code, ErrorCode::Stopped);
}

} // namespace

} // namespace kestrova::testing
