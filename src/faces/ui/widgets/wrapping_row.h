#pragma once

#include <QLayout>

namespace kestrova
{

/// Buttons beside each other, and below each other where there is no room for all in one row.
/// What follows a stretch stands at the row's other end.
class WrappingRow : public QLayout
{
public:
    using QLayout::QLayout;
    ~WrappingRow() override;

    void AddStretch();
    void addItem(QLayoutItem* item) override { items_.append(item); }
    [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& room) override;

private:
    /// What stands beside each other.
    struct Line {
        qsizetype end = 0; ///< the first item of the next one
        QSize size;
    };
    [[nodiscard]] int Gap() const;
    [[nodiscard]] Line LineFrom(qsizetype first, int width) const;
    template <class Place> int Arrange(const QRect& room, Place place) const;

    QList<QLayoutItem*> items_;
    qsizetype stretch_ = -1; ///< the first item behind it
};

} // namespace kestrova
