#include "app/shots_commands.h"

#include "app/result_text.h"
#include "archive/level_folders.h"
#include "core/dates.h"
#include "core/look.h"
#include "core/size_words.h"
#include "library/mark_levels.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "shots/shot_commands.h"
#include "shots/shot_import.h"
#include "words/commands.h"
#include "words/menus.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

/// False, with words, where the folder cannot be listed.
bool LoadShots(Run& run, ShotList& shots)
{
    const auto loaded = shots.Load(run.session.Folders(), run.level);
    return loaded || TellFolderNotRead(run.session.host, loaded.Error());
}

/// The named picture is the one that the next command takes.
bool AimAt(Run& run, ShotList& shots, const std::string& name)
{
    const std::ptrdiff_t place = shots.Find(name);
    if (place < 0)
        run.session.host.Tell(Tone::Error,
                              GetMsg(Msg::ShotNone, {name, std::to_string(shots.Code())}));
    shots.SetTarget(place);
    return place >= 0;
}

bool ListShots(Run& run)
{
    ShotList shots;
    if (!LoadShots(run, shots))
        return false;
    if (run.json != nullptr)
        *run.json = Json::array();
    for (const Path& shot : shots.Files()) {
        const platform::FileFacts facts = platform::FactsOf(shot);
        const std::string name = TextOf(shot.filename());
        const std::string date = DateText(facts.modifiedNs);
        if (run.json != nullptr)
            run.json->push_back(
                {{"name", name}, {"file", TextOf(shot)}, {"size", facts.size}, {"modified", date}});
        else
            AddLine(run, GetMsg(Msg::ShotLine,
                                {date, SizeInWords(static_cast<double>(facts.size)), name}));
    }
    return true;
}

bool ImportAll(Run& run)
{
    const auto progress = run.session.host.BeginProgress(ProgressWindow::Progress, {});
    return ImportShots(run.session.host, run.session,
                       static_cast<std::size_t>(FindLevel(run.session.archive, run.level)),
                       *progress)
        .all;
}

/// Does it with the pictures that a window shows.
bool WithShown(Run& run, bool (*command)(const ArchiveParts&, ShotList&))
{
    ShotList* shown = run.face.Shots();
    return shown != nullptr && command(run.session, *shown);
}

/// Does it with the picture of that level whose name the words say.
template <class Work> bool WithNamed(Run& run, Work work)
{
    ShotList shots;
    return LoadShots(run, shots) && AimAt(run, shots, run.arguments.words[2]) && work(shots);
}

bool AddShotFile(Run& run)
{
    if (!run.FromWords())
        return WithShown(run, AddShot);
    ShotList shots;
    return LoadShots(run, shots) &&
           AddShotFile(run.session, shots, PlaceFromWord(run.arguments.words[2]));
}

bool Delete(Run& run)
{
    if (!run.FromWords())
        return WithShown(run, DeleteShot);
    return WithNamed(run, [&](ShotList& shots) { return DeleteShot(run.session, shots); });
}

bool Rename(Run& run)
{
    if (!run.FromWords())
        return WithShown(run, RenameShot);
    return WithNamed(run, [&](ShotList& shots) {
        return RenameShotTo(run.session, shots, shots.At(shots.Target()), run.arguments.words[3]);
    });
}

bool ExportTo(Run& run, const Path& shot, const Path& place)
{
    const auto target = FileToWrite(place);
    if (!target)
        return DoneOrTold(run.session.host, target.Error());
    const auto isFree = IsFree(*target);
    if (!isFree)
        return TellFolderNotRead(run.session.host, isFree.Error());
    return (*isFree || ConfirmReplace(run.session.host, shot, *target)) &&
           SaveShotTo(run.session.host, shot, *target);
}

bool ExportShot(Run& run)
{
    if (!run.FromWords())
        return WithShown(run, [](const ArchiveParts& parts, ShotList& shots) {
            return SaveShotAs(parts.host, parts.folders, shots);
        });
    return WithNamed(run, [&](ShotList& shots) {
        return ExportTo(run, shots.At(shots.Target()), PlaceFromWord(run.arguments.words[3]));
    });
}

bool MarkCover(const ArchiveParts& parts, LevelCode code, const std::string& name)
{
    LevelMarks marks;
    marks.cover = name;
    return MarkLevels(parts, {code}, marks).has_value();
}

