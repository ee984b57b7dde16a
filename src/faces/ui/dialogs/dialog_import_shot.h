#pragma once

#include "session/session.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QRadioButton;

namespace kestrova
{

/// `Dialog_ImportShot`: takes the pictures of archived savegames into the list of screen-shots.
class ImportShotDialog : public QDialog
{
public:
    ImportShotDialog(Session& session, std::size_t index, QWidget* parent);

    void reject() override;

private:
    void Import();

    Session& session_;
    std::size_t index_;
    QRadioButton* all_;
    QLabel* info_;
    QProgressBar* bar_;
};

} // namespace kestrova
