#include "app/check_commands.h"

#include "app/result_text.h"
#include "archive/level_folders.h"
#include "history/standing.h"
#include "session/telling.h"
#include "swap/backup_state.h"
#include "swap/verify.h"
#include "upkeep/level_checks.h"
#include "words/check.h"
#include "words/swap.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::size_t mostCheckedWords = 10'000;

std::string_view WordOf(Mismatch kind)
{
    switch (kind) {
    case Mismatch::Missing:
        return "missing";
    case Mismatch::Differs:
        return "differs";
    case Mismatch::BackupDamaged:
        return "backup-damaged";
    case Mismatch::Unexpected:
        break;
    }
    return "unexpected";
}

std::string_view WordOf(FileFault kind)
{
    switch (kind) {
    case FileFault::Missing:
        return "missing";
    case FileFault::Differs:
        return "differs";
    case FileFault::Cut:
        return "cut";
    case FileFault::Damaged:
        return "damaged";
    case FileFault::Unreadable:
        return "unreadable";
    case FileFault::InTheWay:
        return "in-the-way";
    case FileFault::Unexpected:
        break;
    }
    return "unexpected";
}

bool WantsRepair(const Run& run)
{
    return run.arguments.Has("--repair");
}

std::string WrongCheck(Run& run)
{
    const auto& words = run.arguments.words;
    if (run.arguments.Has("--all") && !words.empty())
        return GetMsg(Msg::CheckAllOrCodes);
    if (run.arguments.Has("--from") && !WantsRepair(run))
        return GetMsg(Msg::CheckFromNeedsRepair);
    for (const std::string& word : words)
        if (std::string wrong = WrongCodeIn(word); !wrong.empty())
            return wrong;
    return {};
}

/// Adds what the Level Editor's folder has in another way. False, told, when it could not be
/// compared.
bool CompareFolder(Run& run, Json& differences, bool isNamed, bool& fine)
{
    const auto found = VerifyFolder(run.session);
    if (!found) {
        TellFailure(run.session.host, GetMsg(Msg::VerifyFailed), found.Error());
        return false;
    }
    for (const Difference& difference : *found) {
        differences.push_back({{"kind", WordOf(difference.kind)}, {"file", difference.file}});
        AddLine(run, (isNamed ? std::string{"folder\t"} : std::string{}) +
                         std::string{WordOf(difference.kind)} + "\t" + OneField(difference.file));
    }
    fine = found->empty();
    if (!BackupIsAway(run.session.Folders()))
        return true;
    run.session.host.Tell(Tone::Warning,
                          GetMsg(Msg::VerifyNoBackup, {TextOf(run.session.Folders().Backup())}));
    return false;
}

bool CompareTrle(Run& run)
{
    Json differences = Json::array();
    bool fine = true;
    const bool compared = CompareFolder(run, differences, false, fine);
    if (run.json != nullptr)
        *run.json = {{"code", StandingLevel(run.session.Folders(), run.session.archive).code},
                     {"differences", std::move(differences)}};
    else if (fine && compared)
        AddLine(run, GetMsg(Msg::VerifyFine));
    return fine && compared;
}

/// The levels that the words name; none, told, when one of them is not in the archive.
std::optional<std::vector<LevelCode>> CodesOf(Run& run)
{
    std::vector<LevelCode> codes;
    for (const std::string& word : run.arguments.words) {
        const auto code = CodeFromWord(word);
        if (!code || run.session.archive.Find(*code) == nullptr) {
            run.session.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {word}));
            return {};
        }
        if (std::find(codes.begin(), codes.end(), *code) == codes.end())
            codes.push_back(*code);
    }
    return codes.empty() ? LevelChecks::Everything(run.session.Folders(), run.session.archive)
                         : codes;
}

