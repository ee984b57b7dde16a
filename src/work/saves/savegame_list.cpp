#include "saves/savegame_list.h"

#include "archive/level_folders.h"
#include "core/dates.h"
#include "core/name_list.h"
#include "formats/savegame_info.h"
#include "formats/savegame_records.h"
#include "formats/trle_folder.h"
#include "history/changes.h"
#include "history/standing.h"
#include "platform/places.h"
#include "saves/archive_slots.h"
#include "saves/savegame_moves.h"
#include "saves/savegame_transfer.h"
#include "saves/send_mail.h"
#include "session/telling.h"
#include "words/restore.h"
#include "words/saves.h"

#include <algorithm>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

constexpr std::size_t titleColumns = 32;
constexpr int numberColumns = 4;

bool IsLetterStart(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80;
}

/// Cut or padded to so many letters of its UTF-8.
std::string InColumns(std::string text, std::size_t columns)
{
    std::size_t letters = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (IsLetterStart(text[i]) && letters++ == columns) {
            text.resize(i);
            return text;
        }
    text.append(columns - letters, ' ');
    return text;
}

Result<std::size_t> LiveCount(const Folders& folders, const Archive& archive, LevelCode code)
{
    const auto folder = LiveStateFolder(folders, archive, code);
    if (!folder)
        return folder.Error();
    const auto files = SavegamesIn(*folder);
    if (!files)
        return files.Error();
    return files->size();
}

std::string InQuotes(const std::string& text)
{
    return "\"" + text + "\"";
}

/// Behind the words of the box: what was done, and what was not.
std::string Below(const std::string& words)
{
    return std::string{lineBreak}.append(lineBreak) + words;
}

/// One sentence more, behind others.
std::string UnlessNone(Message sentence, int count)
{
    return count == 0 ? std::string{} : " " + GetMsg(sentence, {std::to_string(count)});
}

std::string WhyNotRestored(const SavegamesMoved& moved)
{
    return GetMsg(moved.live == int{gameSlotCount} ? Msg::RestoreSlotsFull
                                                   : Msg::RestoreNothingThere);
}

bool TellMoveFailed(Host& host, const Folders& folders, const Failure& failure)
{
    TellFailure(host,
                GetMsg(ChangeWaits(folders) ? Msg::SavegamesUnfinished : Msg::SavegamesNotMoved),
                failure);
    return false;
}

} // namespace

std::string WordsOfArchived(const SavegamesMoved& moved)
{
    if (moved.live == 0)
        return GetMsg(Msg::NothingToArchive);
    if (moved.moved == 0)
        return GetMsg(Msg::ArchivedBefore, {std::to_string(moved.known)});
    return GetMsg(Msg::ArchivedCounts, {std::to_string(moved.moved), std::to_string(moved.slot),
                                        std::to_string(moved.live)}) +
           UnlessNone(Msg::ArchivedKnown, moved.known);
}

std::string WordsOfRestored(const SavegamesMoved& moved)
{
    if (moved.slot == 0)
        return WhyNotRestored(moved);
    return GetMsg(Msg::RestoredCounts, {std::to_string(moved.moved), std::to_string(moved.slot)}) +
           UnlessNone(Msg::RestoredKnown, moved.known) +
           UnlessNone(Msg::RestoredWaiting, moved.waiting);
}

std::string SavegameRow(const Path& file)
{
    const SavegameInfo info = ReadSavegameInfo(file);
    // `2026-11-21 14:05:09` in the other order.
    const std::string date = DateText(platform::FactsOf(file).modifiedNs);
    return fmt::format("{:>{}} - {}  ({}  {}/{}/{})", info.number, numberColumns,
                       InColumns(Readable(info.title), titleColumns), date.substr(11, 5),
                       date.substr(8, 2), date.substr(5, 2), date.substr(0, 4)); // not shown
}

bool SavegameList::Prepare(const Path& folder)
{
    const auto code = parts_.list.Selected();
    if (!code) {
        parts_.host.Tell(Tone::Error, GetMsg(Msg::NoLevelForSavegames));
        return false;
    }
    code_ = *code;
    const auto source = purpose_ == ListPurpose::Import
                            ? Result<Path>{folder}
                            : LiveStateFolder(parts_.folders, parts_.archive, code_);
    files_.clear();
    auto found = source ? SavegamesIn(*source) : source.Error();
    if (!found) {
        TellFailure(parts_.host, GetMsg(Msg::CannotListSavegames), found.Error());
        return false;
    }
    files_ = std::move(found).Value();
    if (files_.empty())
        parts_.host.Tell(Tone::Plain, GetMsg(Msg::NoSavegamesIn) + TextOf(*source));
    return !files_.empty();
}

std::string SavegameList::Title() const
{
    return GetMsg(purpose_ == ListPurpose::Import ? Msg::ListSavegamesImport
                                                  : Msg::ListSavegamesExport);
}

