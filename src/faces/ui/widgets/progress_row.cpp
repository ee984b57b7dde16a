#include "ui/widgets/progress_row.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace kestrova
{

QHBoxLayout* ProgressRow(QLabel& label, QProgressBar& bar, QPushButton& stop)
{
    label.setTextFormat(Qt::PlainText);
    bar.setObjectName(QStringLiteral("ProgressBar1"));
    bar.setTextVisible(false);
    stop.setAutoDefault(false);
    auto* row = new QHBoxLayout;
    row->addWidget(&label, 1);
    row->addWidget(&bar);
    row->addWidget(&stop);
    return row;
}

} // namespace kestrova
