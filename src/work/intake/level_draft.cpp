#include "intake/level_draft.h"

#include "core/file_kinds.h"
#include "core/size_words.h"
#include "words/file_list.h"
#include "words/intake.h"

namespace kestrova
{

LevelDraft::LevelDraft(LevelRecord& levelRecord) : record(levelRecord), saved(levelRecord) {}

std::string LevelDraft::FilesText() const
{
    return std::to_string(files.size()) + GetMsg(Msg::CountOfFiles) + FormatSize(filesBytes) +
           GetMsg(Msg::ClosingRound);
}

std::string LevelDraft::SizeText() const
{
    const double stored = saved.filesSize;
    const double extras = saved.extrasSize;
    return GetMsg(Msg::LevelSizeLine) + FormatSize(stored) + " + " + FormatSize(extras) + " = " +
           FormatSize(stored + extras);
}

bool LevelDraft::HasOtherFiles() const
{
    const auto now = ListFiles(workFolder, OnDisk::PatAll);
    return !now || !opened.AreTheSame(*now);
}

SourceOptions LevelDraft::Options() const
{
    SourceOptions options;
    options.namesAs = namesPage;
    options.keepWhole = keepGoing;
    options.replaceByFile = replaceByFile;
    options.ahead = ahead;
    return options;
}

} // namespace kestrova
