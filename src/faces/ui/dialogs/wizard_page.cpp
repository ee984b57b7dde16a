#include "ui/dialogs/wizard_page.h"

#include "ui/dialogs/dialogs_small.h"

#include <QPushButton>

namespace kestrova
{

UploadPage::UploadPage(UploadWizard& wizard, Runner run, const char* name)
    : wizard_(wizard), run_(std::move(run))
{
    setObjectName(QString::fromLatin1(name));
}

QPushButton* UploadPage::Button(QWidget* parent, const char* name, std::function<void()> work)
{
    auto* button = NamedButton(parent, name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, work = std::move(work)] { run_(work); });
    return button;
}

} // namespace kestrova
