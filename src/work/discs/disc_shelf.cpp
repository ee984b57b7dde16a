#include "discs/disc_shelf.h"

#include "archive/level_folders.h"
#include "core/inside.h"
#include "core/look.h"
#include "core/text.h"
#include "discs/disc_notes.h"
#include "discs/disc_places.h"
#include "discs/file_names.h"
#include "discs/insert_cd.h"
#include "discs/setup_cd.h"
#include "formats/cd_install_text.h"
#include "formats/level_folder.h"
#include "history/undo_entries.h"
#include "words/archive.h"
#include "words/disc_play.h"

#include <algorithm>
#include <set>

namespace kestrova
{

/// One search for the disc of a level.
struct DiscShelf::Search {
    const Archive& archive;
    const LevelRecord& level;
    DiscWish wish = DiscWish::Look;
    const NotedDisc* disc = nullptr;    ///< what the note tells of it
    const NotedLevel* noted = nullptr;  ///< and of the level on it
    std::set<Path> looked{};            ///< roots
    bool stopped = false;               ///< while a disc was looked at
    bool isDamaged = false;             ///< the very disc is there, and not as it was made
    Path folder{};                      ///< the disc's, once it was found
    std::string place{};                ///< the drive or image that is looked at, in words
    std::vector<std::string> instead{}; ///< what lies in the drives in its place, in words
};

namespace
{

std::string WhyNotRead(const Failure& failure)
{
    if (!failure.reason.empty())
        return failure.reason;
    return failure.sentence.empty() ? GetMsg(Msg::DiscNotWhole) : failure.sentence;
}

/// What lies in that root in place of the disc that is wanted; empty when it is no archive's.
std::string WhatLiesThere(const Archive& archive, const Path& root)
{
    const auto discs = DiscsIn(root);
    if (!discs || discs->empty())
        return {};
    const KnownDisc& disc = discs->front();
    const bool ours = EqualNames(disc.archive, NameOnDiscs(archive.header));
    return GetMsg(ours ? Msg::OtherDiscThere : Msg::OtherArchiveThere,
                  {std::to_string(disc.number), disc.archive});
}

/// The list of contents beside the file says that it is the archive of the disc.
bool IsArchiveOfDisc(const Path& file)
{
    constexpr std::uint64_t longestList = 1 << 16;
    const auto text =
        ReadFileIfThere(ResolvePath(file.parent_path() / OnDisk::CdInstallFile), longestList);
    const auto list = text && *text ? ParseCdInstall(**text) : Result<CdInstall>{Failure{}};
    return list && EqualNames(FileNameOf(list->archive), file.filename().native());
}

} // namespace

DiscShelf::DiscShelf(Host& host, Machine& machine, DiscPlaces& places, DiscWindows windows)
    : host_(host), machine_(machine), places_(places), windows_(std::move(windows))
{
}

const DiscNote& DiscShelf::NoteOf(const Archive& archive)
{
    const Path levels = FolderFromText(Trim(archive.header.secondaryFolder));
    const Path file = ResolvePath(DiscNoteOf(levels));
    const auto facts = LookAtSpelled(file);
    if (facts && noteFile_ == file && noteTime_ == facts->changedNs && noteSize_ == facts->size)
        return note_;
    // Without a note that can be read a disc is known by its folders alone.
    note_ = ReadDiscNote(levels).ValueOr({});
    noteFile_ = facts ? file : Path{};
    noteTime_ = facts ? facts->changedNs : 0;
    noteSize_ = facts ? facts->size : 0;
    return note_;
}

DiscShelf::Search DiscShelf::NewSearch(const Archive& archive, const LevelRecord& level,
                                       DiscWish wish)
{
    Search search{archive, level, wish};
    search.disc = NoteOf(archive).Find(level.cdNumber);
    if (search.disc != nullptr)
        search.noted = search.disc->Find(level.levelCode);
    return search;
}

bool DiscShelf::LooksAt(Search& search, const Path& root)
{
    if (search.stopped || !search.looked.insert(root).second)
        return false;
    auto folder = FindDiscFolder(root, search.archive.header, search.level, search.noted);
    if (folder && *folder)
        if (const auto proved = HasItsContent(search, **folder); !proved) {
            search.stopped = proved.Error().code == ErrorCode::Stopped;
            search.isDamaged = true;
            folder = proved.Error();
        }
    if (folder && *folder) {
        found_[search.level.cdNumber] = root;
        search.folder = **folder;
        return true;
    }
    std::string words;
    if (folder)
        words = WhatLiesThere(search.archive, root);
    else if (folder.Error().code == ErrorCode::Damaged) {
        search.isDamaged = true;
        words = GetMsg(Msg::DiscIsDamaged,
                       {std::to_string(search.level.cdNumber), folder.Error().subject});
    } else
        words = GetMsg(Msg::DiscNotRead, {TextOf(root), WhyNotRead(folder.Error())});
    if (!words.empty())
        search.instead.push_back(search.place.empty()
                                     ? std::move(words)
                                     : GetMsg(Msg::FoundInPlace, {search.place, words}));
    return false;
}

Status DiscShelf::HasItsContent(const Search& search, const Path& disc)
{
    if (search.noted == nullptr || search.wish == DiscWish::Look)
        return {};
    const Path files = ResolvePath(
        InFolder(InFolder(disc, LevelFolderName(search.level.levelCode)), OnDisk::DirFiles));
    const auto digest = DigestOfAside(files);
    if (!digest)
        return digest.Error();
    const std::string key = files.native() + '\n' + *digest;
    if (proved_.contains(key))
        return {};
    const auto progress = host_.BeginProgress(
        ProgressWindow::Wait, GetMsg(Msg::ProvingDisc, {std::to_string(search.level.cdNumber)}));
    progress->AllowStop();
    auto status = HoldsNotedContent(files, *search.noted, [&] { return progress->Step(); });
    if (status)
        proved_.insert(key);
    return status;
}

bool DiscShelf::LooksInDrives(Search& search)
{
    for (const DiscDrive& drive : places_.Drives()) {
        if (!drive.holdsDisc)
            continue;
        const auto root = places_.Open(drive);
        if (!root)
            search.instead.push_back(
                GetMsg(Msg::DiscNotRead, {drive.name, WhyNotRead(root.Error())}));
        else if (search.place = drive.name; LooksAt(search, *root))
            return true;
    }
    return false;
}

bool DiscShelf::LooksAtImage(Search& search, const Path& image)
{
    auto root = places_.OpenImage(image);
    if (!root) {
        search.instead.push_back(
            GetMsg(Msg::DiscNotRead, {TextOf(image), WhyNotRead(root.Error())}));
        // Only of the noted one is it known which disc it is.
        const bool isNoted = search.disc != nullptr && search.disc->image == image.native();
        search.isDamaged = search.isDamaged || (isNoted && root.Error().code == ErrorCode::Damaged);
        return false;
    }
    images_[*root] = image;
    search.place = TextOf(image);
    return LooksAt(search, *root);
}

bool DiscShelf::LooksInImages(Search& search)
{
    std::set<Path> images;
    std::set<Path> folders{imageFolders_.begin(), imageFolders_.end()};
    if (search.disc != nullptr && !search.disc->image.empty() && FileExists(search.disc->image)) {
        images.insert(search.disc->image);
        if (LooksAtImage(search, search.disc->image))
            return true;
    }
    for (const NotedDisc& disc : NoteOf(search.archive).discs)
        if (!disc.image.empty())
            folders.insert(Path{disc.image}.parent_path());
    const std::string label = LabelOfDisc(search.level.cdNumber);
    for (const Path& folder : folders) {
        const auto files = ListFiles(folder, OnDisk::PatImages);
        if (!files)
            continue; // a folder that is away has no images
        for (const Path& image : *files)
            if (places_.LabelOf(image) == label && images.insert(image).second &&
                LooksAtImage(search, image))
                return true;
    }
    return false;
}

Path DiscShelf::Found(const Search& search, DiscWish wish)
{
    const std::int32_t number = search.level.cdNumber;
    const auto image = images_.find(found_[number]);
    const bool isNew = image != images_.end() &&
                       (search.disc == nullptr || search.disc->image != image->second.native());
    if (isNew && wish == DiscWish::Ask)
        (void)Remember(search.archive, number, image->second); // it is looked for again otherwise
    return search.folder;
}

Result<Path> DiscShelf::Ask(Search& search)
{
    const LevelRecord& level = search.level;
    const std::string folder = NameOnDiscs(search.archive.header) + std::to_string(level.cdNumber);
    InsertCd question{host_,
                      places_,
                      {level.cdNumber, folder, OnOneLine(Readable(Trim(level.levelName))),
                       TextOf(search.archive.file.filename()), Join(search.instead, "\n")},
                      [&](const Path& root) -> Result<Path> {
                          search.looked.clear();
                          search.instead.clear();
                          search.place.clear();
                          search.stopped = false;
                          if (LooksAt(search, root))
                              return search.folder;
                          return InWords(ErrorCode::Missing, search.instead.empty()
                                                                 ? GetMsg(Msg::NoArchiveThere)
                                                                 : Join(search.instead, "\n"));
                      }};
    bool found = false;
    if (question.Drives().empty()) {
        host_.Tell(Tone::Error, GetMsg(Msg::NoCdReader), GetMsg(Msg::ImageInstead));
        found = question.ChooseImage();
    } else
        found = windows_.insert(question);
    if (!found || question.Found().empty())
        return MakeFailure(ErrorCode::Stopped, folder);
    search.folder = question.Found();
    if (!question.Image().empty())
        images_[found_[level.cdNumber]] = question.Image();
    return Found(search, DiscWish::Ask);
}

Result<Path> DiscShelf::FolderOfDisc(const Archive& archive, const LevelRecord& level,
                                     DiscWish wish)
{
    Search search = NewSearch(archive, level, wish);
    if (const auto known = found_.find(level.cdNumber); known != found_.end()) {
        const Path root = known->second;
        if (FolderExists(root) && LooksAt(search, root))
            return Found(search, wish);
        search.instead.clear(); // another disc may lie there now; it is named below
        search.isDamaged = false;
        search.looked.clear();
    }
    for (const Path& root : roots_)
        if (LooksAt(search, root))
            return Found(search, wish);
    if (LooksInDrives(search) || LooksInImages(search))
        return Found(search, wish);
    found_.erase(level.cdNumber);
    if (search.stopped)
        return MakeFailure(ErrorCode::Stopped, {});
    if (wish == DiscWish::Ask && windows_.insert)
        return Ask(search);
    std::string what = search.instead.empty() ? std::string{} : Join(search.instead, "\n") + "\n";
    return InWords(
        search.isDamaged ? ErrorCode::Damaged : ErrorCode::Missing,
        GetMsg(Msg::CdNotAvailable) + ". " + GetMsg(Msg::InsertDisc) +
            std::to_string(level.cdNumber),
        what + GetMsg(Msg::DiscWanted,
                      {OnOneLine(Readable(Trim(level.levelName))), LabelOfDisc(level.cdNumber),
                       NameOnDiscs(archive.header) + std::to_string(level.cdNumber)}));
}

std::optional<Path> DiscShelf::DiscOf(const Path& file)
{
    const Path place = ResolvePath(file);
    const auto take = [&](const Path& root) {
        if (std::find(roots_.begin(), roots_.end(), root) == roots_.end())
            roots_.push_back(root);
        return root;
    };
    for (const DiscDrive& drive : places_.Drives())
        if (drive.holdsDisc && !drive.folder.empty() &&
            LiesInside(place, ResolvePath(drive.folder)))
            return take(drive.folder);
    for (const auto& [root, image] : images_)
        if (LiesInside(place, ResolvePath(root))) {
            imageFolders_.push_back(image.parent_path());
            return take(root);
        }
    // What was copied from a disc with its list of contents is one still.
    if (IsArchiveOfDisc(place))
        return take(place.parent_path());
    return {};
}

Result<DiscSetup> DiscShelf::AskForSetup(const Archive& archive)
{
    if (!windows_.setup)
        return InWords(ErrorCode::Refused, GetMsg(Msg::SetupNeedsWords), {});
    SetupCd setup{host_, machine_, archive};
    if (!windows_.setup(setup) || !setup.Chosen())
        return MakeFailure(ErrorCode::Stopped, {});
    return *setup.Chosen();
}

Status DiscShelf::Remember(const Archive& archive, std::int32_t number, const Path& image)
{
    const Path levels = FolderFromText(Trim(archive.header.secondaryFolder));
    auto note = ReadDiscNote(levels);
    if (!note)
        return note.Error();
    if (note->folder.empty())
        note->folder = NameOnDiscs(archive.header);
    NotedDisc disc;
    if (const NotedDisc* known = note->Find(number))
        disc = *known;
    disc.number = number;
    if (disc.label.empty())
        disc.label = LabelOfDisc(number);
    disc.image = image.native();
    note->Put(std::move(disc));
    return WriteDiscNote(levels, *note);
}

Result<Path> DiscShelf::RootOfImage(const Path& image)
{
    auto root = places_.OpenImage(image);
    if (root) {
        images_[*root] = image;
        (void)DiscOf(*root / image.filename()); // any file of it
    }
    return root;
}

Status DiscShelf::TakeImage(const Archive& archive, const Path& image)
{
    const auto root = places_.OpenImage(image);
    if (!root)
        return root.Error();
    const auto discs = DiscsIn(*root);
    if (!discs)
        return discs.Error();
    for (const KnownDisc& disc : *discs)
        if (EqualNames(disc.archive, NameOnDiscs(archive.header)))
            return Remember(archive, disc.number, image);
    return InWords(ErrorCode::Refused, GetMsg(Msg::ImageOfNoDisc, {TextOf(image)}),
                   WhatLiesThere(archive, *root));
}

} // namespace kestrova
