#include "swap/swap_records.h"

#include "core/names.h"
#include "core/text.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

using Json = nlohmann::json;

std::string Encoded(const std::string& name)
{
    const bool wholeUtf8 = IsUtf8(name);
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '%' || (!wholeUtf8 && byte >= 0x80))
            text += fmt::format("%{:02X}", byte);
        else
            text += c;
    }
    return text;
}

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

std::string Decoded(const std::string& text)
{
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && HexDigit(text[i + 1]) >= 0 &&
                            HexDigit(text[i + 2]) >= 0;
        name += escape ? static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]))
                       : text[i];
        if (escape)
            i += 2;
    }
    return name;
}

/// Reads members of the kinds that it expects; anything else fails it for good.
class Reader
{
public:
    explicit Reader(const Json& object) : object_(object), good_(object.is_object()) {}

    template <class T> T Number(const char* name)
    {
        const Json* value = Member(name, [](const Json& j) { return j.is_number_integer(); });
        return value != nullptr ? value->get<T>() : T{};
    }
    std::string Text(const char* name)
    {
        const Json* value = Member(name, [](const Json& j) { return j.is_string(); });
        return value != nullptr ? Decoded(value->get<std::string>()) : std::string{};
    }
    bool Flag(const char* name)
    {
        const Json* value = Member(name, [](const Json& j) { return j.is_boolean(); });
        return value != nullptr && value->get<bool>();
    }
    bool IsNull(const char* name) const
    {
        return object_.contains(name) && object_[name].is_null();
    }
    template <class Each> void List(const char* name, Each each)
    {
        const Json* value = Member(name, [](const Json& j) { return j.is_array(); });
        if (value == nullptr)
            return;
        for (const Json& entry : *value) {
            Reader reader{entry};
            each(reader, entry);
            good_ = good_ && reader.good_;
        }
    }
    void Names(const char* name, std::vector<std::string>& names)
    {
        const Json* value = Member(name, [](const Json& j) {
            return j.is_array() &&
                   std::all_of(j.begin(), j.end(), [](const Json& e) { return e.is_string(); });
        });
        if (value != nullptr)
            for (const Json& entry : *value)
                names.push_back(Decoded(entry.get<std::string>()));
    }
    [[nodiscard]] bool Good() const { return good_; }

private:
    template <class Kind> const Json* Member(const char* name, Kind kind)
    {
        if (!good_)
            return nullptr;
        const auto found = object_.find(name);
        good_ = found != object_.end() && kind(*found);
        return good_ ? &*found : nullptr;
    }

    const Json& object_;
    bool good_;
};

Json JsonOf(const FolderMark& mark)
{
    return {{"path", Encoded(mark.path)}, {"device", mark.device}, {"inode", mark.inode}};
}

void Read(Reader& reader, FolderMark& mark)
{
    reader.List("folder", [&](Reader& entry, const Json&) {
        mark.path = entry.Text("path");
        mark.device = entry.Number<std::uint64_t>("device");
        mark.inode = entry.Number<std::uint64_t>("inode");
    });
}

Json JsonOf(const std::vector<OwnedFile>& files)
{
    Json list = Json::array();
    for (const OwnedFile& file : files)
        list.push_back(
            {{"name", Encoded(file.name)}, {"size", file.size}, {"time", file.modifiedNs}});
    return list;
}

void Read(Reader& reader, const char* name, std::vector<OwnedFile>& files)
{
    reader.List(name, [&](Reader& entry, const Json&) {
        OwnedFile file;
        file.name = entry.Text("name");
        file.size = entry.Number<std::uint64_t>("size");
        file.modifiedNs = entry.Number<std::int64_t>("time");
        files.push_back(std::move(file));
    });
}

Json JsonOf(const std::vector<StateFile>& files)
{
    Json list = Json::array();
    for (const StateFile& file : files)
        list.push_back({{"name", Encoded(file.name)}, {"hash", Encoded(file.hash)}});
    return list;
}

bool Read(Reader& reader, const char* name, std::vector<StateFile>& files)
{
    bool sound = true;
    reader.List(name, [&](Reader& entry, const Json&) {
        StateFile file;
        file.name = entry.Text("name");
        file.hash = entry.Text("hash");
        // Both become names of files: what could name another place spoils the whole note.
        sound = sound && SafeName(file.name) && IsContentHash(file.hash);
        files.push_back(std::move(file));
    });
    return sound;
}

Json JsonOf(const std::vector<std::string>& names)
{
    Json list = Json::array();
    for (const std::string& name : names)
        list.push_back(Encoded(name));
    return list;
}

std::string Written(const Json& json)
{
    return json.dump(1) + "\n";
}

} // namespace

bool IsContentHash(std::string_view text)
{
    return text.size() == 32 &&
           text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::string FormatOwner(const OwnerRecord& record)
{
    return Written({{"folder", Json::array({JsonOf(record.folder)})},
                    {"marker", Encoded(record.marker)},
                    {"owner", record.owner ? Json(*record.owner) : Json(nullptr)},
                    {"added", JsonOf(record.added)},
                    {"overwritten", JsonOf(record.overwritten)},
                    {"boot", Encoded(record.bootId)}});
}

Result<OwnerRecord> ParseOwner(std::string_view text)
{
    const Json json = Json::parse(text, nullptr, false);
    Reader reader{json};
    OwnerRecord record;
    Read(reader, record.folder);
    record.marker = reader.Text("marker");
    if (reader.Good() && !reader.IsNull("owner"))
        record.owner = reader.Number<LevelCode>("owner");
    Read(reader, "added", record.added);
    reader.Names("overwritten", record.overwritten);
    record.bootId = reader.Text("boot");
    if (!reader.Good())
        return Failure{ErrorCode::Damaged, {}, {}};
    return record;
}

std::string FormatJournal(const SwapJournal& journal)
{
    return Written({{"folder", Json::array({JsonOf(journal.folder)})},
                    {"phase", static_cast<int>(journal.phase)},
                    {"from", journal.from},
                    {"from-store", Encoded(journal.fromStore)},
                    {"to-store", Encoded(journal.toStore)},
                    {"live-is-kept", journal.liveIsKept},
                    {"to", journal.to},
                    {"live", JsonOf(journal.live)},
                    {"store", JsonOf(journal.store)},
                    {"remove", JsonOf(journal.remove)},
                    {"restore", JsonOf(journal.restore)},
                    {"install", JsonOf(journal.install)}});
}

Result<SwapJournal> ParseJournal(std::string_view text)
{
    const Json json = Json::parse(text, nullptr, false);
    Reader reader{json};
    SwapJournal journal;
    Read(reader, journal.folder);
    const int phase = reader.Number<int>("phase");
    journal.from = reader.Number<LevelCode>("from");
    journal.fromStore = reader.Text("from-store");
    journal.toStore = reader.Text("to-store");
    journal.liveIsKept = reader.Flag("live-is-kept");
    journal.to = reader.Number<LevelCode>("to");
    const bool sound = Read(reader, "live", journal.live) && Read(reader, "store", journal.store);
    Read(reader, "remove", journal.remove);
    reader.Names("restore", journal.restore);
    Read(reader, "install", journal.install);
    if (!reader.Good() || !sound || phase < 0 || phase > static_cast<int>(SwapPhase::Restore))
        return Failure{ErrorCode::Damaged, {}, {}};
    journal.phase = static_cast<SwapPhase>(phase);
    return journal;
}

} // namespace kestrova
