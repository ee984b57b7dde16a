#include "ui/dialogs/dialog_set_mp3.h"

#include "conversion/mp3_trial.h"
#include "conversion/sound_converter.h"
#include "session/operation.h"
#include "session/telling.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/mp3_settings_box.h"
#include "ui/widgets/qt_text.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

SetMp3Dialog::SetMp3Dialog(Session& session, bool withDecoder, QWidget* parent)
    : QDialog(parent), session_(session), settings_(new Mp3SettingsBox(this)),
      decoder_(new QCheckBox(this))
{
    setObjectName(QStringLiteral("Dialog_SetMp3"));
    decoder_->setObjectName(QStringLiteral("Check_InsertUtiliy"));
    decoder_->setChecked(withDecoder);
    auto* test = NamedButton(this, "Pul_TestMp3");
    auto* start = NamedButton(this, "Pul_Start");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    test->setAutoDefault(false);
    cancel->setAutoDefault(false);
    start->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(test);
    buttons->addStretch();
    buttons->addWidget(start);
    buttons->addWidget(cancel);
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addWidget(settings_);
    parts->addWidget(decoder_);
    parts->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(buttons);
    connect(test, &QPushButton::clicked, this, &SetMp3Dialog::TestSound);
    connect(start, &QPushButton::clicked, this, &SetMp3Dialog::accept);
    connect(cancel, &QPushButton::clicked, this, &SetMp3Dialog::reject);
    SetCaptions(*this);
    ResizeToFit(*this, sizeHint());
}

bool SetMp3Dialog::WithDecoder() const
{
    return decoder_->isChecked();
}

void SetMp3Dialog::accept()
{
    session_.mp3Settings = settings_->Settings();
    QDialog::accept();
}

void SetMp3Dialog::reject()
{
    // The window closes while no conversion needs it.
    if (session_.running.operations == 0)
        QDialog::reject();
}

void SetMp3Dialog::TestSound()
{
    const Operation operation{session_};
    session_.mp3Settings = settings_->Settings();
    DoneOrTold(session_.host, TestMp3Sound(session_.host, session_.machine, session_.Folders(),
                                           SoundConverterOf(session_)));
}

} // namespace kestrova
