#include "ui/widgets/clear_boxes_style.h"

#include "ui/every_window.h"

#include <QPainter>
#include <QStyleOption>

namespace kestrova::testing
{

namespace
{

/// As a desktop has it whose setting opens things at a single click.
class SingleClickStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override
    {
        return hint == SH_ItemView_ActivateItemOnSingleClick
                   ? 1
                   : QProxyStyle::styleHint(hint, option, widget, answer);
    }
};

/// Whether what the style draws there has an edge that is seen on the window.
bool HasEdge(QStyle::PrimitiveElement element, QStyleOption& option, const QPalette& palette)
{
    const ClearBoxesStyle style;
    QImage image(60, 24, QImage::Format_RGB32);
    const QColor ground = palette.color(QPalette::Window);
    image.fill(ground);
    option.rect = image.rect();
    option.palette = palette;
    option.state = QStyle::State_Enabled | QStyle::State_HasFocus;
    QPainter painter(&image);
    style.drawPrimitive(element, &option, &painter, nullptr);
    painter.end();
    return std::abs(image.pixelColor(30, 0).lightness() - ground.lightness()) > 40;
}

} // namespace

TEST(ClearBoxesStyle, OneClickChoosesWhateverTheDesktopSays)
{
    ClearBoxesStyle style;
    style.setBaseStyle(new SingleClickStyle);
    EXPECT_EQ(
        style.styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, nullptr, nullptr),
        0);
}

TEST(ClearBoxesStyle, EdgesAreSeenOnDarkGround)
{
    QStyleOptionFrame menu;
    EXPECT_TRUE(HasEdge(QStyle::PE_FrameMenu, menu, DarkPalette()));
    // The window opens with the keyboard on it, before anybody pressed Tab.
    QStyleOptionButton button;
    EXPECT_TRUE(HasEdge(QStyle::PE_PanelButtonCommand, button, ContrastPalette()));
}

} // namespace kestrova::testing
