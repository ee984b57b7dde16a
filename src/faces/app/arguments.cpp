#include "app/arguments.h"

#include "core/text.h"
#include "platform/places.h"
#include "words/commands.h"

#include <algorithm>

namespace kestrova
{

std::string Arguments::ValueOf(std::string_view option) const
{
    const auto found = options.find(option);
    return found == options.end() ? std::string{} : found->second.back();
}

std::vector<std::string> Arguments::ValuesOf(std::string_view option) const
{
    const auto found = options.find(option);
    return found == options.end() ? std::vector<std::string>{} : found->second;
}

Arguments ParseArguments(const std::vector<std::string>& items, std::span<const OptionRow> known)
{
    Arguments result;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::string& item = items[i];
        if (!optionsEnded && item == "--") {
            optionsEnded = true;
            continue;
        }
        if (optionsEnded || item.size() < 2 || item.front() != '-') {
            if (result.command.empty())
                result.command = item;
            else
                result.words.push_back(item);
            continue;
        }
        const std::size_t equals = item.find('=');
        const std::string name = item.substr(0, equals);
        const auto row = std::find_if(known.begin(), known.end(),
                                      [&](const OptionRow& option) { return option.name == name; });
        if (row == known.end())
            result.wrong = GetMsg(Msg::WrongOption, {name});
        else if (result.options.contains(name) && !row->repeats)
            result.wrong = GetMsg(Msg::WrongTwice, {name});
        else if (!row->takesValue && equals != std::string::npos)
            result.wrong = GetMsg(Msg::WrongValueGiven, {name});
        else if (row->takesValue && equals == std::string::npos && i + 1 == items.size())
            result.wrong = GetMsg(Msg::WrongValueMissing, {name});
        if (!result.wrong.empty())
            return result;
        std::string& value = result.options[name].emplace_back();
        if (row->takesValue)
            value = equals != std::string::npos ? item.substr(equals + 1) : items[++i];
    }
    return result;
}

std::optional<LevelCode> CodeFromWord(const std::string& word)
{
    const auto code = WholeNumber<LevelCode>(word);
    return code && *code >= 0 ? code : std::nullopt;
}

std::string WrongCodeIn(const std::string& word)
{
    return CodeFromWord(word) ? std::string{} : GetMsg(Msg::WrongCode, {word});
}

Path PlaceFromWord(const std::string& word)
{
    return FolderFromText(platform::AbsolutePath(word).lexically_normal().native());
}

} // namespace kestrova
