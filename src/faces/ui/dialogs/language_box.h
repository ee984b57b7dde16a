#pragma once

#include <string>
#include <string_view>

class QComboBox;
class QWidget;

namespace kestrova
{

/// `Combo_Language`: the languages, each by its own name; `code` is chosen.
QComboBox* LanguageBox(QWidget* parent, std::string_view code);
/// The code of the chosen one.
std::string LanguageIn(const QComboBox& box);

} // namespace kestrova
