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
    return Written({{"folder", Encoded(note.folder.path)},
                    {"device", note.folder.device},
                    {"inode", note.folder.inode},
                    {"phase", loanPhases.at(static_cast<std::size_t>(note.phase))},
                    {"places", std::move(places)},
                    {"made", JsonOfNames(note.made)},
                    {"swept", JsonOfNames(note.swept)}});
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
    if (!reader.Good() || !good || !AllAreRelative(note.made) || !AllAreRelative(note.swept))
        return Failure{ErrorCode::Damaged, {}, {}};
    note.phase = *phase;
    return note;
}

} // namespace kestrova
