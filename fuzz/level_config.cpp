#include "records/level_config.h"

#include <cstdlib>

using namespace kestrova;

namespace
{

void Promise(bool kept)
{
    if (!kept)
        std::abort();
}

} // namespace

/// `kestrova.cfg`: what parses is written in a form that reads and writes the same for ever.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes{reinterpret_cast<const char*>(data), size};
    const auto config = ParseLevelConfig(bytes);
    if (!config)
        return 0;
    const auto written = FormatLevelConfig(*config);
    Promise(written && written->size() >= levelConfigBlockSize + 2);
    // The fixed block comes back byte for byte; names of files may lose their folders.
    Promise(bytes.substr(0, levelConfigBlockSize) ==
            std::string_view{*written}.substr(0, levelConfigBlockSize));
    const auto again = ParseLevelConfig(*written);
    Promise(again && again->files.size() == config->files.size() &&
            again->tomWads == config->tomWads);
    const auto rewritten = FormatLevelConfig(*again);
    Promise(rewritten && *rewritten == *written);
    Promise(!ParseLevelConfig(std::string_view{*written}.substr(0, written->size() - 1)));
    return 0;
}
