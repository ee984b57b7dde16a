#include "app/wads_commands.h"

#include "app/opening.h"
#include "app/result_text.h"
#include "core/name_set.h"
#include "core/text.h"
#include "editor/wad_scripts.h"
#include "editor/wad_undo.h"
#include "intake/wad_packages.h"
#include "words/menus.h"
#include "words/wads.h"
#include "words/wads_commands.h"

#include <nlohmann/json.hpp>
#include <set>

namespace kestrova
{

namespace
{

/// What `--name` says.
struct NewName {
    std::string original;
    std::string name;
    bool used = false;
};

std::vector<NewName> NewNamesOf(const Arguments& arguments)
{
    std::vector<NewName> names;
    for (const std::string& value : arguments.ValuesOf("--name")) {
        const std::size_t sign = std::min(value.find('='), value.size());
        names.push_back(
            {value.substr(0, sign), value.substr(std::min(sign + 1, value.size())), false});
    }
    return names;
}

/// The report as a person or a program reads it.
void AddReport(Run& run, const std::string& report, bool done)
{
    Json lines = Json::array();
    for (const std::string& line : Split(ReplaceAll(report, "\r", ""), '\n')) {
        if (run.json != nullptr)
            lines.push_back(line);
        else
            AddLine(run, line);
    }
    if (run.json != nullptr)
        *run.json = {{"done", done}, {"report", std::move(lines)}};
}

bool ImportPackages(Run& run)
{
    std::vector<Path> packages;
    for (std::size_t i = 1; i < run.arguments.words.size(); ++i)
        packages.push_back(PlaceFromWord(run.arguments.words[i]));
    std::vector<NewName> names = NewNamesOf(run.arguments);
    const auto ask = [&](const std::string& original) {
        for (NewName& name : names)
            if (EqualNames(name.original, original)) {
                name.used = true;
                return name.name;
            }
        return original;
    };
    HearInterrupts();
    std::string report;
    const bool done = ImportWads(run.session, packages, ask, report);
    AddReport(run, report, done);
    for (const NewName& name : names)
        if (done && !name.used)
            run.session.host.Tell(Tone::Warning, GetMsg(Msg::WadsNameUnused, {name.original}));
    const bool whole = report.find("[ERROR") == std::string::npos;
    if (done && !whole)
        run.session.host.Tell(Tone::Error, GetMsg(Msg::WadsSomeFailed));
    return done && whole;
}

bool UndoImport(Run& run)
{
    const auto newest = NewestImport(run.session.Folders());
    std::string subject = newest ? Readable(newest->subject) : std::string{};
    if (!run.FromWords() && newest &&
        !run.session.host.AskYesNo(GetMsg(Msg::AskUndoImport, {subject})))
        return false;
    if (!UndoNewestImport(run.session, subject))
        return false;
    const std::string done = GetMsg(Msg::ImportUndone, {subject});
    run.face.Note(done);
    AddLine(run, done);
    return true;
}

std::string WrongNewNames(const Arguments& arguments)
{
    NameSet originals;
    for (const std::string& value : arguments.ValuesOf("--name")) {
        const std::size_t sign = value.find('=');
        if (sign == std::string::npos || Trim(value.substr(0, sign)).empty() ||
            !CanBeLevelName(value.substr(sign + 1)))
            return GetMsg(Msg::WrongWadsName, {value});
        if (originals.Has(value.substr(0, sign)))
            return GetMsg(Msg::WrongWadsNameTwice, {value.substr(0, sign)});
        originals.Add(value.substr(0, sign));
    }
    return {};
}

std::string WrongWads(Run& run)
{
    const auto& words = run.arguments.words;
    const bool imports = words.front() == "import";
    if (!imports && words.front() != "undo")
        return GetMsg(Msg::WrongWadsWord, {words.front()});
    if (imports ? words.size() < 2 : words.size() > 1)
        return GetMsg(Msg::WrongWadsCount);
    if (!imports && (run.json != nullptr || run.arguments.Has("--name")))
        return GetMsg(Msg::WrongWadsOption);
    return WrongNewNames(run.arguments);
}

} // namespace

std::span<const CommandRow> WadsCommands()
{
    constexpr std::size_t mostPackages = 1000;
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_ImportWads",
                    .caption = Msg::MenuImportWads,
                    .menu = "mnu_Tools"},
         .terminal = {.word = "wads",
                      .verb = "import",
                      .usage = Msg::UseWads,
                      .summary = Msg::SumWads,
                      .json = Msg::KeysWads,
                      .leastWords = 1,
                      .mostWords = mostPackages,
                      .options = {{"--name", true, true}},
                      .wrong = WrongWads,
                      .failsWhenTold = true},
         .needs = Needs::Archive,
         .touches = Touches::LevelEditor,
         .run = ImportPackages},
        {.window = {.control = "mnu_UndoImportWads",
                    .caption = Msg::MenuUndoImportWads,
                    .menu = "mnu_Tools",
                    .shown =
                        [](const Session& session) {
                            const auto newest = NewestImport(session.Folders());
                            return ShownNow{newest ? GetMsg(Msg::UndoImportOf,
                                                            {OnOneLine(Readable(newest->subject))})
                                                   : GetMsg(Msg::MenuUndoImportWads),
                                            newest.has_value()};
                        }},
         .terminal = {.word = "wads", .verb = "undo"},
         .needs = Needs::Archive,
         .touches = Touches::LevelEditor,
         .run = UndoImport},
    };
    return rows;
}

} // namespace kestrova
