#include "editor/wad_links.h"

#include "core/look.h"
#include "core/name_set.h"
#include "core/size_words.h"
#include "core/text.h"
#include "editor/file_names.h"
#include "formats/trle_folder.h"
#include "session/telling.h"
#include "words/assistant.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Bytes that the disk keeps beside the copies.
constexpr std::uint64_t roomLeft = UINT64_C(64) << 20;

bool IsScriptSource(const Path& file)
{
    const std::string name = file.filename().native();
    return EqualNames(name, OnDisk::EnglishTxt) || EqualNames(name, OnDisk::ScriptTxt);
}

std::string WadNameOf(const Path& tom)
{
    return StripExtension(tom.filename().native()) + std::string{OnDisk::WadEnding};
}

/// What matches among the Level Editor's wads, or else in the folder.
Result<std::vector<Path>> SetOf(const Folders& folders, const Path& workFolder,
                                std::string_view pattern)
{
    auto set = ListFiles(InFolder(folders.trle, OnDisk::DirWads), pattern);
    if (set && set->empty())
        set = ListFiles(workFolder, pattern);
    return set;
}

/// The name under which a file of a set belongs to a tom file; a failure when it would be none.
Result<Path> LinkedName(std::string_view tomName, const Path& file)
{
    const std::string stem = BaseNameOf(tomName);
    const std::string name = stem + ExtensionOf(file.filename().native());
    if (Trim(stem).empty() || name.starts_with(stagedPrefix))
        return MakeFailure(ErrorCode::Refused, std::string{tomName});
    return SafeName(name);
}

struct LinkCopy {
    Path file;
    Path target;
};

/// The first file of the set gets a name; what stands there already stays.
Result<std::vector<LinkCopy>> CopiesOf(const std::vector<Path>& set, const Path& workFolder,
                                       std::string_view tomName)
{
    std::vector<LinkCopy> copies;
    NameSet names;
    for (const Path& file : set) {
        const auto name = LinkedName(tomName, file);
        if (!name)
            return name.Error();
        const auto there = LookAt(workFolder / *name);
        if (!there)
            return there.Error();
        if (there->kind != platform::FileKind::Missing || names.Has(name->native()))
            continue;
        names.Add(name->native());
        copies.push_back({file, workFolder / *name});
    }
    return copies;
}

Status HasRoomFor(Machine& machine, const std::vector<LinkCopy>& copies, const Path& workFolder)
{
    std::uint64_t bytes = 0;
    for (const LinkCopy& copy : copies)
        bytes += FileSize(copy.file);
    const auto free = machine.FreeSpace(workFolder);
    if (!free || bytes + roomLeft <= *free)
        return {}; // where nobody can tell, the copying will
    return InWords(ErrorCode::NoSpace,
                   GetMsg(Msg::LinkNoRoom, {SizeInWords(static_cast<double>(bytes)),
                                            SizeInWords(static_cast<double>(*free))}));
}

/// `linked` gets the copies that were made.
Status MakeLinkCopies(const std::vector<LinkCopy>& copies,
                      const std::function<bool(std::uint64_t)>& progress, std::vector<Path>& linked)
{
    CopyOptions options;
    options.progress = progress;
    for (const LinkCopy& copy : copies) {
        if (auto copied = CopyFileOver(copy.file, copy.target, options); !copied)
            return copied;
        linked.push_back(copy.target);
    }
    return {};
}

} // namespace

std::optional<WadLink> WadLinkFromWord(const std::string& word)
{
    const std::size_t sign = word.find('=');
    if (sign == 0 || sign == std::string::npos || sign + 1 == word.size())
        return {};
    WadLink link{word.substr(0, sign), word.substr(sign + 1)};
    if (!EndsWithName(link.tom, OnDisk::TomEnding))
        link.tom += OnDisk::TomEnding;
    if (EndsWithName(link.wads, OnDisk::WadEnding))
        link.wads = StripExtension(link.wads);
    if (!HasWildcard(link.wads))
        link.wads += OnDisk::SetEnding;
    return link;
}

Result<std::vector<Path>> ListDocFiles(const Path& folder)
{
    std::vector<Path> documents;
    for (const std::string& pattern : Split(OnDisk::DocumentPatterns, '|')) {
        const auto found = ListFiles(folder, pattern);
        if (!found)
            return found.Error();
        std::remove_copy_if(found->begin(), found->end(), std::back_inserter(documents),
                            IsScriptSource);
    }
    return documents;
}

Result<bool> TomHasWad(const Folders& folders, const Path& tom)
{
    const std::string wad = WadNameOf(tom);
    const auto isBeside = IsFile(tom.parent_path() / wad);
    if (!isBeside || *isBeside)
        return isBeside;
    return IsFile(InFolder(folders.trle, OnDisk::DirWads) / wad);
}

bool TomHasWadOrTold(Host& host, const Folders& folders, const Path& tom)
{
    const auto has = TomHasWad(folders, tom);
    if (!has)
        return TellFolderNotRead(host, has.Error());
    const std::string name = TextOf(tom.filename());
    if (!*has)
        host.Tell(Tone::Error, GetMsg(Msg::TomHasNoWad, {name, lineBreak, name}));
    return *has;
}

std::size_t CommonPrefixLength(std::string_view a, std::string_view b)
{
    const std::string left = FoldCase(a);
    const std::string right = FoldCase(b);
    const auto end = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    // A letter of several bytes counts once, and only when all of it is the same.
    const auto isInside = [](auto place, const std::string& text) {
        return place != text.end() && (static_cast<unsigned char>(*place) & 0xC0U) == 0x80U;
    };
    auto last = end.first;
    auto other = end.second;
    while (last != left.begin() && (isInside(last, left) || isInside(other, right)))
        --last, --other;
    return static_cast<std::size_t>(std::count_if(left.begin(), last, [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

Result<LinkedSet> LinkWads(Machine& machine, const Folders& folders, const Path& workFolder,
                           std::string_view wadsPattern, std::string_view tomName,
                           const std::function<bool(std::uint64_t)>& progress)
{
    const auto set = SetOf(folders, workFolder, wadsPattern);
    if (!set)
        return set.Error();
    const auto copies = CopiesOf(*set, workFolder, tomName);
    if (!copies)
        return copies.Error();
    if (auto fits = HasRoomFor(machine, *copies, workFolder); !fits)
        return fits.Error();
    std::vector<Path> linked;
    const auto done = MakeLinkCopies(*copies, progress, linked);
    if (done)
        return LinkedSet{set->size(), linked.size()};
    // Half a set would pass for a whole one.
    for (const Path& copy : linked)
        if (auto gone = DeleteSpelled(copy); !gone)
            return gone.Error();
    return done.Error();
}

} // namespace kestrova
