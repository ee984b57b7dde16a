#pragma once

#include <string_view>

// clang-format off

/// Names of files and words of commands that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view ImageName = "imagecd.iso";
inline constexpr std::string_view StandardInput = "-";
inline constexpr std::string_view PipeName = "pipe";
inline constexpr std::string_view Shell = "/bin/sh";
inline constexpr std::string_view ShellCommand = "-c";
/// The program is what follows, joined to the pipe that the variable names.
inline constexpr std::string_view PipeVariable = "KESTROVA_PIPE";
inline constexpr std::string_view ShellWrites = "exec \"$0\" \"$@\" >\"$KESTROVA_PIPE\"";
inline constexpr std::string_view ShellReads = "exec \"$0\" \"$@\" <\"$KESTROVA_PIPE\"";
inline constexpr std::string_view BlankAll = "all";
inline constexpr std::string_view BlankFast = "fast";
inline constexpr std::string_view VerifyAll = "all";
inline constexpr std::string_view VerifyFast = "fast";
inline constexpr std::string_view FlatList = "FlatList";
inline constexpr std::string_view TreeList = "TreeList";
inline constexpr std::string_view ReferenceList = "ReferenceList";
inline constexpr std::string_view ListSource = "Source";
inline constexpr std::string_view ListTarget = "Target";
inline constexpr std::string_view NotAddFile = "NotAddFile";
inline constexpr std::string_view SpeedAuto = "auto";

} // namespace kestrova::OnDisk
