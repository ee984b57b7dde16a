#include "saves/shot_capture.h"

#include "catalogue/message.h"
#include "pictures/convert.h"
#include "saves/shot_files.h"

namespace kestrova
{

Status SaveCapturedShot(Session& session, const CapturedShot& shot, const Path& jpeg)
{
    if (auto made = MakeFolder(shot.folder); !made)
        return made;
    if (auto saved = SaveAsJpeg(shot.picture, jpeg); !saved)
        return saved;
    AddShotSize(session, static_cast<double>(FileSize(jpeg)), shot.level);
    return {};
}

bool AskSaveCapturedShot(Session& session, const CapturedShot& shot)
{
    const auto jpeg = session.host.ChooseSaveFile(GetMsg(Msg::CaptureSaveTitle),
                                                  GetMsg(Msg::CaptureSaveFilter), shot.folder, {});
    if (!jpeg)
        return false;
    if (const auto saved = SaveCapturedShot(session, shot, *jpeg); !saved) {
        const std::string place = std::string{lineBreak} + TextOf(*jpeg) + std::string{lineBreak};
        session.host.Tell(Tone::Error,
                          GetMsg(Msg::CaptureSaveFailed, {place}) + saved.Error().reason);
    }
    return true;
}

void BringGameBack(Session& session)
{
    if (session.machine.ActivateWindow(GetMsg(Msg::GameWindowTitle)))
        session.machine.TypeKeys("\n");
}

} // namespace kestrova
