#include "drives/extracted_disc.h"

#include "core/look.h"
#include "core/removal.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "drives/drive_tools.h"
#include "formats/burn_lines.h"
#include "platform/file_content.h"
#include "platform/places.h"
#include "session/cleared_progress.h"
#include "tools/run_to_end.h"
#include "words/drives.h"

#include <algorithm>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

using platform::FileKind;

/// What stands below a folder, each with what `HashOfTree` holds of it.
struct Listed {
    std::string name; ///< from the folder on
    platform::FileFacts facts;
};

/// Folders come before what is in them. What lies on another file system than `device` is listed
/// and not entered.
Status ListBelow(const Path& root, const std::string& below, std::uint64_t device,
                 std::vector<Listed>& all)
{
    std::vector<platform::FolderEntry> entries;
    if (const auto failure = platform::ListFolder(root / below, entries))
        return MakeFailure(ErrorCode::CannotRead, TextOf(root / below), failure);
    for (const platform::FolderEntry& entry : entries) {
        Listed listed{below.empty() ? entry.name : below + '/' + entry.name, {}};
        if (const auto failure = platform::LookAtLink(root / listed.name, listed.facts))
            return MakeFailure(ErrorCode::CannotRead, TextOf(root / listed.name), failure);
        const bool enter = listed.facts.kind == FileKind::Folder && listed.facts.device == device;
        all.push_back(std::move(listed));
        if (!enter)
            continue;
        const std::string folder = all.back().name;
        if (const auto done = ListBelow(root, folder, device, all); !done)
            return done;
    }
    return {};
}

Result<std::vector<Listed>> ListAll(const Path& folder)
{
    std::vector<Listed> all;
    if (const auto listed = ListBelow(folder, {}, platform::FactsOfLink(folder).device, all);
        !listed)
        return listed.Error();
    return all;
}

/// From the inside out, so that a kill leaves folders that can still be changed.
Status MakeReadOnly(const Path& folder)
{
    constexpr std::uint32_t fileRights = 0444;
    constexpr std::uint32_t folderRights = 0555;
    const auto all = ListAll(folder);
    if (!all)
        return all.Error();
    const auto set = [](const Path& path, std::uint32_t rights) -> Status {
        if (const auto failure = platform::SetMode(path, rights))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(path), failure);
        return {};
    };
    for (auto listed = all->rbegin(); listed != all->rend(); ++listed) {
        const bool isFolder = listed->facts.kind == FileKind::Folder;
        if (!isFolder && listed->facts.kind != FileKind::File)
            continue;
        if (const auto done = set(folder / listed->name, isFolder ? folderRights : fileRights);
            !done)
            return done;
    }
    return set(folder, folderRights);
}

Status LookForRoom(Machine& machine, const Path& image, const Path& place)
{
    constexpr std::uint64_t spare = 1 << 20; // names and rounding
    const std::uint64_t needed = FileSize(image) + spare;
    const auto room = machine.FreeSpace(place);
    if (!room)
        return room.Error();
    if (*room >= needed)
        return {};
    const auto text = [](std::uint64_t bytes) { return SizeInWords(static_cast<double>(bytes)); };
    return InWords(ErrorCode::NoSpace,
                   GetMsg(Msg::DiscNoRoomToExtract, {TextOf(image), text(needed), text(*room)}));
}

/// How much has come out of an image of so many bytes.
class ExtractLineParser : public LineParser
{
public:
    explicit ExtractLineParser(std::uint64_t total) : total_(total) {}
    LineAnswer Feed(std::string_view line) override
    {
        const auto bytes = ExtractedBytesIn(line);
        return bytes ? LineAnswer{std::min(*bytes, total_), total_} : LineAnswer{};
    }

private:
    std::uint64_t total_;
};

} // namespace

Result<Path> ExtractDisc(const Tools& tools, Machine& machine, Host& host, const Path& image,
                         const Path& place)
{
    if (const auto room = LookForRoom(machine, image, place.parent_path()); !room)
        return room.Error();
    const Path staged = StagedNameFor(place);
    WorkFolder removal{staged, WorkFolder::Make::Now};
    const auto progress = host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::DiscExtracting));
    progress->AllowStop();
    ToolReport report;
    const ToolWork work{XorrisoExtract(),
                        {"-no_rc", "-osirrox", "on", "-indev", "stdio:" + image.native(),
                         "-extract", "/", staged.native()},
                        [&] { return std::make_unique<ExtractLineParser>(FileSize(image)); }};
    ToolProgressState state{progress.get()};
    state.quiet = true;
    if (const auto done = RunTool(tools, work, state, report); !done) {
        const Failure& failure = done.Error();
        if (failure.code == ErrorCode::Stopped)
            return Failure{ErrorCode::Stopped, TextOf(image)};
        return InWords(failure.code, GetMsg(Msg::DiscNotExtracted, {TextOf(image)}),
                       failure.sentence + (failure.reason.empty() ? "" : " ") + failure.reason,
                       failure.details);
    }
    if (!progress->Step())
        return Failure{ErrorCode::Stopped, TextOf(image)};
    if (const auto done = MakeReadOnly(staged); !done)
        return Saying(GetMsg(Msg::DiscNotExtracted, {TextOf(image)}), done.Error());
    const Path whole = StagedNameFor(place);
    if (const auto failure = platform::Rename(staged, whole))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(whole), failure);
    return whole;
}

Result<std::string> HashOfTree(const Path& folder)
{
    auto all = ListAll(folder);
    if (!all)
        return all.Error();
    std::sort(all->begin(), all->end(),
              [](const Listed& a, const Listed& b) { return a.name < b.name; });
    std::string text;
    for (const Listed& listed : *all) {
        const bool isFile = listed.facts.kind == FileKind::File;
        text += listed.name + '\0' +
                fmt::format("{} {} {}\n", static_cast<int>(listed.facts.kind),
                            isFile ? listed.facts.size : 0, isFile ? listed.facts.modifiedNs : 0);
    }
    return platform::HashOf(std::as_bytes(std::span(text)));
}

Status RemoveExtracted(const SeenNote& note)
{
    const Path folder{note.folder};
    platform::FileFacts facts;
    if (const auto failure = platform::LookAtLink(folder, facts))
        return MakeFailure(ErrorCode::CannotRead, note.folder, failure);
    if (facts.kind == FileKind::Missing)
        return {};
    std::vector<platform::FolderEntry> entries;
    if (facts.kind == FileKind::Folder && !platform::ListFolder(folder, entries) && entries.empty())
        return {}; // the disc's files had not come yet
    const Failure foreign =
        InWords(ErrorCode::Differs, GetMsg(Msg::DiscFolderForeign, {TextOf(folder)}));
    if (facts.kind != FileKind::Folder || facts.device != note.device ||
        facts.inode != note.inode || !platform::KindMountedOn(folder).empty())
        return foreign;
    const auto hash = HashOfTree(folder);
    if (!hash)
        return hash.Error();
    if (*hash != note.hash)
        return foreign;
    // What is removed has a name that a killed removal can be known by.
    const Path staged = StagedNameFor(folder);
    if (const auto failure = platform::Rename(folder, staged))
        return MakeFailure(ErrorCode::CannotDelete, note.folder, failure);
    return RemoveTree(staged);
}

} // namespace kestrova
