#include "app/upkeep_commands.h"

#include "app/opening.h"
#include "app/result_text.h"
#include "upkeep/change_compression.h"
#include "upkeep/change_level_audio.h"
#include "upkeep/copy_more_info.h"
#include "upkeep/create_tr4_infos.h"
#include "upkeep/equal_check.h"
#include "upkeep/move_archive.h"
#include "upkeep/recover_archive.h"
#include "words/commands.h"
#include "words/menus.h"
#include "words/moving.h"
#include "words/recovering.h"
#include "words/several.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

bool Recompress(Run& run)
{
    // Every level, whatever the settings were when it was stored.
    return ChangeCompression(run.session, [&](const std::string& name, const Path& files) {
        return ChangeLevelAudio(run.session, name, files);
    });
}

bool RecompressOne(Run& run)
{
    return ChangeCompressionOf(run.session, run.level,
                               [&](const std::string& name, const Path& files) {
                                   return ChangeLevelAudio(run.session, name, files);
                               });
}

std::string NameAt(const Archive& archive, std::size_t index)
{
    return Readable(Trim(archive.levels[index].levelName));
}

bool FindEqual(Run& run)
{
    if (!run.FromWords())
        return CheckEqualLevels(run.session.host, run.session.Folders(), run.session.archive);
    if (!HasArchiveFolder(run.session.host, run.session.archive))
        return false;
    Json pairs = Json::array();
    const bool scanned = FindEqualLevels(
        run.session.host, run.session.Folders(), run.session.archive, [&](const EqualPair& pair) {
            const LevelCode code = run.session.archive.levels[pair.level].levelCode;
            const LevelCode other = run.session.archive.levels[pair.other].levelCode;
            const std::string name = NameAt(run.session.archive, pair.level);
            const std::string otherName = NameAt(run.session.archive, pair.other);
            if (run.json != nullptr)
                pairs.push_back({{"code", code},
                                 {"name", name},
                                 {"file", Readable(pair.file)},
                                 {"otherCode", other},
                                 {"otherName", otherName}});
            else
                AddLine(run, GetMsg(Msg::EqualLine, {ZeroPadded(code, 4), name, pair.file,
                                                     ZeroPadded(other, 4), otherName}));
            return true;
        });
    if (run.json != nullptr)
        *run.json = std::move(pairs);
    return scanned;
}

bool MakeIndex(Run& run)
{
    return CreateTr4Infos(run.session.host, run.session.Folders(), run.session.archive);
}

bool Move(Run& run)
{
    if (!run.FromWords())
        return MoveArchive(run.session);
    const bool moved = MoveArchive(run.session, PlaceFromWord(run.arguments.words.front()));
    if (moved && run.json != nullptr)
        *run.json = {{"archive", TextOf(run.session.ArchivePath())},
                     {"folder", TextOf(run.session.Folders().levels)}};
    return moved;
}

bool Recover(Run& run)
{
    if (!run.FromWords())
        return RecoverArchive(run.session);
    RecoverWish wish;
    wish.folder = PlaceFromWord(run.arguments.words.front());
    for (const std::string& disc : run.arguments.ValuesOf("--discs"))
        wish.discs.push_back(PlaceFromWord(disc));
    wish.takeAside = run.arguments.Has("--set-aside");
    const bool recovered = RecoverArchive(run.session, wish);
    if (recovered && run.json != nullptr)
        *run.json = {{"archive", TextOf(run.session.ArchivePath())},
                     {"folder", TextOf(run.session.Folders().levels)},
                     {"levels", run.session.archive.levels.size()}};
    return recovered;
}

bool CopyDocuments(Run& run)
{
    return CopyMoreInfoFiles(run.session);
}

} // namespace

std::span<const CommandRow> UpkeepCommands()
{
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_MoveArc",
                    .caption = Msg::MenuMoveArchive,
                    .menu = "mnu_Manutenzione"},
         .terminal = {.word = "move",
                      .usage = Msg::UseMove,
                      .summary = Msg::SumMove,
                      .json = Msg::KeysMove,
                      .leastWords = 1,
                      .mostWords = 1},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = Move},
        {.terminal = {.word = "recompress",
                      .usage = Msg::UseRecompress,
                      .summary = Msg::SumRecompress},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = Recompress,
         .several = {.question = Msg::AskSeveralRecompress,
                     .caption = Msg::SeveralRecompress,
                     .step = Msg::SeveralRecompressing,
                     .done = Msg::SeveralRecompressed,
                     .run = RecompressOne}},
        {.window = {.control = "mnu_ControllaUguali",
                    .caption = Msg::MenuCheckEqual,
                    .menu = "mnu_Manutenzione"},
         .terminal = {.word = "equal",
                      .usage = Msg::UseEqual,
                      .summary = Msg::SumEqual,
                      .json = Msg::KeysEqual},
         .needs = Needs::Archive,
         .run = FindEqual},
        {.window = {.control = "mnu_CreaInfoTr4",
                    .caption = Msg::MenuCreateTr4Infos,
                    .menu = "mnu_Manutenzione",
                    .behind = "mnu_CopiaFileInfos"},
         .terminal = {.word = "index", .usage = Msg::UseIndex, .summary = Msg::SumIndex},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = MakeIndex},
        {.window = {.control = "mnu_CopiaFileInfos",
                    .caption = Msg::MenuCopyFileInfos,
                    .menu = "mnu_Manutenzione"},
         .terminal = {.word = "documents",
                      .usage = Msg::UseDocuments,
                      .summary = Msg::SumDocuments},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = CopyDocuments},
        {.window = {.control = "mnu_Recover",
                    .caption = Msg::MenuRecover,
                    .menu = "mnu_Manutenzione"},
         .terminal = {.word = "recover",
                      .usage = Msg::UseRecover,
                      .summary = Msg::SumRecover,
                      .json = Msg::KeysRecover,
                      .leastWords = 1,
                      .mostWords = 1,
                      .options = {OptionRow{"--discs", true, true, true},
                                  FlagOption("--set-aside")}},
         .needs = Needs::LevelEditor,
         .touches = Touches::Stores,
         .run = Recover},
        {.window = {.control = "mnu_MoveOnCd", .caption = Msg::MenuMoveOnCd, .menu = "mnu_Tools"},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .help = HelpTag::LevelsOnCd},
    };
    return rows;
}

} // namespace kestrova
