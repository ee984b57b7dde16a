#include "intake/known_wads.h"

#include "core/look.h"
#include "editor/document_text.h"
#include "editor/wad_links.h"
#include "formats/config_groups.h"
#include "formats/trle_folder.h"
#include "formats/url_text.h"
#include "intake/fetch_wads.h"
#include "intake/file_names.h"
#include "intake/wad_packages.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/level_needs.h"

#include <algorithm>
#include <unordered_set>

namespace kestrova
{

namespace
{

/// A package that levels without a configuration file need too.
struct KnownPackage {
    std::string_view toms; ///< stems of the tom files that are compiled with it, parted by `|`
    Message text;
    std::string_view url; ///< below the server of wads
};
constexpr KnownPackage knownPackages[] = {
    {OnDisk::TomsOfAngkor, Msg::WadsAngkor, OnDisk::UrlOfAngkor},
    {OnDisk::TomsOfNewWads, Msg::WadsNew, OnDisk::UrlOfNewWads},
};
constexpr KnownPackage revisedPackage{{}, Msg::WadsRevised, OnDisk::UrlOfRevisedWads};

/// The revised package replaces one of the Level Editor's wads by a larger one.
Result<bool> HasRevisedWads(const Folders& folders)
{
    constexpr std::uint64_t sizeBefore = 3'000'000;
    const auto facts = LookAt(InFolder(folders.Backup(), OnDisk::DirWads) / OnDisk::RevisedWad);
    if (!facts)
        return facts.Error();
    return facts->kind == platform::FileKind::File && facts->size > sizeBefore;
}

Result<bool> IsImported(const Folders& folders, const WadNeed& need)
{
    if (FindFolded(UrlFileName(need.url), OnDisk::RevisedWord) != std::string::npos)
        return HasRevisedWads(folders);
    if (!IsLevelFileName(need.check))
        return false;
    return IsFile(InFolder(folders.trle, OnDisk::DirWads) / need.check);
}

/// Gets the package and imports it. The person is told why not.
bool Import(Intake& intake, const WadPackage& package)
{
    const Path zip = AskWadPackage(intake, package);
    if (zip.empty()) {
        intake.session.host.Tell(Tone::Error, GetMsg(Msg::WadsNotImported));
        return false;
    }
    intake.progress.SetLabel(GetMsg(Msg::WadsInstalling));
    const bool imported = ImportWadZip(intake.session, zip, intake.windows.wads);
    ClearProgress(intake.progress);
    return imported;
}

WadPackage PackageOf(const ProgramSettings& settings, const KnownPackage& known)
{
    const std::string name = UrlFileName(known.url);
    std::string server{Trim(settings.wadServer)};
    while (server.ends_with('/'))
        server.pop_back();
    return {name, server.empty() ? server : server + std::string{known.url}, GetMsg(known.text)};
}

bool Offer(Intake& intake, const KnownPackage& known)
{
    const std::string gap{lineBreak};
    return intake.session.host.AskYesNo(
               GetMsg(Msg::AskKnownWads, {gap + GetMsg(known.text) + gap, gap})) &&
           Import(intake, PackageOf(intake.session.settings, known));
}

/// A document that cannot be read mentions nothing.
bool MentionsRevisedWads(const Tools& tools, const Path& folder, ProgressScope& progress)
{
    const std::vector<std::string> spellings = Split(OnDisk::RevisedSpellings, '|');
    const auto documents = ListDocFiles(folder);
    return documents && std::any_of(documents->begin(), documents->end(), [&](const Path& file) {
               if (!progress.Step())
                   return false;
               const std::string text = FoldCase(ReadDocument(tools, file, progress).ValueOr({}));
               return std::any_of(spellings.begin(), spellings.end(), [&](const auto& spelling) {
                   return text.find(FoldCase(spelling)) != std::string::npos;
               });
           });
}

} // namespace

bool WantsWads(const Intake& intake)
{
    return intake.draft.config && !Trim(intake.draft.config->importWads).empty();
}

StepAnswer CheckImportWads(Intake& intake)
{
    const LevelConfig config = *intake.draft.config;
    std::unordered_set<std::string> imported; ///< a package that lacks the file lacks it again
    for (const WadNeed& need : WadNeedsOf(config)) {
        const auto isThere = IsImported(intake.session.Folders(), need);
        if (!isThere) {
            TellFolderNotRead(intake.session.host, isThere.Error());
            return StepAnswer::Refused;
        }
        if (*isThere || !imported.insert(need.url).second)
            continue;
        const WadPackage package{OnOneLine(UrlFileName(need.url)), need.url,
                                 std::string{Trim(config.importNotes)}};
        if (!Import(intake, package))
            return StepAnswer::GivenUp;
    }
    return StepAnswer::GoesOn;
}

bool OfferKnownWads(Intake& intake, const std::string& tomName)
{
    const std::string stem = BaseNameOf(tomName);
    for (const KnownPackage& known : knownPackages) {
        const std::vector<std::string> toms = Split(known.toms, '|');
        if (std::any_of(toms.begin(), toms.end(),
                        [&](const std::string& tom) { return EqualNames(tom, stem); }))
            return Offer(intake, known);
    }
    return false;
}

void OfferRevisedWads(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    const auto isThere = HasRevisedWads(intake.session.Folders());
    // What cannot be looked at just now is nothing to import over.
    if (draft.revisedRefused || !isThere || *isThere ||
        !MentionsRevisedWads(ToolsOf(intake.session), draft.workFolder, intake.progress) ||
        Offer(intake, revisedPackage))
        return;
    draft.revisedRefused = true;
    intake.session.host.Tell(Tone::Plain, GetMsg(Msg::RevisedFailed, {lineBreak}));
}

} // namespace kestrova
