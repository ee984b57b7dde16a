#include "upkeep/recovered_texts.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/exact_names.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "history/undo_entries.h"
#include "packages/level_config_file.h"
#include "platform/file_content.h"
#include "session/documents.h"
#include "upkeep/file_names.h"
#include "words/recovering.h"

#include <algorithm>
#include <set>

namespace kestrova
{

struct RecoveredTexts::OldList {
    ArchiveContent content;
    Path file;
    std::int64_t writtenNs = 0;
    bool whole = false; ///< not damaged
    bool exact = false; ///< it names this very folder
};

namespace
{

constexpr std::uint64_t longestText = UINT64_C(256) << 20;

/// As many records as are there, whatever the count says: of a list that was cut short the first
/// ones are left.
std::optional<ArchiveContent> ParseWhatIsThere(std::string bytes)
{
    if (bytes.size() < archiveHeaderSize + levelRecordSize)
        return {};
    constexpr std::size_t countAt = 516;
    auto count = static_cast<std::uint32_t>((bytes.size() - archiveHeaderSize) / levelRecordSize);
    for (std::size_t i = 0; i < sizeof count; ++i, count >>= 8U)
        bytes[countAt + i] = static_cast<char>(count & 0xFFU);
    auto content = ParseArchive(bytes);
    return content ? std::optional{std::move(content).Value()} : std::nullopt;
}

/// A record that a torn write left in the middle of another one has no such name.
bool IsName(std::string_view text)
{
    return !Trim(text).empty() && std::none_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == '\x7F';
    });
}

std::vector<Path> ListsNear(const std::vector<Path>& folders, const Path& remembered)
{
    std::vector<Path> files;
    if (!remembered.empty())
        files.push_back(ResolvePath(remembered));
    for (const Path& folder : folders)
        for (const Path& file :
             ListFiles(folder, "*" + std::string{OnDisk::ExtensionArchive}).ValueOr({}))
            if (std::find(files.begin(), files.end(), file) == files.end())
                files.push_back(file);
    return files;
}

std::string TextInUtf8(const std::string& bytes)
{
    return IsUtf8(bytes) ? bytes : FromWindows1252(bytes);
}

/// What stands behind one of the words that begin a title's line; empty for another line.
std::string TitleIn(std::string_view line)
{
    for (const std::string& word : Split(OnDisk::TitleWords, '|')) {
        const std::string_view trimmed = Trim(line);
        if (trimmed.size() <= word.size() || !EqualNames(trimmed.substr(0, word.size()), word))
            continue;
        const std::string_view rest = Trim(trimmed.substr(word.size()));
        if (!rest.starts_with(':') && !rest.starts_with('='))
            continue;
        std::string_view title = Trim(rest.substr(1));
        if (title.size() > 1 && title.front() == '"' && title.back() == '"')
            title = title.substr(1, title.size() - 2);
        constexpr std::size_t longestTitle = 100;
        if (IsName(title) && title.size() <= longestTitle)
            return std::string{title};
    }
    return {};
}

/// The title that a text of the level tells at its beginning; empty when none does.
std::string TitleInTexts(const Path& files)
{
    constexpr std::size_t beginning = 8 << 10;
    for (const Path& file : ListFiles(files, OnDisk::PatTexts).ValueOr({})) {
        platform::File opened;
        std::string text(beginning, '\0');
        std::size_t got = 0;
        if (!IsDocument(file) || platform::File::OpenForRead(file, opened) ||
            opened.ReadAt(0, std::as_writable_bytes(std::span{text}), got))
            continue;
        text.resize(got);
        std::replace(text.begin(), text.end(), '\r', '\n');
        for (const std::string& line : Split(TextInUtf8(text), '\n'))
            if (std::string title = TitleIn(line); !title.empty())
                return title;
    }
    return {};
}

} // namespace

std::string NumberedName(LevelCode code)
{
    return Told(Msg::RecoveredName) + std::to_string(code);
}

RecoveredTexts::RecoveredTexts(const Folders& folders, const ProgramSettings& settings,
                               const Path& levels, const Path& remembered)
    : levels_(levels)
{
    TakeLists(settings, ListsNear({folders.program, levels, levels.parent_path()}, remembered));
    TakeNames(folders);
}

