#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view HomeSign = "~";
inline constexpr std::string_view HomeStart = "~/";

/// Of the person's home folder, proposed at the first start.
inline constexpr std::string_view FolderForLevels = "Kestrova-levels";

inline constexpr std::string_view DoctorToolOpen = "xdg-open";

inline constexpr std::string_view MimeXml = "kestrova-mime.xml";
inline constexpr std::string_view MimeXmlOfSibling = "brivanta-mime.xml";
inline constexpr std::string_view MimeIcon = "application-x-kestrova-archive.svg";
inline constexpr std::string_view ProgramIconFile = "kestrova.svg";
inline constexpr std::string_view MimeFolder = "mime";
inline constexpr std::string_view MimePackages = "packages";
inline constexpr std::string_view MimePackage = "kestrova.xml";
inline constexpr std::string_view MimePackageOfSibling = "brivanta.xml";
inline constexpr std::string_view MimeIcons = "icons/hicolor/scalable/mimetypes";
inline constexpr std::string_view AppIcons = "icons/hicolor/scalable/apps";
inline constexpr std::string_view EntriesFolder = "applications";
inline constexpr std::string_view ProgramEntry = "kestrova.desktop";
inline constexpr std::string_view SiblingEntry = "brivanta.desktop";
inline constexpr std::string_view WindowsProgram = "kestrova";
inline constexpr std::string_view WindowClass = "kestrova";
inline constexpr std::string_view SiblingProgram = "brivanta.exe";
inline constexpr std::string_view TypeOfArchives = "application/x-kestrova-archive";
inline constexpr std::string_view TypeOfSibling = "application/x-brivanta-archive";

/// The catalogues of other languages, beside the folder of the program's resources.
inline constexpr std::string_view DirLocale = "locale";
inline constexpr std::string_view DirMessages = "LC_MESSAGES";
inline constexpr std::string_view FileNameCatalogue = "kestrova.mo";

/// Where later starts of the windows find the first one: a socket, and the lock of who listens.
inline constexpr std::string_view DirMeeting = "kestrova";
inline constexpr std::string_view MeetingSocket = ".kv~windows";
inline constexpr std::string_view MeetingLockEnding = ".lock";

} // namespace kestrova::OnDisk
