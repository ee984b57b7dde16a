#include "pictures/convert.h"

#include "core/files.h"
#include "core/staged_file.h"
#include "pictures/bitmap.h"
#include "pictures/jpeg.h"

namespace kestrova
{

namespace
{

/// Above the largest picture with 32 bits a pixel.
constexpr std::uint64_t maxPictureFile = UINT64_C(4) * maxPicturePixels + 65536;

Failure WithSubject(Failure failure, const Path& file)
{
    failure.subject = TextOf(file);
    return failure;
}

Status WriteWhole(const Path& target, std::string_view bytes)
{
    StagedFile staged{ResolvePath(target)};
    if (Status opened = staged.Open(); !opened)
        return opened;
    if (Status written = staged.Write(bytes); !written)
        return written;
    return staged.Commit(false);
}

} // namespace

Result<Picture> ReadPictureFile(const Path& file)
{
    const Result<std::string> bytes = ReadWholeFile(file, maxPictureFile);
    if (!bytes)
        return bytes.Error();
    Result<Picture> picture = DecodePicture(*bytes);
    if (!picture)
        return WithSubject(picture.Error(), file);
    return picture;
}

Status ConvertBitmapToJpeg(const Path& bitmap, const Path& jpeg)
{
    const Result<Picture> picture = ReadPictureFile(bitmap);
    if (!picture)
        return picture.Error();
    return SaveAsJpeg(*picture, jpeg);
}

Status ConvertJpegToBitmap(const Path& jpeg, const Path& bitmap)
{
    const Result<Picture> picture = ReadPictureFile(jpeg);
    if (!picture)
        return picture.Error();
    return SaveAsBitmap(*picture, bitmap);
}

Status SaveAsJpeg(const Picture& picture, const Path& jpeg)
{
    const Result<std::string> bytes = EncodeJpeg(picture);
    if (!bytes)
        return WithSubject(bytes.Error(), jpeg);
    return WriteWhole(jpeg, *bytes);
}

Status SaveAsBitmap(const Picture& picture, const Path& bitmap)
{
    return WriteWhole(bitmap, EncodeBitmap(picture));
}

} // namespace kestrova
