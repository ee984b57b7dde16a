#include "discs/setup_cd.h"

#include "core/size_words.h"
#include "core/text.h"
#include "discs/disc_content.h"
#include "session/telling.h"
#include "words/core.h"
#include "words/disc_install.h"

#include <algorithm>

namespace kestrova
{

namespace
{

double SetupSize(const ArchiveHeader& header, bool full)
{
    const auto known = [](double size) { return std::max(0.0, size); };
    return known(header.secondaryFolderSize) + (full ? known(header.mainFolderSize) : 0.0);
}

} // namespace

Status HasSetupRoom(Machine& machine, const ArchiveHeader& header, const DiscSetup& setup)
{
    const auto free = machine.FreeSpace(setup.folder);
    if (!free)
        return free.Error();
    const double needed = SetupSize(header, setup.full);
    if (static_cast<double>(*free) > needed)
        return {};
    return Saying(GetMsg(Msg::DriveWithoutRoom, {TextOf(setup.folder)}) + FormatSize(needed) +
                      GetMsg(Msg::SetupNoRoomEnd),
                  MakeFailure(ErrorCode::NoSpace, TextOf(setup.folder)));
}

SetupCd::SetupCd(Host& host, Machine& machine, const Archive& archive)
    : host_(host), machine_(machine), archive_(archive)
{
}

std::string SetupCd::Title() const
{
    return GetMsg(Msg::SetupTitle,
                  {NameOnDiscs(archive_.header), std::to_string(archive_.levels.size() - 1),
                   std::to_string(archive_.header.cdCount)});
}

double SetupCd::Size(bool withFiles) const
{
    return SetupSize(archive_.header, withFiles);
}

std::string SetupCd::SizeText(bool withFiles) const
{
    return FormatSize(Size(withFiles));
}

bool SetupCd::Install()
{
    const auto folder =
        host_.ChooseFolder(GetMsg(Msg::InstallChooseFolder), FindLargestDrive(machine_).folder);
    if (!folder)
        return false;
    const DiscSetup setup{*folder, full};
    if (!DoneOrTold(host_, HasSetupRoom(machine_, archive_.header, setup)))
        return false;
    chosen_ = setup;
    return true;
}

} // namespace kestrova
