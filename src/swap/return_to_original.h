#pragma once

#include "swap/swap_records.h"
#include "swap/whereabouts.h"

#include "session/session.h"

/// The way back to the original configuration of what a swap left half done, or said that it left.
namespace kestrova
{

/// What mending had to leave, each noted so that the next start tries it again.
struct LeftInTrle {
    std::vector<std::string> kept;   ///< of somebody's own making, in the vault now
    std::vector<std::string> spared; ///< could not be kept, so they stand where they are
    std::vector<OwnedFile> added;    ///< could not be deleted
    std::vector<OwnedFile>
        unsure; ///< the level's or an original: without the backup nobody can tell
    std::vector<std::string> overwritten; ///< could not be brought back
    std::vector<OwnedFile> strangers;
};

void TellLeftovers(Session& session, const LeftInTrle& left);

/// Everything behind the point where the live state was stored ends at the original configuration.
/// Each step may be repeated.
Status ReturnToOriginal(Session& session, SwapJournal journal, LeftInTrle& left);
/// What a swap built beside its targets in the Level Editor's folder goes.
void ClearHalfDone(const Session& session);

/// Without a marker the folder is original; what a told failure left in it is cleared as soon as
/// the disk allows it.
void ClearToldLeftovers(Session& session);
/// The savegames of a level that a full restore had to leave in the folder go to that level's
/// store, and the original configuration's come in. `stay` gets the names of those that still
/// cannot; a level whose folder is not there just now is waited for, unless the person said where
/// it is or that it is gone for good, which sends them to the history.
Status ReturnHomelessState(Session& session, std::vector<std::string>& stay,
                           const Whereabouts& said = {});
/// Such savegames wait in a Level Editor's folder that was moved: the one that the person named is
/// the Level Editor's folder from now on, provided that it is that one. False, told, when it is
/// not.
bool FollowMovedState(Session& session, const Whereabouts& said);

/// What waits for a better moment while the original configuration stands, in words; empty when
/// nothing does.
std::string WhatWaitsInTrle(const Session& session);
/// What the person can do about it.
std::string RemedyInTrle(const Session& session);
/// Originals that the standing level does not replace and that are not back, as they are shown.
std::vector<std::string> OwedOriginals(const Session& session);

} // namespace kestrova