/// A row of one level says no code, as ever.
void AddFaults(Run& run, const LevelChecks& checks, bool isOne, Json& differences)
{
    for (const CheckedRow& row : checks.Rows()) {
        Json difference = {{"kind", WordOf(row.fault.kind)}, {"file", row.fault.file}};
        if (!isOne)
            difference["code"] = row.code;
        if (!row.source.empty())
            difference["source"] = row.source;
        if (!row.remedy.empty())
            difference["remedy"] = row.remedy;
        differences.push_back(std::move(difference));
        AddLine(run, (isOne ? std::string{} : std::to_string(row.code) + "\t") +
                         std::string{WordOf(row.fault.kind)} + "\t" + OneField(row.fault.file) +
                         (row.remedy.empty() ? "" : "\t" + OneField(row.remedy)));
    }
}

void ShowChecks(Run& run, const LevelChecks& checks, bool isOne, Json& result)
{
    Json differences = Json::array();
    Json repaired = Json::array();
    for (const LevelChecks::Repaired& each : checks.RepairedOnes()) {
        repaired.push_back(
            {{"code", each.code}, {"file", each.file.file}, {"from", each.file.where}});
        AddLine(run, (isOne ? std::string{} : std::to_string(each.code) + "\t") + "repaired\t" +
                         OneField(each.file.file) + "\t" + OneField(each.file.where));
    }
    AddFaults(run, checks, isOne, differences);
    Json unchecked = Json::array();
    for (const UncheckedLevel& level : checks.Unchecked()) {
        unchecked.push_back({{"code", level.code}, {"reason", level.reason}});
        AddLine(run, std::to_string(level.code) + "\tunchecked\t" + OneField(level.reason));
    }
    result["differences"] = std::move(differences);
    if (WantsRepair(run))
        result["repaired"] = std::move(repaired);
    result["unchecked"] = std::move(unchecked);
    result["noted"] = checks.NotedNow();
}

/// Of levels that nobody named, a disc that is away is passed over.
bool IsAllChecked(const LevelChecks& checks, bool isNamed)
{
    return std::all_of(checks.Unchecked().begin(), checks.Unchecked().end(),
                       [&](const UncheckedLevel& level) { return level.isAway && !isNamed; });
}

bool CheckLevels(Run& run)
{
    const auto codes = CodesOf(run);
    if (!codes)
        return false;
    const bool isNamed = !run.arguments.words.empty();
    const bool isOne = isNamed && codes->size() == 1;
    LevelChecks checks{run.session};
    if (!checks.Check(*codes))
        return false;
    if (isOne && !checks.Unchecked().empty()) {
        run.session.host.Tell(Tone::Error, GetMsg(Msg::VerifyFailed),
                              checks.Unchecked().front().reason);
        return false;
    }
    const std::string from = run.arguments.ValueOf("--from");
    bool done = !WantsRepair(run) || checks.Repair(from.empty() ? Path{} : PlaceFromWord(from));
    Json result;
    if (isOne)
        result["code"] = codes->front();
    ShowChecks(run, checks, isOne, result);
    if (run.arguments.Has("--all")) {
        Json folder = Json::array();
        bool fine = true;
        done = CompareFolder(run, folder, true, fine) && fine && done;
        result["folder"] = std::move(folder);
    }
    if (run.json != nullptr)
        *run.json = std::move(result);
    else if (!isOne || WantsRepair(run))
        AddLine(run, checks.Summary());
    else if (checks.Rows().empty())
        AddLine(run, checks.NotedNow().empty() ? GetMsg(Msg::VerifyFine) : checks.Summary());
    return done && checks.Harmed() == 0 && IsAllChecked(checks, isNamed);
}

bool Compare(Run& run)
{
    return run.arguments.words.empty() && !run.arguments.Has("--all") ? CompareTrle(run)
                                                                      : CheckLevels(run);
}

} // namespace

std::span<const CommandRow> CheckCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "verify",
                      .usage = Msg::UseVerify,
                      .summary = Msg::SumVerify,
                      .json = Msg::KeysVerify,
                      .mostWords = mostCheckedWords,
                      .options = {FlagOption("--all"), FlagOption("--repair"),
                                  PlaceOption("--from")},
                      .wrong = WrongCheck},
         .needs = Needs::Archive,
         .run = Compare,
         .help = HelpTag::Check},
        {.terminal = {.word = "verify", .when = WantsRepair},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = CheckLevels,
         .help = HelpTag::Check},
    };
    return rows;
}

} // namespace kestrova
