#pragma once

#include "core/result.h"

#include <string>
#include <string_view>

/// `cd_install.cfg` at the root of an archive's first disc, which a program that sets the disc up
/// reads. Lines end with CRLF; a tag stands alone on its line with one blank behind it, its value
/// on the next:
///
///     #TRLE_SETUP# ⏎       TRLE                     the Level Editor's folder is on the disc
///     #KESTROVA_SETUP# ⏎   \Kestrova\Setup.exe      the program's setup is
///     #ARCHIVE_PATH# ⏎     \Cd_Archive.kva          the archive is
namespace kestrova
{

namespace OnDisk
{
inline constexpr std::string_view CdInstallFile = "cd_install.cfg";
inline constexpr std::string_view CdInstaller = "cd_installer.exe";
inline constexpr std::string_view AutoRunFile = "autorun.inf";
inline constexpr std::string_view CdArchiveFile = "Cd_Archive.kva";
inline constexpr std::string_view CdTrleFolder = "trle";
inline constexpr std::string_view CdSetupFolder = "Kestrova";
inline constexpr std::string_view CdSetupProgram = "\\Kestrova\\Setup.exe";
inline constexpr std::string_view CdTrleValue = "TRLE";
} // namespace OnDisk

/// Values as they stand there; what is empty is not in the file.
struct CdInstall {
    std::string trle{};    ///< `TRLE`
    std::string setup{};   ///< the setup's program on the disc, with a backslash at its beginning
    std::string archive{}; ///< the archive's file on the disc, likewise
    bool operator==(const CdInstall&) const = default;
};

/// The content of `autorun.inf`, by which a computer starts a program of a disc that is put in.
std::string FormatAutoRun(std::string_view program);
/// Line ends and control characters of a value are blanks.
std::string FormatCdInstall(const CdInstall& install);
/// Tags count at their line's beginning, in any case and with or without the blank behind them; the
/// first of each rules. A tag without a value has none. `Refused` for a path that is none below the
/// disc's root: nothing of it is believed then.
Result<CdInstall> ParseCdInstall(std::string_view text);

} // namespace kestrova
