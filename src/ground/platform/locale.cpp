#include "platform/locale.h"

#include <clocale>
#include <langinfo.h>
#include <locale.h>
#include <string_view>

namespace kestrova::platform
{

bool UsesUtf8()
{
    const locale_t locale = ::newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr)
        return false;
    const bool isUtf8 = std::string_view{::nl_langinfo_l(CODESET, locale)} == "UTF-8";
    ::freelocale(locale);
    return isUtf8;
}

} // namespace kestrova::platform
