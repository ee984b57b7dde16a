#pragma once

#include "words/message.h"

// clang-format off

/// A level's stored form.
namespace kestrova::Msg
{

inline constexpr Message CopyingFilesLabel{"Copying files in progress..."};
inline constexpr Message UnzippingPackage{"Unzipping file '~1' in progress..."};
inline constexpr Message DecompressingFiles{"Decompressing files"};
inline constexpr Message AudioCompressionFailed{"Audio compression failed: "};
inline constexpr Message ContinueFileCopy{"Do you want continue in file copy?"};
inline constexpr Message AskErrorLevelAudio{"Error converting audio files for level: ~1Do you want continue?"};
inline constexpr Message StoreConvertingLoad{"Converting load.bmp in load.jpg"};
inline constexpr Message StoreCompressing{"Compressin file '~1' in progress"};
inline constexpr Message StoreFileCopy{"File copy in progress"};
inline constexpr Message ErrorStoringFiles{"Errore copying/compressing level files"};
inline constexpr Message UnstoreConvertingLoad{"Converting load.jpg in load.bmp"};
inline constexpr Message ErrorUnzippingFile{"Errore decompressing file '"};
inline constexpr Message DecompressingFile{"Decompressing file: "};
inline constexpr Message ErrorDecompressingFile{"Error decompressing file '"};
inline constexpr Message FormsKept{"These files stay as they are, since another file of the level has the name that they would get: ~1. Nothing of them is lost. To have them stored as the archive says, rename or remove one of each two in the properties of the level."};

} // namespace kestrova::Msg
