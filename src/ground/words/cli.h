#pragma once

#include "words/message.h"

// clang-format off

/// The terminal: manual, questions, lines.
namespace kestrova::Msg
{

inline constexpr Message TerminalLineStart{"\r\x1b[K"};
inline constexpr Message TerminalUnanswered{"Left unanswered: "};
inline constexpr Message TerminalAnswersYes{" -> yes"};
inline constexpr Message TerminalAnswersNo{" -> no"};
inline constexpr Message TerminalYesNo{" [y/n, Enter: ~1] "};
inline constexpr Message TerminalYesNoLetters{"yn"};
inline constexpr Message TerminalOkCancel{" [o(k)/c(ancel), Enter: ~1] "};
inline constexpr Message TerminalOkCancelLetters{"oc"};
inline constexpr Message TerminalYesNoCancel{" [y/n/c(ancel), Enter: ~1] "};
inline constexpr Message TerminalYesNoCancelLetters{"ync"};
inline constexpr Message TerminalSuggestion{" [~1] "};
inline constexpr Message TerminalPath{" (a path; . for ~1, nothing to cancel) "};
inline constexpr Message ResultNotWritten{"The result could not be written to the standard output."};
inline constexpr Message VersionLine{"kestrovactl ~1"};
inline constexpr Message UsageLine{"Usage: kestrovactl [--home DIR] [--yes|--no] [--json] ~1"};
inline constexpr Message UsageHint{"kestrovactl help shows all commands."};
inline constexpr Message WrongNoCommand{"There is no command."};
inline constexpr Message WrongCommand{"There is no command '~1'."};
inline constexpr Message WrongMadeHelp{"There is nothing made for '~1'. help --man takes kestrova or kestrovactl, help --completion takes bash, zsh or fish."};
inline constexpr Message WrongTopic{"There is no command and no topic '~1'."};
inline constexpr Message NearTopic{"    kestrovactl help ~1"};
inline constexpr Message TopicsHint{"kestrovactl help topics lists what there is to read."};
inline constexpr Message HelpJson{"With `--json`: "};
inline constexpr Message HelpHead{"Usage: kestrovactl [--home DIR] [--yes|--no] [--json] COMMAND~1~2Commands:"};
inline constexpr Message HelpFoot{"~1Options may stand before or behind the command. --home DIR names the program's folder; --yes and --no answer the questions that want yes or no; --json gives the result as JSON.~2Exit code: 0 done, 1 failed or refused, 2 wrong use.~3kestrovactl help COMMAND, kestrovactl help topics (what the help tells), kestrovactl help TOPIC, kestrovactl help --markdown, --man [PROGRAM] or --completion [SHELL] (all commands in one page, for man, for bash, zsh or fish), kestrovactl --version"};
inline constexpr Message MarkdownHead{"# kestrovactl: Kestrova from a terminal~1~2    kestrovactl [--home DIR] [--yes|--no] [--json] COMMAND~3~4The program `kestrovactl help --markdown` prints this page.~5"};
inline constexpr Message MarkdownAll{"## For every command~1"};
inline constexpr Message MarkdownWhere{"- Options stand before or behind the command. `--` ends them.~1- `--home DIR` names the program's folder, where preferences, backup and history lie. Without it, it is the program's own folder when a `Kestrova.prf` or a file `portable` lies there, else `$XDG_DATA_HOME/kestrova`."};
inline constexpr Message MarkdownAnswers{"- Questions go to the terminal when there is one. `--yes` and `--no` answer those that want yes or no, ok or cancel. Whether the Level Editor's folder is original is never answered so, only by `--folder-is-original`. A question that is left unanswered is named on the standard error, and the exit code is 1.~1- Results stand on the standard output, messages on the standard error.~2- Exit code: 0 done, 1 failed or refused, 2 wrong use."};
inline constexpr Message MarkdownLocks{"- One program at a time changes a folder; a second one says who holds it. Commands that only look need not wait.~1- Ctrl-C ends a command that changes something as soon as the work under way allows it; a second one ends it at once, and the next start mends what is left.~2- With `--json` a result is JSON in UTF-8; whatever is no UTF-8 on the disk is read as Windows-1252. Sizes are in bytes, times are local."};
inline constexpr Message MarkdownTopics{"- `help COMMAND` tells of one command. `help topics` lists the topics of the manual that the windows show, and `help TOPIC` prints one of them.~1~2## Commands"};
inline constexpr Message ManHead{"## NAME~1kestrovactl - Kestrova from a terminal~2## SYNOPSIS~3`kestrovactl` [--home DIR] [--yes|--no] [--json] COMMAND\n"};
inline constexpr Message ManFoot{"## SEE ALSO~1`kestrova` is the program with the windows; its F1 shows the manual, a text that lies in its share folder as help_kestrova.txt. A copy in the program's folder goes first.~2"};
inline constexpr Message ManWindowsHead{"## NAME\nkestrova - keep custom levels in an archive and play one at a time\n## SYNOPSIS\n`kestrova` [--home DIR] [ARCHIVE.kva] [LEVEL...]\n## DESCRIPTION\nKestrova keeps custom levels of the Level Editor's game in an archive, each with its savegames, notes and screen-shots apart, and swaps the chosen one into the game's folder. The level before goes out, and the Level Editor's own files come back whenever they are wanted.\n\nAn archive that is named is opened; packages and folders of levels that are named are added to it. A second start over the same program's folder brings the window that is open to the front, and hands it these files; they are opened as soon as nothing else goes on there.\n\n"};
inline constexpr Message ManWindowsOptions{"## OPTIONS\n### --home DIR\nThe program's folder, where preferences, backup and history lie. Without it, it is the program's own folder when a `Kestrova.prf` or a file `portable` lies there, else `$XDG_DATA_HOME/kestrova`.\n### --version\nPrints the version.\n### --help\nPrints how the program is started.\n### --\nWhat stands behind it is an item, even where it begins with a dash.\n## COMMANDS\nWhat the menus hold, with the keys, and the words for `kestrovactl` where the terminal does the same.\n"};
inline constexpr Message ManMenu{"The menu `~1`:"};
inline constexpr Message ManKeys{" (~1)"};
inline constexpr Message ManInTerminal{"; `kestrovactl ~1`"};
inline constexpr Message ManWindowsFoot{"## ENVIRONMENT\n### XDG_DATA_HOME\nThe program's folder lies there; `~/.local/share` where it is not set.\n### XDG_RUNTIME_DIR\nA later start finds the first one there; in the program's folder where it is not set.\n## FILES\n### ~/.local/share/kestrova\nPreferences, the backup of the Level Editor's folder, the history of savegames, and what can be undone.\n## SEE ALSO\n`kestrovactl`(1). F1 in each window shows the manual.\n"};
inline constexpr Message MarkdownFoot{"## Where the program stands in scripts~1~2    kestrovactl setup --trle trle --full --folder-is-original~3    kestrovactl new --folder levels my.kva~4    kestrovactl add --name Dawn dawn/~5    kestrovactl play 1"};

} // namespace kestrova::Msg
