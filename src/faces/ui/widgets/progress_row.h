#pragma once

class QHBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;

namespace kestrova
{

/// The row of a window in which long work shows its label, its bar (`ProgressBar1`) and Stop.
QHBoxLayout* ProgressRow(QLabel& label, QProgressBar& bar, QPushButton& stop);

} // namespace kestrova
