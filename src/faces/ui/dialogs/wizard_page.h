#pragma once

#include "publish/upload_wizard.h"

#include <QWidget>
#include <functional>

class QPushButton;

namespace kestrova
{

/// One page of the wizard. Its controls write what is typed into the wizard at once.
class UploadPage : public QWidget
{
public:
    /// Does a piece of work on the wizard, after which the window shows it anew.
    using Runner = std::function<void(const std::function<void()>& work)>;

    UploadPage(UploadWizard& wizard, Runner run, const char* name);

    /// Shows the wizard as it is now.
    virtual void ShowState() {}
    /// The control that a person begins with.
    [[nodiscard]] virtual QWidget* First() { return nullptr; }

protected:
    QPushButton* Button(QWidget* parent, const char* name, std::function<void()> work);

    UploadWizard& wizard_;
    Runner run_;
};

} // namespace kestrova
