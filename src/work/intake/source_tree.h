#pragma once

#include "core/files.h"
#include "intake/source_report.h"

/// What lies in a folder that is given as a source.
namespace kestrova
{

/// Whether the files of sub-folders come too.
enum class Subfolders { Ask, Take };

/// The folders that count, and the files in them. `ending`: `.*` for all, otherwise the characters
/// that names end with. With `notRead` a sub-folder that cannot be read goes there, and the rest
/// counts.
Result<Tree> TreeOfSource(Host& host, const Path& source, std::string_view ending,
                          Subfolders subfolders, ProgressScope& progress,
                          std::vector<Failure>* notRead);

/// The files of such a tree.
Result<std::vector<Path>> FilesOfSource(Host& host, const Path& source, std::string_view ending,
                                        Subfolders subfolders, ProgressScope& progress);

/// The first file of each name; the others go to the report.
std::vector<Path> FirstOfEachName(const Tree& tree, ProgressScope& progress, SourceReport& report);

/// Links that lead out of the tree, and whatever else is no file.
std::vector<std::string> NotFilesIn(const Tree& tree);

} // namespace kestrova
