#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "archive/storage.h"
#include "catalogue/message.h"
#include "upkeep/level_life.h"

#include <algorithm>
#include <limits>
#include <map>

namespace kestrova
{

namespace
{

/// What a folder gives to a level, each file by the place where it goes.
struct Package {
    std::vector<LevelFile> files;    ///< to be stored
    std::vector<LevelFile> state;    ///< savegames, notes and shots of slots
    std::vector<LevelFile> pictures; ///< of `files`, shown as screen-shots too
    std::vector<std::string> leftOut;
};

bool IsAnyOf(const std::string& name, Msg patterns)
{
    for (const std::string& pattern : Split(RowText(patterns), '|'))
        if (MatchesPattern(name, pattern))
            return true;
    return false;
}

/// `note3.txt` and `shot3.jpg` belong to a slot, `notes.txt` is something to read.
bool BelongsToSlot(const std::string& name)
{
    if (MatchesPattern(name, RowText(Msg::SavegamePattern)))
        return true;
    if (!MatchesPattern(name, RowText(Msg::NotePattern)) &&
        !MatchesPattern(name, RowText(Msg::ShotPattern)))
        return false;
    const std::string number = StripExtension(name).substr(4); // "note" and "shot"
    return !number.empty() &&
           std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
}

Package Sorted(const Tree& tree, const Path& root)
{
    Package package;
    std::map<std::string, Path> byName;
    for (const Path& file : tree.files) {
        const std::string name = file.filename().native();
        if (IsAnyOf(name, Msg::IntakeTools))
            continue;
        const auto [known, isNew] = byName.emplace(FoldCase(name), file);
        if (!isNew) {
            if (!SameContent(known->second, file))
                package.leftOut.push_back(TextOf(file.lexically_relative(root)));
            continue;
        }
        if (BelongsToSlot(name)) {
            package.state.push_back({name, file});
            continue;
        }
        package.files.push_back({name, file});
        if (IsAnyOf(name, Msg::PicturePatterns))
            package.pictures.push_back({name, file});
    }
    std::sort(package.files.begin(), package.files.end(),
              [](const LevelFile& a, const LevelFile& b) {
                  return UpperCase(a.name) < UpperCase(b.name);
              });
    return package;
}

/// The first word that any name holds decides.
std::string MoreInfoFileOf(const std::vector<LevelFile>& files)
{
    for (const std::string& word : Split(RowText(Msg::MoreInfoWords), '|'))
        for (const LevelFile& file : files)
            if (FoldCase(file.name).find(FoldCase(word)) != std::string::npos)
                return file.name;
    return {};
}

Status CopyInto(const std::vector<LevelFile>& files, const Path& folder, ProgressScope& progress)
{
    for (const LevelFile& file : files) {
        CopyOptions options;
        options.verify = Verify::Content;
        options.flush = true;
        options.progress = [&](std::uint64_t) { return progress.Step(); };
        if (auto status = CopyFileOver(file.path, folder / file.name, options); !status)
            return status;
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, TextOf(file.path));
    }
    return {};
}

std::int32_t AsField(double bytes)
{
    return static_cast<std::int32_t>(
        std::min(bytes, double{std::numeric_limits<std::int32_t>::max()}));
}

/// Everything in its place below the new level's folder; shows its failure.
bool FillLevel(Session& session, LevelRecord& level, const Package& package)
{
    const Path folder = LevelHomeOf(session, level.levelCode);
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::AddingLevel));
    progress->AllowStop();
    Status copied = CopyInto(package.state, StateStoreOf(session, level.levelCode), *progress);
    if (copied)
        copied =
            CopyInto(package.pictures, InFolder(folder, RowText(Msg::DirScreenshots)), *progress);
    if (!copied) {
        if (copied.Error().code != ErrorCode::Stopped)
            TellFailure(session, GetMsg(Msg::LevelNotAdded, {level.levelName}), copied.Error());
        return false;
    }
    if (!StoreFilesOfLevel(session, level.levelCode, package.files, progress.get()))
        return false;
    level.moreInfoFile = MoreInfoFileOf(package.files);
    level.filesSize = AsField(FolderSize(InFolder(folder, RowText(Msg::DirFiles))));
    level.extrasSize = AsField(ExtrasSizeOf(folder));
    return true;
}

/// The folder's files, or no value after a message.
std::optional<Package> PackageOf(Session& session, const Path& folder)
{
    const auto tree = ScanTree(folder);
    if (!tree) {
        TellFailure(session, GetMsg(Msg::LevelFolderMissing, {TextOf(folder)}), tree.Error());
        return {};
    }
    Package package = Sorted(*tree, tree->folders.front());
    if (std::none_of(package.files.begin(), package.files.end(),
                     [](const LevelFile& file) { return IsAnyOf(file.name, Msg::Tr4Patterns); })) {
        session.host.Tell(Tone::Error, GetMsg(Msg::MissingTr4));
        return {};
    }
    return package;
}

} // namespace

bool AddFolderAsLevel(Session& session, const std::string& name, const std::string& note,
                      const Path& folder, LevelCode& code)
{
    const Operation operation{session};
    if (Trim(name).empty()) {
        session.host.Tell(Tone::Error, GetMsg(Msg::LevelNeedsName));
        return false;
    }
    const auto package = PackageOf(session, folder);
    LevelRecord level;
    if (!package || !BeginNewLevel(session, level))
        return false;
    level.levelName = Trim(name);
    level.levelNote = note;
    if (!FillLevel(session, level, *package) || !FinishNewLevel(session, level)) {
        DropNewLevel(session, level);
        return false;
    }
    code = level.levelCode;
    if (!package->leftOut.empty())
        session.host.Tell(Tone::Warning,
                          GetMsg(Msg::SameNameLeftOut, {Join(package->leftOut, ", ")}));
    return true;
}

} // namespace kestrova
