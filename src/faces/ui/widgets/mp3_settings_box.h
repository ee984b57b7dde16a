#pragma once

#include "session/mp3_settings.h"

#include <QGroupBox>

class QComboBox;
class QLabel;

namespace kestrova
{

/// The lists from which a person chooses how mp3 is encoded, with what it makes of the size and a
/// way back to the usual rows.
class Mp3SettingsBox : public QGroupBox
{
public:
    explicit Mp3SettingsBox(QWidget* parent);

    [[nodiscard]] Mp3Settings Settings() const;

private:
    void UseUsualRows();
    void ShowEstimate();

    QComboBox* bitRate_;
    QComboBox* channels_;
    QComboBox* frequency_;
    QLabel* estimate_;
};

} // namespace kestrova
