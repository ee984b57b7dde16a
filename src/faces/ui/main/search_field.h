#pragma once

#include <QLineEdit>

namespace kestrova
{

/// `Text_Search`: Esc empties it, and the keys that walk a list walk the one below while the field
/// keeps the keyboard.
class SearchField : public QLineEdit
{
public:
    SearchField(QWidget& list, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget& list_;
};

} // namespace kestrova
