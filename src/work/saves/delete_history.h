#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// Deletes files of the levels' histories for good, after a question that names them. A word is the
/// id of a kept file, or the code of a level whose files all go. False when nothing was deleted, or
/// not all of it; told, unless the person said no.
bool DeleteHistoryTold(const ArchiveParts& parts, const std::vector<std::string>& words);

/// True for a word that has the form of an id or of a level's code.
bool NamesHistory(std::string_view word);

} // namespace kestrova
