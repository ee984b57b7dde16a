#include "ui/dialogs/language_box.h"

#include "app/languages.h"
#include "ui/widgets/qt_text.h"

#include <QComboBox>

namespace kestrova
{

QComboBox* LanguageBox(QWidget* parent, std::string_view code)
{
    auto* box = new QComboBox(parent);
    box->setObjectName(QStringLiteral("Combo_Language"));
    for (const Language& language : Languages())
        box->addItem(ToQt(language.name), ToQt(language.code));
    box->setCurrentIndex(box->findData(ToQt(LanguageOf(code).code)));
    return box;
}

std::string LanguageIn(const QComboBox& box)
{
    return FromQt(box.currentData().toString());
}

} // namespace kestrova
