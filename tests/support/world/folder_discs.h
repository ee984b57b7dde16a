#pragma once

#include "session/disc_reader.h"

#include <string>

namespace kestrova::testing
{

/// Every disc is a folder, `levels` with the disc's number.
class FolderDiscs : public DiscReader
{
public:
    explicit FolderDiscs(Path folder) : folder_(std::move(folder)) {}
    Result<Path> FolderOfDisc(const Archive&, const LevelRecord& level, DiscWish) override
    {
        return folder_ / ("levels" + std::to_string(level.cdNumber));
    }
    std::optional<Path> DiscOf(const Path&) override { return std::nullopt; }
    Result<Path> RootOfImage(const Path&) override { return Failure{}; }
    Status TakeImage(const Archive&, const Path&) override { return Failure{}; }
    Result<DiscSetup> AskForSetup(const Archive&) override { return Failure{}; }

private:
    Path folder_;
};

} // namespace kestrova::testing
