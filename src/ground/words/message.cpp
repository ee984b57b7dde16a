#include "words/message.h"

#include "words/catalogue.h"

namespace kestrova
{

std::string Filled(std::string_view pattern, std::initializer_list<std::string_view> args)
{
    std::string text{pattern};
    int number = 0;
    for (const std::string_view arg : args) {
        const std::string marker = "~" + std::to_string(++number);
        if (const auto place = text.find(marker); place != std::string::npos)
            text.replace(place, marker.size(), arg);
    }
    return text;
}

std::string_view Shown(Message message)
{
    const Catalogue* catalogue = SpokenCatalogue();
    return catalogue == nullptr ? message.text : catalogue->Of(message.text);
}

std::string ShownAsSpoken(const std::string& told)
{
    const Catalogue* catalogue = SpokenCatalogue();
    return catalogue == nullptr ? told : std::string{catalogue->Of(told)};
}

std::string GetMsg(Message message, std::initializer_list<std::string_view> args)
{
    return Filled(Shown(message), args);
}

std::string Told(Message message, std::initializer_list<std::string_view> args)
{
    return Filled(message.text, args);
}

} // namespace kestrova
