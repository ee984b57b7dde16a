#include "session/holder_words.h"

#include "core/dates.h"
#include "platform/clock.h"
#include "platform/process.h"
#include "words/session.h"

namespace kestrova
{

std::string WordsOfHolder()
{
    return Told(Msg::LockWords,
                {std::to_string(platform::OwnProcess()), DateText(platform::NowNs())});
}

} // namespace kestrova
