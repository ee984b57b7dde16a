#include "ui/dialogs/wizard_files_page.h"

#include "core/file_kinds.h"
#include "core/size_words.h"
#include "publish/upload_files.h"
#include "publish/upload_sounds.h"
#include "ui/dialogs/dialog_set_mp3.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"
#include "words/ui_shared.h"
#include "words/wizard.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

/// `Frame_Pag2`.
class UploadFilesPage : public UploadPage
{
public:
    UploadFilesPage(UploadWizard& wizard, const Runner& run)
        : UploadPage(wizard, run, "Frame_Pag2"), files_(new QTreeWidget(this)),
          hint_(new QLabel(files_->viewport())), size_(new QLabel(this)),
          moreInfo_(new QComboBox(this))
    {
        auto* buttons = new QVBoxLayout;
        buttons->addWidget(Button(this, "Pul_AddFile", [this] { AddChosenFile(wizard_); }));
        buttons->addWidget(Button(this, "Pul_AddFolder", [this] { AddChosenFolder(wizard_); }));
        auto* remove = Button(this, "Pul_Remove", [this] { RemoveFile(wizard_, Row()); });
        buttons->addWidget(remove);
        buttons->addSpacing(remove->sizeHint().height() / 2);
        picture_ = Button(this, "Pul_ComprBmp", [this] { CompressLoadPicture(wizard_); });
        picture_->setToolTip(Words(Msg::UploadComprBmpTip));
        buttons->addWidget(picture_);
        sounds_ = NamedButton(this, "Pul_ComprWav");
        sounds_->setAutoDefault(false);
        sounds_->setToolTip(Words(Msg::UploadComprWavTip));
        connect(sounds_, &QPushButton::clicked, this, &UploadFilesPage::AskSounds);
        buttons->addWidget(sounds_);
        buttons->addStretch();
        MakeList();
        connect(new QShortcut(Qt::Key_Delete, files_, nullptr, nullptr, Qt::WidgetShortcut),
                &QShortcut::activated, remove, &QPushButton::click);

        auto* row = new QHBoxLayout;
        row->addWidget(files_, 1);
        row->addLayout(buttons);
        auto* label = new QLabel(this);
        label->setObjectName(QStringLiteral("Label_MoreInfoOf"));
        label->setBuddy(moreInfo_);
        moreInfo_->setObjectName(QStringLiteral("Combo_MoreInfo"));
        moreInfo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        connect(moreInfo_, &QComboBox::activated, this, [this](int chosen) {
            wizard_.moreInfo =
                chosen <= 0
                    ? std::string{}
                    : wizard_.files[static_cast<std::size_t>(chosen) - 1].path.filename().native();
        });
        auto* info = new QHBoxLayout;
        info->addWidget(label);
        info->addWidget(moreInfo_, 1);
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins({});
        column->addLayout(row, 1);
        column->addWidget(size_);
        column->addLayout(info);
    }

    void ShowState() override
    {
        const int row = files_->indexOfTopLevelItem(files_->currentItem());
        files_->clear();
        QList<QTreeWidgetItem*> items;
        QStringList names{Words(Msg::UploadNone)};
        int chosen = 0;
        for (const UploadFile& file : wizard_.files) {
            const QString name = ToQt(TextOf(file.path.filename()));
            auto* item =
                new QTreeWidgetItem({name, ToQt(SizeInWords(static_cast<double>(file.size)))});
            item->setToolTip(fileNameColumn, PlainTip(name));
            item->setTextAlignment(fileSizeColumn, Qt::AlignRight | Qt::AlignVCenter);
            items.append(item);
            names.append(name);
            if (EqualNames(file.path.filename().native(), wizard_.moreInfo))
                chosen = static_cast<int>(names.size()) - 1;
        }
        files_->addTopLevelItems(items);
        if (row >= 0 && !items.isEmpty())
            files_->setCurrentItem(items[std::min(row, static_cast<int>(items.size()) - 1)]);
        hint_->setVisible(items.isEmpty());
        moreInfo_->clear();
        moreInfo_->addItems(names);
        moreInfo_->setCurrentIndex(chosen);
        size_->setText(ToQt(wizard_.FilesText()));
        picture_->setEnabled(HasLoadPicture(wizard_));
        sounds_->setEnabled(HasSounds(wizard_));
    }
    QWidget* First() override { return files_; }

private:
    void MakeList()
    {
        MakeFileList(*files_, Msg::FilesOfLevelName,
                     {Words(Msg::HistoryColumnFile), Words(Msg::ColumnSize)});
        PutHint(*files_, *hint_);
        hint_->setText(Words(Msg::UploadDropHint));
        size_->setObjectName(QStringLiteral("Label_Size"));
    }
    [[nodiscard]] std::size_t Row() const
    {
        const int row = files_->indexOfTopLevelItem(files_->currentItem());
        return row < 0 ? wizard_.files.size() : static_cast<std::size_t>(row);
    }
    void AskSounds()
    {
        SetMp3Dialog dialog{wizard_.session, HasDecoderUtilities(wizard_.session.programFolder),
                            window()};
        if (dialog.exec() == QDialog::Accepted)
            run_([&] { CompressSounds(wizard_, dialog.WithDecoder()); });
    }

    QTreeWidget* files_;
    QLabel* hint_;
    QLabel* size_;
    QComboBox* moreInfo_;
    QPushButton* picture_ = nullptr;
    QPushButton* sounds_ = nullptr;
};

} // namespace

UploadPage* MakeFilesPage(UploadWizard& wizard, const UploadPage::Runner& run)
{
    return new UploadFilesPage(wizard, run);
}

} // namespace kestrova
