#include "conversion/sound_converter.h"

#include "session/session.h"

namespace kestrova
{

SoundConverter SoundConverterOf(Session& session)
{
    return {ToolsOf(session), session.mp3Settings};
}

} // namespace kestrova
