#include "formats/loan_note.h"

#include "formats/record_json.h"

#include <array>

namespace kestrova
{

namespace
{

constexpr std::array loanPhases{"planned", "lent", "kept"};

std::optional<LoanPhase> LoanPhaseOf(std::string_view word)
{
    for (std::size_t i = 0; i < loanPhases.size(); ++i)
        if (word == loanPhases.at(i))
            return static_cast<LoanPhase>(i);
    return std::nullopt;
}

NoteJson JsonOfNames(const std::vector<std::string>& names)
{
    NoteJson json = NoteJson::array();
    for (const std::string& name : names)
        json.push_back(Encoded(name));
    return json;
}

bool AllAreRelative(const std::vector<std::string>& names)
{
    return std::all_of(names.begin(), names.end(),
                       [](const std::string& name) { return bool{SafeRelative(name)}; });
}

NoteJson JsonOfTree(const StandingTree& tree)
{
    NoteJson files = NoteJson::array();
    for (const StandingFile& file : tree.files)
        files.push_back({{"name", Encoded(file.name)},
                         {"size", file.size},
                         {"time", file.modifiedNs},
                         {"changed", file.changedNs},
                         {"inode", file.inode},
                         {"kept", file.kept},
                         {"rights", file.rights}});
    NoteJson links = NoteJson::array();
    for (const StandingLink& link : tree.links)
        links.push_back({{"name", Encoded(link.name)}, {"target", Encoded(link.target)}});
    NoteJson folders = NoteJson::array();
    NoteJson rights = NoteJson::array();
    for (const StandingFolder& folder : tree.folders) {
        folders.push_back(Encoded(folder.name));
        rights.push_back(folder.rights);
    }
    const std::vector<std::string> others(tree.others.begin(), tree.others.end());
    return {{"files", std::move(files)},     {"links", std::move(links)},
            {"folders", std::move(folders)}, {"folderRights", std::move(rights)},
            {"rights", tree.rights},         {"others", JsonOfNames(others)}};
}

/// It leads to a place below the folder.
bool LeadsInside(const Path& name)
{
    return !name.empty() && name.is_relative() && name == name.lexically_normal() &&
           *name.begin() != ".." && *name.begin() != "." && name.has_filename();
}

std::uint32_t RightsIn(NoteReader& reader)
{
    return reader.Has("rights") ? reader.Number<std::uint32_t>("rights") : noRights;
}

/// One for each folder; the notes of earlier versions have none.
bool ReadFolderRights(const NoteJson& json, std::vector<StandingFolder>& folders)
{
    const auto rights = json.find("folderRights");
    if (rights == json.end())
        return true;
    if (!rights->is_array() || rights->size() != folders.size())
        return false;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        if (!(*rights)[i].is_number_integer())
            return false;
        folders[i].rights = (*rights)[i].get<std::uint32_t>();
    }
    return true;
}

bool ReadTree(const NoteJson& json, StandingTree& tree)
{
    NoteReader reader{json};
    bool good = true;
    reader.List("files", [&](NoteReader& entry, const NoteJson&) {
        tree.files.push_back(
            {entry.Text("name"), entry.Number<std::uint64_t>("size"),
             entry.Number<std::int64_t>("time"), entry.Number<std::int64_t>("changed"),
             entry.Number<std::uint64_t>("inode"), entry.Flag("kept"), RightsIn(entry)});
        good = good && LeadsInside(tree.files.back().name);
    });
    reader.List("links", [&](NoteReader& entry, const NoteJson&) {
        tree.links.push_back({entry.Text("name"), entry.Text("target")});
        good = good && LeadsInside(tree.links.back().name);
    });
    std::vector<std::string> folders;
    reader.Names("folders", folders);
    for (std::string& folder : folders) {
        tree.folders.push_back({std::move(folder)});
        good = good && LeadsInside(tree.folders.back().name);
    }
    std::vector<std::string> others;
    if (reader.Has("others"))
        reader.Names("others", others);
    tree.others.assign(others.begin(), others.end());
    tree.rights = RightsIn(reader);
    return good && reader.Good() && ReadFolderRights(json, tree.folders);
}

} // namespace

std::string FormatLoanNote(const LoanNote& note)
{
    NoteJson places = NoteJson::array();
    for (const LentPlace& place : note.places)
        places.push_back({{"name", Encoded(place.name)},
                          {"stood", place.stood},
                          {"put", place.put},
                          {"size", place.size},
                          {"time", place.modifiedNs}});
    NoteJson json{{"folder", Encoded(note.folder.path)},
                  {"device", note.folder.device},
                  {"inode", note.folder.inode},
                  {"phase", loanPhases.at(static_cast<std::size_t>(note.phase))},
                  {"places", std::move(places)},
                  {"made", JsonOfNames(note.made)},
                  {"swept", JsonOfNames(note.swept)}};
    if (note.whole)
        json["whole"] = JsonOfTree(*note.whole);
    if (note.rest)
        json["rest"] = JsonOfTree(*note.rest);
    return Written(json);
}

Result<LoanNote> ParseLoanNote(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    LoanNote note;
    note.folder = {reader.Text("folder"), reader.Number<std::uint64_t>("device"),
                   reader.Number<std::uint64_t>("inode")};
    const auto phase = LoanPhaseOf(reader.Text("phase"));
    bool good = phase.has_value();
    reader.List("places", [&](NoteReader& entry, const NoteJson&) {
        note.places.push_back({entry.Text("name"), entry.Flag("stood"), entry.Flag("put"),
                               entry.Number<std::uint64_t>("size"),
                               entry.Number<std::int64_t>("time")});
        good = good && SafeRelative(note.places.back().name);
    });
    reader.Names("made", note.made);
    reader.Names("swept", note.swept);
    if (reader.Has("whole"))
        good = ReadTree(json["whole"], note.whole.emplace()) && good;
    if (reader.Has("rest"))
        good = ReadTree(json["rest"], note.rest.emplace()) && good;
    if (!reader.Good() || !good || !AllAreRelative(note.made) || !AllAreRelative(note.swept))
        return Failure{ErrorCode::Damaged, {}, {}};
    note.phase = *phase;
    return note;
}

} // namespace kestrova
