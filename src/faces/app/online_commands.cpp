#include "app/online_commands.h"

#include "app/opening.h"
#include "app/result_text.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/url_json.h"
#include "formats/url_text.h"
#include "online/download.h"
#include "online/make_urls.h"
#include "online/url_editor.h"
#include "online/url_file.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "words/commands.h"
#include "words/menus.h"
#include "words/online.h"
#include "words/online_commands.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

constexpr std::string_view jsonEnding = ".json";

bool Fetch(Run& run)
{
    const auto& words = run.arguments.words;
    Host& host = run.session.host;
    const auto file = FileToReplace(host, PlaceFromWord(words[1]));
    if (!file)
        return DoneOrTold(host, file.Error());
    HearInterrupts();
    const auto downloaded = DownloadFile(host, run.session.machine,
                                         {.url = words[0], .target = *file, .takesPages = false});
    const std::string failed = GetMsg(Msg::FetchFailed) + TextOf(*file);
    if (!downloaded && downloaded.Error().code == ErrorCode::Stopped)
        host.Tell(Tone::Plain, GetMsg(Msg::FetchStopped), downloaded.Error().reason);
    else if (!downloaded && IsOfTheWeb(downloaded.Error()))
        TellFailure(host, failed, downloaded.Error());
    if (!downloaded)
        return false;
    if (const std::string answer = AnswerWords(*downloaded); !answer.empty()) {
        host.Tell(Tone::Error, failed, answer);
        return false;
    }
    AddLine(run, TextOf(*file));
    return true;
}

/// A kind that the list shows.
std::optional<std::int32_t> KindFrom(std::string_view word)
{
    const auto number = WholeNumber<std::uint32_t>(word);
    for (const ListedUrlKind& row : ListedUrlKinds())
        if (number && *number == static_cast<std::uint32_t>(row.kind))
            return row.kind;
    return std::nullopt;
}

UrlEditor EditorOf(Run& run)
{
    return {run.session.host, run.session.machine, run.session.Folders(),
            ServersFrom(run.session.settings.updateServers)};
}

/// False, in words, when there is a list that cannot be read.
bool IsRead(Run& run, const UrlEditor& editor)
{
    if (editor.NotRead())
        TellFailure(run.session.host, GetMsg(Msg::UrlListNotReadFile) + editor.NotRead()->subject,
                    *editor.NotRead());
    return !editor.NotRead();
}

bool ListAddresses(Run& run)
{
    const auto kind = KindFrom(run.arguments.ValueOf("--kind"));
    if (run.json != nullptr)
        *run.json = Json::array();
    const UrlEditor editor = EditorOf(run);
    if (!IsRead(run, editor))
        return false;
    const std::vector<UrlRecord>& records = editor.List().records;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const UrlRecord& record = records[i];
        if (IsHidden(record) || (kind && record.kind != *kind))
            continue;
        if (run.json != nullptr)
            run.json->push_back({{"kind", record.kind},
                                 {"description", record.description},
                                 {"url", record.url},
                                 {"user", record.user},
                                 {"number", i + 1}});
        else
            AddLine(run, std::to_string(i + 1) + "\t" + std::to_string(record.kind) + "\t" +
                             OneField(UrlRowText(record)) + "\t" + OneField(record.url));
    }
    return true;
}

bool AddAddress(Run& run)
{
    const auto& words = run.arguments.words;
    UrlEditor editor = EditorOf(run);
    editor.Show(KindFrom(words[1]).value_or(UrlKindLevels));
    return editor.AddRecord(words[2], words[3]) && editor.Save();
}

/// The list with the record of the words chosen. No value, in words, when it has none of that
/// number.
std::optional<UrlEditor> EditorAt(Run& run)
{
    const std::string& word = run.arguments.words[1];
    UrlEditor editor = EditorOf(run);
    if (!IsRead(run, editor))
        return std::nullopt;
    const auto number = WholeNumber<std::uint32_t>(word);
    if (!number || *number == 0 || *number > editor.List().records.size() ||
        IsHidden(editor.List().records[*number - 1])) {
        run.session.host.Tell(Tone::Error, GetMsg(Msg::WrongUrlNumber, {word}));
        return std::nullopt;
    }
    editor.kind = editor.List().records[*number - 1].kind;
    editor.selected = *number - 1;
    return editor;
}

bool ChangeAddress(Run& run)
{
    const auto& words = run.arguments.words;
    auto editor = EditorAt(run);
    return editor && editor->ChangeRecord(words[2], words[3]) && editor->Save();
}

bool RemoveAddress(Run& run)
{
    auto editor = EditorAt(run);
    return editor && editor->Remove() && editor->Save();
}

bool Open(Run& run)
{
    auto editor = EditorAt(run);
    return editor && editor->Go();
}

bool Update(Run& run)
{
    UrlEditor editor = EditorOf(run);
    return editor.Update([](const std::string&) {}) && editor.Save();
}

