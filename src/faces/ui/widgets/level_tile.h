#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;

namespace kestrova
{

/// The first letters or digits of a name's first two words, as capitals; empty for a name without.
QString InitialsOf(const QString& name);
/// A colour for that name, always the same one, on which white letters can be read.
QColor TileColourOf(const QString& name);
/// What stands for a level without pictures: its initials on its colour, all over `place`.
void PaintInitials(QPainter& painter, const QRectF& place, const QString& name);

} // namespace kestrova
