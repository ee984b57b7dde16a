#include "discs/disc_set.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "discs/coming_note.h"
#include "discs/disc_content.h"
#include "formats/cd_install_text.h"
#include "formats/level_folder.h"
#include "platform/clock.h"
#include "words/disc_creation.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

std::string LevelPlaceOn(LevelCode code)
{
    return LevelFolderName(code).substr(1); // it begins with a backslash
}

Path LevelFilesOf(const Folders& folders, LevelCode code)
{
    return ResolvePath(InFolder(LevelHomeOf(folders, code), OnDisk::DirFiles));
}

/// What was compared, by the level that it belongs to: names below its `files`.
std::map<LevelCode, std::vector<NotedFile>> ByLevel(const Folders& folders, const PlannedDisc& disc,
                                                    const std::vector<SameFile>& same)
{
    std::map<Path, LevelCode> roots;
    for (const LevelCode code : disc.levels)
        roots.emplace(LevelFilesOf(folders, code), code);
    std::map<LevelCode, std::vector<NotedFile>> found;
    for (const SameFile& file : same) {
        for (Path folder = file.source.parent_path(); folder.has_relative_path();
             folder = folder.parent_path()) {
            const auto root = roots.find(folder);
            if (root == roots.end())
                continue;
            found[root->second].push_back(
                {file.source.lexically_relative(folder).native(), file.size, file.hash});
            break;
        }
    }
    return found;
}

/// The folder has these files and no other.
bool AreAllFiles(const Path& folder, const std::vector<NotedFile>& compared)
{
    const auto now = ListFilesToNote(folder);
    return now && std::equal(now->begin(), now->end(), compared.begin(), compared.end(),
                             [](const NotedFile& a, const NotedFile& b) {
                                 return a.name == b.name && a.size == b.size;
                             });
}

} // namespace

DiscSet::DiscSet(const DiscParts& parts, const DiscPlan& plan, Path temp)
    : parts_(parts), plan_(plan), name_(NameOnDiscs(parts.archive.archive.header)),
      temp_(std::move(temp))
{
}

std::string DiscSet::PlaceOn(std::int32_t number) const
{
    return name_ + std::to_string(number) + '/';
}

Status DiscSet::Prepare(const Path& mainFolder)
{
    auto note = ReadDiscNote(parts_.folders.levels);
    if (!note)
        return note.Error();
    note_ = std::move(note).Value();
    note_.folder = name_;
    if (!plan_.choice.levels)
        return WriteInstall();
    const Archive made = Made(mainFolder, {});
    if (const auto written =
            WriteWholeFile(temp_ / OnDisk::CdArchiveFile, FormatArchive(made.header, made.levels));
        !written)
        return Saying(GetMsg(Msg::ErrorSavingCdArchive) + TextOf(temp_), written);
    auto coming = NoteOfComing(parts_, plan_, note_);
    if (!coming)
        return coming.Error();
    coming_ = std::move(coming).Value();
    if (const auto written = WriteDiscNote(temp_, coming_); !written)
        return Saying(GetMsg(Msg::ErrorPreparingDisc), written);
    return WriteInstall();
}

Status DiscSet::WriteInstall()
{
    CdInstall install;
    if (plan_.choice.trle)
        install.trle = OnDisk::CdTrleValue;
    if (plan_.choice.setup)
        install.setup = plan_.choice.setupFiles.size() == 1
                            ? ToBackslashes(Path{OnDisk::CdSetupFolder} /
                                            plan_.choice.setupFiles.front().filename())
                            : std::string{OnDisk::CdSetupProgram};
    if (plan_.choice.levels)
        install.archive = ToBackslashes(OnDisk::CdArchiveFile);
    Status written = WriteWholeFile(temp_ / OnDisk::CdInstallFile, FormatCdInstall(install));
    // A computer that starts discs by itself starts what installs from this one.
    const Path installer = ResolvePath(parts_.folders.program / OnDisk::CdInstaller);
    if (written && FileExists(installer))
        written = WriteWholeFile(temp_ / OnDisk::AutoRunFile, FormatAutoRun(OnDisk::CdInstaller));
    return Saying(GetMsg(Msg::ErrorPreparingDisc), written);
}

