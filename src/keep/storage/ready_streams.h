#pragma once

#include "core/files.h"

#include <vector>

namespace kestrova
{

/// Streams of files that were deflated before those are stored. A file is known by what it is on
/// the disk, whatever it is called by then; one that was written to since has no stream.
class ReadyStreams
{
public:
    /// `source`: the file as it was before it was read.
    void Add(const platform::FileFacts& source, std::string stream);
    /// Good as long as this is. Empty: there is none.
    [[nodiscard]] std::string_view Of(const Path& file) const;
    /// Of all streams together.
    [[nodiscard]] std::uint64_t Bytes() const;

private:
    struct Stream {
        platform::FileFacts source;
        std::string bytes;
    };
    std::vector<Stream> streams_;
};

} // namespace kestrova
