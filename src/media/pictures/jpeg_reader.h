#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace kestrova
{

/// One jpeg on its way to pixels, through the library's classic interface: it reads every sampling
/// that the standard allows. The library's words go nowhere.
class JpegReader
{
public:
    JpegReader();
    ~JpegReader();
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;

    /// `bytes` must outlive the reader. False for what is no jpeg.
    bool ReadHeader(std::string_view bytes);
    [[nodiscard]] int Width() const;
    [[nodiscard]] int Height() const;
    /// To a half, a quarter or an eighth (2, 4, 8); width and height are those of the result then.
    void Shrink(int parts);
    /// Four bytes a pixel (CMYK), else three (RGB).
    [[nodiscard]] bool HasPrintColours() const;
    /// Fills `pixels`, which has room for all of them. False when the picture cannot be read.
    bool ReadPixels(std::vector<std::uint8_t>& pixels);
    /// True when something was wrong that the picture survived.
    [[nodiscard]] bool Warned() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace kestrova
