#include "upkeep/recovered_discs.h"

#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/look.h"
#include "core/text.h"
#include "discs/disc_content.h"
#include "discs/disc_notes.h"
#include "discs/part_of_level.h"
#include "drives/attached_discs.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "tools/tools.h"
#include "upkeep/level_search.h"
#include "words/recovering.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// The name without the number at its end, and that number; 0 without one.
std::pair<std::string, std::int32_t> TakenApart(const Path& folder)
{
    const std::string name = folder.filename().native();
    const std::size_t last = name.find_last_not_of("0123456789");
    const std::size_t at = last == std::string::npos ? 0 : last + 1;
    return {name.substr(0, at), LeadingNumber(std::string_view{name}.substr(at))};
}

Path NumberedDisc(const Path& base, std::int32_t number)
{
    return base.native() + std::to_string(number);
}

/// Waits for that disc; False when it does not come.
bool IsInserted(Host& host, const Path& folder, std::int32_t number)
{
    if (FolderExists(folder))
        return true;
    host.Tell(Tone::Plain, GetMsg(Msg::RecoverInsertDisc) + std::to_string(number));
    if (FolderExists(folder))
        return true;
    host.Tell(Tone::Error, GetMsg(Msg::DiscFolderNotFound, {TextOf(folder)}));
    return false;
}

LevelRecord* RecordOf(Archive& archive, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(archive, code);
    return index < 0 ? nullptr : &archive.levels[static_cast<std::size_t>(index)];
}

void LiesOnDisc(Archive& archive, LevelRecord& level, std::int32_t number)
{
    level.cdNumber = number;
    archive.header.cdCount = std::max(archive.header.cdCount, number);
}

} // namespace

std::vector<DiscFolder> DiscsAt(Host& host, Machine& machine, const Tools& tools, const Path& place)
{
    std::vector<DiscFolder> discs;
    Path root = place;
    if (FileExists(place)) {
        const auto image = AttachImage(tools, machine, host, place);
        if (!image) {
            TellFailure(host, GetMsg(Msg::RecoverNoDisc, {TextOf(place)}), image.Error());
            return discs;
        }
        root = *image;
    }
    const auto [base, number] = TakenApart(root);
    const auto own = FindLevelFolders(ResolvePath(root));
    if (number > 0 && !base.empty() && own && !own->codes.empty())
        discs.push_back({number, root});
    else
        for (const KnownDisc& disc : DiscsIn(root).ValueOr({}))
            discs.push_back({disc.number, NumberedDisc(root / disc.archive, disc.number)});
    if (discs.empty())
        host.Tell(Tone::Error, GetMsg(Msg::RecoverNoDisc, {TextOf(place)}));
    return discs;
}

std::optional<std::vector<DiscFolder>> AskForDiscs(Host& host)
{
    std::vector<DiscFolder> discs;
    if (!host.AskYesNo(GetMsg(Msg::AskRecoverDiscs)))
        return discs;
    const auto first = host.ChooseFolder(GetMsg(Msg::ChooseFirstDisc), {});
    if (!first)
        return {};
    if (!first->native().ends_with('1')) {
        host.Tell(Tone::Error, GetMsg(Msg::NotFirstDisc, {TextOf(*first)}));
        return {};
    }
    const Path base{first->native().substr(0, first->native().size() - 1)};
    for (std::int32_t number = 1;; ++number) {
        const Path folder = NumberedDisc(base, number);
        if (IsInserted(host, folder, number))
            discs.push_back({number, folder});
        if (!host.CanAsk() || !host.AskYesNo(GetMsg(Msg::AskNextDisc) + std::to_string(number + 1)))
            return discs;
    }
}

Status TakeDisc(Archive& archive, const DiscFolder& disc, const FillLevel& fill)
{
    const auto found = FindLevelFolders(ResolvePath(disc.folder));
    if (!found)
        return found.Error();
    for (const LevelCode code : found->codes) {
        const Path files = InFolder(InFolder(disc.folder, LevelFolderName(code)), OnDisk::DirFiles);
        const auto size = FolderSize(files);
        if (!size)
            return size.Error();
        LevelRecord* level = RecordOf(archive, code);
        if (level == nullptr) {
            LevelRecord coming;
            coming.levelCode = code;
            fill(coming, files);
            archive.levels.push_back(std::move(coming));
            level = &archive.levels.back();
        }
        level->filesSize = SizeField(*size);
        LiesOnDisc(archive, *level, disc.number);
    }
    const auto [base, number] = TakenApart(disc.folder);
    if (archive.header.mainFolder == archive.header.secondaryFolder && !found->codes.empty())
        archive.header.mainFolder = (disc.folder.parent_path() / base).native();
    return {};
}

void TakeNotedDiscs(Archive& archive, const Path& levels)
{
    const auto note = ReadDiscNote(levels);
    if (!note)
        return; // what nobody can read tells nothing
    for (const NotedDisc& disc : note->discs)
        for (const NotedLevel& noted : disc.levels) {
            LevelRecord* level = RecordOf(archive, noted.code);
            const Path files =
                InFolder(InFolder(levels, LevelFolderName(noted.code)), OnDisk::DirFiles);
            if (level == nullptr || level->cdNumber != 0 || !noted.verified ||
                !IsPartOfLevel(files, &noted, 0))
                continue;
            double size = 0;
            for (const NotedFile& file : noted.files)
                size += static_cast<double>(file.size);
            level->filesSize = SizeField(size);
            LiesOnDisc(archive, *level, disc.number);
            archive.header.mainFolder = (levels.parent_path() / note->folder).native();
        }
}

} // namespace kestrova