/// What `make` writes: a list out of a text, or a text out of a list. No value after its words.
std::optional<std::string> Made(Run& run, const Path& from)
{
    Session& session = run.session;
    const auto failed = [&](Message words, const Failure& failure) {
        TellFailure(session.host, GetMsg(words) + TextOf(from), failure);
        return std::nullopt;
    };
    if (!EndsWithName(from.native(), jsonEnding)) {
        const auto list = LoadUrlList(from);
        return list ? std::optional{FormatUrlJson(*list)}
                    : failed(Msg::UrlListNotReadFile, list.Error());
    }
    const auto text = ReadWholeFile(from, longestList);
    if (!text)
        return failed(Msg::UrlMakeFailed, text.Error());
    const auto list = MakeUrls(session.host, session.machine, session.Folders(), ToolsOf(session),
                               *text, from.parent_path());
    if (!list)
        return failed(Msg::UrlMakeFailed, list.Error());
    auto bytes = FormatUrlList(*list);
    if (!bytes)
        return failed(Msg::UrlMakeFailed, {ErrorCode::Refused, {}, GetMsg(Msg::UrlListTooLong)});
    return bytes;
}

bool Make(Run& run)
{
    const auto& words = run.arguments.words;
    Host& host = run.session.host;
    const auto content = Made(run, PlaceFromWord(words[1]));
    if (!content)
        return false;
    const auto file = FileToReplace(host, PlaceFromWord(words[2]));
    if (!file)
        return DoneOrTold(host, file.Error());
    if (const auto written = WriteWholeFile(*file, *content); !written) {
        TellFailure(host, GetMsg(Msg::UrlListNotSaved) + TextOf(*file), written.Error());
        return false;
    }
    AddLine(run, TextOf(*file));
    return true;
}

struct Verb {
    std::string_view name;
    std::size_t words;
};
constexpr Verb verbs[] = {{"list", 1}, {"add", 4},    {"change", 4}, {"remove", 2},
                          {"open", 2}, {"update", 1}, {"make", 3}};

std::string WrongUrls(Run& run)
{
    const auto& words = run.arguments.words;
    const auto* verb = std::find_if(std::begin(verbs), std::end(verbs),
                                    [&](const Verb& row) { return row.name == words.front(); });
    if (verb == std::end(verbs))
        return GetMsg(Msg::WrongUrlsWord, {words.front()});
    if (words.size() < verb->words)
        return GetMsg(Msg::WrongWordMissing, {"urls"});
    if (words.size() > verb->words)
        return GetMsg(Msg::WrongWordTooMany, {words[verb->words]});
    for (const std::string_view option : {"--json", "--kind"})
        if (verb->name != "list" && run.arguments.Has(option))
            return GetMsg(Msg::WrongOptionHere, {option, verb->name});
    const std::string kind = verb->name == "add" ? words[1] : run.arguments.ValueOf("--kind");
    const bool says = verb->name == "add" || run.arguments.Has("--kind");
    return !says || KindFrom(kind) ? std::string{} : GetMsg(Msg::WrongUrlKind, {kind});
}

} // namespace

std::span<const CommandRow> OnlineCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "fetch",
                      .usage = Msg::UseFetch,
                      .summary = Msg::SumFetch,
                      .leastWords = 2,
                      .mostWords = 2},
         .run = Fetch,
         .help = HelpTag::Download},
        {.window = {.control = "mnu_ShowListaUrl",
                    .caption = Msg::MenuShowLevelUrls,
                    .menu = "mnu_Level",
                    .behind = "mnu_Export"}},
        {.window = {.control = "mnu_ShowUrlList",
                    .caption = Msg::MenuShowUrlList,
                    .menu = "mnu_Tools",
                    .behind = "mnu_UndoImportWads"},
         .terminal = {.word = "urls",
                      .verb = "list",
                      .usage = Msg::UseUrls,
                      .summary = Msg::SumUrls,
                      .json = Msg::KeysUrls,
                      .leastWords = 1,
                      .mostWords = 4,
                      .options = {ValueOption("--kind")},
                      .wrong = WrongUrls},
         .run = ListAddresses},
        {.terminal = {.word = "urls", .verb = "add"},
         .touches = Touches::Stores,
         .run = AddAddress},
        {.terminal = {.word = "urls", .verb = "change"},
         .touches = Touches::Stores,
         .run = ChangeAddress},
        {.terminal = {.word = "urls", .verb = "remove"},
         .touches = Touches::Stores,
         .run = RemoveAddress},
        {.terminal = {.word = "urls", .verb = "open"}, .run = Open},
        {.terminal = {.word = "urls", .verb = "update"},
         .touches = Touches::Stores,
         .run = Update,
         .help = HelpTag::Servers},
        {.terminal = {.word = "urls", .verb = "make"}, .touches = Touches::Stores, .run = Make},
    };
    return rows;
}

} // namespace kestrova
