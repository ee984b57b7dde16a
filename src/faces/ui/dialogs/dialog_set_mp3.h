#pragma once

#include "session/session.h"

#include <QDialog>

class QCheckBox;

namespace kestrova
{

class Mp3SettingsBox;

/// `Dialog_SetMp3`: how a level's waves become mp3, asked before they do. Accepted when the
/// encoding is to start; the session's settings are the chosen ones then.
class SetMp3Dialog : public QDialog
{
public:
    /// `withDecoder`: what the check for the decoder begins with.
    SetMp3Dialog(Session& session, bool withDecoder, QWidget* parent);

    /// The package is to bring the programs that turn the mp3 files into waves again.
    [[nodiscard]] bool WithDecoder() const;
    void accept() override;
    void reject() override;

private:
    void TestSound();

    Session& session_;
    Mp3SettingsBox* settings_;
    QCheckBox* decoder_;
};

} // namespace kestrova
