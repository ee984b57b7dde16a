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

Result<LevelConfig> ReadLevelConfig(const Path& file)
{
    const auto failed = [&](Message words, ErrorCode code, const std::string& reason) {
        return Failure{code, TextOf(file), reason, {}, GetMsg(words) + TextOf(file)};
    };
    const auto isThere = IsFile(file);
    if (!isThere)
        return failed(Msg::ConfigErrorOpening, isThere.Error().code, isThere.Error().reason);
    if (!*isThere)
        return Saying(GetMsg(Msg::ConfigNotFound, {TextOf(file)}),
                      MakeFailure(ErrorCode::Missing, TextOf(file)));
    platform::File opened;
    if (const auto failure = platform::File::OpenForRead(ResolvePath(file), opened))
        return failed(Msg::ConfigErrorOpening, ErrorCode::CannotOpen, failure.message());
    const auto bytes = ReadWholeFile(file, sizeLimit);
    if (!bytes)
        return failed(Msg::ConfigErrorReading, bytes.Error().code, bytes.Error().reason);
    auto read = ParseLevelConfig(*bytes);
    if (!read)
        return failed(Msg::ConfigErrorReading, ErrorCode::Damaged, GetMsg(Msg::ConfigDamaged));
    return read;
}

Status WriteLevelConfig(const Path& file, const LevelConfig& config, OldConfig old)
{
    const auto failed = [&](Message words, ErrorCode code, const std::string& reason) {
        return Failure{code, TextOf(file), reason, {}, GetMsg(words) + TextOf(file)};
    };
    const auto bytes = FormatLevelConfig(config);
    if (!bytes)
        return failed(Msg::ConfigErrorWriting, ErrorCode::Refused, GetMsg(Msg::ConfigTextTooLong));
    const auto status =
        old == OldConfig::Replaced ? WriteWholeFile(file, *bytes) : WriteRecordFile(file, *bytes);
    if (!status)
        return failed(status.Error().code == ErrorCode::CannotOpen ? Msg::ConfigErrorOpeningWrite
                                                                   : Msg::ConfigErrorWriting,
                      status.Error().code, status.Error().reason);
    return {};
}

} // namespace kestrova
