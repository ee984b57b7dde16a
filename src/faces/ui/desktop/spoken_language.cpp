#include "ui/desktop/spoken_language.h"

#include "app/languages.h"
#include "ui/widgets/qt_text.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace kestrova
{

namespace
{

/// Qt's own words; empty in English, and where they are not installed.
QTranslator& QtWords()
{
    static auto* words = new QTranslator{qApp};
    return *words;
}

} // namespace

void SpeakInWindows(std::string_view code)
{
    const Language& language = LanguageOf(code);
    if (language.code == SpokenLanguage())
        return;
    Speak(language.code);
    QTranslator& words = QtWords();
    QCoreApplication::removeTranslator(&words);
    const QString name = QStringLiteral("qtbase_") + ToQt(language.qtWords);
    if (!language.qtWords.empty() &&
        words.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&words);
    QEvent change{QEvent::LanguageChange};
    QCoreApplication::sendEvent(qApp, &change); // which posts it to every window
}

} // namespace kestrova
