#include "pictures/jpeg_reader.h"

#include <csetjmp>
#include <cstddef>
#include <cstdio> // the library's header wants it before itself
#include <jpeglib.h>

namespace kestrova
{

/// The library leaves a failure by a jump back to the last `setjmp`, across frames of C alone: no
/// function that calls it owns anything with a destructor.
struct JpegReader::State {
    jpeg_decompress_struct picture{};
    jpeg_error_mgr errors{};
    jpeg_progress_mgr progress{};
    std::jmp_buf failed{};

    static State& Of(j_common_ptr common) { return *static_cast<State*>(common->client_data); }
    [[noreturn]] static void Fail(j_common_ptr common) { std::longjmp(Of(common).failed, 1); }
    static void Say(j_common_ptr common, int level)
    {
        if (level < 0)
            ++common->err->num_warnings;
    }
    static void SayNothing(j_common_ptr) {}
    /// A small file with thousands of scans would take minutes.
    static void CountScans(j_common_ptr common)
    {
        constexpr int mostScans = 500;
        if (Of(common).picture.input_scan_number > mostScans)
            Fail(common);
    }

    unsigned parts = 1;
    /// The library rounds up.
    [[nodiscard]] int Part(JDIMENSION length) const
    {
        return static_cast<int>((length + parts - 1) / parts);
    }

    bool Open(std::string_view bytes)
    {
        if (setjmp(failed) != 0) // NOLINT(cert-err52-cpp): the library knows no other way
            return false;
        jpeg_create_decompress(&picture);
        picture.client_data = this;
        picture.progress = &progress;
        jpeg_mem_src(&picture, reinterpret_cast<const unsigned char*>(bytes.data()),
                     static_cast<unsigned long>(bytes.size()));
        if (jpeg_read_header(&picture, TRUE) != JPEG_HEADER_OK)
            return false;
        const bool print =
            picture.jpeg_color_space == JCS_CMYK || picture.jpeg_color_space == JCS_YCCK;
        picture.out_color_space = print ? JCS_CMYK : JCS_RGB;
        return true;
    }
    bool Read(std::uint8_t* pixels)
    {
        if (setjmp(failed) != 0) // NOLINT(cert-err52-cpp): as above
            return false;
        jpeg_start_decompress(&picture);
        const std::size_t row =
            std::size_t{picture.output_width} * static_cast<std::size_t>(picture.output_components);
        while (picture.output_scanline < picture.output_height) {
            JSAMPROW line = pixels + picture.output_scanline * row;
            jpeg_read_scanlines(&picture, &line, 1);
        }
        jpeg_finish_decompress(&picture);
        return true;
    }
};

JpegReader::JpegReader() : state_(std::make_unique<State>())
{
    state_->picture.err = jpeg_std_error(&state_->errors);
    state_->picture.client_data = state_.get();
    state_->errors.error_exit = State::Fail;
    state_->errors.emit_message = State::Say;
    state_->errors.output_message = State::SayNothing;
    state_->progress.progress_monitor = State::CountScans;
}

JpegReader::~JpegReader()
{
    jpeg_destroy_decompress(&state_->picture);
}

bool JpegReader::ReadHeader(std::string_view bytes)
{
    return state_->Open(bytes);
}

int JpegReader::Width() const
{
    return state_->Part(state_->picture.image_width);
}

int JpegReader::Height() const
{
    return state_->Part(state_->picture.image_height);
}

void JpegReader::Shrink(int parts)
{
    state_->picture.scale_num = 1;
    state_->picture.scale_denom = static_cast<unsigned>(parts);
    state_->parts = static_cast<unsigned>(parts);
}

bool JpegReader::HasPrintColours() const
{
    return state_->picture.out_color_space == JCS_CMYK;
}

bool JpegReader::ReadPixels(std::vector<std::uint8_t>& pixels)
{
    return state_->Read(pixels.data());
}

bool JpegReader::Warned() const
{
    return state_->errors.num_warnings > 0;
}

} // namespace kestrova
