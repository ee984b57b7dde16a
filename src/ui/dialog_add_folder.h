#pragma once

#include "session/session.h"

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace kestrova
{

/// A folder with a level's files, and how the level is to be called.
class AddFolderDialog : public QDialog
{
public:
    /// An empty folder: the person chooses one.
    AddFolderDialog(Session& session, const Path& folder, QWidget* parent);

    /// Adds the level; stays open when that failed.
    void accept() override;

private:
    void Browse();
    void TakeFolder(const QString& folder);
    void AllowOk();

    Session& session_;
    QLineEdit* folder_;
    QLineEdit* name_;
    QLineEdit* note_;
    QPushButton* ok_;
    QString suggested_;
};

} // namespace kestrova
