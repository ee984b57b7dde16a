#include "formats/import_note.h"

#include "formats/record_json.h"

#include <array>

namespace kestrova
{

namespace
{

constexpr std::array importPhases{"underway", "done", "undoing"};
constexpr std::array importTrees{"trle", "backup_trle"};

template <std::size_t count>
std::size_t NumberOfWord(const std::array<const char*, count>& words, std::string_view word)
{
    return static_cast<std::size_t>(std::find(words.begin(), words.end(), word) - words.begin());
}

const char* WordOfTree(ImportTree tree)
{
    return importTrees.at(static_cast<std::size_t>(tree));
}

ImportTree ReadTree(NoteReader& reader, bool& good)
{
    const std::size_t number = NumberOfWord(importTrees, reader.Text("tree"));
    good = good && number < importTrees.size();
    return static_cast<ImportTree>(number % importTrees.size());
}

NoteJson JsonOfPlaces(const std::vector<ImportName>& names)
{
    NoteJson json = NoteJson::array();
    for (const ImportName& name : names)
        json.push_back({{"tree", WordOfTree(name.tree)}, {"name", Encoded(name.name)}});
    return json;
}

void ReadNames(NoteReader& reader, const char* member, std::vector<ImportName>& names, bool& good)
{
    reader.List(member, [&](NoteReader& entry, const NoteJson&) {
        names.push_back({ReadTree(entry, good), entry.Text("name")});
        good = good && SafeRelative(names.back().name);
    });
}

NoteJson JsonOfMark(const FolderMark& mark)
{
    return {{"path", Encoded(mark.path)}, {"device", mark.device}, {"inode", mark.inode}};
}

FolderMark ReadMark(const NoteJson& json, const char* member, bool& good)
{
    static const NoteJson none;
    const auto found = json.is_object() ? json.find(member) : json.end();
    NoteReader reader{found != json.end() ? *found : none};
    FolderMark mark{reader.Text("path"), reader.Number<std::uint64_t>("device"),
                    reader.Number<std::uint64_t>("inode")};
    good = good && reader.Good();
    return mark;
}

bool IsHashOrNone(std::string_view text)
{
    return text.empty() || IsContentHash(text);
}

} // namespace

std::string FormatImportNote(const ImportNote& note)
{
    NoteJson places = NoteJson::array();
    for (const ImportPlace& place : note.places)
        places.push_back({{"tree", WordOfTree(place.tree)},
                          {"name", Encoded(place.name)},
                          {"was", place.was},
                          {"came", place.came}});
    return Written({{"folder", JsonOfMark(note.folder)},
                    {"backup", JsonOfMark(note.backup)},
                    {"phase", importPhases.at(static_cast<std::size_t>(note.phase))},
                    {"id", note.id},
                    {"time", note.madeNs},
                    {"subject", Encoded(note.subject)},
                    {"undone", note.isUndone},
                    {"undoes", note.undoes},
                    {"next", note.next},
                    {"places", std::move(places)},
                    {"made", JsonOfPlaces(note.made)},
                    {"swept", JsonOfPlaces(note.swept)}});
}

Result<ImportNote> ParseImportNote(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    ImportNote note;
    bool good = true;
    note.folder = ReadMark(json, "folder", good);
    note.backup = ReadMark(json, "backup", good);
    const std::size_t phase = NumberOfWord(importPhases, reader.Text("phase"));
    note.phase = static_cast<ImportPhase>(phase % importPhases.size());
    note.id = reader.Number<std::int32_t>("id");
    note.madeNs = reader.Number<std::int64_t>("time");
    note.subject = reader.Text("subject");
    note.isUndone = reader.Has("undone") && reader.Flag("undone");
    note.undoes = reader.Has("undoes") ? reader.Number<std::int32_t>("undoes") : 0;
    note.next = reader.Has("next") ? reader.Number<std::int32_t>("next") : 0;
    for (const std::int32_t number : {note.id, note.undoes, note.next})
        good = good && number >= 0 && number < importIdLimit;
    good = good && phase < importPhases.size() && note.id > 0;
    reader.List("places", [&](NoteReader& entry, const NoteJson&) {
        ImportPlace place{ReadTree(entry, good), entry.Text("name"), entry.Text("was"),
                          entry.Text("came")};
        good =
            good && SafeRelative(place.name) && IsHashOrNone(place.was) && IsHashOrNone(place.came);
        note.places.push_back(std::move(place));
    });
    ReadNames(reader, "made", note.made, good);
    ReadNames(reader, "swept", note.swept, good);
    if (!reader.Good() || !good)
        return Failure{ErrorCode::Damaged, {}, {}};
    return note;
}

} // namespace kestrova
