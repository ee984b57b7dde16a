#include "online/make_urls.h"

#include "core/dates.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/text.h"
#include "formats/config_entry.h"
#include "formats/program_folder.h"
#include "formats/url_text.h"
#include "online/download.h"
#include "packages/level_config_file.h"
#include "packages/unzip.h"
#include "words/online.h"

namespace kestrova
{

namespace
{

/// Where the fault is: at a record, counted from 1, or (0) in the text around them.
std::string PlaceOf(std::size_t record)
{
    return record == 0 ? GetMsg(Msg::UrlJsonWhole)
                       : GetMsg(Msg::UrlJsonRecord, {std::to_string(record)});
}

/// The failure of a record's files, told of the record.
Failure FaultOf(std::size_t record, Failure failure)
{
    const std::string& what = failure.sentence.empty() ? failure.subject : failure.sentence;
    std::string reason = failure.code == ErrorCode::Refused
                             ? GetMsg(Msg::UrlJsonName, {failure.subject})
                             : what + (failure.reason.empty() ? "" : ": ") + failure.reason;
    return {failure.code, PlaceOf(record), std::move(reason), std::move(failure.details)};
}

/// What the configuration file in a package calls its level.
Result<std::string> LevelIn(Host& host, Machine& machine, const Folders& folders,
                            const Tools& tools, const Path& package)
{
    const WorkFolder place{InFolder(folders.program, OnDisk::DirOnlineUnpacked)};
    const auto progress = host.BeginProgress(
        ProgressWindow::Progress, GetMsg(Msg::OnlineUnzipping, {TextOf(package.filename())}));
    progress->AllowStop();
    UnpackGuard guard{machine, package, place.Folder()};
    UnzipOptions options;
    options.guard = &guard;
    if (const auto unpacked = UnzipWithProgress(tools, package, place.Folder(), options,
                                                ToolProgressState{progress.get()});
        !unpacked)
        return Saying(TextOf(package), unpacked.Error());
    const auto bytes = ReadFileIfThere(LevelConfigPath(place.Folder()), longestConfig);
    if (!bytes)
        return bytes.Error();
    if (*bytes)
        if (const auto config = ParseLevelConfig(**bytes))
            return std::string{Trim(config->name)};
    return Failure{ErrorCode::Missing, TextOf(package), GetMsg(Msg::OnlineNoConfig)};
}

/// The text of an entry for a level, by the files that know it.
Result<std::string> EntryText(const UrlDraft& draft, std::string level, const Path& base)
{
    ConfigEntry entry{std::move(level), {}};
    for (const std::string& name : draft.files) {
        const auto relative = SafeRelative(name);
        if (!relative)
            return relative.Error();
        const Path file = base / Path{draft.folder} / *relative;
        const auto facts = LookAt(file);
        if (!facts)
            return facts.Error();
        if (facts->kind != platform::FileKind::File)
            return MakeFailure(ErrorCode::Missing, TextOf(file),
                               std::make_error_code(std::errc::no_such_file_or_directory));
        entry.files.push_back({*relative, facts->size});
    }
    return FormatConfigEntry(entry);
}

} // namespace

Result<UrlList> MakeUrls(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                         std::string_view json, const Path& base)
{
    UrlJsonFault fault;
    const auto drafts = ParseUrlJson(json, fault);
    if (!drafts)
        return Failure{ErrorCode::Damaged, PlaceOf(fault.record), GetMsg(Msg::UrlJsonWrong)};
    UrlList list;
    list.updateDate = drafts->updateDate.value_or(DateSerialOf(machine.NowNs()));
    for (const UrlDraft& draft : drafts->records) {
        const std::size_t number = list.records.size() + 1;
        UrlRecord& record = list.records.emplace_back(draft.record);
        record.url = StorableUrl(record.url);
        if (!FitsWindows1252(record.description))
            return Failure{ErrorCode::Refused, PlaceOf(number),
                           GetMsg(Msg::UrlJsonLetters, {OnOneLine(record.description)})};
        if (draft.files.empty())
            continue;
        auto level = draft.level.empty() && !draft.package.empty()
                         ? LevelIn(host, machine, folders, tools, base / Path{draft.package})
                         : Result<std::string>{draft.level};
        auto text = level ? EntryText(draft, *level, base) : level;
        if (!text)
            return FaultOf(number, text.Error());
        record.description = *text;
    }
    return list;
}

} // namespace kestrova
