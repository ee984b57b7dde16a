#pragma once

#include <QLabel>

namespace kestrova
{

/// One line of text that ends in "…" where it does not fit; the whole of it is the tool tip then.
/// Never asks for more width than it is given.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QString Shown() const;
};

} // namespace kestrova
