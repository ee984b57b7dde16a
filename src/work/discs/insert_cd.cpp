#include "discs/insert_cd.h"

#include "core/look.h"
#include "discs/disc_content.h"
#include "session/telling.h"
#include "words/disc_play.h"

#include <algorithm>

namespace kestrova
{

InsertCd::InsertCd(Host& host, DiscPlaces& places, Wanted wanted, Judge judge)
    : host_(host), places_(places), wanted_(std::move(wanted)), judge_(std::move(judge)),
      drives_(places.Drives())
{
    const auto holding = std::find_if(drives_.begin(), drives_.end(),
                                      [](const DiscDrive& drive) { return drive.holdsDisc; });
    if (holding != drives_.end())
        chosen = static_cast<std::size_t>(holding - drives_.begin());
    else if (drives_.size() == 1)
        chosen = 0;
}

std::string InsertCd::Message() const
{
    return GetMsg(Msg::InsertDisc) + std::to_string(wanted_.number);
}

std::string InsertCd::Details() const
{
    const std::string details =
        GetMsg(Msg::InsertCdDetails, {wanted_.level, wanted_.archive, LabelOfDisc(wanted_.number)});
    return wanted_.instead.empty() ? details : details + "\n\n" + wanted_.instead;
}

void InsertCd::Refresh()
{
    const std::string name = chosen ? drives_[*chosen].name : std::string{};
    drives_ = places_.Drives();
    chosen.reset();
    for (std::size_t i = 0; i < drives_.size() && !name.empty(); ++i)
        if (drives_[i].name == name)
            chosen = i;
}

bool InsertCd::Tell(const std::string& text, const Failure& failure)
{
    TellFailure(host_, text, failure);
    return false;
}

bool InsertCd::Take(const Path& root)
{
    auto folder = judge_(root);
    if (!folder)
        return Tell(GetMsg(Msg::MainFolderNotOnDisc, {wanted_.folder}), folder.Error());
    found_ = std::move(folder).Value();
    return true;
}

bool InsertCd::Accept()
{
    if (!chosen || *chosen >= drives_.size()) {
        host_.Tell(Tone::Error, GetMsg(Msg::NoDriveSelected));
        return false;
    }
    const std::string name = drives_[*chosen].name;
    Refresh();
    if (!chosen)
        return Tell(GetMsg(Msg::DriveNotPresent, {name}));
    if (!drives_[*chosen].holdsDisc) {
        places_.WaitForDisc();
        Refresh();
    }
    if (!chosen || !drives_[*chosen].holdsDisc)
        return Tell(GetMsg(Msg::DriveNotReady, {name}));
    const auto root = places_.Open(drives_[*chosen]);
    if (!root)
        return Tell(GetMsg(Msg::DriveNotReady, {name}), root.Error());
    image_.clear();
    return Take(*root);
}

bool InsertCd::ChooseImage()
{
    const auto image = host_.ChooseOpenFile(
        GetMsg(Msg::ChooseDiscImage, {std::to_string(wanted_.number)}),
        GetMsg(Msg::DiscImageFilter), image_.empty() ? Path{} : image_.parent_path());
    if (!image)
        return false;
    const auto root = places_.OpenImage(*image);
    if (!root) // a Stop is not told
        return root.Error().code != ErrorCode::Stopped &&
               Tell(GetMsg(Msg::DiscImageNotOpened, {TextOf(*image)}), root.Error());
    image_ = *image;
    return Take(*root);
}

} // namespace kestrova
