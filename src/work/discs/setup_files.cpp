#include "discs/setup_files.h"

#include "core/staged_file.h"
#include "core/text.h"
#include "packages/unzip.h"
#include "session/telling.h"
#include "words/disc_creation.h"

namespace kestrova
{

namespace
{

constexpr std::string_view setupNames[] = {"TrKestrova.cab", "setup.exe", "setup.lst",
                                           "readme.txt"};
constexpr std::string_view endingCab = ".cab";
constexpr std::string_view endingZip = ".zip";
constexpr std::string_view unpackedSetup = "setup"; // a folder of the working one

/// The four files of that folder; none when one is missing, which was told.
std::optional<std::vector<Path>> FilesIn(Host& host, const Path& folder)
{
    std::vector<Path> files;
    for (const std::string_view name : setupNames) {
        files.push_back(ResolvePath(folder / name));
        if (FileExists(files.back()))
            continue;
        host.Tell(Tone::Error, GetMsg(Msg::SetupFileMissing, {TextOf(folder)}) + std::string{name});
        return std::nullopt;
    }
    return files;
}

/// The same of a file that was chosen.
std::optional<std::vector<Path>> SetupFilesOf(const DiscParts& parts, const Path& file,
                                              const Path& temp)
{
    const std::string name = file.filename().native();
    if (EndsWithName(name, endingCab))
        return FilesIn(parts.host, file.parent_path());
    if (!EndsWithName(name, endingZip))
        return std::vector{ResolvePath(file)};
    const Path folder = temp / unpackedSetup;
    if (const auto done =
            UnzipWithProgress(parts.tools, file, folder, {}, ToolProgressState{&parts.progress});
        !done) {
        TellFailure(parts.host, GetMsg(Msg::ErrorUnzippingSetup), done.Error());
        return std::nullopt;
    }
    return FilesIn(parts.host, folder);
}

} // namespace

std::optional<std::vector<Path>> LocateSetupFiles(const DiscParts& parts, const Path& given,
                                                  const Path& temp)
{
    if (!given.empty())
        return SetupFilesOf(parts, given, temp);
    Host& host = parts.host;
    if (!host.AskOkCancel(GetMsg(Msg::LocateSetupExplained)))
        return std::nullopt;
    const auto chosen = host.ChooseOpenFile(GetMsg(Msg::LocateSetup), GetMsg(Msg::SetupFilter),
                                            parts.folders.program);
    if (!chosen)
        return std::nullopt;
    return SetupFilesOf(parts, *chosen, temp);
}

} // namespace kestrova
