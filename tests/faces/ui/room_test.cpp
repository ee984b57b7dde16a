// Where words and buttons go that have no room beside each other.
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/wrapping_row.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(ScrollPage, WordsOnTwoLinesHaveTheirHeightBeforeTheyArePainted)
{
    auto* content = new QWidget;
    auto* frame = new QGroupBox(content);
    auto* box = new QCheckBox(QStringLiteral("It is original: no custom level was put in since "
                                             "its setup, and nothing else was changed in it"),
                              frame);
    auto* below = new QLabel(QStringLiteral("what stands below"), frame);
    auto* inside = new QVBoxLayout(frame);
    inside->addWidget(box);
    inside->addWidget(below);
    auto* column = new QVBoxLayout(content);
    column->addWidget(frame);
    column->addStretch();
    ScrollPage page{content};
    page.resize(1200, 400);
    page.show();
    QCoreApplication::processEvents();
    ASSERT_FALSE(box->text().contains(QLatin1Char('\n')));
    page.resize(300, 400); // what is posted comes later than the painting
    EXPECT_TRUE(box->text().contains(QLatin1Char('\n')));
    EXPECT_GE(box->height(), box->sizeHint().height());
    EXPECT_GT(below->y(), box->geometry().bottom());
    page.resize(1200, 400);
    EXPECT_FALSE(box->text().contains(QLatin1Char('\n')));
    EXPECT_EQ(box->height(), box->sizeHint().height());
}

TEST(WrappingRow, BreaksWhereThereIsNoRoomAndIsReadFromEitherSide)
{
    QWidget window;
    auto* row = new WrappingRow(&window);
    row->setContentsMargins({});
    row->setSpacing(10);
    std::vector<QLabel*> parts;
    for (int i = 0; i < 4; ++i) {
        parts.push_back(new QLabel(&window));
        parts.back()->setFixedSize(100, 20);
        row->addWidget(parts.back());
        if (i == 1)
            row->AddStretch();
    }
    const auto placesAt = [&](int width) {
        window.resize(width, 300);
        row->setGeometry({0, 0, width, 300});
        std::vector<QPoint> places;
        for (const QLabel* part : parts)
            places.push_back(part->pos());
        return places;
    };
    using Places = std::vector<QPoint>;
    EXPECT_EQ(row->sizeHint(), QSize(430, 20));
    EXPECT_EQ(placesAt(500), (Places{{0, 0}, {110, 0}, {290, 0}, {400, 0}}));
    EXPECT_EQ(placesAt(330), (Places{{0, 0}, {110, 0}, {230, 0}, {230, 30}}));
    EXPECT_EQ(row->heightForWidth(330), 50);
    EXPECT_EQ(row->heightForWidth(100), 110);
    window.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(placesAt(500), (Places{{400, 0}, {290, 0}, {110, 0}, {0, 0}}));
}

} // namespace kestrova::testing
