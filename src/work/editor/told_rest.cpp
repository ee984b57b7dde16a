#include "editor/told_rest.h"

#include "core/name_list.h"
#include "words/editor.h"

namespace kestrova
{

void TellRest(Host& host, const RestReturn& rest)
{
    const auto tell = [&](Tone tone, const Message& words, const std::vector<Path>& files) {
        std::vector<std::string> names;
        for (const Path& file : files)
            names.push_back(TextOf(file));
        if (!names.empty())
            host.Tell(tone, GetMsg(words, {ShownNames(names)}));
    };
    tell(Tone::Warning, Msg::CompilerChangedOthers, rest.back);
    tell(Tone::Plain, Msg::CompilerMadeOthers, rest.gone);
    tell(Tone::Warning, Msg::CompilerChangedLarge, rest.changed);
}

} // namespace kestrova
