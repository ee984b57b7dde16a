#include "online/config_database.h"

#include "core/copying.h"
#include "core/dates.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/config_entry.h"
#include "formats/program_folder.h"
#include "formats/url_text.h"
#include "online/download.h"
#include "online/file_names.h"
#include "online/url_file.h"
#include "packages/level_config_file.h"
#include "packages/package_list.h"
#include "packages/unzip.h"
#include "session/telling.h"
#include "words/online.h"

#include <algorithm>
#include <unordered_map>

namespace kestrova
{

namespace
{

constexpr double daysBetweenUpdates = 30;
// Nobody answers more questions about one level than this.
constexpr std::size_t mostQuestionsOfConfigs = 20;

/// Sizes of all files of a level, by their names without regard to case: with their folders, and
/// alone, since a level that is taken in has all its files in one folder.
struct SizesByName {
    std::unordered_map<std::string, std::uint64_t> whole;
    std::unordered_map<std::string, std::uint64_t> alone; ///< the first of each name

    [[nodiscard]] std::optional<std::uint64_t> Of(const Path& relative) const
    {
        const auto found = whole.find(FoldCase(ToBackslashes(relative)));
        if (found != whole.end())
            return found->second;
        const auto byName = alone.find(FoldCase(relative.filename().native()));
        return byName == alone.end() ? std::nullopt : std::optional{byName->second};
    }
};

Result<SizesByName> SizesIn(const Path& folder)
{
    const auto tree = ScanTree(folder);
    if (!tree)
        return tree.Error();
    SizesByName sizes;
    for (const Path& file : tree->files) {
        const std::uint64_t size = FileSize(file);
        sizes.whole[FoldCase(ToBackslashes(file.lexically_relative(tree->folders.front())))] = size;
        sizes.alone.emplace(FoldCase(file.filename().native()), size);
    }
    return sizes;
}

bool Wants(Host& host, const OnlineConfig& config)
{
    const std::string quoted =
        config.level + GetMsg(Msg::OnlineQuote) + std::string{lineBreak} + std::string{lineBreak};
    return host.AskYesNo(
        GetMsg(Msg::OnlineConfigThere, {lineBreak, quoted, config.level, lineBreak, lineBreak}) +
            config.level + GetMsg(Msg::OnlineConfigEnd),
        Consent::Explicit);
}

/// The entry that the person takes.
std::optional<OnlineConfig> Chosen(Host& host, const std::vector<OnlineConfig>& configs)
{
    for (std::size_t i = 0; i < configs.size() && i < mostQuestionsOfConfigs; ++i)
        if (Wants(host, configs[i]))
            return configs[i];
    return std::nullopt;
}

/// What the address calls the file, as a name that leads nowhere else.
std::string NameFor(const std::string& url)
{
    const std::string name = ReplaceForbiddenChars(UrlFileName(url));
    constexpr std::size_t longest = 200; // the part and its note beside it have names as well
    const bool usable =
        SafeName(name) && name.size() <= longest && !name.starts_with('.') && Trim(name) == name;
    if (usable)
        return name;
    return EndsWithName(name, OnDisk::ZipEnding)
               ? std::string{OnDisk::PlainConfigName} + std::string{OnDisk::ZipEnding}
               : std::string{OnDisk::PlainConfigName};
}

bool BringsConfig(const std::vector<PackageEntry>& entries)
{
    const std::string name = LevelConfigPath({}).filename().native();
    return std::any_of(entries.begin(), entries.end(),
                       [&](const PackageEntry& entry) { return EqualNames(entry.name, name); });
}

/// Unpacks a package that brings a configuration file, guarded like any other.
Status UnpackConfig(Host& host, Machine& machine, const Tools& tools, const Path& package,
                    const Path& working)
{
    const auto progress = host.BeginProgress(
        ProgressWindow::Progress, GetMsg(Msg::OnlineUnzipping, {TextOf(package.filename())}));
    progress->AllowStop();
    ToolProgressState state{progress.get()};
    state.tell = [&](const std::string& text) { host.Tell(Tone::Plain, text); };
    const auto entries = ListZip(tools, package, state);
    if (!entries)
        return entries.Error();
    if (!BringsConfig(*entries))
        return Failure{ErrorCode::Missing, TextOf(package), GetMsg(Msg::OnlineNoConfig)};
    UnpackGuard guard{machine, package, working};
    UnzipOptions options;
    options.guard = &guard;
    options.junkPaths = true; // a level that is taken in has all its files in one folder
    return UnzipWithProgress(tools, package, working, options, state);
}

/// Copies a plain configuration file to its place in the level.
Status PlaceConfig(const Path& file, const Path& working)
{
    const auto bytes = ReadWholeFile(file, longestConfig);
    if (!bytes)
        return bytes.Error();
    if (!ParseLevelConfig(*bytes))
        return Failure{ErrorCode::Damaged, TextOf(file), GetMsg(Msg::OnlineNoConfig)};
    return CopyFileOver(file, LevelConfigPath(working));
}

/// Tells why there is no configuration file. Nobody is told what he stopped.
bool TellNotFetched(Host& host, const std::string& text, const Failure& failure)
{
    if (failure.code != ErrorCode::Stopped)
        TellFailure(host, text, failure);
    return false;
}

bool Fetch(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
           const OnlineConfig& config, const Path& working)
{
    // A folder of its own: a server's name for a file replaces nothing of the program's.
    const Path place = InFolder(folders.program, OnDisk::DirOnlineTemp);
    const Path target = place / NameFor(config.url);
    const std::string failed = GetMsg(Msg::OnlineDownloadFailed) + OnOneLine(config.url);
    if (const auto made = MakeFolders(place); !made)
        return TellNotFetched(host, failed, made.Error());
    const auto downloaded = DownloadFile(
        host, machine,
        {.url = config.url, .target = target, .most = longestConfig, .keepsParts = false});
    if (!downloaded)
        return IsOfTheWeb(downloaded.Error()) && TellNotFetched(host, failed, downloaded.Error());
    const bool package = EndsWithName(target.native(), OnDisk::ZipEnding);
    const auto placed = package ? UnpackConfig(host, machine, tools, target, working)
                                : PlaceConfig(target, working);
    (void)DeleteFile(target); // in a temporary folder; the next download replaces it
    if (placed)
        return true;
    const std::string answer =
        AnswerWords(*downloaded); // it says more than what is wrong with a page
    return TellNotFetched(host, package ? GetMsg(Msg::OnlineUnzipFailed) + TextOf(target) : failed,
                          answer.empty() ? placed.Error()
                                         : Failure{ErrorCode::CannotRead, {}, answer});
}

} // namespace

bool WantsDatabaseUpdate(Host& host, Machine& machine, const Folders& folders)
{
    const auto list = LoadUrlList(UrlListPath(folders));
    if (!list || list->updateDate + daysBetweenUpdates > DateSerialOf(machine.NowNs()))
        return false;
    const std::string gap = std::string{lineBreak} + std::string{lineBreak};
    return host.AskYesNo(GetMsg(Msg::OnlineAdviseUpdate, {gap, gap}));
}

Result<std::vector<OnlineConfig>> ConfigsFor(const UrlList& list, const Path& working)
{
    const bool asksForFiles =
        std::any_of(list.records.begin(), list.records.end(),
                    [](const UrlRecord& record) { return record.kind == UrlKindConfig; });
    // Listed once, however many entries ask.
    const auto sizes = asksForFiles ? SizesIn(working) : SizesByName{};
    if (!sizes)
        return sizes.Error();
    const auto sizeOf = [&](const Path& relative) { return sizes->Of(relative); };
    std::vector<OnlineConfig> configs;
    for (const UrlRecord& record : list.records) {
        if (record.kind != UrlKindConfig)
            continue;
        const auto entry = ParseConfigEntry(record.description);
        if (entry && Matches(*entry, sizeOf))
            configs.push_back({OnOneLine(entry->level), std::string{Trim(record.url)}});
    }
    return configs;
}

bool FindOnlineConfig(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                      const Path& working, MayFetchConfig may)
{
    const auto list = LoadUrlList(UrlListPath(folders));
    if (!list)
        return false;
    const auto configs = ConfigsFor(*list, working);
    if (!configs)
        return TellFolderNotRead(host, configs.Error());
    if (configs->empty())
        return false;
    if (may == MayFetchConfig::Asked && !host.CanAsk()) {
        host.Tell(Tone::Plain, GetMsg(Msg::OnlineConfigWaits, {configs->front().level}));
        return false;
    }
    const auto chosen =
        may == MayFetchConfig::Granted ? std::optional{configs->front()} : Chosen(host, *configs);
    return chosen && Fetch(host, machine, folders, tools, *chosen, working);
}

} // namespace kestrova
