#pragma once

#include "shots/shot_capture.h"

#include <QDialog>

namespace kestrova
{

/// `Dialog_Cattura`: a captured picture that waits for a name.
class CaptureDialog : public QDialog
{
public:
    CaptureDialog(Session& session, const CapturedShot& shot, QWidget* parent);

    void reject() override;

private:
    void Save();
    void PromptChanged(bool never);

    Session& session_;
    const CapturedShot& shot_;
};

} // namespace kestrova
