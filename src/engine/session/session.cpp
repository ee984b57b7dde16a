#include "session/session.h"

#include "core/copying.h"
#include "core/dates.h"
#include "core/look.h"
#include "core/removal.h"
#include "formats/program_folder.h"
#include "formats/trle_folder.h"
#include "platform/clock.h"
#include "platform/real_path.h"
#include "words/common.h"
#include "words/session.h"

#include <utility>

namespace kestrova
{

Folders Session::Folders() const
{
    return {programFolder, TrleFolder(), FolderFromText(Trim(archive.header.secondaryFolder))};
}

void TellFailure(Host& host, const std::string& text, const Failure& failure)
{
    // A text that names the file already does not name it twice.
    std::string reason = text.find(failure.subject) == std::string::npos ? failure.subject : "";
    if (!failure.reason.empty())
        reason += (reason.empty() ? "" : ": ") + failure.reason;
    host.Tell(Tone::Error, text, reason);
}

bool TellFolderNotRead(Host& host, const Failure& failure)
{
    TellFailure(host, GetMsg(Msg::FolderNotRead, {failure.subject}), failure);
    return false;
}

bool ConfirmReplace(Host& host, const Path& newFile, const Path& oldFile)
{
    const auto lines = [](Message head, const Path& file) {
        const platform::FileFacts facts = platform::FactsOf(ResolvePath(file));
        return GetMsg(head) + TextOf(file.filename()) + std::string{lineBreak} +
               GetMsg(Msg::ReplaceSize) + FormatSize(static_cast<double>(facts.size)) + " " +
               GetMsg(Msg::ReplaceDate) + DateText(facts.modifiedNs) + std::string{lineBreak};
    };
    return host.AskYesNo(lines(Msg::ReplaceFile, oldFile) + lines(Msg::ReplaceWithFile, newFile) +
                         std::string{lineBreak} + GetMsg(Msg::ReplaceIt));
}

bool RemoveTreeWithProgress(Host& host, const Path& folder, ProgressScope& progress)
{
    progress.SetLabel(GetMsg(Msg::ScanningFiles));
    progress.SetBar(0, 0);
    const auto alive = [&] { return progress.Step(), true; };
    auto tree = ScanTree(folder, alive);
    if (!tree) // a path that is too long, say; the removal needs none
        tree = Tree{{folder}, {}};
    progress.SetLabel(GetMsg(Msg::RemovingFiles));
    for (std::size_t i = 0; i < tree->files.size(); ++i) {
        if (const auto failure = platform::Unlink(tree->files[i]);
            failure && failure != std::errc::no_such_file_or_directory) {
            TellFailure(host, GetMsg(Msg::ErrorRemovingFile) + TextOf(tree->files[i]),
                        MakeFailure(ErrorCode::CannotDelete, TextOf(tree->files[i]), failure));
            progress.SetLabel(GetMsg(Msg::ErrorRemovingFiles));
            return false;
        }
        progress.SetBar(i + 1, tree->files.size());
        progress.Step();
    }
    progress.SetLabel(GetMsg(Msg::RemovingFolders));
    for (std::size_t i = tree->folders.size(); i-- > 0;) {
        // What a listing does not show (links, staged leftovers) goes with its folder.
        if (const auto status = RemoveTree(tree->folders[i], alive); !status) {
            TellFailure(host, GetMsg(Msg::ErrorDeletingFolder) + TextOf(tree->folders[i]),
                        status.Error());
            return false;
        }
        progress.SetBar(i, tree->folders.size());
        progress.Step();
    }
    progress.SetLabel({});
    progress.SetBar(0, 0);
    return true;
}

bool CopyTreeWithProgress(Host& host, const Path& source, const Path& target,
                          ProgressScope* progress, Verify verify)
{
    const Path root = ResolvePath(source);
    const auto alive = [&] { return progress == nullptr || (progress->Step(), true); };
    const auto tree = ScanTree(root, alive);
    if (!tree) {
        TellFailure(host, GetMsg(Msg::ErrorCopyingFileTo, {TextOf(root)}) + TextOf(target) + "'",
                    tree.Error());
        return false;
    }
    std::uint64_t total = 0;
    for (const Path& file : tree->files)
        total += platform::FactsOf(file).size;
    for (const Path& folder : tree->folders) {
        const Path relative = folder.lexically_relative(root);
        const Path place = relative == "." ? target : target / relative;
        if (const auto status = MakeFolders(place); !status) {
            TellFailure(host, GetMsg(Msg::CannotCreateFolder, {TextOf(place)}), status.Error());
            return false;
        }
    }
    std::uint64_t done = 0;
    for (const Path& file : tree->files) {
        const Path place = target / file.lexically_relative(root);
        CopyOptions options;
        options.verify = verify;
        options.progress = [&](std::uint64_t bytes) {
            if (progress != nullptr)
                progress->SetBar(done + bytes, total);
            return alive();
        };
        if (const auto status = CopyFileOver(file, place, options); !status) {
            TellFailure(host, GetMsg(Msg::ErrorCopyingFileTo, {TextOf(file)}) + TextOf(place) + "'",
                        status.Error());
            return false;
        }
        done += platform::FactsOf(place).size;
        if (progress != nullptr)
            progress->SetBar(done, total);
        alive();
    }
    return true;
}

Drive FindLargestDrive(Machine& machine)
{
    Drive largest;
    for (const Drive& drive : machine.FixedDrives())
        if (drive.writable && drive.free > largest.free)
            largest = drive;
    return largest;
}

bool HoldFolder(Session& session, const Path& folder)
{
    if (folder.empty())
        return true;
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return TellFolderNotRead(session.host, isThere.Error());
    if (!*isThere)
        return true;
    const auto status = session.locks.Hold(folder);
    if (status)
        return true;
    if (status.Error().code == ErrorCode::Refused)
        session.host.Tell(Tone::Error, GetMsg(Msg::HeldByAnother,
                                              {TextOf(folder), status.Error().reason.empty()
                                                                   ? GetMsg(Msg::LockWordsNone)
                                                                   : status.Error().reason}));
    else
        TellFailure(session.host, GetMsg(Msg::FolderNotLocked, {TextOf(folder)}), status.Error());
    return false;
}

bool HoldArchiveFolder(Session& session, const Path& folder)
{
    if (!HoldFolder(session, folder))
        return false;
    const Path before = std::exchange(session.lockedArchiveFolder, folder);
    const auto isOneOf = [&](const Path& other) { return platform::IsSameFile(before, other); };
    if (!before.empty() && !isOneOf(folder) && !isOneOf(session.programFolder) &&
        !isOneOf(session.TrleFolder()))
        session.locks.Release(before);
    return true;
}

bool HoldFolders(Session& session)
{
    return HoldFolder(session, session.programFolder) &&
           HoldFolder(session, session.TrleFolder()) &&
           HoldArchiveFolder(session, Path{Trim(session.archive.header.secondaryFolder)});
}

void WriteActivityLog(Host& host, const Folders& folders, const PreferencesRecord& preferences,
                      const ActivityLog& log)
{
    if (!preferences.writeLogFiles)
        return;
    if (const auto status = WriteLogFile(folders.program, log); !status)
        TellFailure(host, GetMsg(Msg::CannotWriteLog), status.Error());
}

} // namespace kestrova
