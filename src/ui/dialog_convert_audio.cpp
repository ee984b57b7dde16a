#include "ui/dialog_convert_audio.h"

#include "audio/mp3_choices.h"
#include "ui/captions.h"
#include "ui/dialogs_small.h"
#include "ui/elided_label.h"
#include "ui/qt_text.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTimer>
#include <QUrl>

namespace kestrova
{

namespace
{

constexpr int dialogWidth = 600;
constexpr int dialogHeight = 520;

std::vector<Path> DroppedPaths(const QMimeData& data)
{
    std::vector<Path> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            paths.push_back(PathFromQt(url.toLocalFile()));
    return paths;
}

QComboBox* Combo(QWidget* parent, const char* name, const Mp3Choice& choice)
{
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QString::fromLatin1(name));
    for (const std::string& row : choice.rows)
        combo->addItem(ToQt(row));
    return combo;
}

QLabel* Caption(QWidget* of, const char* name)
{
    auto* label = new QLabel(of->parentWidget());
    label->setObjectName(QString::fromLatin1(name));
    label->setBuddy(of);
    return label;
}

QGroupBox* Frame(QWidget* parent, const char* name)
{
    auto* frame = new QGroupBox(parent);
    frame->setObjectName(QString::fromLatin1(name));
    return frame;
}

QRadioButton* Option(QGroupBox* frame, const char* name, Msg words)
{
    auto* option = new QRadioButton(Words(words), frame);
    option->setObjectName(QString::fromLatin1(name));
    frame->layout()->addWidget(option);
    return option;
}

Msg FrameWords(AudioToolMode mode)
{
    return mode == AudioToolMode::Decode   ? Msg::FrameDecode
           : mode == AudioToolMode::Encode ? Msg::FrameEncode
                                           : Msg::FrameConvert;
}

} // namespace

ConvertAudioDialog::ConvertAudioDialog(Session& session, AudioToolMode mode, QWidget* parent)
    : QDialog(parent), session_(session), tool_(session, mode), list_(new QListWidget(this)),
      size_(new QLabel(this)), hint_(new QLabel(this)), target_(new ElidedLabel(this)),
      convert_(NamedButton(this, "Pul_Converti"))
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

    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeFiles(), 1);
    column->addWidget(MakeTarget());
    column->addWidget(tool_.ToMp3() ? MakeMp3() : MakeWave());
    column->addLayout(buttons);
    connect(convert_, &QPushButton::clicked, this, &ConvertAudioDialog::Convert);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    SetCaptions(*this);
    ShowAll();
    resize(dialogWidth, dialogHeight);
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
    frame->setTitle(Words(FrameWords(tool_.Mode())));
    list_->setObjectName(QStringLiteral("List_Files"));
    list_->setAccessibleName(frame->title().trimmed());
    list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
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
    frame->setTitle(Words(tool_.ToMp3() ? Msg::FrameTargetMp3 : Msg::FrameTargetWave));
    target_->setObjectName(QStringLiteral("Label_DirOut"));
    auto* browse = NamedButton(frame, "Pul_SfogliaDirOut");
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, [this] { Do([this] { tool_.BrowseTarget(); }); });
    auto* line = new QHBoxLayout(frame);
    line->addWidget(target_, 1);
    line->addWidget(browse);
    return frame;
}

