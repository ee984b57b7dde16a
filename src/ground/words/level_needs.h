#pragma once

#include "words/message.h"

// clang-format off

/// What a level needs that did not come with it, as its configuration file or its sources say.
namespace kestrova::Msg
{

inline constexpr Message DuplicationSource{"Duplication source: "};
inline constexpr Message LinkingWads{"Copying wads for: "};
inline constexpr Message CopyNamesRefused{"The configuration file of this level asks for copies under names that no file of a level can have, so they were not made: ~1."};
inline constexpr Message CopiesTooMany{"The configuration file of this level asks for more than ~1 copies of files, which no level needs. None of them was made, and its files are as they were. Its readme may tell what it really needs."};
inline constexpr Message CopiesNoRoom{"The copies that the configuration file of this level asks for need ~1, and there is no room for them on the disk (~2 are free). None of them was made, and the level's files are as they were. Make room, and add the level again."};
inline constexpr Message CopiesNotMade{"The copies that the configuration file of this level asks for could not be made, and its files are as they were. Make room on the disk, or give yourself the right to write there, and add the level again."};

inline constexpr Message WaveRequest{"Request extern wave files: "};
inline constexpr Message WaveCdUnknown{"Kestrova.cfg error: original cd for extern wave unknown (~1)"};
inline constexpr Message AskHaveCd{"Current level require an extern wav file that you can find in ~1 CD~2Have you this CD?"};
inline constexpr Message InsertCd{"Please insert ~1 CD in unit "};
inline constexpr Message InsertCdAnywhere{"(no disc is there yet; you can also choose a folder with its files next)"};
inline constexpr Message ChooseCdFolder{"Select the folder with the files of ~1 CD"};
inline constexpr Message AskRetryCd{"File '~1' not found~2Do you want retry?"};
inline constexpr Message WaveMissing{"Kestorva.cfg error: request extern wave file is missing ("};
inline constexpr Message WaveImport{"Import extern wave file: "};
inline constexpr Message WaveNamesRefused{"The configuration file of this level asks for sounds under names that no file of a level can have, so they were passed over: ~1."};
inline constexpr Message WavesNoRoom{"There is no room on the disk for the sound ~1 (~2), which this level needs. None of its sounds was copied, and its files are as they were. Make room, and add the level again."};
inline constexpr Message WavesNotCopied{"The sounds that this level needs from elsewhere could not be copied: ~1. Make room on the disk, or give yourself the right to write there, and add the level again."};

} // namespace kestrova::Msg
