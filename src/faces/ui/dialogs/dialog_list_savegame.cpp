#include "ui/dialogs/dialog_list_savegame.h"

#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/qt_text.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr int shownRows = 15;

} // namespace

ListSavegameDialog::ListSavegameDialog(Session& session, SavegameList& rules, QWidget* parent)
    : QDialog(parent), session_(session), rules_(rules), list_(new QListWidget(this)),
      delete_(new QCheckBox(this))
{
    setObjectName(QStringLiteral("Dialog_ListSaveGame"));
    list_->setObjectName(QStringLiteral("List_Shot"));
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setFont(EvenLetters(*this));
    list_->setUniformItemSizes(true);
    for (const std::string& row : rules.Rows())
        list_->addItem(ToQt(row));
    delete_->setObjectName(QStringLiteral("Check_Elimina"));
    delete_->setVisible(rules.OffersDelete());
    auto* hint = new QLabel(this);
    hint->setObjectName(QStringLiteral("Label1"));
    hint->setWordWrap(true);
    hint->setForegroundRole(QPalette::PlaceholderText);
    auto* all = NamedButton(this, "Pul_All");
    all->setAutoDefault(false);
    connect(all, &QPushButton::clicked, list_, &QListWidget::selectAll);
    auto* ok = NamedButton(this, "Pul_Ok");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &ListSavegameDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &ListSavegameDialog::reject);
    connect(list_, &QListWidget::itemActivated, this, &ListSavegameDialog::accept);

    auto* column = new QVBoxLayout(this);
    column->addWidget(list_, 1);
    column->addWidget(hint);
    column->addWidget(delete_);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(all);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    column->addLayout(buttons);
    SetCaptions(*this);
    setWindowTitle(ToQt(rules.Title()));
    list_->setAccessibleName(windowTitle());
    const QSize around = sizeHint() - list_->sizeHint();
    const int rowHeight = std::max(list_->sizeHintForRow(0), fontMetrics().lineSpacing());
    const QSize rowsSize{list_->sizeHintForColumn(0) +
                             list_->verticalScrollBar()->sizeHint().width(),
                         shownRows * rowHeight};
    const int frame = 2 * list_->frameWidth();
    ResizeToFit(*this, rowsSize + around + QSize{frame, frame});
    // Of several nobody knows yet which are meant.
    if (list_->count() > 0)
        list_->setCurrentRow(0, list_->count() == 1 ? QItemSelectionModel::ClearAndSelect
                                                    : QItemSelectionModel::NoUpdate);
    list_->setFocus();
}

void ListSavegameDialog::accept()
{
    if (session_.running.operations > 0)
        return;
    std::vector<std::size_t> rows;
    for (int row = 0; row < list_->count(); ++row)
        if (list_->item(row)->isSelected())
            rows.push_back(static_cast<std::size_t>(row));
    bool close = false;
    {
        const Operation operation{session_};
        close = rules_.Take(rows, delete_->isChecked());
    }
    if (close)
        QDialog::accept();
}

} // namespace kestrova
