#pragma once

#include "session/host.h"

#include <QDialog>

class QLineEdit;

namespace kestrova
{

/// `Dialog_ScambiaNomi`: what a new level shall be called in the person's language file. Closing it
/// means the original name.
class ScambiaNomiDialog : public QDialog
{
public:
    ScambiaNomiDialog(Host& host, std::string original, QWidget* parent);

    [[nodiscard]] const std::string& Name() const { return name_; }

private:
    void Take();

    Host& host_;
    std::string original_;
    std::string name_; ///< the original one until another one is taken
    QLineEdit* edit_;
};

} // namespace kestrova
