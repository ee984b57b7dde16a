#include "ui/widgets/letter_size.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QKeyEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace kestrova
{

namespace
{

constexpr int fewestSteps = -4;
constexpr int mostSteps = 12;
constexpr double stepFactor = 1.12;

} // namespace

QFont TimesAsLarge(QFont font, double factor)
{
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
    return font;
}

QFont EvenLetters(const QWidget& control)
{
    QFont even = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    even.setPointSizeF(QFontInfo{control.font()}.pointSizeF());
    return even;
}

LetterSize::LetterSize(QAbstractScrollArea& area) : QObject(&area), area_(area)
{
    area.installEventFilter(this);
    area.viewport()->installEventFilter(this);
}

void LetterSize::Set(int steps)
{
    steps_ = std::clamp(steps, fewestSteps, mostSteps);
    area_.setFont(TimesAsLarge(QApplication::font(&area_), std::pow(stepFactor, steps_)));
}

void LetterSize::Change(int steps)
{
    const int before = steps_;
    Set(steps);
    if (steps_ != before)
        changed(steps_);
}

bool LetterSize::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Wheel) {
        auto* wheel = static_cast<QWheelEvent*>(event);
        if (!wheel->modifiers().testFlag(Qt::ControlModifier))
            return QObject::eventFilter(object, event);
        turned_ += wheel->angleDelta().y();
        const int notches = turned_ / QWheelEvent::DefaultDeltasPerStep;
        turned_ -= notches * QWheelEvent::DefaultDeltasPerStep;
        Change(steps_ + notches);
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(object, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (!key->modifiers().testFlag(Qt::ControlModifier))
        return false;
    switch (key->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // plus without shift on many keyboards
        Change(steps_ + 1);
        return true;
    case Qt::Key_Minus:
        Change(steps_ - 1);
        return true;
    case Qt::Key_0:
        Change(0);
        return true;
    default:
        return false;
    }
}

} // namespace kestrova