std::vector<std::string> SavegameList::Rows() const
{
    std::vector<std::string> rows;
    for (const Path& file : files_)
        rows.push_back(SavegameRow(file));
    return rows;
}

bool SavegameList::Take(const std::vector<std::size_t>& rows, bool deleteExported)
{
    std::vector<Path> files;
    for (const std::size_t row : rows)
        files.push_back(files_[row]);
    if (files.empty()) {
        parts_.host.Tell(Tone::Error, GetMsg(Msg::NoSavegameSelected));
        return false;
    }
    if (purpose_ == ListPurpose::Import)
        return Import(files);
    if (purpose_ == ListPurpose::Mail)
        return Mail(files);
    const auto folder =
        parts_.host.ChooseFolder(GetMsg(Msg::ChooseExportFolder), platform::CurrentFolder());
    if (!folder)
        return false;
    Export(files, *folder, deleteExported);
    return true;
}

bool SavegameList::Import(const std::vector<Path>& files)
{
    auto live = LiveCount(parts_.folders, parts_.archive, code_);
    if (live && files.size() + *live > gameSlotCount) {
        const auto moved = ArchiveSavegamesOf(parts_, code_);
        if (!moved)
            return TellMoveFailed(parts_.host, parts_.folders, moved.Error());
        if (!moved->kept.empty())
            parts_.host.Tell(Tone::Warning, WordsAboutKept(*moved, code_));
        live = LiveCount(parts_.folders, parts_.archive, code_);
    }
    if (!live) {
        TellFailure(parts_.host, GetMsg(Msg::CannotListSavegames), live.Error());
        return false;
    }
    if (files.size() + *live > gameSlotCount) {
        parts_.host.Tell(Tone::Error, GetMsg(Msg::TooManySavegames) +
                                          std::to_string(gameSlotCount - 1)); // the told number
        return false;
    }
    TellFailedFiles(parts_.host, Msg::ImportFailed, CopyIntoSlots(parts_, code_, files));
    return true;
}

bool SavegameList::Export(const std::vector<Path>& files, const Path& folder, bool deleteExported)
{
    std::vector<std::string> replaced;
    const auto failed = ExportSavegames(parts_, code_, files, folder, deleteExported, &replaced);
    if (!replaced.empty())
        parts_.host.Tell(Tone::Warning,
                         GetMsg(Msg::ExportReplaced, {TextOf(folder), ShownNames(replaced)}));
    TellFailedFiles(parts_.host, Msg::ExportFailed, failed);
    return failed.empty();
}

bool SavegameList::Mail(const std::vector<Path>& files)
{
    const std::string level = InQuotes(LevelNameOf(parts_.archive, code_));
    std::string subject = std::to_string(files.size()) + GetMsg(Msg::MailSubjectMany) + level;
    if (files.size() == 1) {
        const SavegameInfo info = ReadSavegameInfo(files.front());
        subject = GetMsg(Msg::MailSubjectOne,
                         {InQuotes(info.title + " - " + std::to_string(info.number))}) +
                  level;
    }
    std::string body;
    for (const Path& file : files)
        body += TextOf(file.filename()) + " -> " + SavegameRow(file) + std::string{lineBreak};
    if (!SendMail(parts_, subject, body, files))
        parts_.host.Tell(Tone::Error, GetMsg(Msg::MailFailed));
    return true;
}

namespace
{

/// The counts, and what went to the history.
void TellMoved(Host& host, const LevelList& list, Message done, const std::string& counts,
               const SavegamesMoved& moved)
{
    std::string words = GetMsg(done) + counts;
    if (const auto code = list.Selected(); code && !moved.kept.empty())
        words += Below(WordsAboutKept(moved, *code));
    host.Tell(moved.kept.empty() ? Tone::Plain : Tone::Warning, words);
}

} // namespace

bool ArchiveWithWords(const ArchiveParts& parts, BoxWords words)
{
    const auto moved = ArchiveSavegames(parts);
    if (!moved)
        return TellMoveFailed(parts.host, parts.folders, moved.Error());
    if (words == BoxWords::Always || moved->live > 0)
        TellMoved(parts.host, parts.list, Msg::SavegamesArchived, Below(WordsOfArchived(*moved)),
                  *moved);
    else
        parts.host.Tell(Tone::Plain, GetMsg(Msg::NothingToArchive));
    return true;
}

bool RestoreWithWords(const ArchiveParts& parts, BoxWords words)
{
    const auto moved = RestoreSavegames(parts);
    if (!moved)
        return TellMoveFailed(parts.host, parts.folders, moved.Error());
    if (words == BoxWords::Always || moved->slot > 0)
        TellMoved(parts.host, parts.list, Msg::SavegamesRestored, Below(WordsOfRestored(*moved)),
                  *moved);
    else
        parts.host.Tell(Tone::Plain, WhyNotRestored(*moved));
    return true;
}

} // namespace kestrova
