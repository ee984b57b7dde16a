#include "app/kept_originals.h"

#include "catalogue/message.h"
#include "swap/folder_guard.h"
#include "swap/recovery.h"
#include "swap/vault.h"

namespace kestrova
{

bool BringOriginalBackTold(Session& session, const std::string& id)
{
    const Operation operation{session};
    if (!MayChangeTrle(session) || !RecoverInterruptedWork(session))
        return false;
    const auto place = BringOriginalBack(session, id);
    if (!place) {
        TellFailure(session, GetMsg(Msg::OriginalNotBroughtBack), place.Error());
        return false;
    }
    session.host.Tell(Tone::Plain, GetMsg(Msg::OriginalBroughtBack, {TextOf(*place)}));
    return true;
}

} // namespace kestrova
