#include "core/size_words.h"

#include "core/files.h"
#include "words/core.h"

namespace kestrova
{

std::string SizeInWords(double bytes)
{
    constexpr double kilo = 1024;
    if (bytes > kilo)
        return FormatSize(bytes);
    return bytes == 1 ? GetMsg(Msg::SizeOneByte) : GetMsg(Msg::SizeBytes, {FormatSize(bytes)});
}

} // namespace kestrova
