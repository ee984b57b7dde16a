#include "app/language_commands.h"

#include "levels/level_language.h"
#include "words/language_commands.h"
#include "words/levels.h"

namespace kestrova
{

namespace
{

bool OfAll(const Run& run)
{
    return run.arguments.Has("--all");
}

std::string WrongLanguage(Run& run)
{
    const auto& words = run.arguments.words;
    if (words.front() != "set" && words.front() != "restore")
        return GetMsg(Msg::LanguageSetOrRestore, {words.front()});
    return OfAll(run) == (words.size() > 1) ? GetMsg(Msg::LanguageNeedsCode) : std::string{};
}

template <LanguageChange change> bool OneLanguage(Run& run)
{
    return ChangeLanguageOfSelected(run.session, change);
}

template <LanguageChange change> bool AllLanguages(Run& run)
{
    return ChangeLanguageOfAll(run.session, change);
}

} // namespace

std::span<const CommandRow> LanguageCommands()
{
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_SetMylanguage",
                    .caption = Msg::MenuSetMyLanguage,
                    .menu = "mnu_Language",
                    .onLevel = 5},
         .terminal = {.word = "language",
                      .verb = "set",
                      .usage = Msg::UseLanguage,
                      .summary = Msg::SumLanguage,
                      .leastWords = 1,
                      .mostWords = 2,
                      .options = {FlagOption("--all")},
                      .wrong = WrongLanguage},
         .needs = Needs::Level,
         .touches = Touches::LevelEditor,
         .run = OneLanguage<LanguageChange::Mine>,
         .several = {.question = Msg::AskSeveralMyLanguage,
                     .caption = Msg::SeveralMyLanguage,
                     .step = Msg::SeveralLanguage,
                     .done = Msg::SeveralLanguages}},
        {.window = {.control = "mnu_RestoreLanguage",
                    .caption = Msg::MenuRestoreLanguage,
                    .menu = "mnu_Language",
                    .onLevel = 6,
                    .noLevel = Msg::LanguageNoneSelectedRestore},
         .terminal = {.word = "language", .verb = "restore"},
         .needs = Needs::Level,
         .touches = Touches::LevelEditor,
         .run = OneLanguage<LanguageChange::Original>,
         .several = {.question = Msg::AskSeveralRestoreLanguage,
                     .caption = Msg::SeveralRestoreLanguage,
                     .step = Msg::SeveralLanguage,
                     .done = Msg::SeveralLanguages}},
        {.window = {.control = "mnu_SetLanguageAll",
                    .caption = Msg::MenuSetLanguageAll,
                    .menu = "mnu_Manutenzione",
                    .behind = "mnu_Recover"},
         .terminal = {.word = "language", .verb = "set", .when = OfAll},
         .needs = Needs::Archive,
         .touches = Touches::LevelEditor,
         .run = AllLanguages<LanguageChange::Mine>},
        {.window = {.control = "mnu_RestoreAll",
                    .caption = Msg::MenuRestoreLanguageAll,
                    .menu = "mnu_Manutenzione",
                    .behind = "mnu_SetLanguageAll"},
         .terminal = {.word = "language", .verb = "restore", .when = OfAll},
         .needs = Needs::Archive,
         .touches = Touches::LevelEditor,
         .run = AllLanguages<LanguageChange::Original>},
    };
    return rows;
}

} // namespace kestrova
