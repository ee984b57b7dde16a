#include "ui/dialogs/disc_plan_tree.h"

#include "archive/level_folders.h"
#include "core/size_words.h"
#include "core/text.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "words/discs_window.h"

#include <QHeaderView>
#include <QLabel>

namespace kestrova
{

namespace
{

/// Sets with more discs are shown without their levels at first.
constexpr int mostDiscsShownOpen = 8;

enum PlanColumn { PlanName, PlanLevels, PlanSize, PlanColumns };

QString PlanSizeText(double bytes)
{
    return ToQt(SizeInWords(bytes));
}

} // namespace

DiscPlanTree::DiscPlanTree(QWidget* parent) : QTreeWidget(parent), hint_(new QLabel(viewport()))
{
    setObjectName(QStringLiteral("List_Plan"));
    setAccessibleName(Words(Msg::DiscsPlanName));
    setColumnCount(PlanColumns);
    setHeaderLabels(
        {Words(Msg::DiscsColumnName), Words(Msg::DiscsColumnLevels), Words(Msg::DiscsColumnSize)});
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setTextElideMode(Qt::ElideMiddle);
    QHeaderView& head = *header();
    head.setStretchLastSection(false);
    head.setSectionResizeMode(PlanName, QHeaderView::Stretch);
    const QFontMetrics metrics = fontMetrics();
    const int edge = 3 * metrics.averageCharWidth();
    for (const PlanColumn column : {PlanLevels, PlanSize})
        head.resizeSection(column,
                           std::max(head.sectionSizeHint(column),
                                    metrics.horizontalAdvance(QStringLiteral("1023.9 Mb"))) +
                               edge);
    hint_->setText(Words(Msg::DiscsNoPlan));
    PutHint(*this, *hint_);
}

void DiscPlanTree::Show(const DiscPlan& plan, const Archive& archive)
{
    std::map<LevelCode, double> sizes;
    for (const DiscCandidate& level : plan.Candidates())
        sizes.emplace(level.code, level.size.bytes);
    std::map<LevelCode, QString> names;
    for (const LevelRecord& level : archive.levels)
        names.emplace(level.levelCode, ToQt(level.levelName).trimmed());
    clear();
    QList<QTreeWidgetItem*> discs;
    for (const PlannedDisc& disc : plan.Discs()) {
        auto* item = new QTreeWidgetItem(
            {disc.tooLarge ? Words(Msg::DiscsTooLarge, {disc.label}) : ToQt(disc.label),
             QString::number(disc.levels.size()), PlanSizeText(disc.size.bytes)});
        for (const LevelCode code : disc.levels)
            item->addChild(
                new QTreeWidgetItem({names[code], QString(), PlanSizeText(sizes[code])}));
        discs.push_back(item);
    }
    addTopLevelItems(discs);
    AddLeftOut(plan, archive);
    if (discs.size() <= mostDiscsShownOpen)
        expandAll();
    for (const PlanColumn column : {PlanLevels, PlanSize})
        headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    for (QTreeWidgetItemIterator at{this}; *at != nullptr; ++at)
        for (const PlanColumn column : {PlanLevels, PlanSize})
            (*at)->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    hint_->setVisible(topLevelItemCount() == 0);
}

void DiscPlanTree::AddLeftOut(const DiscPlan& plan, const Archive& archive)
{
    if (plan.LeftOut().empty())
        return;
    auto* item = new QTreeWidgetItem(
        {Words(Msg::DiscsStays), QString::number(plan.LeftOut().size()), QString()});
    for (const LevelLeftOut& level : plan.LeftOut()) {
        auto* row =
            new QTreeWidgetItem({ToQt(LevelNameOf(archive, level.code) + ": " + level.reason)});
        row->setToolTip(PlanName, PlainTip(ToQt(level.reason)));
        item->addChild(row);
    }
    addTopLevelItem(item);
}

} // namespace kestrova
