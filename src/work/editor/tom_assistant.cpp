#include "editor/tom_assistant.h"

#include "core/text.h"
#include "editor/document_text.h"
#include "editor/file_names.h"
#include "editor/link_analysis.h"
#include "editor/wad_links.h"
#include "formats/trle_folder.h"
#include "session/documents.h"
#include "session/telling.h"
#include "words/assistant.h"

#include <algorithm>

namespace kestrova
{

namespace
{

std::string StemWithin(const Path& file)
{
    return StripExtension(file.filename().native());
}

/// The first document whose name holds the word; of several words the first one that is found.
std::optional<std::size_t> DocumentWith(const std::vector<Path>& documents, std::string_view words)
{
    for (const std::string& word : Split(words, '|'))
        for (std::size_t i = 0; i < documents.size(); ++i)
            if (FindFolded(documents[i].filename().native(), word) != std::string::npos)
                return i;
    return {};
}

std::optional<std::size_t> FirstOf(const std::vector<Path>& rows)
{
    return rows.empty() ? std::nullopt : std::optional<std::size_t>{0};
}

} // namespace

TomAssistant::TomAssistant(AssistantParts parts, Path workFolder)
    : parts_(std::move(parts)), workFolder_(std::move(workFolder))
{
}

bool TomAssistant::Open()
{
    auto documents = ListDocFiles(workFolder_);
    if (!documents)
        return TellFolderNotRead(parts_.host, documents.Error());
    documents_ = std::move(*documents);
    if (CanReadPdf(parts_.tools))
        if (const auto more = ListFiles(workFolder_, OnDisk::PdfPattern))
            documents_.insert(documents_.end(), more->begin(), more->end());
    document = DocumentWith(documents_, OnDisk::InstallWord);
    if (!document)
        ChooseDocument();
    return Refresh();
}

/// The items are taken from the top; the first one that holds any of the words is it.
void TomAssistant::ChooseDocument()
{
    for (std::size_t i = 0; i < documents_.size() && !document; ++i)
        if (DocumentWith({documents_[i]}, OnDisk::ReadmeWords))
            document = i;
}

std::string TomAssistant::HelpText() const
{
    return Join({GetMsg(Msg::AssistantHelpTask),
                 GetMsg(Msg::AssistantHelpBegin),
                 GetMsg(Msg::AssistantHelpSteps),
                 {},
                 {},
                 GetMsg(Msg::AssistantHelpRead),
                 GetMsg(Msg::AssistantHelpNames),
                 {},
                 GetMsg(Msg::AssistantHelpPerform),
                 {},
                 GetMsg(Msg::AssistantHelpDone),
                 {},
                 GetMsg(Msg::AssistantHelpNote),
                 {}},
                lineBreak);
}

std::string TomAssistant::SetOf(const Path& wad)
{
    return StemWithin(wad) + std::string{OnDisk::SetEnding};
}

Result<std::vector<Path>> TomAssistant::TomsWithoutWads() const
{
    auto toms = ListFiles(workFolder_, OnDisk::TomPattern);
    if (!toms)
        return toms;
    Status failure;
    std::erase_if(*toms, [&](const Path& file) {
        const auto has = TomHasWad(parts_.folders, file);
        if (!has)
            failure = has.Error();
        return has && *has;
    });
    return failure ? std::move(toms) : Result<std::vector<Path>>{failure.Error()};
}

void TomAssistant::ShowEssential(bool essential)
{
    essential_ = essential;
    Refresh();
}

bool TomAssistant::Refresh()
{
    const auto fails = [&](const Failure& failure) {
        over_ = true;
        return TellFolderNotRead(parts_.host, failure);
    };
    auto toms = essential_ ? TomsWithoutWads() : ListFiles(workFolder_, OnDisk::TomPattern);
    if (!toms)
        return fails(toms.Error());
    toms_ = std::move(*toms);
    tom = FirstOf(toms_);
    if (toms_.empty()) {
        parts_.host.Tell(Tone::Plain, GetMsg(Msg::AllTomsHaveSources));
        over_ = true;
        done_ = operationDone_;
        return false;
    }
    auto found = ListFiles(InFolder(parts_.folders.trle, OnDisk::DirWads), OnDisk::WadPattern);
    if (!found)
        return fails(found.Error());
    wads_ = std::move(*found);
    wads.reset();
    // A wad of the level serves its own tom file; the box shows only what needs work.
    if (essential_)
        return true;
    const auto own = ListFiles(workFolder_, OnDisk::WadPattern);
    if (!own)
        return fails(own.Error());
    wads_.insert(wads_.end(), own->begin(), own->end());
    return true;
}

void TomAssistant::ReadChosen()
{
    if (!document)
        return;
    const Path& file = documents_[*document];
    const auto opened = OpenOfLevel(parts_.host, parts_.machine, file);
    if (!opened && opened.Error().code != ErrorCode::Stopped)
        TellFailure(parts_.host, GetMsg(Msg::DocumentNotRead, {TextOf(file.filename())}),
                    opened.Error());
}

bool TomAssistant::Link(const std::string& tomName, const std::string& wadsPattern)
{
    const auto progress =
        parts_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::Linking, {tomName}));
    progress->AllowStop();
    const auto linked = LinkWads(parts_.machine, parts_.folders, workFolder_, wadsPattern, tomName,
                                 [&](std::uint64_t) { return progress->Step(); });
    if (linked && linked->matching > 0) {
        if (linked->copied == 0)
            parts_.host.Tell(Tone::Warning, GetMsg(Msg::TomHasOwnWads, {tomName, wadsPattern}));
        return operationDone_ = true;
    }
    if (linked)
        parts_.host.Tell(Tone::Error, GetMsg(Msg::NoSuchWads, {wadsPattern}));
    else
        TellFailure(parts_.host, GetMsg(Msg::TomNotLinked, {tomName, wadsPattern}), linked.Error());
    return false;
}

