#include "storage/ready_streams.h"

#include "core/look.h"

#include <algorithm>

namespace kestrova
{

void ReadyStreams::Add(const platform::FileFacts& source, std::string stream)
{
    streams_.push_back({source, std::move(stream)});
}

std::uint64_t ReadyStreams::Bytes() const
{
    std::uint64_t bytes = 0;
    for (const Stream& stream : streams_)
        bytes += stream.bytes.size();
    return bytes;
}

std::string_view ReadyStreams::Of(const Path& file) const
{
    const auto now =
        streams_.empty() ? Result<platform::FileFacts>{Failure{}} : LookAtSpelled(file);
    if (!now)
        return {};
    const auto found = std::find_if(streams_.begin(), streams_.end(), [&](const Stream& stream) {
        return IsSameThing(stream.source, *now) && stream.source.size == now->size &&
               stream.source.modifiedNs == now->modifiedNs;
    });
    return found == streams_.end() ? std::string_view{} : std::string_view{found->bytes};
}

} // namespace kestrova
