#pragma once

#include "discs/disc_plan.h"
#include "session/archive.h"

#include <QTreeWidget>

class QLabel;

namespace kestrova
{

/// `List_Plan`: the discs of a plan, each with its levels, and the levels that stay where they are.
class DiscPlanTree : public QTreeWidget
{
public:
    explicit DiscPlanTree(QWidget* parent);

    /// In place of what it showed.
    void Show(const DiscPlan& plan, const Archive& archive);

private:
    void AddLeftOut(const DiscPlan& plan, const Archive& archive);

    QLabel* hint_; ///< while there is no disc
};

} // namespace kestrova
