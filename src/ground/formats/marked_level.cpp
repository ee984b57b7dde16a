#include "formats/marked_level.h"

namespace kestrova
{

namespace
{

template <class Value>
void Compare(const Value& was, const Value& is, std::optional<Value>& before,
             std::optional<Value>& after)
{
    if (was == is)
        return;
    before = was;
    after = is;
}

/// Each thing that can be said, with its place in the note and its word.
template <class Note, class Marks, class Work> void ForEachMark(Note& note, Marks& marks, Work work)
{
    work(note.status, marks.status, "status");
    work(note.stars, marks.stars, "stars");
    work(note.tags, marks.tags, "tags");
    work(note.ownNote, marks.ownNote, "note");
    work(note.cover, marks.cover, "cover");
}

} // namespace

MarkedLevel MarkedBetween(LevelCode code, const LevelNote& before, const LevelNote& after)
{
    MarkedLevel marked;
    marked.code = code;
    Compare(before.status, after.status, marked.before.status, marked.after.status);
    Compare(before.stars, after.stars, marked.before.stars, marked.after.stars);
    Compare(before.tags, after.tags, marked.before.tags, marked.after.tags);
    Compare(before.ownNote, after.ownNote, marked.before.ownNote, marked.after.ownNote);
    Compare(before.cover, after.cover, marked.before.cover, marked.after.cover);
    return marked;
}

bool Says(const LevelNote& note, const SaidMarks& marks)
{
    bool says = true;
    ForEachMark(note, marks, [&](const auto& is, const auto& said, const char*) {
        says = says && (!said || *said == is);
    });
    return says;
}

void PutMarks(LevelNote& note, const SaidMarks& marks)
{
    ForEachMark(note, marks, [](auto& is, const auto& said, const char*) {
        if (said)
            is = *said;
    });
}

std::string_view OnlyMarkOf(const SaidMarks& marks)
{
    std::string_view only;
    int count = 0;
    const LevelNote nothing;
    ForEachMark(nothing, marks, [&](const auto&, const auto& said, const char* word) {
        count += said ? 1 : 0;
        only = said ? word : only;
    });
    return count == 1 ? only : std::string_view{};
}

} // namespace kestrova
