#pragma once

#include <QString>

class QPrinter;
class QWidget;

/// A text on paper, in letters of one width, with its title and the pages' numbers.
namespace kestrova
{

/// How many pages the text takes; prints them.
int PrintText(QPrinter& printer, const QString& title, const QString& text);
/// Shows the pages first; the person prints them from there.
void PreviewAndPrint(const QString& title, const QString& text, QWidget* parent);

} // namespace kestrova
