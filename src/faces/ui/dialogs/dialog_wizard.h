#pragma once

#include "publish/upload_wizard.h"
#include "ui/desktop/progress_windows.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;

namespace kestrova
{

class UploadPage;

/// `Dialog_Wizard`: leads an author through the seven steps to a package.
class WizardDialog : public QDialog
{
public:
    WizardDialog(Session& session, QWidget* parent);

    /// False when there is no folder to work in; the person knows.
    bool Ready();
    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QLayout* MakeProgress();
    QLayout* MakeButtons();
    /// Work on the wizard, and the window as it is then.
    void Run(const std::function<void()>& work);
    void Next();
    void Back();
    void ShowStep();
    [[nodiscard]] bool HasTyped() const;

    Session& session_;
    QLabel* info_;
    QProgressBar* bar_;
    QPushButton* stop_;
    QPushButton* back_;
    QPushButton* next_;
    QStackedWidget* stack_;
    StoppableProgress progress_;
    UploadWizard wizard_;
    std::vector<UploadPage*> pages_;
};

/// Shows it until the package is made or the author leaves.
void ShowWizard(Session& session, QWidget* parent);

} // namespace kestrova
