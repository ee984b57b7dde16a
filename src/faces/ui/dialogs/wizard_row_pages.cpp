#include "ui/dialogs/wizard_row_pages.h"

#include "publish/upload_files.h"
#include "publish/upload_lists.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/qt_text.h"
#include "words/wizard.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int rowsShown = 3;
constexpr int typedLetters = 10;

/// A frame with a list of rows, the boxes of the selected one, and its three buttons.
class RowsFrame : public QGroupBox
{
public:
    RowsFrame(QWidget* parent, const char* name, const char* list, RowKind kind,
              UploadWizard& wizard, UploadPage::Runner run)
        : QGroupBox(parent), kind_(kind), wizard_(wizard), run_(std::move(run)),
          list_(new QListWidget(this)), column_(new QVBoxLayout(this)), boxes_(new QGridLayout)
    {
        setObjectName(QString::fromLatin1(name));
        list_->setObjectName(QString::fromLatin1(list));
        list_->setTextElideMode(Qt::ElideMiddle);
        list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list_->setMinimumHeight(rowsShown * (list_->fontMetrics().height() + 4));
        connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
            if (row >= 0)
                run_([this, row] {
                    (void)SelectRow(wizard_, kind_, static_cast<std::size_t>(row));
                });
        });
        boxes_->setColumnStretch(1, 1);
        boxes_->setColumnStretch(3, 1);
        column_->addWidget(list_, 1);
        column_->addLayout(boxes_);
    }

    [[nodiscard]] QListWidget* List() const { return list_; }
    [[nodiscard]] QVBoxLayout& Column() const { return *column_; }

    /// A box of the row, at its place among the others, two beside each other.
    void AddBox(QWidget* box, const char* name, const char* label, Message tip = Message{})
    {
        auto* words = new QLabel(this);
        words->setObjectName(QString::fromLatin1(label));
        words->setBuddy(box);
        box->setObjectName(QString::fromLatin1(name));
        if (!tip.text.empty())
            box->setToolTip(Words(tip));
        const int at = static_cast<int>(fields_.size());
        boxes_->addWidget(words, at / 2, at % 2 * 2);
        boxes_->addWidget(box, at / 2, at % 2 * 2 + 1);
        fields_.push_back(box);
    }
    void AddButtons(const char* add, const char* update, const char* remove)
    {
        auto* buttons = new QHBoxLayout;
        const auto put = [&](const char* name, auto work) {
            auto* button = NamedButton(this, name);
            button->setAutoDefault(false);
            connect(button, &QPushButton::clicked, this, [this, work] { run_(work); });
            buttons->addWidget(button);
            return button;
        };
        auto* first = put(add, [this] { (void)AddRow(wizard_, kind_); });
        connect(first, &QPushButton::clicked, this, [this] {
            if (!fields_.empty() && fields_.front()->isEnabled())
                fields_.front()->setFocus();
        });
        put(update, [this] { (void)UpdateRow(wizard_, kind_); });
        put(remove, [this] { RemoveRow(wizard_, kind_); });
        buttons->addStretch();
        column_->addLayout(buttons);
    }
    void ShowRows(const std::optional<std::size_t>& selected)
    {
        const QSignalBlocker quiet{list_};
        list_->clear();
        for (const std::string& text : RowTexts(wizard_, kind_)) {
            auto* item = new QListWidgetItem(ToQt(text), list_);
            item->setToolTip(PlainTip(item->text()));
        }
        list_->setCurrentRow(selected ? static_cast<int>(*selected) : -1);
        for (QWidget* field : fields_)
            field->setEnabled(selected.has_value());
    }

private:
    RowKind kind_;
    UploadWizard& wizard_;
    UploadPage::Runner run_;
    QListWidget* list_;
    QVBoxLayout* column_;
    QGridLayout* boxes_;
    std::vector<QWidget*> fields_;
};

void ShowText(QLineEdit& box, const std::string& text)
{
    if (box.text() == ToQt(text))
        return;
    box.setText(ToQt(text));
    box.setCursorPosition(0); // a long one is read from its beginning
}

/// A line of the row that is worked on.
template <std::size_t N> QLineEdit* RowLine(QWidget* parent, UploadRows<N>& rows, std::size_t at)
{
    auto* line = new QLineEdit(parent);
    QObject::connect(line, &QLineEdit::textChanged, line,
                     [&rows, at](const QString& text) { rows.edit[at] = FromQt(text); });
    return line;
}

