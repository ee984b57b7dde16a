#include "formats/url_text.h"

#include "check.h"
#include "core/text.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// A server's text about a site, and its address: the phrases are as long as what they give way to,
/// and text stays text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text = FromWindows1252(TextOfInput(data, size));
    const std::string shown = LocalizeSiteText(text);
    Promise(IsUtf8(shown), "letters stay whole");
    Promise(shown.size() <= text.size() + 3, "no text grows");
    const std::string address = ShownAddress(text);
    Promise(IsUtf8(address), "an address is cut between letters");
    Promise(address.size() <= 75 * 4 + 4, "an address is cut");
    Promise(text.ends_with(UrlFileName(text)), "a file's name ends the address");
    Promise(text.starts_with(UrlHostPart(text)), "a host begins the address");
    if (IsOpenable(text))
        Promise(text.front() != '/' && text.front() != '-', "no file and no option is opened");
    return 0;
}
