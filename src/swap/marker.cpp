#include "swap/marker.h"

#include "catalogue/message.h"

namespace kestrova
{

std::string MarkerValue(std::string_view tag, std::string_view text)
{
    const std::size_t place = FindFolded(text, tag);
    if (place == std::string_view::npos)
        return {};
    const std::string_view rest = text.substr(place + tag.size());
    return std::string{Trim(rest.substr(0, rest.find('#')))};
}

LevelCode CurrentLevelCode(const Session& session)
{
    const auto bytes = ReadWholeFile(session.MarkerPath());
    if (!bytes)
        return originalCode;
    return LeadingNumber(MarkerValue(RowText(Msg::TagLevelCode), *bytes));
}

std::string MarkerHead(LevelCode code, const std::string& name)
{
    std::string text;
    for (const Msg line : {Msg::MarkerLine1, Msg::MarkerLine2, Msg::MarkerLine3, Msg::MarkerLine4})
        text += GetMsg(line) + std::string{lineBreak};
    text += GetMsg(Msg::TagLevelCode) + ZeroPadded(code, 4) + "#" + std::string{lineBreak};
    text += GetMsg(Msg::TagLevelName) + std::string{Trim(name)} + "#" + std::string{lineBreak};
    return ToWindows1252(text);
}

std::string MarkerText(LevelCode code, const std::string& name,
                       const std::vector<std::string>& overwritten,
                       const std::vector<std::string>& copied)
{
    const auto list = [](Msg tag, const std::vector<std::string>& files) {
        return ToWindows1252(GetMsg(tag) + Join(files, "|") + "#" + std::string{lineBreak});
    };
    return MarkerHead(code, name) + list(Msg::TagOverwritten, overwritten) +
           list(Msg::TagCopied, copied);
}

MarkerContent ParseMarker(std::string_view bytes)
{
    const std::string text = FromWindows1252(bytes);
    MarkerContent content;
    content.hasText = !text.empty();
    if (const std::string code = MarkerValue(RowText(Msg::TagLevelCode), text); !code.empty())
        content.code = LeadingNumber(code);
    const auto list = [&](Msg tag) {
        const std::string value = MarkerValue(RowText(tag), text);
        return value.empty() ? std::vector<std::string>{} : Split(value, '|');
    };
    content.overwritten = list(Msg::TagOverwritten);
    content.copied = list(Msg::TagCopied);
    return content;
}

} // namespace kestrova