/// `Frame_Pag5`.
class ImportPage : public UploadPage
{
public:
    ImportPage(UploadWizard& wizard, const Runner& run)
        : UploadPage(wizard, run, "Frame_Pag5"),
          wads_(new RowsFrame(this, "Frame_ImportWads", "List_ImportWads", RowKind::ImportWads,
                              wizard, run)),
          waves_(new RowsFrame(this, "Frame_ExtWave", "List_ExtWave", RowKind::ExternWaves, wizard,
                               run)),
          check_(RowLine(wads_, wizard.importWads, 0)), url_(RowLine(wads_, wizard.importWads, 1)),
          notes_(new QLineEdit(this)), cd_(new QComboBox(waves_)),
          source_(RowLine(waves_, wizard.externWaves, 1)),
          target_(RowLine(waves_, wizard.externWaves, 2)),
          missing_(RowLine(waves_, wizard.externWaves, 3))
    {
        wads_->AddBox(check_, "Text_CheckingWad", "Label_CheckOf", Msg::UploadCheckTip);
        wads_->AddBox(url_, "Text_UrlWads", "Label_UrlOf");
        wads_->AddButtons("Pul_AddWads", "Pul_UpdateWads", "Pul_RemoveWads");
        notes_->setObjectName(QStringLiteral("Text_ImportNotes"));
        connect(notes_, &QLineEdit::textChanged, this,
                [this](const QString& text) { wizard_.importNotes = FromQt(text); });
        auto* label = new QLabel(wads_);
        label->setObjectName(QStringLiteral("Label_NotesOf"));
        label->setBuddy(notes_);
        auto* told = new QHBoxLayout;
        told->addWidget(label);
        told->addWidget(notes_, 1);
        wads_->Column().addLayout(told);

        for (const UploadChoice& cd : WaveCds())
            cd_->addItem(ToQt(cd.text), ToQt(cd.code));
        cd_->setPlaceholderText(Words(Msg::UploadChooseCd));
        cd_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        cd_->setMinimumContentsLength(typedLetters);
        connect(cd_, &QComboBox::activated, this, [this](int row) {
            wizard_.externWaves.edit[0] = FromQt(cd_->itemData(row).toString());
        });
        waves_->AddBox(cd_, "Combo_FromCd", "Label_CdOf");
        waves_->AddBox(source_, "Text_WavOriginale", "Label_SourceOf");
        waves_->AddBox(target_, "Text_WavRename", "Label_TargetOf");
        waves_->AddBox(missing_, "Text_WavMissing", "Label_MissingOf", Msg::UploadWaveMissingTip);
        waves_->AddButtons("Pul_AddExternWav", "Pul_UpdateExtWave", "Pul_RimuoviWav");
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins({});
        column->addWidget(wads_, 1);
        column->addWidget(waves_, 1);
    }

    void ShowState() override
    {
        wads_->ShowRows(wizard_.importWads.selected);
        const auto wads = wizard_.importWads.edit;
        ShowText(*check_, wads[0]);
        ShowText(*url_, wads[1]);
        ShowText(*notes_, wizard_.importNotes);
        waves_->ShowRows(wizard_.externWaves.selected);
        const auto wave = wizard_.externWaves.edit;
        cd_->setCurrentIndex(cd_->findData(ToQt(wave[0])));
        ShowText(*source_, wave[1]);
        ShowText(*target_, wave[2]);
        ShowText(*missing_, wave[3]);
    }
    QWidget* First() override { return wads_->List(); }

private:
    RowsFrame* wads_;
    RowsFrame* waves_;
    QLineEdit* check_;
    QLineEdit* url_;
    QLineEdit* notes_;
    QComboBox* cd_;
    QLineEdit* source_;
    QLineEdit* target_;
    QLineEdit* missing_;
};

/// `Frame_Pag6`.
class TomPage : public UploadPage
{
public:
    TomPage(UploadWizard& wizard, const Runner& run)
        : UploadPage(wizard, run, "Frame_Pag6"),
          rows_(
              new RowsFrame(this, "Frame_UsaWads", "List_UsaWads", RowKind::TomWads, wizard, run)),
          tom_(new QComboBox(rows_)), wads_(new QComboBox(rows_)), hint_(new QLabel(this))
    {
        rows_->AddBox(tom_, "Combo_MieiTom", "Label_TomOf");
        rows_->AddBox(wads_, "Combo_UsaWads", "Label_WadsOf");
        rows_->AddButtons("Pul_AddUsaWad", "Pul_OkUsaWad", "Pul_RemoveUsaWad");
        for (QComboBox* combo : {tom_, wads_})
            combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        connect(tom_, &QComboBox::activated, this, [this](int row) {
            wizard_.tomWads.edit[0] = row <= 0 ? std::string{} : FromQt(tom_->itemText(row));
        });
        connect(wads_, &QComboBox::activated, this,
                [this](int row) { wizard_.tomWads.edit[1] = FromQt(wads_->itemText(row)); });
        hint_->setObjectName(QStringLiteral("Label_TomHint"));
        hint_->setWordWrap(true);
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins({});
        column->addWidget(hint_);
        column->addWidget(rows_, 1);
    }

    void ShowState() override
    {
        const std::vector<std::string> toms = TomFiles(wizard_);
        const auto edit = wizard_.tomWads.edit;
        Fill(*tom_, toms, edit[0], Words(Msg::UploadNone));
        Fill(*wads_, WadPatterns(wizard_), edit[1], {});
        rows_->ShowRows(wizard_.tomWads.selected);
        hint_->setText(Words(toms.empty() ? Msg::UploadNoTomHint : Msg::UploadTomHint));
    }
    QWidget* First() override { return rows_->List(); }

private:
    /// What stands there already counts even where the files have it no more.
    static void Fill(QComboBox& combo, const std::vector<std::string>& texts,
                     const std::string& chosen, const QString& none)
    {
        combo.clear();
        if (!none.isEmpty())
            combo.addItem(none);
        for (const std::string& text : texts)
            combo.addItem(ToQt(text));
        if (!chosen.empty() && combo.findText(ToQt(chosen)) < 0)
            combo.addItem(ToQt(chosen));
        combo.setCurrentIndex(chosen.empty() ? (none.isEmpty() ? -1 : 0)
                                             : combo.findText(ToQt(chosen)));
    }

    RowsFrame* rows_;
    QComboBox* tom_;
    QComboBox* wads_;
    QLabel* hint_;
};

} // namespace

UploadPage* MakeImportPage(UploadWizard& wizard, const UploadPage::Runner& run)
{
    return new ImportPage(wizard, run);
}

UploadPage* MakeTomPage(UploadWizard& wizard, const UploadPage::Runner& run)
{
    return new TomPage(wizard, run);
}

} // namespace kestrova
