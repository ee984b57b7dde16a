#include "ui/main/level_files_page.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/size_words.h"
#include "core/text.h"
#include "session/operation.h"
#include "session/telling.h"
#include "ui/desktop/file_names.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "words/level_page.h"
#include "words/ui_shared.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrova
{

namespace
{

bool IsOfKinds(const std::string& name, std::string_view wanted)
{
    const std::string kinds = '|' + std::string{wanted} + '|';
    const std::string kind = FoldCase(ExtensionOf(name));
    return !kind.empty() && kinds.find('|' + kind + '|') != std::string::npos;
}

/// A kind that shows something and runs nothing.
bool IsForReading(const std::string& name)
{
    return IsOfKinds(name, OnDisk::DocumentKinds) || IsOfKinds(name, OnDisk::PictureKinds);
}

} // namespace

LevelFilesPage::LevelFilesPage(Session& session, FilesShown shown, QWidget* parent)
    : QWidget(parent), session_(session), shown_(shown), away_(new QLabel(this)),
      list_(new QTreeWidget(this))
{
    const bool all = shown == FilesShown::All;
    setObjectName(all ? QStringLiteral("Page_Files") : QStringLiteral("Page_Documents"));
    away_->setObjectName(all ? QStringLiteral("Label_FilesAway")
                             : QStringLiteral("Label_DocumentsAway"));
    away_->setTextFormat(Qt::PlainText);
    away_->setWordWrap(true);
    away_->hide();
    list_->setObjectName(all ? QStringLiteral("List_Files") : QStringLiteral("List_Documents"));
    list_->setAccessibleName(Words(all ? Msg::FilesOfLevelName : Msg::DocumentsListName));
    list_->setToolTip(Words(Msg::FilesOpenTip));
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setHeaderLabels({Words(Msg::FilesColumnName), Words(Msg::FilesColumnSize)});
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(fileNameColumn, QHeaderView::Stretch);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(away_);
    column->addWidget(list_, 1);
    connect(list_, &QTreeWidget::itemActivated, this,
            [this](const QTreeWidgetItem* item) { Open(item); });
}

void LevelFilesPage::ShowLevel(LevelCode code)
{
    code_ = code;
    read_ = false;
    if (isVisible())
        Read();
}

void LevelFilesPage::ShowNothing()
{
    code_.reset();
    read_ = true;
    list_->clear();
    away_->hide();
}

void LevelFilesPage::showEvent(QShowEvent* event)
{
    if (!read_)
        Read();
    QWidget::showEvent(event);
}

void LevelFilesPage::ShowWords(const QString& words)
{
    away_->setText(words);
    away_->setVisible(!words.isEmpty());
}

std::vector<Path> LevelFilesPage::Wanted(std::vector<Path> files) const
{
    if (shown_ == FilesShown::All)
        return files;
    std::erase_if(files, [](const Path& file) {
        return !IsOfKinds(file.filename().native(), OnDisk::DocumentKinds);
    });
    const LevelRecord* const level = session_.archive.Find(*code_);
    const std::string_view first = level == nullptr ? "" : Trim(level->moreInfoFile);
    std::stable_partition(files.begin(), files.end(), [&](const Path& file) {
        return EqualNames(file.filename().native(), first);
    });
    return files;
}

void LevelFilesPage::Read()
{
    read_ = true;
    list_->clear();
    const auto folder = FilesFolderOf(session_.Folders(), session_.archive, *code_, DiscWish::Look);
    folder_ = folder ? *folder : Path{};
    const auto files =
        folder ? ListFiles(folder_, OnDisk::PatAll) : Result<std::vector<Path>>{folder.Error()};
    if (!files)
        return ShowWords(
            Words(Msg::FilesAway, {files.Error().subject + ' ' + files.Error().reason}));
    const std::vector<Path> wanted = Wanted(*files);
    ShowWords(wanted.empty() && shown_ == FilesShown::Documents ? Words(Msg::DocumentsNone)
                                                                : QString());
    QList<QTreeWidgetItem*> rows;
    for (const Path& file : wanted) {
        auto* row = new QTreeWidgetItem;
        row->setText(fileNameColumn, ToQt(file.filename().native()));
        row->setText(fileSizeColumn, ToQt(SizeInWords(static_cast<double>(FileSize(file)))));
        row->setTextAlignment(fileSizeColumn, Qt::AlignRight | Qt::AlignVCenter);
        row->setData(0, Qt::UserRole, PathToQt(file));
        rows.append(row);
    }
    list_->addTopLevelItems(rows);
    list_->resizeColumnToContents(fileSizeColumn);
}

void LevelFilesPage::Open(const QTreeWidgetItem* item)
{
    const Path file = PathFromQt(item->data(0, Qt::UserRole).toString());
    if (session_.running.operations > 0 || !IsForReading(file.filename().native()))
        return;
    const Operation operation{session_};
    if (const auto opened = session_.machine.Open(file.native(), folder_); !opened)
        TellFailure(session_.host, GetMsg(Msg::FilesNotOpened), opened.Error());
}

} // namespace kestrova