QGroupBox* ConvertAudioDialog::MakeMp3()
{
    auto* frame = Frame(this, "Frame_Mp3");
    frame->setTitle(Words(Msg::FrameMp3));
    bitRate_ = Combo(frame, "Combo_BitRate", BitRateChoice());
    channels_ = Combo(frame, "Combo_Canali", ChannelChoice());
    frequency_ = Combo(frame, "Combo_Frequenza", FrequencyChoice());
    estimate_ = new QLabel(frame);
    estimate_->setObjectName(QStringLiteral("Label_InfoMp3"));
    auto* restore = NamedButton(frame, "Pul_Restore");
    restore->setAutoDefault(false);
    restore->setText(Words(Msg::AudioRestore));
    restore->setAccessibleName(restore->text());
    const auto caption = [](QWidget* of, const char* name, Msg words) {
        QLabel* label = Caption(of, name);
        label->setText(Words(words));
        return label;
    };
    auto* grid = new QGridLayout(frame);
    grid->addWidget(caption(bitRate_, "Label_BitRate", Msg::AudioBitRate), 0, 0);
    grid->addWidget(bitRate_, 0, 1);
    grid->addWidget(caption(channels_, "Label_Canali", Msg::AudioChannels), 0, 2);
    grid->addWidget(channels_, 0, 3);
    grid->addWidget(caption(frequency_, "Label_Frequenza", Msg::AudioFrequency), 0, 4);
    grid->addWidget(frequency_, 0, 5);
    auto* line = new QHBoxLayout;
    line->addWidget(new QLabel(Words(Msg::AudioEstimate), frame));
    line->addWidget(estimate_);
    line->addStretch();
    line->addWidget(restore);
    grid->addLayout(line, 1, 0, 1, 6);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setColumnStretch(5, 1);
    connect(bitRate_, &QComboBox::currentIndexChanged, this, [this] { ShowEstimate(); });
    connect(restore, &QPushButton::clicked, this, [this] { UseUsualSettings(); });
    UseUsualSettings();
    return frame;
}

QGroupBox* ConvertAudioDialog::MakeWave()
{
    auto* frame = Frame(this, "Frame1_Outputwav");
    frame->setTitle(Words(Msg::FrameWave));
    new QVBoxLayout(frame);
    auto* standard = Option(frame, "Opt_StandardWav", Msg::AudioStandardFull);
    mono_ = Option(frame, "Opt_22050_mono", Msg::AudioMonoFull);
    adpcm_ = Option(frame, "Opt_Wav4bit", Msg::AudioAdpcmFull);
    standard->setChecked(true);
    return frame;
}

void ConvertAudioDialog::UseUsualSettings()
{
    bitRate_->setCurrentIndex(static_cast<int>(BitRateChoice().usual));
    channels_->setCurrentIndex(static_cast<int>(ChannelChoice().usual));
    frequency_->setCurrentIndex(static_cast<int>(FrequencyChoice().usual));
    ShowEstimate();
}

void ConvertAudioDialog::ShowEstimate()
{
    estimate_->setText(ToQt(Mp3Estimate(bitRate_->currentText().toInt())));
}

void ConvertAudioDialog::ShowAll()
{
    const int row = list_->currentRow();
    list_->clear();
    for (const AudioTool::Row& file : tool_.Rows()) {
        auto* item = new QListWidgetItem(ToQt(file.text), list_);
        item->setToolTip(item->text()); // a long name hides what the file holds
    }
    list_->setCurrentRow(std::min(row, list_->count() - 1));
    size_->setText(ToQt(tool_.SizeText()));
    target_->setText(tool_.Target().empty() ? Words(Msg::AudioNoTarget)
                                            : ToQt(TextOf(tool_.Target())));
    convert_->setEnabled(!tool_.Rows().empty());
    if (estimate_ != nullptr)
        ShowEstimate();
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
            session_.mp3Settings =
                SettingsOfRows(FromQt(bitRate_->currentText()), FromQt(channels_->currentText()),
                               static_cast<std::size_t>(frequency_->currentIndex()));
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
    if (session_.runningOperations > 0)
        return;
    const Operation operation{session_};
    tool_.Leave();
    QDialog::reject();
}

void ConvertAudioDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (session_.runningOperations == 0 && !DroppedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void ConvertAudioDialog::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Whoever dragged them must not wait for the copies.
    QTimer::singleShot(0, this, [this, paths = DroppedPaths(*event->mimeData())] {
        if (session_.runningOperations == 0)
            Do([&] { tool_.AddPaths(paths); });
    });
}

Commands AudioCommands(Session& session, QWidget* parent)
{
    const auto open = [&session, parent](AudioToolMode mode) {
        return [&session, parent, mode] {
            if (session.runningOperations > 0)
                return;
            ConvertAudioDialog dialog{session, mode, parent};
            if (dialog.Ready())
                dialog.exec();
        };
    };
    return {{"mnu_DecodeMp3", open(AudioToolMode::Decode)},
            {"mnu_EncodeMp3", open(AudioToolMode::Encode)},
            {"mnu_ConvertWav", open(AudioToolMode::Convert)}};
}

} // namespace kestrova
