#include "help/help_file.h"

#include "core/look.h"
#include "core/text.h"
#include "help/file_names.h"
#include "words/help.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestHelp = UINT64_C(64) << 20;

} // namespace

std::optional<std::string> LoadHelp(Host& host, const Folders& folders, const Path& resources)
{
    const Path own = InFolder(folders.program, OnDisk::FragHelp);
    const Path installed = InFolder(resources, OnDisk::FragHelp);
    std::string reason = GetMsg(Msg::HelpNorInstalled, {TextOf(installed)});
    for (const Path& file : {own, installed}) {
        const auto text = ReadFileIfThere(file, longestHelp);
        if (text && *text)
            return ReplaceAll(**text, "\r\n", "\n");
        if (!text)
            reason = text.Error().reason;
    }
    host.Tell(Tone::Warning, GetMsg(Msg::HelpNotFound) + GetMsg(Msg::HelpQuoted, {TextOf(own)}),
              reason);
    return std::nullopt;
}

} // namespace kestrova
