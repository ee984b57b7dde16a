#pragma once

#include "session/session.h"

#include <QDialog>

class QLabel;
class QProgressBar;

namespace kestrova
{

/// `Dialog_Restore`: its work runs over its own label and bar.
class RestoreDialog : public QDialog
{
public:
    RestoreDialog(Session& session, QWidget* parent);

    void reject() override;

private:
    void RestoreFast();
    void RestoreFull();
    void AllowButtons(bool allowed);

    Session& session_;
    QLabel* info_;
    QProgressBar* bar_;
};

} // namespace kestrova
