#pragma once

#include "session/session.h"

#include <QDialog>
#include <QImage>

class QComboBox;
class QLabel;

namespace kestrova
{

/// `Dialog_Resize`: a picture drawn in one of the offered sizes, and saved so. Accepted when it was
/// saved.
class ResizeDialog : public QDialog
{
public:
    ResizeDialog(Session& session, Path shot, QWidget* parent);

private:
    void Resize();
    void Save();

    Session& session_;
    Path shot_;
    QImage whole_;
    QImage drawn_;
    QComboBox* sizes_;
    QLabel* picture_;
};

} // namespace kestrova
