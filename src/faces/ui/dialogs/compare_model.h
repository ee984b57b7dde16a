#pragma once

#include "editor/folder_comparison.h"
#include "ui/widgets/rows_model.h"

namespace kestrova
{

/// The shown rows of a comparison.
class CompareModel : public RowsModel
{
public:
    enum Column { State, Name, SizeBefore, SizeAfter };

    CompareModel(const FolderComparison& comparison, QObject* parent);

private:
    [[nodiscard]] std::size_t Count() const override;
    [[nodiscard]] QString TextOf(std::size_t row, int column) const override;
    [[nodiscard]] QString TipOf(std::size_t row, int column) const override;
    [[nodiscard]] bool HoldsNumbers(int column) const override { return column >= SizeBefore; }

    const FolderComparison& comparison_;
};

} // namespace kestrova
