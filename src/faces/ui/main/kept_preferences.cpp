#include "ui/main/kept_preferences.h"

#include "core/look.h"
#include "formats/program_folder.h"
#include "session/preferences_file.h"
#include "session/telling.h"
#include "ui/desktop/spoken_language.h"

#include <QApplication>

#include <utility>

namespace kestrova
{

namespace
{

/// Nothing is known of a file that is not there or cannot be looked at.
platform::FileFacts FactsOfSettings(const Session& session)
{
    return LookAt(InFolder(session.programFolder, OnDisk::FragSettings)).ValueOr({});
}

} // namespace

void KeptPreferences::Keep()
{
    const auto kept =
        SavePreferencesNow(session_.Folders(), session_.preferences, session_.settings);
    if (!kept && !std::exchange(told_, true))
        DoneOrTold(session_.host, kept);
    told_ = told_ && !kept;
    if (kept)
        seen_ = FactsOfSettings(session_);
}

void KeptPreferences::TakeWhatOthersWrote()
{
    if (session_.running.operations > 0 || QApplication::activeModalWidget() != nullptr)
        return;
    const platform::FileFacts now = FactsOfSettings(session_);
    const auto before = std::exchange(seen_, now);
    // One without a word in it is about to be written.
    if (!before || now.size == 0 ||
        (now.inode == before->inode && now.size == before->size &&
         now.modifiedNs == before->modifiedNs))
        return;
    auto settings = ReadSettings(session_.programFolder);
    if (!settings)
        return; // it is looked at again when it is another one
    session_.settings = std::move(*settings);
    SpeakInWindows(session_.settings.language);
}

} // namespace kestrova
