#include "editor/find_trle.h"

#include "editor/folder_test.h"
#include "editor/trle_registry.h"
#include "platform/places.h"
#include "session/held_folders.h"
#include "session/telling.h"
#include "words/editor.h"

namespace kestrova
{

namespace
{

constexpr std::size_t placeFieldSize = 256;

} // namespace

bool TrleFinder::Prepare()
{
    folder_ = session_.TrleFolder();
    if (!folder_.empty() &&
        IsTrleFolder(session_.host, session_.Folders(), session_.preferences, folder_, false))
        return true;
    folder_ = TrlePathFromRegistry(session_.Folders());
    return false;
}

void TrleFinder::Browse()
{
    if (const auto chosen =
            session_.host.ChooseFolder(GetMsg(Msg::ChooseTrleFolder), session_.TrleFolder()))
        Take(*chosen);
}

bool TrleFinder::Take(const Path& folder)
{
    const Path place = FolderFromText(platform::AbsolutePath(folder).lexically_normal().native());
    if (!IsTrleFolder(session_.host, session_.Folders(), session_.preferences, place, true))
        return false;
    folder_ = place;
    return true;
}

bool TrleFinder::Accept()
{
    if (!IsTrleFolder(session_.host, session_.Folders(), session_.preferences, folder_, true))
        return false;
    if (ToWindows1252(folder_.native()).size() > placeFieldSize) {
        session_.host.Tell(Tone::Error, GetMsg(Msg::FolderTooLong, {TextOf(folder_)}));
        return false;
    }
    Folders folders = session_.Folders();
    const Path old = std::exchange(folders.trle, folder_);
    if (!DoneOrTold(session_.host, HoldFolders(session_.locks, folders)))
        return false;
    session_.preferences.trlePath = folder_.native();
    if (!old.empty() && old != folder_)
        session_.locks.Release(old);
    // The old name may have been another one for the same folder.
    return DoneOrTold(session_.host, HoldFolders(session_.locks, session_.Folders()));
}

void TrleFinder::GiveUp()
{
    session_.host.Tell(Tone::Plain, GetMsg(Msg::CannotRunWithoutTrle, {lineBreak}),
                       GetMsg(Msg::WindowStaysWithoutTrle));
}

} // namespace kestrova
