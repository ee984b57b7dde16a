#include "pictures/bitmap.h"
#include "pictures/convert.h"
#include "pictures/jpeg.h"
#include "sandbox/sandbox.h"

#include <cstdio> // wanted by the header of the jpeg library
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <jpeglib.h>
#include <turbojpeg.h>

namespace kestrova
{
namespace
{

using testing::Sandbox;

/// Soft colours with a line of sharp lettering-like bars.
Picture Sample(int width, int height)
{
    Picture picture{width, height, {}};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool bar = y > height / 2 && y < height / 2 + 8 && x % 16 < 8;
            picture.rgb.push_back(static_cast<std::uint8_t>(bar ? 250 : x * 255 / width));
            picture.rgb.push_back(static_cast<std::uint8_t>(bar ? 20 : y * 255 / height));
            picture.rgb.push_back(static_cast<std::uint8_t>(bar ? 20 : 90));
        }
    return picture;
}

double MeanDifference(const Picture& a, const Picture& b)
{
    double sum = 0;
    for (std::size_t i = 0; i < a.rgb.size(); ++i)
        sum += std::abs(a.rgb[i] - b.rgb[i]);
    return sum / static_cast<double>(a.rgb.size());
}

TEST(Jpeg, KeepsThePictureAndRefusesCutOnes)
{
    for (const auto& [width, height] : {std::pair{1, 1}, {7, 3}, {512, 256}}) {
        const Picture picture = Sample(width, height);
        const Result<std::string> bytes = EncodeJpeg(picture);
        ASSERT_TRUE(bytes);
        const Result<Picture> back = DecodePicture(*bytes);
        ASSERT_TRUE(back);
        ASSERT_EQ(back->width, width);
        ASSERT_EQ(back->height, height);
        EXPECT_LT(MeanDifference(picture, *back), 3.0); // a few pixels suffer more
        for (std::size_t size = 0; size + 2 < bytes->size(); size += 1 + bytes->size() / 200)
            EXPECT_FALSE(DecodeJpeg(std::string_view(*bytes).substr(0, size))) << size;
        EXPECT_TRUE(DecodeJpeg(*bytes + "rubbish behind the end"));
    }
    EXPECT_FALSE(EncodeJpeg({}));
}

TEST(DecodeSmall, GivesTheSamePictureAtAPartOfItsSize)
{
    constexpr std::int64_t most = 1 << 20;
    const Picture picture = Sample(1030, 515);
    const auto jpeg = DecodeSmall(*EncodeJpeg(picture), 256, most);
    const auto bitmap = DecodeSmall(EncodeBitmap(picture), 256, most);
    ASSERT_TRUE(jpeg);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(jpeg->width, 258) << "a quarter, rounded up";
    EXPECT_EQ(jpeg->height, 129);
    EXPECT_EQ(bitmap->width, 257) << "a quarter without what is left over";
    EXPECT_EQ(bitmap->height, 128);
    EXPECT_EQ(bitmap->rgb.size(), 257U * 128 * 3);
    EXPECT_LT(MeanDifference(*bitmap, Sample(257, 128)), 6.0);

    EXPECT_EQ(DecodeSmall(*EncodeJpeg(picture), 800, most)->width, 1030)
        << "never below what is wished";
    EXPECT_EQ(DecodeSmall(EncodeBitmap(Sample(3000, 1)), 10, most)->height, 1);
    for (const std::string& bytes : {*EncodeJpeg(picture), EncodeBitmap(picture)})
        EXPECT_EQ(DecodeSmall(bytes, 256, 1030 * 515 - 1).Error().code, ErrorCode::Refused);
    EXPECT_FALSE(DecodeSmall("neither", 256, most));
}

TEST(Jpeg, GreyAndPrintColoursBecomeRgb)
{
    const std::vector<std::uint8_t> cmyk(16 * 16 * 4, 200); // inverted: 200 * 200 / 255
    for (const auto& [format, sampling, expected] :
         {std::tuple{TJPF_GRAY, TJSAMP_GRAY, 200}, {TJPF_CMYK, TJSAMP_444, 156}}) {
        tjhandle codec = tjInitCompress();
        unsigned char* out = nullptr;
        unsigned long size = 0;
        ASSERT_EQ(tjCompress2(codec, cmyk.data(), 16, 0, 16, format, &out, &size, sampling, 95, 0),
                  0);
        const Result<Picture> picture = DecodeJpeg({reinterpret_cast<char*>(out), size});
        tjFree(out);
        tjDestroy(codec);
        ASSERT_TRUE(picture);
        for (const std::uint8_t part : picture->rgb)
            EXPECT_NEAR(part, expected, 2);
    }
}

/// With so many samples of brightness for one of colour, across and down.
std::string SampledJpeg(const Picture& picture, int across, int down, bool progressive)
{
    jpeg_compress_struct writer{};
    jpeg_error_mgr errors{};
    writer.err = jpeg_std_error(&errors);
    jpeg_create_compress(&writer);
    unsigned char* out = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&writer, &out, &size);
    writer.image_width = static_cast<JDIMENSION>(picture.width);
    writer.image_height = static_cast<JDIMENSION>(picture.height);
    writer.input_components = 3;
    writer.in_color_space = JCS_RGB;
    jpeg_set_defaults(&writer);
    jpeg_set_quality(&writer, 95, TRUE);
    writer.comp_info[0].h_samp_factor = across;
    writer.comp_info[0].v_samp_factor = down;
    // More than ten blocks together must stand in a scan for each colour.
    constexpr int mostBlocks = 10;
    std::vector<jpeg_scan_info> scans;
    for (int part = 0; part < 3; ++part)
        scans.push_back({1, {part}, 0, 63, 0, 0});
    if (across * down + 2 > mostBlocks) {
        writer.scan_info = scans.data();
        writer.num_scans = static_cast<int>(scans.size());
    } else if (progressive) {
        jpeg_simple_progression(&writer);
    }
    jpeg_start_compress(&writer, TRUE);
    std::vector<std::uint8_t> pixels = picture.rgb;
    for (std::size_t row = pixels.size() / static_cast<std::size_t>(picture.height), y = 0;
         y * row < pixels.size(); ++y) {
        JSAMPROW line = &pixels[y * row];
        jpeg_write_scanlines(&writer, &line, 1);
    }
    jpeg_finish_compress(&writer);
    std::string bytes{reinterpret_cast<char*>(out), size};
    jpeg_destroy_compress(&writer);
    std::free(out);
    return bytes;
}

