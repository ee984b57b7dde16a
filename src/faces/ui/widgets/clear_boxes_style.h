#pragma once

#include <QProxyStyle>

namespace kestrova
{

/// Fusion, whose boxes to tick and round buttons are outlined in a shade of the window's colour,
/// and so hardly seen in a dark palette: there they get an outline of the text's colour.
class ClearBoxesStyle : public QProxyStyle
{
public:
    ClearBoxesStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace kestrova
