#include "formats/marker.h"

#include "core/names.h"
#include "words/message.h"

namespace kestrova
{

namespace
{

constexpr std::string_view headLines[] = {
    ": Don't remove this file!",               // not shown
    ": It is necessary at Kestrova ",          // not shown
    ": to know current configuration in TRLE", // not shown
    " ",
};

} // namespace

std::string MarkerValue(std::string_view tag, std::string_view text)
{
    std::size_t place = FindFolded(text, tag);
    while (place != std::string_view::npos && place > 0 && text[place - 1] != '\n' &&
           text[place - 1] != '\r')
        place = FindFolded(text, tag, place + 1);
    if (place == std::string_view::npos)
        return {};
    const std::string_view rest = text.substr(place + tag.size());
    return std::string{Trim(rest.substr(0, rest.find('#')))};
}

std::string MarkerHead(LevelCode code, const std::string& name)
{
    std::string text;
    for (const std::string_view line : headLines)
        text += std::string{line} + std::string{lineBreak};
    text += std::string{tagLevelCode} + ZeroPadded(code, 4) + "#" + std::string{lineBreak};
    text += std::string{tagLevelName} + std::string{Trim(OnOneLine(name))} + "#" +
            std::string{lineBreak};
    return ToWindows1252(text);
}

std::string MarkerText(LevelCode code, const std::string& name,
                       const std::vector<std::string>& overwritten,
                       const std::vector<std::string>& copied)
{
    const auto list = [](std::string_view tag, const std::vector<std::string>& files) {
        return ToWindows1252(std::string{tag} + Join(files, "|") + "#" + std::string{lineBreak});
    };
    return MarkerHead(code, name) + list(tagOverwritten, overwritten) + list(tagCopied, copied);
}

MarkerContent ParseMarker(std::string_view bytes)
{
    const std::string text = FromWindows1252(bytes);
    MarkerContent content;
    content.hasText = !text.empty();
    if (const std::string code = MarkerValue(tagLevelCode, text); !code.empty())
        content.code = LeadingNumber(code);
    const auto list = [&](std::string_view tag) {
        const std::string value = MarkerValue(tag, text);
        return value.empty() ? std::vector<std::string>{} : Split(value, '|');
    };
    content.overwritten = list(tagOverwritten);
    content.copied = list(tagCopied);
    return content;
}

} // namespace kestrova
