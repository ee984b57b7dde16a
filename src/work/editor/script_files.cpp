#include "editor/script_files.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "words/editor.h"

namespace kestrova
{

namespace
{

/// Real ones have some hundred kilobytes.
constexpr std::uint64_t longestSource = UINT64_C(64) << 20;

Failure NotRead(const Path& file, Failure failure)
{
    failure.subject = TextOf(file);
    failure.sentence = GetMsg(Msg::SourceNotRead) + failure.subject;
    return failure;
}

template <class Text>
Result<Text> ReadSource(const Path& file, Result<Text> (*parse)(std::string_view))
{
    const auto bytes = ReadSourceFile(file);
    if (!bytes)
        return bytes.Error();
    auto text = parse(*bytes);
    return text ? std::move(text) : NotRead(file, text.Error());
}

Status WriteSource(const Path& file, std::string_view text)
{
    return Saying(GetMsg(Msg::SourceNotWritten) + TextOf(file), WriteWholeFile(file, text));
}

} // namespace

Result<std::string> ReadSourceFile(const Path& file)
{
    auto bytes = ReadFileIfThere(file, longestSource);
    if (!bytes)
        return NotRead(file, bytes.Error());
    if (!bytes->has_value())
        return NotRead(file,
                       MakeFailure(ErrorCode::Missing, TextOf(file),
                                   std::make_error_code(std::errc::no_such_file_or_directory)));
    return std::move(**bytes);
}

Result<ScriptText> ReadScriptFile(const Path& file)
{
    return ReadSource(file, ParseScriptText);
}

Status WriteScriptFile(const Path& file, const ScriptText& script)
{
    return WriteSource(file, FormatScriptText(script));
}

Result<LanguageText> ReadLanguageFile(const Path& file)
{
    return ReadSource(file, ParseLanguageText);
}

Status WriteLanguageFile(const Path& file, const LanguageText& language)
{
    return WriteSource(file, FormatLanguageText(language));
}

} // namespace kestrova
