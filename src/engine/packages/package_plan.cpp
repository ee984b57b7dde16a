#include "packages/package_plan.h"

#include "core/code_page.h"
#include "core/text.h"
#include "formats/rar_headers.h"
#include "formats/zip_directory.h"
#include "packages/name_pages.h"

#include <algorithm>
#include <array>
#include <span>
#include <unordered_map>
#include <unordered_set>

namespace kestrova
{

namespace
{

constexpr std::uint8_t madeByDos = 0;
constexpr std::uint8_t madeByNt = 11;
constexpr std::string_view unicode = "UTF-8";

enum class Reader { Any, UnzipAlone, TarAlone };

/// By the methods of section 4.4.5 of the format's description.
Reader ReaderOf(std::uint16_t method)
{
    constexpr std::array<std::uint16_t, 3> both{0, 8, 12};      // stored, deflated, bzip2
    constexpr std::array<std::uint16_t, 4> tar{14, 93, 95, 98}; // LZMA, zstd, XZ, PPMd
    const auto isOneOf = [&](const auto& methods) {
        return std::find(methods.begin(), methods.end(), method) != methods.end();
    };
    if (isOneOf(both))
        return Reader::Any;
    return isOneOf(tar) ? Reader::TarAlone : Reader::UnzipAlone;
}

/// The name that `unzip` makes: without control characters and the version behind a semicolon.
std::string UnzipName(std::string name)
{
    std::erase_if(name, IsControl);
    const std::size_t version = name.find_last_not_of("0123456789");
    if (version != std::string::npos && version + 1 < name.size() && name[version] == ';')
        name.resize(version);
    return name;
}

bool WouldBecomeEqual(const std::vector<ZipName>& names)
{
    std::unordered_map<std::string, std::string_view> made;
    return std::any_of(names.begin(), names.end(), [&](const ZipName& name) {
        const auto [known, isNew] = made.emplace(UnzipName(name.bytes), name.bytes);
        return !isNew && known->second != name.bytes;
    });
}

/// Names of entries without a slash at their end that are folders: the entry says so, or it is
/// empty and others lie below it.
std::vector<std::string> FoldersWithoutSlash(const std::vector<ZipName>& names, bool& marked)
{
    constexpr int deepest = 64;
    std::unordered_set<std::string_view> candidates;
    for (const ZipName& name : names) {
        if (name.bytes.empty() || name.bytes.back() == '/' || name.bytes.back() == '\\')
            continue;
        marked = marked || name.isFolder;
        if (name.size == 0 && !name.isFolder)
            candidates.insert(name.bytes);
    }
    std::unordered_set<std::string_view> used;
    for (const ZipName& name : names) {
        std::string_view above = name.bytes;
        for (int i = 0; i < deepest && !candidates.empty(); ++i) {
            const std::size_t slash = above.rfind('/');
            if (slash == std::string_view::npos)
                break;
            above = above.substr(0, slash);
            if (candidates.contains(above))
                used.insert(above);
        }
    }
    return {used.begin(), used.end()};
}

/// `unzip` prints the comment among its lines, and a line of its own would be taken for a complaint
/// or be longer than any that it writes.
bool IsTroublesome(const std::string& comment)
{
    constexpr std::size_t most = 1024;
    return comment.size() > most || FindFolded(comment, "skipping:") != std::string::npos;
}

struct NameFacts {
    std::vector<std::string_view> unknown; ///< not ASCII, and the zip does not say what
    bool dos = false;
    bool spoiled = false;   ///< unzip 6.0 takes UTF-8 of DOS for the code page of DOS
    bool unzipBest = false; ///< a field that it alone reads has the name once more
};

NameFacts FactsOfNames(const std::vector<ZipName>& names)
{
    NameFacts facts;
    for (const ZipName& name : names) {
        if (IsAscii(name.bytes))
            continue;
        if (name.hasUtf8 || (name.isUtf8 && !IsUtf8(name.bytes)))
            facts.unzipBest = true;
        facts.spoiled = facts.spoiled || (name.isUtf8 && name.madeBy == madeByDos);
        if (name.isUtf8 || name.hasUtf8)
            continue;
        facts.unknown.push_back(name.bytes);
        facts.dos = facts.dos || name.madeBy == madeByDos || name.madeBy == madeByNt;
    }
    return facts;
}

/// True when the names need the tool that knows code pages.
bool PlanZipNames(PackagePlan& plan, const NameFacts& facts, const std::string& wanted)
{
    const bool plain = std::all_of(facts.unknown.begin(), facts.unknown.end(), IsUtf8);
    if (!facts.unknown.empty() && (!plain || !wanted.empty()))
        plan.namesAs = wanted.empty() ? GuessNamePage(facts.unknown, facts.dos) : wanted;
    if (!plan.namesAs.empty())
        plan.page = plan.namesAs;
    else if (facts.spoiled || (facts.dos && !facts.unknown.empty()))
        plan.page = unicode;
    return !plan.page.empty();
}

std::vector<PackageEntry> EntriesOf(const std::vector<ZipName>& directory)
{
    std::vector<PackageEntry> entries;
    entries.reserve(directory.size());
    for (const ZipName& name : directory)
        entries.push_back({name.bytes, name.size});
    return entries;
}

std::string TextIn(const std::string& bytes, const std::string& page)
{
    if (page.empty() || IsUtf8(bytes))
        return Readable(bytes);
    const auto text = FromCodePage(bytes, page);
    return text ? *text : Readable(bytes);
}

} // namespace

namespace
{

/// By its beginning, whatever it is called.
bool IsSevenZip(const Path& package)
{
    constexpr std::string_view mark{"7z\xBC\xAF\x27\x1C"};
    platform::File file;
    std::array<char, mark.size()> begin{};
    std::size_t got = 0;
    return !platform::File::OpenForRead(package, file) &&
           !file.ReadAt(0, std::as_writable_bytes(std::span{begin}), got) &&
           std::string_view{begin.data(), got} == mark;
}

constexpr std::size_t longestPart = 255; ///< bytes that a file system takes

/// True when every part of every name is short enough for a file system.
bool FitAsText(const std::vector<PackageEntry>& entries, const std::string& page)
{
    return std::all_of(entries.begin(), entries.end(), [&](const PackageEntry& entry) {
        if (entry.name.size() * 3 <= longestPart)
            return true; // no byte becomes more than three
        const std::vector<std::string> parts = Split(TextIn(entry.name, page), '/');
        return std::all_of(parts.begin(), parts.end(),
                           [](const std::string& part) { return part.size() <= longestPart; });
    });
}

} // namespace

PackagePlan PlanFor(const Tools& tools, const Path& package, const std::string& wanted)
{
    PackagePlan plan;
    plan.unpacker = UnpackerOf(package);
    if (RarHeaders rar = ReadRarHeaders(package); rar.isRar) {
        plan.unpacker = Unpacker::Bsdtar;
        plan.needsProof = true;
        plan.files = std::move(rar.files);
        plan.locked = rar.locked;
    } else if (IsSevenZip(package)) {
        plan.unpacker = Unpacker::Bsdtar;
    }
    plan.isZip = plan.unpacker == Unpacker::Unzip;
    if (!plan.isZip)
        return plan;
    const ZipDirectory directory = ReadZipDirectory(package);
    plan.entries = EntriesOf(directory.names);
    for (const ZipName& name : directory.names)
        if (!name.isFolder && !name.bytes.ends_with('/'))
            plan.files.push_back({name.bytes, name.checksum});
    const NameFacts facts = FactsOfNames(directory.names);
    bool onlyUnzip = false;
    bool onlyTar = false;
    for (const ZipName& name : directory.names) {
        onlyUnzip = onlyUnzip || ReaderOf(name.method) == Reader::UnzipAlone;
        onlyTar = onlyTar || ReaderOf(name.method) == Reader::TarAlone;
    }
    bool marked = false;
    plan.skip = FoldersWithoutSlash(directory.names, marked);
    const bool better = (PlanZipNames(plan, facts, wanted) && !facts.unzipBest) || marked ||
                        !plan.skip.empty() || IsTroublesome(directory.comment) ||
                        WouldBecomeEqual(directory.names);
    if ((onlyTar || (better && !onlyUnzip)) &&
        !FindTool(tools, ToolOf(Unpacker::Bsdtar).tool).empty()) {
        plan.unpacker = Unpacker::Bsdtar;
        for (std::string& name : plan.skip)
            name = TextIn(name, plan.page);
    } else {
        plan.page.clear();
        plan.namesAs.clear();
        plan.skip.clear();
    }
    // A small one is unpacked sooner than its list is there; the guard watches what comes out.
    constexpr std::uint64_t small = std::uint64_t{1} << 20;
    plan.listed = plan.unpacker == Unpacker::Unzip && directory.isWhole && !plan.entries.empty() &&
                  FileSize(package) <= small;
    ReadNames(plan.entries, plan.page);
    return plan;
}

void PlanNames(PackagePlan& plan, const std::vector<PackageEntry>& listed,
               const std::string& wanted)
{
    std::vector<std::string_view> unknown;
    for (const PackageEntry& entry : listed)
        if (!IsAscii(entry.name))
            unknown.push_back(entry.name);
    if (unknown.empty() || std::all_of(unknown.begin(), unknown.end(), IsUtf8))
        return;
    std::string page = wanted.empty() ? GuessNamePage(unknown, false) : wanted;
    if (FitAsText(listed, page))
        plan.page = plan.namesAs = std::move(page);
}

std::vector<std::string> LeaveOutWhatLeadsOut(PackagePlan& plan,
                                              const std::vector<PackageEntry>& entries)
{
    constexpr std::size_t most = 1000; // they become arguments of the tool
    std::vector<std::string> out;
    bool stays = false;
    for (const PackageEntry& entry : entries) {
        const std::vector<std::string> parts = Split(entry.name, '/');
        if (std::find(parts.begin(), parts.end(), "..") != parts.end())
            out.push_back(entry.name);
        else
            stays = stays || !entry.name.ends_with('/');
    }
    if (plan.unpacker != Unpacker::Bsdtar || !stays || out.size() > most)
        return {};
    const std::unordered_set<std::string> names{out.begin(), out.end()};
    std::erase_if(plan.files, [&](const PackedFile& file) {
        return names.contains(ReplaceAll(TextIn(file.name, plan.page), "\\", "/"));
    });
    plan.skip.insert(plan.skip.end(), out.begin(), out.end());
    return out;
}

std::vector<std::string> NamesTwice(const std::vector<PackageEntry>& entries)
{
    std::unordered_map<std::string_view, int> counts;
    std::vector<std::string> twice;
    for (const PackageEntry& entry : entries)
        if (!entry.name.ends_with('/') && ++counts[entry.name] == 2)
            twice.push_back(entry.name);
    return twice;
}

std::string BytesIn(const std::string& text, const std::string& page)
{
    constexpr int firstLetter = 0x80;
    constexpr int bytesInAll = 0x100;
    std::unordered_map<std::string, char> byteOf;
    for (int byte = firstLetter; byte < bytesInAll; ++byte) {
        const char c = static_cast<char>(byte);
        if (const auto letter = FromCodePage({&c, 1}, page))
            byteOf.emplace(*letter, c);
    }
    std::string bytes;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i + 1;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
            ++end;
        const std::string letter = text.substr(i, end - i);
        const auto known = byteOf.find(letter);
        bytes += known == byteOf.end() ? letter : std::string(1, known->second);
        i = end;
    }
    return bytes;
}

void ReadNames(std::vector<PackageEntry>& entries, const std::string& page)
{
    for (PackageEntry& entry : entries)
        if (!IsAscii(entry.name))
            entry.name = TextIn(entry.name, page);
}

} // namespace kestrova
