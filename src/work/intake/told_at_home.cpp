#include "intake/told_at_home.h"

#include "core/name_list.h"
#include "intake/drive_watch.h"
#include "platform/user_folders.h"
#include "words/installers.h"

namespace kestrova
{

void TellChangedAtHome(Host& host, ProgressScope& progress, std::int64_t sinceNs,
                       std::vector<Path> passedOver)
{
    const Path home = ResolvePath(platform::HomeFolder());
    if (home.empty())
        return;
    passedOver.push_back(platform::UserCacheFolder());
    std::erase_if(passedOver, [](const Path& folder) { return folder.empty(); });
    for (Path& folder : passedOver)
        folder = ResolvePath(folder);
    const auto changed = ChangedSince(home, sinceNs, passedOver, [&] { return progress.Step(); });
    if (!changed.names.empty())
        host.Tell(Tone::Warning,
                  GetMsg(Msg::InstallerWroteAtHome, {TextOf(home), ShownNames(changed.names)}));
    if (!changed.whole)
        host.Tell(Tone::Plain, GetMsg(Msg::InstallerHomeTooLarge, {TextOf(home)}));
}

} // namespace kestrova
