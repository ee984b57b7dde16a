#include "app/discs_commands.h"

#include "app/disc_drives.h"
#include "app/disc_install.h"
#include "app/disc_lists.h"
#include "app/disc_making.h"
#include "app/result_text.h"
#include "core/text.h"
#include "upkeep/bring_back.h"
#include "words/discs_commands.h"
#include "words/moving.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// How many words stand behind a verb, and which options go with it.
struct VerbWords {
    std::string_view verb;
    std::size_t least = 0;
    std::size_t most = 0;
    bool json = false;
    std::string_view options{}; ///< each between blanks
};

constexpr VerbWords discVerbs[] = {
    {"drives", 0, 0, true},
    {"insert", 2, 2},
    {"eject", 1, 1},
    {"bring-back", 0, 1},
    {"install", 2, 2, true, " --full --compact "},
    {"image", 1, 1},
    {"plan", 0, 0, true, " --capacity --drive --with "},
    {"create", 0, 0, true, " --images --drive --capacity --speed --with --setup --remove --keep "},
    {"verify", 0, 0, true, " --all "},
    {"list", 1, 1, true, " --tree --reference "},
    {"blank", 2, 2},
};

/// An option that another verb has and this one has not; empty when there is none.
std::string ForeignOption(const Arguments& arguments, const VerbWords& verb)
{
    for (const auto& [option, values] : arguments.options) {
        const std::string word = ' ' + option + ' ';
        const auto takes = [&](const VerbWords& row) {
            return row.options.find(word) != std::string_view::npos;
        };
        if (!takes(verb) && std::any_of(std::begin(discVerbs), std::end(discVerbs), takes))
            return option;
    }
    return {};
}

std::size_t LevelsOnDiscs(const Archive& archive)
{
    return static_cast<std::size_t>(
        std::count_if(archive.levels.begin(), archive.levels.end(),
                      [](const LevelRecord& level) { return level.cdNumber != 0; }));
}

/// To the archive's own folder, or to the one that is named.
bool BringBackFromDiscs(Run& run)
{
    const auto& words = run.arguments.words;
    const std::size_t before = LevelsOnDiscs(run.session.archive);
    const bool back =
        MoveArchiveToHd(run.session, words.size() > 1 ? PlaceFromWord(words[1]) : Path{});
    if (back && before > 0)
        AddLine(run, GetMsg(Msg::LevelsBroughtBack,
                            {std::to_string(before), TextOf(run.session.Folders().levels)}));
    return back;
}

std::string WrongDiscs(Run& run)
{
    const auto& words = run.arguments.words;
    const auto* const verb =
        std::find_if(std::begin(discVerbs), std::end(discVerbs),
                     [&](const auto& row) { return row.verb == words.front(); });
    if (verb == std::end(discVerbs)) {
        std::vector<std::string> all;
        for (const VerbWords& row : discVerbs)
            all.emplace_back(row.verb);
        return GetMsg(Msg::WrongDiscsWord, {words.front(), Join(all, ", ")});
    }
    if (words.size() - 1 < verb->least || words.size() - 1 > verb->most)
        return GetMsg(Msg::WrongDiscsCount, {verb->verb});
    if (run.json != nullptr && !verb->json)
        return GetMsg(Msg::WrongDiscsJson, {verb->verb});
    if (const std::string foreign = ForeignOption(run.arguments, *verb); !foreign.empty())
        return GetMsg(Msg::WrongDiscsOption, {foreign, verb->verb});
    std::string wrong = WrongInstallOptions(run);
    if (wrong.empty())
        wrong = WrongListOptions(run);
    return wrong.empty() ? WrongDiscMaking(run) : wrong;
}

} // namespace

std::span<const CommandRow> DiscsCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "discs",
                      .verb = "drives",
                      .usage = Msg::UseDiscsDrives,
                      .summary = Msg::SumDiscsDrives,
                      .json = Msg::KeysDiscsDrives,
                      .leastWords = 1,
                      .mostWords = 3,
                      .options = {ValueOption("--capacity"), PlaceOption("--images"),
                                  ValueOption("--drive"), ValueOption("--speed"),
                                  ValueOption("--with"), PlaceOption("--setup"),
                                  FlagOption("--remove"), FlagOption("--keep"), FlagOption("--all"),
                                  FlagOption("--tree"), FlagOption("--reference"),
                                  FlagOption("--full"), FlagOption("--compact")},
                      .wrong = WrongDiscs},
         .run = ListDrives},
        {.terminal = {.word = "discs",
                      .verb = "insert",
                      .usage = Msg::UseDiscsInsert,
                      .summary = Msg::SumDiscsInsert},
         .touches = Touches::ItsOwn,
         .run = InsertDisc},
        {.terminal = {.word = "discs",
                      .verb = "eject",
                      .usage = Msg::UseDiscsEject,
                      .summary = Msg::SumDiscsEject},
         .touches = Touches::ItsOwn,
         .run = EjectDisc},
        {.terminal = {.word = "discs",
                      .verb = "list",
                      .usage = Msg::UseDiscsList,
                      .summary = Msg::SumDiscsList,
                      .json = Msg::KeysDiscsList},
         .run = ListDisc},
        {.terminal = {.word = "discs",
                      .verb = "blank",
                      .usage = Msg::UseDiscsBlank,
                      .summary = Msg::SumDiscsBlank},
         .touches = Touches::ItsOwn,
         .run = BlankInDrive},
        {.terminal = {.word = "discs",
                      .verb = "bring-back",
                      .usage = Msg::UseDiscsBringBack,
                      .summary = Msg::SumDiscsBringBack},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = BringBackFromDiscs},
        {.terminal = {.word = "discs",
                      .verb = "install",
                      .usage = Msg::UseDiscsInstall,
                      .summary = Msg::SumDiscsInstall,
                      .json = Msg::KeysDiscsInstall},
         .needs = Needs::LevelEditor,
         .touches = Touches::Stores,
         .run = InstallFromWords},
        {.terminal = {.word = "discs",
                      .verb = "image",
                      .usage = Msg::UseDiscsImage,
                      .summary = Msg::SumDiscsImage},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = TakeImageFromWords},
        {.terminal = {.word = "discs",
                      .verb = "plan",
                      .usage = Msg::UseDiscsPlan,
                      .summary = Msg::SumDiscsPlan,
                      .json = Msg::KeysDiscsPlan},
         .needs = Needs::Archive,
         .run = PlanDiscs},
        {.terminal = {.word = "discs",
                      .verb = "create",
                      .usage = Msg::UseDiscsCreate,
                      .summary = Msg::SumDiscsCreate,
                      .json = Msg::KeysDiscsCreate},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = MakeDiscSet},
        {.terminal = {.word = "discs",
                      .verb = "verify",
                      .usage = Msg::UseDiscsVerify,
                      .summary = Msg::SumDiscsVerify,
                      .json = Msg::KeysDiscsVerify},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = VerifyDiscSet},
    };
    return rows;
}

} // namespace kestrova
