#pragma once

#include "ui/widgets/rows_model.h"
#include "upkeep/level_checks.h"

namespace kestrova
{

/// The rows of a check, levels that could not be checked behind them.
class CheckModel : public RowsModel
{
public:
    enum Column { Level, File, Fault, Source };

    CheckModel(const LevelChecks& checks, QObject* parent);

private:
    [[nodiscard]] std::size_t Count() const override;
    [[nodiscard]] QString TextOf(std::size_t row, int column) const override;

    const LevelChecks& checks_;
};

} // namespace kestrova
