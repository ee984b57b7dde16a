#include "formats/cd_install_text.h"

#include "core/names.h"
#include "core/text.h"

namespace kestrova
{

namespace
{

constexpr std::string_view trleTag = "#TRLE_SETUP# ";
constexpr std::string_view setupTag = "#KESTROVA_SETUP# ";
constexpr std::string_view archiveTag = "#ARCHIVE_PATH# ";
constexpr std::string_view autoRunHead = "[autorun]\r\nOPEN=";
constexpr std::string_view cdLineEnd = "\r\n";

void Append(std::string& text, std::string_view tag, const std::string& value)
{
    if (!value.empty())
        text.append(tag)
            .append(cdLineEnd)
            .append(ToWindows1252(OnOneLine(value)))
            .append(cdLineEnd);
}

bool IsTag(std::string_view line, std::string_view tag)
{
    return EqualNames(TrimEnd(line), TrimEnd(tag));
}

} // namespace

std::string FormatAutoRun(std::string_view program)
{
    return std::string{autoRunHead}.append(program).append(cdLineEnd);
}

std::string FormatCdInstall(const CdInstall& install)
{
    std::string text;
    Append(text, trleTag, install.trle);
    Append(text, setupTag, install.setup);
    Append(text, archiveTag, install.archive);
    return text;
}

Result<CdInstall> ParseCdInstall(std::string_view text)
{
    CdInstall install;
    const std::pair<std::string_view, std::string*> values[] = {
        {trleTag, &install.trle}, {setupTag, &install.setup}, {archiveTag, &install.archive}};
    std::string* awaited = nullptr;
    for (const std::string& bytes : Split(text, '\n')) {
        const std::string readable = OnOneLine(FromWindows1252(bytes));
        const std::string_view line = TrimEnd(readable);
        std::string* tag = nullptr;
        for (const auto& [name, value] : values)
            if (IsTag(line, name))
                tag = value;
        if (tag == nullptr && awaited != nullptr && awaited->empty())
            *awaited = line;
        awaited = tag;
    }
    for (const std::string* path : {&install.setup, &install.archive})
        if (!path->empty() && !SafeRelative(*path))
            return Failure{ErrorCode::Refused, *path, {}};
    return install;
}

} // namespace kestrova
