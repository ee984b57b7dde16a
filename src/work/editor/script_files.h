#pragma once

#include "core/names.h"
#include "formats/language_text.h"
#include "formats/script_text.h"

/// The sources of the game's list of levels and of its strings, as files. A failure says the file,
/// and the reason in words; what is written is the whole file or the old one.
namespace kestrova
{

/// `Missing` where there is no file.
Result<ScriptText> ReadScriptFile(const Path& file);
Status WriteScriptFile(const Path& file, const ScriptText& script);
Result<LanguageText> ReadLanguageFile(const Path& file);
Status WriteLanguageFile(const Path& file, const LanguageText& language);

/// The bytes of either, for who does not know yet which of them a file is.
Result<std::string> ReadSourceFile(const Path& file);

} // namespace kestrova
