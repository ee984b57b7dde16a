#pragma once

#include "words/message.h"

// clang-format off

/// Packages, in and out.
namespace kestrova::Msg
{

inline constexpr Message ConfigNotFound{"Config file '~1' not found"};
inline constexpr Message ConfigErrorOpening{"Error opening config file: "};
inline constexpr Message ConfigErrorReading{"Error reading config file: "};
inline constexpr Message ConfigErrorOpeningWrite{"Error opening for write config file: "};
inline constexpr Message ConfigErrorWriting{"Error writing config file: "};
inline constexpr Message ConfigDamaged{"It ends before all that it promises: it was cut or damaged on its way, or it is no configuration file. Nothing was taken from it."};
inline constexpr Message ConfigTextTooLong{"A name in its list of files, or its text about tom files, has more than 32767 letters. Nothing was written."};
inline constexpr Message PageWithName{"~1 (~2)"};
inline constexpr Message PageUnicode{"Unicode"};
inline constexpr Message PageDosUs{"English, German, French, DOS"};
inline constexpr Message PageDosWest{"Western Europe, DOS"};
inline constexpr Message PageWest{"Western Europe, Windows"};
inline constexpr Message PageDosCentral{"Polish, Czech, Hungarian, DOS"};
inline constexpr Message PageCentral{"Polish, Czech, Hungarian, Windows"};
inline constexpr Message PageUnixCentral{"Polish, Czech, Hungarian, Unix"};
inline constexpr Message PageDosCyrillic{"Russian, DOS"};
inline constexpr Message PageCyrillic{"Russian, Windows"};
inline constexpr Message PageUnixCyrillic{"Russian, Unix"};
inline constexpr Message PageDosGreek{"Greek, DOS"};
inline constexpr Message PageGreek{"Greek, Windows"};
inline constexpr Message PageDosTurkish{"Turkish, DOS"};
inline constexpr Message PageTurkish{"Turkish, Windows"};
inline constexpr Message PageHebrew{"Hebrew, Windows"};
inline constexpr Message PageArabic{"Arabic, Windows"};
inline constexpr Message PageBaltic{"Baltic, Windows"};
inline constexpr Message PageThai{"Thai"};
inline constexpr Message PageJapanese{"Japanese"};
inline constexpr Message PageUnixJapanese{"Japanese, Unix"};
inline constexpr Message PageChinese{"Chinese, simplified"};
inline constexpr Message PageTaiwanese{"Chinese, traditional"};
inline constexpr Message PageKorean{"Korean"};
inline constexpr Message ZipProgramMissing{"Zip program 'pkzip.exe' not found in: "};
inline constexpr Message ErrorDeletingOldFiles{"Error while deleting old files in: "};
inline constexpr Message ExtractFileList{"Extract file list from "};
inline constexpr Message UnpackTooBig{"The package '~1' of ~2 becomes ~3 or more when it is unpacked. No level does that, so it was not taken. What had come out of it was removed; the package itself and everything else are untouched."};
inline constexpr Message UnpackNoRoom{"There is no room to unpack '~1': it needs ~2 in the folder ~3. What had come out of it was removed; the package itself and everything else are untouched. Make room on the disk, and try again."};
inline constexpr Message UnpackTooManyFiles{"The package '~1' holds ~2 files. No level has so many, so it was not taken. Nothing was unpacked, and the package itself is untouched."};
inline constexpr Message UnpackTooManyCame{"The package '~1' became more than ~2 files and folders. No level has so many, so it was not taken. What had come out of it was removed; the package itself and everything else are untouched."};
inline constexpr Message UnpackTooDeep{"The package '~1' holds folders in folders, ~2 deep. No level does that, so it was not taken. Nothing of it was left behind, and the package itself is untouched."};
inline constexpr Message UnpackNameTooLong{"The package '~1' holds a file or folder whose name is too long: ~2. It was not taken. Nothing of it was left behind, and the package itself is untouched. If you need what is in it, unpack it by hand, give that file a shorter name, and add the folder."};
inline constexpr Message NameGoesOn{"…"};
inline constexpr Message UnpackNotMoved{"What came out of the package '~1' could not be put in its place, so it was not taken. The package itself is untouched."};
inline constexpr Message PackageDiskFails{"The package '~1' could not be read to its end: the disk that it lies on fails. Nothing was taken from it, and everything else is untouched. Connect the disk again, or copy the package to another one, and try again."};
inline constexpr Message PackageDamaged{"The package '~1' is damaged or not fully downloaded. Nothing was taken from it, and everything else is untouched. Download it again, and try again."};
inline constexpr Message PackageLocked{"The package '~1' is locked with a password. Nothing was taken from it, and everything else is untouched. Unpack it with a program that asks for the password, and add the folder."};
inline constexpr Message PackageMethod{"The package '~1' is packed in a way that the programs here cannot unpack. Nothing was taken from it, and everything else is untouched. Unpack it with the program that it was made with, and add the folder."};
inline constexpr Message PackageNames{"The package '~1' has names in an alphabet that could not be read. Nothing was taken from it, and everything else is untouched. Unpack it with the program that it was made with, and add the folder."};
inline constexpr Message PackageEmpty{"The package '~1' holds no file. Nothing was taken from it, and everything else is untouched."};
inline constexpr Message PackageNotRead{"The package '~1' could not be read. Nothing was taken from it, and everything else is untouched. Give yourself the right to read it, and try again."};
inline constexpr Message PackageLeadsOut{"The package '~1' holds names or links that lead out of the folder that it is unpacked in. No level needs that, so nothing was taken from it, and everything else is untouched."};
inline constexpr Message PackageClash{"The package '~1' has a file and a folder of the same name, which cannot stand beside each other. Nothing was taken from it, and everything else is untouched. Unpack it by hand, and add what the level needs."};
inline constexpr Message PackageNoRoom{"There was no room to unpack the package '~1'. Nothing was taken from it, and everything else is untouched. Make room on the disk, and try again."};

} // namespace kestrova::Msg
