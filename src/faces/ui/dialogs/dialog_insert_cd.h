#pragma once

#include "discs/insert_cd.h"

#include <QDialog>

class QComboBox;

namespace kestrova
{

/// `Dialog_InsertCd`: asks for a disc, in a drive or as an image. Accepted once it was found.
class InsertCdDialog : public QDialog
{
public:
    InsertCdDialog(InsertCd& question, QWidget* parent);

    void accept() override;
    void reject() override;

private:
    /// The drives as they are now.
    void ShowDrives();
    void ChooseImage();

    InsertCd& question_;
    QComboBox* drives_;
    bool looking_ = false; ///< at a disc, which may take some time
};

} // namespace kestrova
