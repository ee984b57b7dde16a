#pragma once

class QWidget;

namespace kestrova
{

/// Lets the Tab key go through a window in the order in which its layouts are read: row by row,
/// from the left, and column by column where columns stand side by side. The keyboard begins at the
/// first control, unless that is a button: then at the one that Enter means. To be called when all
/// of it is laid out.
void SetReadingOrder(QWidget& window);

} // namespace kestrova
