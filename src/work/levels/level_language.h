#pragma once

#include "swap/swap_parts.h"

/// A level's language file is replaced by the one of the player's own Level Editor, under the
/// level's own name; the level's file stays beside it as `*.dat.bak`, so that it can come back.
/// The player's language file is the first `*.dat` of the backup that is not `script.dat`; who has
/// `english.dat` there needs none of this.
namespace kestrova
{

enum class LanguageChange {
    Mine,     ///< the player's language goes in
    Original, ///< the level's own comes back
};

/// Why a language was not changed.
struct LanguageFailure {
    std::string words;
    std::string reason;    ///< the system's own; may be empty
    bool declined = false; ///< the person's own answer, of which nothing more is said
};

/// The `*.dat` of a folder but `script.dat`, in listing order.
Result<std::vector<Path>> LanguageFilesIn(const Path& folder);

/// Whether the player's language can go into a folder of level files: the name of its file, or why
/// it cannot.
bool CanSetMyLanguage(const Folders& folders, const Path& folder, LanguageFailure& failure,
                      std::string& languageFile);
/// Changes the language in a folder of level files. With `installed` the Level Editor's folder
/// follows, since the level stands there, and the person is asked first while a program runs in it;
/// what is not possible there is told as a warning.
bool ChangeLanguage(const SwapParts& parts, const Path& folder, LanguageChange change,
                    bool installed, LanguageFailure& failure);

/// True, and a message, when the player's Level Editor is English.
bool WarnIfEnglish(Host& host, const Folders& folders);
/// The same for a level of the archive; speaks only when `verbose`.
bool ChangeLanguageOfLevel(const SwapParts& parts, LevelCode code, LanguageChange change,
                           bool verbose);
/// The command for the level that is chosen in the list.
bool ChangeLanguageOfSelected(Session& session, LanguageChange change);
/// The command for all levels: those that cannot be changed are counted and passed over. False
/// when nothing was tried.
bool ChangeLanguageOfAll(Session& session, LanguageChange change);

} // namespace kestrova