void RecoveredTexts::TakeLists(const ProgramSettings& settings, const std::vector<Path>& files)
{
    std::vector<OldList> lists;
    for (const Path& file : files) {
        std::string bytes;
        if (platform::ReadAll(file, bytes, longestText))
            continue; // one that cannot be read tells nothing
        const bool whole = bool{ParseArchive(bytes)};
        auto content = ParseWhatIsThere(std::move(bytes));
        if (!content)
            continue;
        const Path folder = FolderFromText(
            Trim(ExactFolder(settings, ExactFolderField(ArchiveFolder::Secondary, file),
                             content->header.secondaryFolder)));
        const bool exact = folder == levels_ || IsSameFolder(folder, levels_);
        // A folder that was moved has its name still; another archive's is there, mostly.
        const bool moved =
            !exact && folder.filename() == levels_.filename() && !FolderExists(folder);
        if (!exact && !moved && file.parent_path() != levels_)
            continue;
        if (!exact)
            oldFolders_.push_back(folder);
        lists.push_back(
            {std::move(*content), file, platform::FactsOf(file).modifiedNs, whole, exact});
    }
    std::stable_sort(lists.begin(), lists.end(), [](const OldList& one, const OldList& other) {
        return std::tuple{one.exact, one.whole, one.writtenNs} >
               std::tuple{other.exact, other.whole, other.writtenNs};
    });
    if (!lists.empty())
        header_ = lists.front().content.header;
    for (OldList& list : lists)
        for (LevelRecord& level : list.content.levels)
            // A name that is only a number tells less than an older one.
            if (level.levelCode > originalCode && IsName(level.levelName) &&
                Trim(level.levelName) != NumberedName(level.levelCode))
                records_.try_emplace(level.levelCode, std::move(level));
}

void RecoveredTexts::TakeNames(const Folders& folders)
{
    const Path file = InFolder(levels_, OnDisk::FragExactNames);
    if (const auto bytes = ReadFileIfThere(file, longestExactNames); bytes && *bytes) {
        const ExactNames exact = ParseExactNames(**bytes);
        std::vector<LevelRecord> levels;
        for (const auto& [code, level] : records_)
            levels.push_back(level);
        ApplyExactNames(exact, levels);
        for (LevelRecord& level : levels)
            records_[level.levelCode] = std::move(level);
        for (const auto& [key, text] : exact)
            if (std::get<1>(key) == 0)
                names_[std::get<0>(key)] = text;
    }
    if (const auto list = ReadUndoList(folders))
        for (const ChangeHead& entry : list->entries) {
            const Path home{entry.home};
            const bool here =
                home.parent_path() == levels_ || std::find(oldFolders_.begin(), oldFolders_.end(),
                                                           home.parent_path()) != oldFolders_.end();
            if (here && IsName(entry.levelName))
                names_[entry.code] = entry.levelName;
        }
}

void RecoveredTexts::Fill(LevelRecord& level, const Path& files) const
{
    const LevelCode code = level.levelCode;
    if (const auto known = records_.find(code); known != records_.end()) {
        const LevelRecord& old = known->second;
        level.levelName = old.levelName;
        level.levelNote = old.levelNote;
        level.authorName = old.authorName;
        level.authorEmails = old.authorEmails;
        level.authorSites = old.authorSites;
        level.authorNote = old.authorNote;
        level.moreInfoFile = old.moreInfoFile;
        return;
    }
    if (const auto named = names_.find(code); named != names_.end())
        level.levelName = named->second;
    if (const auto config = ReadLevelConfig(LevelConfigPath(files))) {
        if (level.levelName.empty() && IsName(config->name))
            level.levelName = Trim(config->name);
        level.levelNote = Trim(config->note);
        level.authorName = Trim(config->author);
        level.authorEmails = Trim(config->authorEmails);
        level.authorSites = Trim(config->authorSites);
        level.authorNote = Trim(config->authorNote);
        level.moreInfoFile = Trim(config->moreInfo);
    }
    if (level.levelName.empty())
        level.levelName = TitleInTexts(files);
    if (level.levelName.empty())
        level.levelName = NumberedName(code);
}

} // namespace kestrova
