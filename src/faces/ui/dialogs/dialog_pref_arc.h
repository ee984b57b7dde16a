#pragma once

#include "app/archive_form.h"

#include <QDialog>

class QCheckBox;
class QLabel;

namespace kestrova
{

/// `Dialog_PrefArc`.
class ArchiveDialog : public QDialog
{
public:
    ArchiveDialog(Session& session, QWidget* parent);

    void accept() override;
    void reject() override;

private:
    QLayout* MakeFacts();
    void ShowFacts();

    Session& session_;
    ArchiveForm form_;
    QCheckBox* compress_;
};

} // namespace kestrova