std::vector<BurnItem> DiscSet::ItemsOf(const PlannedDisc& disc) const
{
    std::vector<BurnItem> items;
    for (const LevelCode code : disc.levels) {
        const std::string place = PlaceOn(disc.number) + LevelPlaceOn(code) + '/';
        const Path home = LevelHomeOf(parts_.folders, code);
        items.push_back({place + std::string{OnDisk::DirFiles.substr(1)} + '/',
                         LevelFilesOf(parts_.folders, code)});
        if (const Path index = ResolvePath(InFolder(home, OnDisk::FragTr4Inf)); FileExists(index))
            items.push_back({place, index});
    }
    if (&disc != &plan_.Discs().front())
        return items;
    for (const std::string_view name : {OnDisk::CdInstallFile, OnDisk::CdArchiveFile})
        if (FileExists(temp_ / name))
            items.push_back({{}, temp_ / name});
    if (const Path note = DiscNoteOf(temp_); FileExists(note))
        items.push_back({{}, note});
    if (const Path names = ExactNamesFile(parts_.archive.archive.header); FileExists(names))
        items.push_back({{}, names});
    if (const Path installer = ResolvePath(parts_.folders.program / OnDisk::CdInstaller);
        FileExists(installer)) {
        items.push_back({{}, installer});
        items.push_back({{}, temp_ / OnDisk::AutoRunFile});
    }
    for (const Path& file : plan_.choice.setupFiles)
        items.push_back({std::string{OnDisk::CdSetupFolder} + '/', file});
    if (plan_.choice.trle)
        items.push_back(
            {std::string{OnDisk::CdTrleFolder} + '/', ResolvePath(parts_.folders.trle)});
    return items;
}

Status DiscSet::Note(const PlannedDisc& disc, const Path& image, const std::vector<SameFile>& same)
{
    auto compared = ByLevel(parts_.folders, disc, same);
    NotedDisc noted{disc.number,
                    disc.label,
                    CapacityOf(plan_.choice.megabytes).medium,
                    image.native(),
                    parts_.machine.NowNs() / platform::nsOfSecond,
                    {}};
    for (const LevelCode code : disc.levels) {
        NotedLevel level{code, false, std::move(compared[code])};
        std::sort(level.files.begin(), level.files.end(),
                  [](const NotedFile& a, const NotedFile& b) { return a.name < b.name; });
        level.verified = AreAllFiles(LevelFilesOf(parts_.folders, code), level.files) &&
                         IsAsAnnounced(coming_, disc.number, level);
        // What was not compared is still known by what it should be.
        if (const NotedLevel* announced = FindNoted(coming_, disc.number, code);
            !level.verified && announced != nullptr)
            level.files = announced->files;
        noted.levels.push_back(std::move(level));
    }
    note_.Put(std::move(noted));
    if (auto written = WriteDiscNote(parts_.folders.levels, note_); !written)
        return Saying(GetMsg(Msg::NoteNotWritten, {disc.label}), written);
    for (const NotedLevel& level : note_.Find(disc.number)->levels)
        if (level.verified)
            proved_.insert(level.code);
    return {};
}

Status DiscSet::Forget(const PlannedDisc& disc)
{
    std::erase_if(note_.discs, [&](const NotedDisc& known) { return known.number == disc.number; });
    for (const LevelCode code : disc.levels)
        proved_.erase(code);
    return WriteDiscNote(parts_.folders.levels, note_);
}

void DiscSet::TakeEarlier(const PlannedDisc& disc)
{
    for (const LevelCode code : disc.levels) {
        const NotedLevel* known = FindNoted(note_, disc.number, code);
        if (known != nullptr && known->verified &&
            HoldsNotedFiles(LevelFilesOf(parts_.folders, code), *known,
                            [&] { return parts_.progress.Step(); }))
            proved_.insert(code);
    }
}

std::vector<LevelCode> DiscSet::Unproved() const
{
    std::vector<LevelCode> codes;
    for (const PlannedDisc& disc : plan_.Discs())
        std::copy_if(disc.levels.begin(), disc.levels.end(), std::back_inserter(codes),
                     [&](LevelCode code) { return !proved_.contains(code); });
    return codes;
}

Archive DiscSet::Made(const Path& mainFolder, const std::vector<LevelCode>& without) const
{
    Archive made = parts_.archive.archive;
    std::map<LevelCode, std::int32_t> discs;
    for (const PlannedDisc& disc : plan_.Discs())
        for (const LevelCode code : disc.levels)
            discs.emplace(code, disc.number);
    for (const LevelCode code : without)
        discs.erase(code);
    for (std::size_t i = 1; i < made.levels.size(); ++i) {
        LevelRecord& level = made.levels[i];
        if (const auto disc = discs.find(level.levelCode); disc != discs.end())
            level.cdNumber = disc->second;
        made.header.cdCount = std::max(made.header.cdCount, level.cdNumber);
    }
    if (!discs.empty())
        made.header.mainFolder = mainFolder.native();
    return made;
}

} // namespace kestrova