/// The picture stands for its level from now on.
bool UseAsCover(const ArchiveParts& parts, ShotList& shots)
{
    const auto shot = ShotForCover(parts.host, shots);
    return shot && MarkCover(parts, shots.Code(), shot->filename().native());
}

/// The first picture, or whatever there is, stands for it.
bool TakeCoverBack(const ArchiveParts& parts, ShotList& shots)
{
    shots.SetTarget(ShotList::noTarget);
    return MarkCover(parts, shots.Code(), {});
}

bool TellOfCapture(Run& run)
{
    run.session.host.Tell(Tone::Plain, GetMsg(Msg::CaptureOnlyInPlay, {lineBreak}));
    return true;
}

struct ShotsVerb {
    std::string_view name;
    std::size_t words; ///< itself included
};
constexpr ShotsVerb shotsVerbs[] = {{"list", 2},   {"add", 3},    {"rename", 4},
                                    {"delete", 3}, {"export", 4}, {"import", 2}};

std::string WrongShots(Run& run)
{
    const auto& words = run.arguments.words;
    const auto* verb =
        std::find_if(std::begin(shotsVerbs), std::end(shotsVerbs),
                     [&](const ShotsVerb& row) { return row.name == words.front(); });
    if (verb == std::end(shotsVerbs))
        return GetMsg(Msg::WrongWordTooMany, {words.front()});
    if (words.size() < verb->words)
        return GetMsg(Msg::WrongWordMissing, {words.back()});
    if (words.size() > verb->words)
        return GetMsg(Msg::WrongWordTooMany, {words[verb->words]});
    if (const std::string wrong = WrongCodeIn(words[1]); !wrong.empty())
        return wrong;
    if (run.json != nullptr && verb->name != "list")
        return GetMsg(Msg::WrongOptionHere, {"--json", verb->name});
    return {};
}

/// An item of the menu of screen-shots. Without a level no picture is shown.
constexpr InWindow ShotsItem(std::string_view control, Message caption)
{
    return {.control = control, .caption = caption, .menu = "mnu_Edit", .noLevel = Message{}};
}

} // namespace

std::span<const CommandRow> ShotsCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "shots",
                      .verb = "list",
                      .usage = Msg::UseShots,
                      .summary = Msg::SumShots,
                      .json = Msg::KeysShots,
                      .leastWords = 1,
                      .mostWords = 4,
                      .wrong = WrongShots},
         .needs = Needs::LevelFiles,
         .run = ListShots},
        {.window = ShotsItem("mnu_CopyScreenShots", Msg::MenuCopyScreenShots),
         .terminal = {.word = "shots", .verb = "import"},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = ImportAll,
         .help = HelpTag::ImportShots},
        {.window = ShotsItem("mnu_CaptureScreen", Msg::MenuCaptureScreen),
         .run = TellOfCapture,
         .help = HelpTag::CaptureShot},
        {.window = ShotsItem("mnu_AddScreenshot", Msg::MenuAddScreenshot),
         .terminal = {.word = "shots", .verb = "add"},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = AddShotFile},
        {.window = ShotsItem("mnu_DeleteShot", Msg::MenuDeleteShot),
         .terminal = {.word = "shots", .verb = "delete"},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = Delete},
        {.window = ShotsItem("mnu_RenameShot", Msg::MenuRenameShot),
         .terminal = {.word = "shots", .verb = "rename"},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = Rename},
        {.window = ShotsItem("mnu_ResizeSave", Msg::MenuResizeSave), .help = HelpTag::ResizeShot},
        {.window = ShotsItem("mnu_SaveShot", Msg::MenuSaveShot),
         .terminal = {.word = "shots", .verb = "export"},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = ExportShot},
        {.window = ShotsItem("mnu_UseAsCover", Msg::MenuUseAsCover),
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = [](Run& run) { return WithShown(run, UseAsCover); },
         .help = HelpTag::Shots},
        {.window = ShotsItem("mnu_CoverBack", Msg::MenuCoverBack),
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = [](Run& run) { return WithShown(run, TakeCoverBack); },
         .help = HelpTag::Shots},
    };
    return rows;
}

} // namespace kestrova
