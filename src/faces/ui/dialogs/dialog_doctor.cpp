#include "ui/dialogs/dialog_doctor.h"

#include "app/doctor.h"
#include "core/text.h"
#include "packages/package_tools.h"
#include "session/operation.h"
#include "ui/dialogs/check_model.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "words/check.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QTreeView>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr QSize doctorSize{860, 600};
constexpr int stateRowsShown = 7;

/// Columns as wide as a share of the list, which a person may change.
void ShareWidth(QTreeView& list, std::initializer_list<int> percents, int width)
{
    list.header()->setStretchLastSection(true);
    int column = 0;
    for (const int percent : percents)
        list.header()->resizeSection(column++, width * percent / 100);
}

} // namespace

DoctorDialog::DoctorDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), checks_(session), model_(new CheckModel(checks_, this)),
      state_(new QTreeWidget(this)), list_(new QTreeView(this)),
      hint_(new QLabel(list_->viewport())), result_(new QLabel(this)),
      checkLevel_(NamedButton(this, "Pul_CheckLevel")),
      checkAll_(NamedButton(this, "Pul_CheckAll")), repair_(NamedButton(this, "Pul_Repair")),
      from_(NamedButton(this, "Pul_From")), copy_(NamedButton(this, "Pul_Copy"))
{
    setObjectName(QStringLiteral("Dialog_Doctor"));
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addWidget(MakeState(), 2);
    auto* checks = new QHBoxLayout;
    for (QPushButton* button : {checkLevel_, checkAll_, repair_, from_}) {
        button->setAutoDefault(false);
        checks->addWidget(button);
    }
    checks->addStretch();
    parts->addLayout(checks);
    parts->addWidget(MakeList(), 3);
    result_->setObjectName(QStringLiteral("Label_Result"));
    result_->setWordWrap(true);
    parts->addWidget(result_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(MakeButtons());
    SetCaptions(*this);
    Connect();
    ShowState();
    ShowRows();
    ResizeToFit(*this, doctorSize);
    ShareWidth(*state_, {28}, doctorSize.width());
    checkAll_->setFocus();
}

QWidget* DoctorDialog::MakeState()
{
    state_->setObjectName(QStringLiteral("List_State"));
    state_->setAccessibleName(Words(Msg::CheckStateName));
    state_->setHeaderLabels({Words(Msg::CheckColumnWhat), Words(Msg::CheckColumnState)});
    state_->setRootIsDecorated(false);
    state_->setAllColumnsShowFocus(true);
    WrapWords(*state_, 1);
    state_->setMinimumHeight(stateRowsShown * state_->fontMetrics().lineSpacing());
    return state_;
}

QWidget* DoctorDialog::MakeList()
{
    MakeTable(*list_, "List_Faults", Msg::CheckListName, *model_, *hint_);
    WrapWords(*list_, CheckModel::Source);
    return list_;
}

QLayout* DoctorDialog::MakeButtons()
{
    auto* close = NamedButton(this, "Pul_Cancel");
    connect(close, &QPushButton::clicked, this, &DoctorDialog::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(HelpButton(this));
    row->addStretch();
    for (QPushButton* button : {copy_, close}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    return row;
}

void DoctorDialog::Connect()
{
    connect(checkLevel_, &QPushButton::clicked, this, &DoctorDialog::CheckChosen);
    connect(checkAll_, &QPushButton::clicked, this, &DoctorDialog::CheckAll);
    connect(repair_, &QPushButton::clicked, this, [this] { Repair({}); });
    connect(from_, &QPushButton::clicked, this, &DoctorDialog::RepairFrom);
    connect(copy_, &QPushButton::clicked, this, &DoctorDialog::CopyList);
    connect(new QShortcut(QKeySequence::Copy, list_, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, &DoctorDialog::CopyList);
}

void DoctorDialog::ShowState()
{
    state_->clear();
    const QStyle& look = *style();
    for (const Finding& finding : Examine(session_)) {
        const std::string words =
            finding.remedy.empty() ? finding.state : finding.state + " - " + finding.remedy;
        auto* row =
            new QTreeWidgetItem(state_, {ToQt(OnOneLine(finding.name)), ToQt(OnOneLine(words))});
        row->setIcon(0, look.standardIcon(finding.fine ? QStyle::SP_DialogApplyButton
                                                       : QStyle::SP_MessageBoxWarning));
        row->setToolTip(1, PlainTip(ToQt(words)));
    }
    state_->setCurrentItem(state_->topLevelItem(0));
}

int DoctorDialog::WordsWidth(int column) const
{
    const QAbstractItemView& rows = *list_;
    return std::max(rows.sizeHintForColumn(column), list_->header()->sectionSizeHint(column));
}

void DoctorDialog::ShowRows()
{
    model_->Refresh();
    list_->setCurrentIndex(model_->index(0, 0));
    const bool empty = model_->rowCount() == 0;
    // The last column, with its sentences, has what the names leave.
    ShareWidth(*list_, {25, 25, 15}, isVisible() ? list_->viewport()->width() : doctorSize.width());
    for (int column = CheckModel::Level; column < CheckModel::Source && !empty; ++column)
        list_->setColumnWidth(column, std::min(list_->columnWidth(column), WordsWidth(column)));
    hint_->setVisible(empty);
    hint_->setText(Words(checks_.IsChecked() ? Msg::CheckAllWhole : Msg::CheckHint));
    QString text = checks_.IsChecked() ? ToQt(checks_.Summary()) : QString();
    if (stopped_)
        text = Words(Msg::CheckStopped) + QLatin1Char(' ') + text;
    result_->setText(text);
    const bool loaded = session_.archive.Loaded();
    checkLevel_->setEnabled(loaded && session_.list.Selected().has_value());
    checkAll_->setEnabled(loaded && session_.archive.levels.size() > 1);
    repair_->setEnabled(checks_.Harmed() > 0);
    from_->setEnabled(checks_.Harmed() > 0);
    copy_->setEnabled(!empty);
}

void DoctorDialog::Check(const std::vector<LevelCode>& codes)
{
    if (session_.running.operations > 0)
        return;
    stopped_ = !checks_.Check(codes);
    ShowRows();
    if (model_->rowCount() > 0)
        list_->setFocus();
}

void DoctorDialog::CheckChosen()
{
    if (const auto code = session_.list.Selected())
        Check({*code});
}

void DoctorDialog::CheckAll()
{
    Check(LevelChecks::Everything(session_.Folders(), session_.archive));
}

void DoctorDialog::Repair(const Path& offered)
{
    if (session_.running.operations > 0)
        return;
    checks_.Repair(offered); // what could not be done was told
    stopped_ = false;
    ShowState();
    ShowRows();
}

void DoctorDialog::RepairFrom()
{
    std::optional<Path> chosen;
    {
        const Operation operation{session_};
        chosen = session_.host.ChooseOpenFile(
            GetMsg(Msg::CheckChoosePackage),
            GetMsg(Msg::CheckChoosePackage) + "|" + PackagePatterns(), {});
    }
    if (chosen)
        Repair(*chosen);
}

void DoctorDialog::CopyList()
{
    if (model_->rowCount() > 0)
        QGuiApplication::clipboard()->setText(ToQt(checks_.ListText()));
}

} // namespace kestrova
