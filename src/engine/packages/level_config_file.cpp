#include "packages/level_config_file.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "packages/file_names.h"
#include "words/packages.h"

namespace kestrova
{

namespace
{

/// Far above any real one, which has some 30 bytes for each of a level's files.
constexpr std::uint64_t sizeLimit = UINT64_C(64) << 20;

} // namespace

Path LevelConfigPath(const Path& folder)
{
    return InFolder(folder, OnDisk::FragLevelConfig);
}

bool ReadLevelConfig(Host& host, const Path& file, LevelConfig& config)
{
    const auto failed = [&](Message words, const std::string& reason) {
        host.Tell(Tone::Error, GetMsg(words) + TextOf(file), reason);
        return false;
    };
    const auto isThere = IsFile(file);
    if (!isThere)
        return failed(Msg::ConfigErrorOpening, isThere.Error().reason);
    if (!*isThere) {
        host.Tell(Tone::Error, GetMsg(Msg::ConfigNotFound, {TextOf(file)}));
        return false;
    }
    platform::File opened;
    if (const auto failure = platform::File::OpenForRead(ResolvePath(file), opened))
        return failed(Msg::ConfigErrorOpening, failure.message());
    const auto bytes = ReadWholeFile(file, sizeLimit);
    if (!bytes)
        return failed(Msg::ConfigErrorReading, bytes.Error().reason);
    auto read = ParseLevelConfig(*bytes);
    if (!read)
        return failed(Msg::ConfigErrorReading, GetMsg(Msg::ConfigDamaged));
    config = std::move(read).Value();
    return true;
}

bool WriteLevelConfig(Host& host, const Path& file, const LevelConfig& config, OldConfig old)
{
    const auto failed = [&](Message words, const std::string& reason) {
        host.Tell(Tone::Error, GetMsg(words) + TextOf(file), reason);
        return false;
    };
    const auto bytes = FormatLevelConfig(config);
    if (!bytes)
        return failed(Msg::ConfigErrorWriting, GetMsg(Msg::ConfigTextTooLong));
    const auto status =
        old == OldConfig::Replaced ? WriteWholeFile(file, *bytes) : WriteRecordFile(file, *bytes);
    if (!status)
        return failed(status.Error().code == ErrorCode::CannotOpen ? Msg::ConfigErrorOpeningWrite
                                                                   : Msg::ConfigErrorWriting,
                      status.Error().reason);
    return true;
}

} // namespace kestrova
