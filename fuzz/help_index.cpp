#include "formats/help_text.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The index of the help: each topic leads to a place in the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view help = TextOfInput(data, size);
    const HelpTopics topics = TopicsOf(help);
    for (const std::string& topic : topics.main) {
        Promise(topic.size() >= 2 && topic.front() == '[' && topic.back() == ']',
                "in its brackets");
        Promise(help.find(topic) != std::string_view::npos, "it stands in the text");
    }
    for (const std::string& topic : topics.sub)
        Promise(topic.size() >= 2 && topic.front() == '{' && topic.back() == '}' &&
                    FindInHelp(help, topic).has_value(),
                "it stands in the text");
    for (const int tag : TagsOf(help))
        Promise(tag >= 0 && tag <= 9'999, "a tag is a small number");
    return 0;
}
