#pragma once

#include "conversion/level_audio.h"
#include "conversion/sound_converter.h"
#include "session/session.h"
#include "storage/game_files.h"
#include "storage/storage.h"
#include "storage/stored_audio.h"
#include "storage/unstore.h"

/// What takes several parts of a session, with all of them from one.
namespace kestrova::testing
{

template <class... Rest> Status StoreLevelFiles(Session& session, const Rest&... rest)
{
    return kestrova::StoreLevelFiles(session.host, session.Folders(), session.archive,
                                     SoundConverterOf(session), rest...);
}

template <class... Rest> auto ReadyLevelFiles(Session& session, const Rest&... rest)
{
    return kestrova::ReadyLevelFiles(session.host, session.machine, SoundConverterOf(session),
                                     rest...);
}

template <class... Rest> auto UnstoreLevelFiles(Session& session, const Rest&... rest)
{
    return kestrova::UnstoreLevelFiles(session.host, session.machine, SoundConverterOf(session),
                                       rest...);
}

template <class... Rest> Status ChangeStoredAudio(Session& session, const Rest&... rest)
{
    return kestrova::ChangeStoredAudio(session.host, session.machine, SoundConverterOf(session),
                                       rest...);
}

} // namespace kestrova::testing
