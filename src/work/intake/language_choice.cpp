#include "intake/language_choice.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/trle_folder.h"
#include "levels/level_language.h"
#include "session/telling.h"
#include "words/core.h"
#include "words/file_list.h"
#include "words/intake.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A question with more lines fits no screen; the others can be chosen by their numbers.
constexpr std::size_t mostShown = 40;

std::optional<std::size_t> NumberFrom(std::string_view text, std::size_t count)
{
    const auto number = WholeNumber<std::size_t>(Trim(text));
    return number && *number >= 1 && *number <= count ? number : std::nullopt;
}

/// Asks until there is an answer; no value when nobody can give one.
std::optional<std::size_t> AskWhich(Host& host, const std::vector<Path>& files)
{
    const std::string count = std::to_string(files.size());
    std::string text = GetMsg(Msg::AskLanguageFile, {count}) + count + GetMsg(Msg::ClosingRound) +
                       std::string{lineBreak};
    const std::size_t shown = std::min(files.size(), mostShown);
    for (std::size_t i = 0; i < shown; ++i)
        text += std::to_string(i + 1) + ") " + TextOf(files[i].filename()) + std::string{lineBreak};
    if (shown < files.size())
        text += GetMsg(Msg::AndMoreFiles, {std::to_string(files.size() - shown)}) +
                std::string{lineBreak};
    while (host.CanAsk()) {
        const auto answer = host.AskText(text, "1", GetMsg(Msg::ChooseLanguageTitle));
        if (const auto number = NumberFrom(answer.value_or(""), files.size()))
            return *number - 1;
    }
    host.Tell(Tone::Error, GetMsg(Msg::LanguageFilesNobody, {text}));
    return {};
}

} // namespace

bool ChooseLanguageFile(Host& host, const Folders& folders, const Path& folder)
{
    const Path backup = folders.Backup();
    const auto told = [&](const Status& status, const Path& file) {
        if (!status)
            TellFailure(host, GetMsg(Msg::LanguageFileFailed, {TextOf(file.filename())}),
                        status.Error());
        return static_cast<bool>(status);
    };
    const std::string_view script = OnDisk::ScriptDat;
    const auto hasScript = IsFile(folder / script);
    const auto isOriginal = IsFile(backup / script);
    if (!hasScript || !isOriginal)
        return TellFolderNotRead(host, hasScript ? isOriginal.Error() : hasScript.Error());
    if (!*hasScript && *isOriginal &&
        !told(CopyFileOver(backup / script, folder / script), folder / script))
        return false;
    const auto listed = LanguageFilesIn(folder);
    const auto owned = LanguageFilesIn(backup);
    if (!listed || !owned)
        return TellFolderNotRead(host, listed ? owned.Error() : listed.Error());
    const std::vector<Path>& files = *listed;
    const std::vector<Path>& own = *owned;
    if (files.size() < 2)
        return true;
    const auto mine = std::find_if(files.begin(), files.end(), [&](const Path& file) {
        return !own.empty() &&
               EqualNames(file.filename().native(), own.front().filename().native());
    });
    std::optional<std::size_t> kept;
    if (mine != files.end())
        kept = static_cast<std::size_t>(mine - files.begin());
    else
        kept = AskWhich(host, files);
    if (!kept)
        return false;
    for (std::size_t i = 0; i < files.size(); ++i)
        if (i != *kept && !told(DeleteFile(files[i]), files[i]))
            return false;
    return true;
}

StepAnswer ChooseLanguage(Intake& intake)
{
    const bool chosen =
        ChooseLanguageFile(intake.session.host, intake.session.Folders(), intake.draft.workFolder);
    return chosen ? StepAnswer::GoesOn : StepAnswer::Refused;
}

} // namespace kestrova
