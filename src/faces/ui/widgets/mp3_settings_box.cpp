#include "ui/widgets/mp3_settings_box.h"

#include "conversion/mp3_choices.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/qt_text.h"
#include "ui/widgets/wrapping_row.h"
#include "words/ui_widgets.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

QComboBox* Combo(QWidget* parent, const char* name, const Mp3Choice& choice)
{
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QString::fromLatin1(name));
    for (const std::string& row : choice.rows)
        combo->addItem(ToQt(row));
    return combo;
}

/// What a row does not part.
QWidget* Together(QWidget* parent, std::initializer_list<QWidget*> parts)
{
    auto* whole = new QWidget(parent);
    auto* row = new QHBoxLayout(whole);
    row->setContentsMargins({});
    for (QWidget* part : parts)
        row->addWidget(part);
    return whole;
}

} // namespace

Mp3SettingsBox::Mp3SettingsBox(QWidget* parent)
    : QGroupBox(parent), bitRate_(Combo(this, "Combo_BitRate", BitRateChoice())),
      channels_(Combo(this, "Combo_Canali", ChannelChoice())),
      frequency_(Combo(this, "Combo_Frequenza", FrequencyChoice())), estimate_(new QLabel(this))
{
    setObjectName(QStringLiteral("Frame_Mp3"));
    estimate_->setObjectName(QStringLiteral("Label_InfoMp3"));
    auto* restore = NamedButton(this, "Pul_Restore");
    restore->setAutoDefault(false);

    // One list below the other where they have no room beside each other.
    auto* lists = new WrappingRow;
    const auto add = [&](QComboBox* combo, const char* name, Message words) {
        auto* label = new QLabel(Words(words), this);
        label->setObjectName(QString::fromLatin1(name));
        label->setBuddy(combo);
        combo->setAccessibleName(label->text());
        lists->addWidget(Together(this, {label, combo}));
    };
    add(bitRate_, "Label_BitRate", Msg::AudioBitRate);
    add(channels_, "Label_Canali", Msg::AudioChannels);
    add(frequency_, "Label_Frequenza", Msg::AudioFrequency);
    auto* line = new WrappingRow;
    line->addWidget(Together(this, {new QLabel(Words(Msg::AudioEstimate), this), estimate_}));
    line->AddStretch();
    line->addWidget(restore);
    auto* column = new QVBoxLayout(this);
    column->addLayout(lists);
    column->addLayout(line);
    connect(bitRate_, &QComboBox::currentIndexChanged, this, [this] { ShowEstimate(); });
    connect(restore, &QPushButton::clicked, this, [this] { UseUsualRows(); });
    UseUsualRows();
}

Mp3Settings Mp3SettingsBox::Settings() const
{
    return SettingsOfRows(FromQt(bitRate_->currentText()), FromQt(channels_->currentText()),
                          static_cast<std::size_t>(frequency_->currentIndex()));
}

void Mp3SettingsBox::UseUsualRows()
{
    bitRate_->setCurrentIndex(static_cast<int>(BitRateChoice().usual));
    channels_->setCurrentIndex(static_cast<int>(ChannelChoice().usual));
    frequency_->setCurrentIndex(static_cast<int>(FrequencyChoice().usual));
    ShowEstimate();
}

void Mp3SettingsBox::ShowEstimate()
{
    estimate_->setText(ToQt(Mp3Estimate(bitRate_->currentText().toInt())));
}

} // namespace kestrova
