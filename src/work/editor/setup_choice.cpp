#include "editor/setup_choice.h"

#include "core/look.h"
#include "core/size_words.h"
#include "editor/setup_run.h"
#include "editor/setup_target.h"
#include "platform/user_folders.h"
#include "session/operation.h"
#include "words/level_setup.h"
#include "words/lists.h"
#include "words/sources.h"

#include <algorithm>

namespace kestrova
{

SetupChoice::SetupChoice(Session& session, const std::optional<Path>& folder) : session_(session)
{
    wish_.fromZips = !folder;
    wish_.folder = folder.value_or(Path{});
    wish_.target = ProposedTarget(session.Folders());
}

void SetupChoice::ChooseZip()
{
    const Path start =
        wish_.zips.empty() ? platform::HomeFolder() : wish_.zips.back().parent_path();
    if (const auto zip = session_.host.ChooseOpenFile(GetMsg(Msg::SetupChooseZip),
                                                      GetMsg(Msg::ZipFilesFilter), start))
        AddZip(*zip);
}

void SetupChoice::AddZip(const Path& zip)
{
    if (std::any_of(wish_.zips.begin(), wish_.zips.end(), [&](const Path& known) {
            return known == zip || ResolvePath(known) == ResolvePath(zip);
        }))
        session_.host.Tell(Tone::Error, GetMsg(Msg::SetupZipTwice, {TextOf(zip)}));
    else
        wish_.zips.push_back(zip);
}

void SetupChoice::Remove(std::optional<std::size_t> zip)
{
    if (!zip || *zip >= wish_.zips.size())
        session_.host.Tell(Tone::Error, GetMsg(Msg::NoItemSelected));
    else
        wish_.zips.erase(wish_.zips.begin() + static_cast<std::ptrdiff_t>(*zip));
}

void SetupChoice::ChooseTarget()
{
    if (const auto folder =
            session_.host.ChooseFolder(GetMsg(Msg::SetupChooseTarget), wish_.target.parent_path()))
        wish_.target = *folder;
}

std::string SetupChoice::RoomText() const
{
    if (wish_.target.empty())
        return GetMsg(Msg::SetupNoTarget);
    const auto free = session_.machine.FreeSpace(wish_.target);
    return free ? GetMsg(Msg::SetupRoomThere, {SizeInWords(static_cast<double>(*free))})
                : free.Error().reason;
}

bool SetupChoice::Install(ProgressScope& progress)
{
    return SetupLevelEditor(session_, wish_, progress, installed_);
}

std::optional<Path> ChooseSetupFolder(Host& host)
{
    return host.ChooseFolder(GetMsg(Msg::SetupChooseFolder), "/");
}

} // namespace kestrova