TEST(Jpeg, EverySamplingOfColoursIsRead)
{
    Picture picture{97, 61, {}};
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            for (const int part : {x * 2, y * 4, 90})
                picture.rgb.push_back(static_cast<std::uint8_t>(part));
    for (const auto& [across, down] : {std::pair{1, 1},
                                       {2, 1},
                                       {2, 2},
                                       {1, 2},
                                       {4, 1},
                                       {1, 4},
                                       {4, 2},
                                       {4, 4},
                                       {3, 1},
                                       {1, 3},
                                       {3, 3},
                                       {2, 4}})
        for (const bool progressive : {false, true}) {
            SCOPED_TRACE(std::to_string(across) + "x" + std::to_string(down));
            const std::string bytes = SampledJpeg(picture, across, down, progressive);
            const auto back = DecodePicture(bytes);
            ASSERT_TRUE(back);
            ASSERT_EQ(back->width, picture.width);
            ASSERT_EQ(back->height, picture.height);
            EXPECT_LT(MeanDifference(picture, *back), 4.0);
            EXPECT_FALSE(DecodePicture(std::string_view{bytes}.substr(0, bytes.size() / 2)));
        }
}

TEST(Jpeg, AVastPictureIsRefusedBeforeMemoryIsTaken)
{
    std::string bytes = *EncodeJpeg(Sample(8, 8));
    const std::size_t frame = bytes.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    bytes.replace(frame + 5, 4, "\xFF\x00\xFF\x00", 4);
    const Result<Picture> picture = DecodePicture(bytes);
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.Error().code, ErrorCode::Refused);
    EXPECT_FALSE(DecodePicture("GIF89a"));
    EXPECT_FALSE(DecodePicture(""));
}

int FilesIn(const Path& folder)
{
    return static_cast<int>(std::distance(std::filesystem::directory_iterator{folder}, {}));
}

TEST(Convert, ALoadPictureGoesToJpegAndBack)
{
    const Sandbox box;
    const Picture picture = Sample(301, 200);
    box.Write("level/LOAD.BMP", EncodeBitmap(picture));
    ASSERT_TRUE(ConvertBitmapToJpeg(box / "level/load.bmp", box / "level/load.jpg"));
    EXPECT_LT(box.Read("level/load.jpg").size(), box.Read("level/LOAD.BMP").size() / 4);
    ASSERT_TRUE(ConvertJpegToBitmap(box / "level/load.jpg", box / "level/load.bmp"));
    EXPECT_EQ(FilesIn(box / "level"), 2); // the existing spelling is kept, nothing staged is left
    const Result<Picture> back = DecodeBitmap(box.Read("level/LOAD.BMP"));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->width, 301);
    EXPECT_EQ(back->height, 200);
    EXPECT_LT(MeanDifference(picture, *back), 2.0);
}

TEST(Convert, AFailureLeavesTheTargetAsItWas)
{
    const Sandbox box;
    box.Write("level/load.bmp", "BM and nothing else");
    box.Write("level/load.jpg", "the old one");
    const Status status = ConvertBitmapToJpeg(box / "level/load.bmp", box / "level/load.jpg");
    ASSERT_FALSE(status);
    EXPECT_EQ(status.Error().code, ErrorCode::Damaged);
    EXPECT_NE(status.Error().subject.find("load.bmp"), std::string::npos);
    EXPECT_EQ(box.Read("level/load.jpg"), "the old one");
    EXPECT_FALSE(ConvertJpegToBitmap(box / "level/absent.jpg", box / "level/new.bmp"));
    EXPECT_EQ(FilesIn(box / "level"), 2);
}

} // namespace
} // namespace kestrova
