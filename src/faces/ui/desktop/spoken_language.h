#pragma once

#include <string_view>

namespace kestrova
{

/// From now on the windows speak that language (`app/languages.h`), and so do the buttons of Qt's
/// own dialogs where its words are installed. Windows that stand open hear of it by the event
/// `LanguageChange`.
void SpeakInWindows(std::string_view code);

} // namespace kestrova
