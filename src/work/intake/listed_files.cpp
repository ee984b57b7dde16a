#include "intake/listed_files.h"

#include "core/files.h"
#include "editor/wad_links.h"
#include "formats/config_groups.h"
#include "intake/file_names.h"
#include "intake/known_wads.h"
#include "session/telling.h"
#include "words/level_needs.h"

#include <unordered_map>

namespace kestrova
{

namespace
{

// Nobody answers more questions about one list than this; the rest is one question.
constexpr std::size_t mostQuestionsOfFiles = 20;

enum class ListedState { Fits, Missing, Differs };

/// The level's files as a list can name them: letters that the list cannot hold stand as `?` in it,
/// so that several files may have one name there.
class FilesAsListed
{
public:
    explicit FilesAsListed(const std::vector<Path>& files)
    {
        for (const Path& file : files)
            sizes_.emplace(ListedForm(file.filename().native()), FileSize(file));
    }
    [[nodiscard]] ListedState Look(const ConfigFile& listed) const
    {
        const auto [first, last] = sizes_.equal_range(ListedForm(Trim(listed.name)));
        for (auto file = first; file != last; ++file)
            if (listed.size >= 0 && file->second == static_cast<std::uint64_t>(listed.size))
                return ListedState::Fits;
        return first == last ? ListedState::Missing : ListedState::Differs;
    }

private:
    std::unordered_multimap<std::string, std::uint64_t> sizes_;
};

bool GoesOnPast(Host& host, const std::string& warning)
{
    return host.AskYesNo(GetMsg(Msg::ListedWarning, {warning + std::string{lineBreak}}));
}

bool CheckList(Intake& intake, Checking checking)
{
    const FilesAsListed files{intake.draft.files};
    std::size_t failed = 0;
    for (const ConfigFile& listed : intake.draft.listedFiles) {
        const ListedState state = files.Look(listed);
        if (state == ListedState::Fits)
            continue;
        if (checking == Checking::Silent)
            return false;
        if (++failed > mostQuestionsOfFiles)
            continue;
        const Message words =
            state == ListedState::Missing ? Msg::ListedMissing : Msg::ListedDiffers;
        if (!GoesOnPast(intake.session.host,
                        GetMsg(words, {OnOneLine(FileNameOf(Trim(listed.name)))})))
            return false;
    }
    return failed <= mostQuestionsOfFiles ||
           GoesOnPast(intake.session.host,
                      GetMsg(Msg::ListedRest, {std::to_string(failed - mostQuestionsOfFiles)}));
}

void TellAssistantStarts(Host& host, const Path& tom)
{
    const std::string stem = StripExtension(TextOf(tom.filename()));
    host.Tell(Tone::Warning,
              '"' + GetMsg(Msg::TomLacksSource, {stem + std::string{OnDisk::EndingOfWads}, stem}) +
                  std::string{lineBreak} + GetMsg(Msg::AssistantStarts) + '"');
}

/// The first tom file without wads is dealt with; whether the others may be looked at.
bool DealWith(Intake& intake, const Path& tom)
{
    if (OfferKnownWads(intake, tom.filename().native()))
        return true;
    if (intake.windows.assistant)
        TellAssistantStarts(intake.session.host, tom);
    return false;
}

} // namespace

bool CheckLevelFileList(Intake& intake, Checking checking)
{
    const LevelDraft& draft = intake.draft;
    if (draft.configApplied && !draft.onlineConfig && !CheckList(intake, checking))
        return false;
    return CheckTomSources(intake, checking);
}

bool CheckTomSources(Intake& intake, Checking checking)
{
    Session& session = intake.session;
    const auto toms = ListFiles(intake.draft.workFolder, OnDisk::PatTomFiles);
    if (!toms)
        return TellFolderNotRead(session.host, toms.Error());
    if (toms->empty() && checking == Checking::Interactive)
        session.host.Tell(Tone::Error, GetMsg(Msg::TomsMissing));
    if (toms->empty())
        return false;
    for (const Path& tom : *toms) {
        const auto has = TomHasWad(session.Folders(), tom);
        if (!has)
            return TellFolderNotRead(session.host, has.Error());
        if (!*has && (checking == Checking::Silent || !DealWith(intake, tom)))
            return false;
    }
    OfferRevisedWads(intake);
    return true;
}

} // namespace kestrova
