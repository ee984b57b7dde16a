#include "ui/dialogs/dialog_convert_audio.h"

#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/mp3_settings_box.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"

#include <QDragEnterEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTimer>

namespace kestrova
{

namespace
{

constexpr int convertWidth = 600;
constexpr int convertHeight = 520;

QGroupBox* Frame(QWidget* parent, const char* name)
{
    auto* frame = new QGroupBox(parent);
    frame->setObjectName(QString::fromLatin1(name));
    return frame;
}

QRadioButton* Option(QGroupBox* frame, const char* name)
{
    auto* option = new QRadioButton(frame);
    option->setObjectName(QString::fromLatin1(name));
    frame->layout()->addWidget(option);
    return option;
}

Message FrameWords(AudioToolMode mode)
{
    return mode == AudioToolMode::Decode   ? Msg::FrameDecode
           : mode == AudioToolMode::Encode ? Msg::FrameEncode
                                           : Msg::FrameConvert;
}

} // namespace

ConvertAudioDialog::ConvertAudioDialog(Session& session, AudioToolMode mode, QWidget* parent)
    : QDialog(parent), session_(session), tool_(session, mode), list_(new QListWidget(this)),
      size_(new QLabel(this)), hint_(new QLabel(this)), target_(new ElidedLabel(this)),
      convert_(NamedButton(this, "Pul_Converti")), mp3_(new Mp3SettingsBox(this))
{
    setObjectName(QStringLiteral("Dialog_ConvertAudio"));
    setAcceptDrops(true);
    auto* cancel = NamedButton(this, "Pul_Cancel");
    cancel->setAutoDefault(false);
    convert_->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(convert_);
    buttons->addWidget(cancel);

    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addWidget(MakeFiles(), 1);
    parts->addWidget(MakeTarget());
    QGroupBox* wave = MakeWave();
    parts->addWidget(mp3_);
    parts->addWidget(wave);
    mp3_->setVisible(tool_.ToMp3());
    wave->setVisible(!tool_.ToMp3());
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(buttons);
    connect(convert_, &QPushButton::clicked, this, &ConvertAudioDialog::Convert);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    SetCaptions(*this);
    ShowAll();
    ResizeToFit(*this, {convertWidth, convertHeight});
    list_->setFocus();
}

bool ConvertAudioDialog::Ready()
{
    const Operation operation{session_};
    return tool_.Open();
}

QGroupBox* ConvertAudioDialog::MakeFiles()
{
    auto* frame = Frame(this, "Frame_Files");
    frame->setTitle(Words(FrameWords(tool_.Mode())).trimmed());
    list_->setObjectName(QStringLiteral("List_Files"));
    list_->setAccessibleName(frame->title().trimmed());
    list_->setFont(EvenLetters(*this));
    list_->setUniformItemSizes(true);
    size_->setObjectName(QStringLiteral("Label_Size"));
    hint_->setObjectName(QStringLiteral("Label_Drop"));
    hint_->setText(Words(Msg::AudioDropHint, {tool_.Extension()}));
    hint_->setForegroundRole(QPalette::PlaceholderText);

    auto* buttons = new QVBoxLayout;
    const auto add = [&](const char* name, auto work) {
        auto* button = NamedButton(frame, name);
        button->setAutoDefault(false);
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, work] { Do(work); });
    };
    add("Pul_AddFile", [this] { tool_.AddFile(); });
    add("Pul_AddFolder", [this] { tool_.AddFolder(); });
    add("Pul_Remove", [this] { tool_.Remove(ChosenRow()); });
    buttons->addStretch();
    connect(list_, &QListWidget::itemDoubleClicked, this,
            [this] { Do([this] { tool_.Listen(ChosenRow()); }); });
    auto* remove = new QShortcut(QKeySequence::Delete, list_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this,
            [this] { Do([this] { tool_.Remove(ChosenRow()); }); });

    auto* grid = new QGridLayout(frame);
    grid->addWidget(list_, 0, 0);
    grid->addLayout(buttons, 0, 1);
    auto* line = new QHBoxLayout;
    line->addWidget(size_);
    line->addStretch();
    line->addWidget(hint_);
    grid->addLayout(line, 1, 0, 1, 2);
    return frame;
}

QGroupBox* ConvertAudioDialog::MakeTarget()
{
    auto* frame = Frame(this, "Frame_Target");
    frame->setTitle(Words(tool_.ToMp3() ? Msg::FrameTargetMp3 : Msg::FrameTargetWave).trimmed());
    target_->setObjectName(QStringLiteral("Label_DirOut"));
    target_->SetElide(Qt::ElideMiddle);
    auto* browse = NamedButton(frame, "Pul_SfogliaDirOut");
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, [this] { Do([this] { tool_.BrowseTarget(); }); });
    auto* line = new QHBoxLayout(frame);
    line->addWidget(target_, 1);
    line->addWidget(browse);
    return frame;
}

QGroupBox* ConvertAudioDialog::MakeWave()
{
    auto* frame = Frame(this, "Frame1_Outputwav");
    new QVBoxLayout(frame);
    auto* standard = Option(frame, "Opt_StandardWav");
    mono_ = Option(frame, "Opt_22050_mono");
    adpcm_ = Option(frame, "Opt_Wav4bit");
    standard->setChecked(true);
    return frame;
}

void ConvertAudioDialog::ShowAll()
{
    const int row = list_->currentRow();
    list_->clear();
    for (const AudioTool::Row& file : tool_.Rows()) {
        auto* item = new QListWidgetItem(ToQt(file.text), list_);
        item->setToolTip(PlainTip(item->text())); // a long name hides what the file holds
    }
    list_->setCurrentRow(std::min(row, list_->count() - 1));
    size_->setText(ToQt(tool_.SizeText()));
    target_->setText(tool_.Target().empty() ? Words(Msg::AudioNoTarget)
                                            : ToQt(TextOf(tool_.Target())));
    convert_->setEnabled(!tool_.Rows().empty());
}

std::size_t ConvertAudioDialog::ChosenRow() const
{
    const int row = list_->currentRow();
    return row < 0 ? tool_.Rows().size() : static_cast<std::size_t>(row);
}

void ConvertAudioDialog::Convert()
{
    bool leaves = false;
    Do([&] {
        AudioKind kind = AudioKind::Standard;
        if (tool_.ToMp3()) {
            session_.mp3Settings = mp3_->Settings();
            kind = AudioKind::Mp3;
        } else if (mono_->isChecked()) {
            kind = AudioKind::Mono;
        } else if (adpcm_->isChecked()) {
            kind = AudioKind::Adpcm;
        }
        leaves = tool_.Convert(kind);
    });
    if (leaves)
        QDialog::accept();
}

void ConvertAudioDialog::reject()
{
    if (session_.running.operations > 0)
        return;
    const Operation operation{session_};
    tool_.Leave();
    QDialog::reject();
}

void ConvertAudioDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (session_.running.operations == 0 && !DraggedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void ConvertAudioDialog::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Whoever dragged them must not wait for the copies.
    QTimer::singleShot(0, this, [this, paths = DraggedPaths(*event->mimeData())] {
        if (session_.running.operations == 0)
            Do([&] { tool_.AddPaths(paths); });
    });
}

void ShowAudioTool(Session& session, AudioToolMode mode, QWidget* parent)
{
    ConvertAudioDialog dialog{session, mode, parent};
    if (dialog.Ready())
        dialog.exec();
}

} // namespace kestrova
