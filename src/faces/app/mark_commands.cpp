#include "app/mark_commands.h"

#include "app/result_text.h"
#include "archive/level_folders.h"
#include "core/dates.h"
#include "library/mark_levels.h"
#include "platform/clock.h"
#include "words/mark_commands.h"

#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

constexpr std::string_view markOptions[] = {"--status", "--stars", "--tag",
                                            "--untag",  "--note",  "--cover"};

std::optional<int> StarsFromWord(const std::string& word)
{
    const auto stars = WholeNumber<int>(word);
    return stars && *stars >= 0 && *stars <= mostStars ? stars : std::nullopt;
}

std::string WrongMark(Run& run)
{
    const Arguments& said = run.arguments;
    for (const std::string& word : said.words)
        if (std::string wrong = WrongCodeIn(word); !wrong.empty())
            return wrong;
    if (std::none_of(std::begin(markOptions), std::end(markOptions),
                     [&](std::string_view option) { return said.Has(option); }))
        return GetMsg(Msg::WrongMarkNothing);
    if (const std::string word = said.ValueOf("--status");
        said.Has("--status") && !StatusFromWord(word))
        return GetMsg(Msg::WrongStatus, {word});
    if (const std::string word = said.ValueOf("--stars");
        said.Has("--stars") && !StarsFromWord(word))
        return GetMsg(Msg::WrongStars, {word});
    for (const std::string_view option : {"--tag", "--untag"})
        for (const std::string& tag : said.ValuesOf(option))
            if (Trim(tag).empty())
                return GetMsg(Msg::WrongTagEmpty);
    return {};
}

LevelMarks MarksOf(const Arguments& said)
{
    LevelMarks marks;
    if (said.Has("--status"))
        marks.status = StatusFromWord(said.ValueOf("--status"));
    if (said.Has("--stars"))
        marks.stars = StarsFromWord(said.ValueOf("--stars"));
    marks.addTags = said.ValuesOf("--tag");
    marks.dropTags = said.ValuesOf("--untag");
    if (said.Has("--note"))
        marks.ownNote = said.ValueOf("--note");
    if (said.Has("--cover"))
        marks.cover = said.ValueOf("--cover");
    return marks;
}

/// Each code once, in the order of the words.
std::vector<LevelCode> CodesOf(const Arguments& said)
{
    std::vector<LevelCode> codes;
    for (const std::string& word : said.words)
        if (const auto code = CodeFromWord(word);
            code && std::find(codes.begin(), codes.end(), *code) == codes.end())
            codes.push_back(*code);
    return codes;
}

Json MarksAsJson(const LevelNote& note)
{
    return {{"status", WordOf(note.status)},
            {"stars", note.stars},
            {"tags", note.tags},
            {"ownNote", note.ownNote},
            {"cover", Readable(note.cover)}};
}

std::string OrNone(const std::string& text)
{
    return text.empty() ? GetMsg(Msg::MarkNone) : OneField(text);
}

/// What a person reads of the note, a text for each row of `markNames`.
std::vector<std::string> MarkTexts(const LevelNote& note)
{
    return {std::string{WordOf(note.status)},
            note.stars == 0 ? GetMsg(Msg::MarkNone) : std::to_string(note.stars),
            OrNone(Join(note.tags, ", ")), OrNone(note.ownNote), OrNone(Readable(note.cover))};
}

constexpr Message markNames[] = {Msg::NotedStatus, Msg::NotedStars, Msg::NotedTags, Msg::NotedNote,
                                 Msg::NotedCover};

std::string NameOf(const Run& run, LevelCode code)
{
    return Readable(LevelNameOf(run.session.archive, code));
}

void ShowChanged(Run& run, const ChangedNote& changed)
{
    AddLine(run, ZeroPadded(changed.code, 4) + "  " + OneField(NameOf(run, changed.code)));
    if (changed.after == changed.before)
        return AddLine(run, GetMsg(Msg::MarkSame));
    const auto before = MarkTexts(changed.before);
    const auto now = MarkTexts(changed.after);
    for (std::size_t i = 0; i < now.size(); ++i)
        if (now[i] != before[i])
            AddLine(run, GetMsg(Msg::MarkLine, {GetMsg(markNames[i]), now[i], before[i]}));
}

bool Mark(Run& run)
{
    const auto changed = MarkLevels(run.session, CodesOf(run.arguments), MarksOf(run.arguments));
    if (!changed)
        return false;
    if (run.json != nullptr)
        *run.json = Json::array();
    for (const ChangedNote& level : *changed)
        if (run.json != nullptr)
            run.json->push_back({{"code", level.code},
                                 {"name", NameOf(run, level.code)},
                                 {"before", MarksAsJson(level.before)},
                                 {"now", MarksAsJson(level.after)}});
        else
            ShowChanged(run, level);
    return true;
}

/// `2026-11-21T13:05:09Z`: UTC.
std::string IsoTime(std::int64_t since1970)
{
    using namespace std::chrono;
    const sys_seconds moment{seconds{since1970}};
    const auto midnight = floor<days>(moment);
    const year_month_day date{midnight};
    const hh_mm_ss ofDay{moment - midnight};
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", int{date.year()},
                       unsigned{date.month()}, unsigned{date.day()}, ofDay.hours().count(),
                       ofDay.minutes().count(), ofDay.seconds().count());
}

Json TimeAsJson(const std::optional<std::int64_t>& seconds)
{
    return seconds ? Json(IsoTime(*seconds)) : Json(nullptr);
}

} // namespace

void AddNote(Json& level, const LevelNote& note)
{
    level["added"] = TimeAsJson(note.added);
    level["lastPlayed"] = TimeAsJson(note.lastPlayed);
    level["secondsPlayed"] = note.secondsPlayed;
    level.update(MarksAsJson(note));
}

void ShowNote(Run& run, const LevelNote& note)
{
    if (note.added)
        AddLine(run, GetMsg(Msg::NotedAdded, {DateText(*note.added * platform::nsOfSecond)}));
    if (note.lastPlayed)
        AddLine(run, GetMsg(Msg::NotedPlayed, {DateText(*note.lastPlayed * platform::nsOfSecond)}));
    if (note.secondsPlayed >= 60)
        AddLine(run, GetMsg(Msg::NotedTime, {std::to_string(note.secondsPlayed / 3600),
                                             std::to_string(note.secondsPlayed / 60 % 60)}));
    const auto empty = MarkTexts({});
    LevelNote ofOneLine = note;
    ofOneLine.ownNote.clear();
    const auto texts = MarkTexts(ofOneLine);
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (texts[i] != empty[i])
            AddLine(run, GetMsg(Msg::NotedLine, {GetMsg(markNames[i]), texts[i]}));
    if (!note.ownNote.empty())
        AddText(run, GetMsg(Msg::NotedNoteHead), note.ownNote);
}

std::span<const CommandRow> MarkCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "mark",
                      .usage = Msg::UseMark,
                      .summary = Msg::SumMark,
                      .json = Msg::KeysMark,
                      .leastWords = 1,
                      .mostWords = 10'000,
                      .options = {ValueOption("--status"), ValueOption("--stars"),
                                  OptionRow{"--tag", true, true}, OptionRow{"--untag", true, true},
                                  ValueOption("--note"), ValueOption("--cover")},
                      .wrong = WrongMark},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = Mark},
    };
    return rows;
}

} // namespace kestrova
