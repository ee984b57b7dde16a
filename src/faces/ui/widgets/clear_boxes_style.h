#pragma once

#include <QProxyStyle>

namespace kestrova
{

/// Fusion, showing what it hides. Lists and texts that have the keyboard get an outline of the
/// accent's colour, as lines of text have one. Boxes to tick and round buttons are outlined in a
/// shade of the window's colour, and so hardly seen in a dark palette: there they get an outline of
/// the text's colour, and so does a menu, which may have no shadow. So does every frame where the
/// colours leave nothing else to see it by, as with white on black. What a list holds is opened by
/// a double click, whatever the desktop says: a click chooses.
class ClearBoxesStyle : public QProxyStyle
{
public:
    ClearBoxesStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override;
    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace kestrova