void TomAssistant::Perform()
{
    if (!tom)
        return;
    const std::string name = TextOf(toms_[*tom].filename());
    if (!wads)
        return parts_.host.Tell(Tone::Error, GetMsg(Msg::SelectWads) + name);
    const std::string set = SetOf(wads_[*wads]);
    if (!Link(toms_[*tom].filename().native(), set))
        return;
    parts_.host.Tell(Tone::Plain, GetMsg(Msg::TomLinked, {name, Readable(set)}));
    Refresh();
}

void TomAssistant::Finish()
{
    if (!operationDone_)
        return parts_.host.Tell(Tone::Error, GetMsg(Msg::NothingPerformed));
    if (!AllHaveWads())
        return;
    done_ = true;
    over_ = true;
}

bool TomAssistant::AllHaveWads()
{
    const auto toms = ListFiles(workFolder_, OnDisk::TomPattern);
    if (!toms)
        return TellFolderNotRead(parts_.host, toms.Error());
    return std::all_of(toms->begin(), toms->end(), [&](const Path& file) {
        return TomHasWadOrTold(parts_.host, parts_.folders, file);
    });
}

void TomAssistant::Cancel()
{
    if (operationDone_ && !parts_.host.AskYesNo(GetMsg(Msg::AskCancelLinks)))
        return;
    if (!analysisTried_ && parts_.host.AskYesNo(GetMsg(Msg::AskAnalyseFirst)))
        return Analyse();
    over_ = true;
}

void TomAssistant::Analyse()
{
    if (!document)
        return parts_.host.Tell(Tone::Error, GetMsg(Msg::SelectReadme));
    const Path source = documents_[*document];
    if (parts_.host.AskToGoOn(GetMsg(Msg::AskScan, {TextOf(source.filename())})))
        AnalyseDocument(source);
}

void TomAssistant::AnalyseDocument(const Path& file)
{
    const auto missing = TomsWithoutWads();
    analysisTried_ = true;
    if (!missing)
        return (void)TellFolderNotRead(parts_.host, missing.Error());
    if (missing->empty())
        return parts_.host.Tell(Tone::Plain, GetMsg(Msg::AllTomsHaveWads));
    if (LinkAsTold(*missing, file))
        Finish();
}

/// True when the document tells a link for each of them, and the person had them all made.
bool TomAssistant::LinkAsTold(const std::vector<Path>& missing, const Path& source)
{
    std::vector<std::string> stems;
    for (const Path& file : missing)
        stems.push_back(StemWithin(file));
    std::vector<std::string> names;
    for (const Path& wad : wads_)
        names.push_back(wad.filename().native());
    auto progress = parts_.host.BeginProgress(ProgressWindow::Wait,
                                              GetMsg(Msg::Scanning, {TextOf(source.filename())}));
    const auto text = ReadDocument(parts_.tools, source, *progress);
    if (!text)
        return DoneOrTold(
            parts_.host,
            Saying(GetMsg(Msg::DocumentNotRead, {TextOf(source.filename())}), text.Error()));
    const auto links = FindLinks(*text, stems, names, [&] { return progress->Step(); });
    progress.reset();
    if (!links)
        return false; // the person stopped it
    const bool all = std::all_of(links->begin(), links->end(),
                                 [](const auto& link) { return link.has_value(); });
    if (!all) {
        parts_.host.Tell(Tone::Plain, GetMsg(Msg::NoSolution, {lineBreak}));
        return false;
    }
    std::string question = GetMsg(Msg::SolutionIs) + std::string{lineBreak};
    for (std::size_t i = 0; i < stems.size(); ++i)
        question += GetMsg(Msg::SolutionLine,
                           {Readable(stems[i]), Readable(StemWithin(wads_[*(*links)[i]]))}) +
                    std::string{lineBreak};
    if (!parts_.host.AskYesNo(question + GetMsg(Msg::AskExecuteLinks)))
        return false;
    for (std::size_t i = 0; i < stems.size(); ++i)
        if (!Link(missing[i].filename().native(), SetOf(wads_[*(*links)[i]])))
            return false;
    return true;
}

} // namespace kestrova
