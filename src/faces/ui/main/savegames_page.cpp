#include "ui/main/savegames_page.h"

#include "formats/savegame_records.h"
#include "formats/trle_folder.h"
#include "platform/places.h"
#include "saves/savegame_list.h"
#include "session/operation.h"
#include "ui/widgets/drop_area.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/fitted_columns.h"
#include "ui/widgets/picture_reading.h"
#include "ui/widgets/picture_view.h"
#include "ui/widgets/qt_text.h"
#include "ui/widgets/wrapping_row.h"
#include "words/captions.h"
#include "words/level_page.h"
#include "words/saves.h"
#include "words/ui_dialogs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

enum SaveColumn { savedName, savedTitle, savedNumber, savedTime };
constexpr int indexRole = Qt::UserRole;
constexpr int placeRole = Qt::UserRole + 1;
constexpr int slotRole = Qt::UserRole + 2;

std::vector<Path> SavegamesAmong(const std::vector<Path>& paths)
{
    std::vector<Path> files;
    for (const Path& path : paths)
        if (MatchesPattern(path.filename().native(), OnDisk::SavegamePattern) && FileExists(path))
            files.push_back(path);
    return files;
}

std::pair<SavegamePlace, int> GroupOf(const QTreeWidgetItem& item)
{
    return {static_cast<SavegamePlace>(item.data(0, placeRole).toInt()),
            item.data(0, slotRole).toInt()};
}

} // namespace

SavegamesPage::SavegamesPage(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), empty_(new QLabel(this)), list_(new QTreeWidget(this)),
      picture_(new PictureView(this)), words_(new ElidedParagraph(this))
{
    setObjectName(QStringLiteral("Page_Savegames"));
    empty_->setObjectName(QStringLiteral("Label_NoSaves"));
    empty_->setTextFormat(Qt::PlainText);
    empty_->setWordWrap(true);
    list_->setObjectName(QStringLiteral("List_Saves"));
    list_->setAccessibleName(Words(Msg::SavesListName));
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setContextMenuPolicy(Qt::CustomContextMenu);
    list_->setHeaderLabels({Words(Msg::SavesColumnName), Words(Msg::SavesColumnTitle),
                            Words(Msg::SavesColumnNumber), Words(Msg::SavesColumnSaved)});
    columns_ =
        new FittedColumns(*list_, {savedName, savedTime, savedTitle, savedNumber}, savedTitle);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(empty_);
    column->addWidget(list_, 1);
    column->addLayout(MakeBeside());
    column->addWidget(MakeButtons());

    connect(list_, &QTreeWidget::itemSelectionChanged, this, &SavegamesPage::ShowButtons);
    connect(list_, &QTreeWidget::currentItemChanged, this, &SavegamesPage::ShowBeside);
    connect(list_, &QTreeWidget::customContextMenuRequested, this, &SavegamesPage::ShowMenu);
    connect(list_, &QTreeWidget::itemCollapsed, this,
            [this](const QTreeWidgetItem* item) { closed_.insert(GroupOf(*item)); });
    connect(list_, &QTreeWidget::itemExpanded, this,
            [this](const QTreeWidgetItem* item) { closed_.erase(GroupOf(*item)); });
    closed_.emplace(SavegamePlace::History, 0);

    auto* drops = new DropArea(this);
    drops->welcome = [this](const std::vector<Path>& paths) {
        const std::size_t count = SavegamesAmong(paths).size();
        return code_ && count > 0 && session_.running.operations == 0
                   ? Words(Msg::DropSavegames, {std::to_string(count)})
                   : QString();
    };
    drops->dropped = [this](const std::vector<Path>& paths) { Import(SavegamesAmong(paths)); };
    ShowNothing();
}

QLayout* SavegamesPage::MakeBeside()
{
    constexpr QSize pictureSize{128, 96};
    picture_->setObjectName(QStringLiteral("Image_Save"));
    picture_->setAccessibleName(Words(Msg::SavesPictureName));
    picture_->setFixedSize(pictureSize);
    words_->setObjectName(QStringLiteral("Label_SaveNote"));
    words_->setFixedHeight(pictureSize.height());
    words_->setAlignment(Qt::AlignTop);
    words_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout;
    row->addWidget(picture_);
    row->addWidget(words_, 1);
    return row;
}

void SavegamesPage::ShowBeside()
{
    const QTreeWidgetItem* item = list_->currentItem();
    const bool isOne = item != nullptr && item->parent() != nullptr;
    const auto index = isOne ? item->data(0, indexRole).toULongLong() : savegames_.size();
    const LevelSavegame* one = index < savegames_.size() ? &savegames_[index] : nullptr;
    const BesideSavegame beside = one != nullptr ? BesideOf(*one) : BesideSavegame{};
    const auto picture =
        beside.picture.empty() ? Result<QImage>{Failure{}} : LoadPicture(beside.picture);
    picture_->setVisible(!beside.picture.empty());
    if (picture)
        picture_->Show(*picture);
    else
        picture_->ShowWords(Words(Msg::ShotUnreadable, {picture.Error().reason}));
    words_->setText(one != nullptr ? ToQt(WordsOf(*one) + "\n" + beside.note) : QString());
    words_->setVisible(!beside.picture.empty() || !beside.note.empty());
}

QPushButton* SavegamesPage::Button(const char* name, Message caption, Message tip,
                                   void (SavegamesPage::*does)())
{
    auto* button = new QPushButton(Words(caption), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(button->text());
    button->setToolTip(Words(tip));
    connect(button, &QPushButton::clicked, this, does);
    return button;
}

QWidget* SavegamesPage::MakeButtons()
{
    auto* buttons = new QWidget(this);
    auto* row = new WrappingRow(buttons);
    row->setContentsMargins({});
    bring_ = Button("Pul_BringSave", Msg::SavesBring, Msg::SavesBringTip, &SavegamesPage::Bring);
    export_ =
        Button("Pul_ExportSave", Msg::SavesExport, Msg::SavesExportTip, &SavegamesPage::Export);
    delete_ =
        Button("Pul_DeleteSave", Msg::SavesDelete, Msg::SavesDeleteTip, &SavegamesPage::Delete);
    free_ = Button("Pul_FreeSlots", Msg::SavesFree, Msg::SavesFreeTip, &SavegamesPage::FreeSlots);
    fill_ = Button("Pul_FillSlots", Msg::SavesFill, Msg::SavesFillTip, &SavegamesPage::FillSlots);
    for (QPushButton* button : {bring_, export_, delete_, free_, fill_})
        row->addWidget(button);
    return buttons;
}

void SavegamesPage::ShowLevel(LevelCode code)
{
    if (code_ != code) {
        list_->clear();
        savegames_.clear();
    }
    code_ = code;
    read_ = false;
    if (isVisible())
        Read();
}

void SavegamesPage::ShowNothing()
{
    code_.reset();
    read_ = true;
    savegames_.clear();
    Fill();
    empty_->hide();
}

void SavegamesPage::showEvent(QShowEvent* event)
{
    if (!read_)
        Read();
    QWidget::showEvent(event);
}

void SavegamesPage::Read()
{
    const auto found = SavegamesOfLevel(session_.Folders(), session_.archive, *code_);
    read_ = true;
    savegames_ = found ? *found : Chosen{};
    Fill();
    empty_->setText(
        found ? Words(Msg::SavesNone)
              : Words(Msg::SavesNotRead, {found.Error().subject + ' ' + found.Error().reason}));
    empty_->setVisible(savegames_.empty());
}

QTreeWidgetItem* SavegamesPage::AddGroup(const QString& words, bool open)
{
    auto* group = new QTreeWidgetItem(list_, {words});
    group->setFlags(Qt::ItemIsEnabled);
    group->setFirstColumnSpanned(true);
    QFont strong = list_->font();
    strong.setBold(true);
    group->setFont(savedName, strong);
    group->setExpanded(open);
    return group;
}

void SavegamesPage::AddRow(QTreeWidgetItem& group, std::size_t index)
{
    const LevelSavegame& savegame = savegames_[index];
    auto* row = new QTreeWidgetItem(&group);
    row->setText(savedName, ToQt(savegame.name));
    row->setText(savedTitle, ToQt(savegame.title));
    row->setText(savedNumber, QString::number(savegame.number));
    row->setTextAlignment(savedNumber, Qt::AlignRight | Qt::AlignVCenter);
    row->setText(savedTime, MomentText(savegame.savedNs));
    const std::string tip = savegame.reason.empty()
                                ? WordsOf(savegame)
                                : GetMsg(Msg::SavesKeptBecause, {savegame.reason});
    for (const int columnOf : {savedName, savedTitle})
        row->setToolTip(columnOf, PlainTip(ToQt(tip)));
    row->setData(0, indexRole, static_cast<qulonglong>(index));
}

void SavegamesPage::Fill()
{
    const auto before = closed_; // building the list tells of groups that open
    list_->clear();
    std::map<std::pair<SavegamePlace, int>, QTreeWidgetItem*> groups;
    for (std::size_t i = 0; i < savegames_.size(); ++i) {
        const std::pair key{savegames_[i].place, savegames_[i].slot};
        QTreeWidgetItem*& group = groups[key];
        if (group == nullptr) {
            const auto count =
                std::count_if(savegames_.begin(), savegames_.end(), [&](const LevelSavegame& one) {
                    return one.place == key.first && one.slot == key.second;
                });
            const std::string many = std::to_string(count);
            const QString words =
                key.first == SavegamePlace::Live
                    ? Words(Msg::SavesGroupLive, {many, std::to_string(gameSlotCount)})
                : key.first == SavegamePlace::Slot
                    ? Words(Msg::SavesGroupSlot, {std::to_string(key.second), many})
                    : Words(Msg::SavesGroupHistory, {many});
            group = AddGroup(words, false);
            group->setData(0, placeRole, static_cast<int>(key.first));
            group->setData(0, slotRole, key.second);
        }
        AddRow(*group, i);
    }
    for (const auto& [key, group] : groups)
        group->setExpanded(!before.contains(key));
    closed_ = before;
    columns_->Fit();
    ShowButtons();
    ShowBeside();
}

SavegamesPage::Chosen SavegamesPage::ChosenOnes() const
{
    Chosen chosen;
    for (const QTreeWidgetItem* item : list_->selectedItems())
        if (item->parent() != nullptr)
            chosen.push_back(savegames_[item->data(0, indexRole).toULongLong()]);
    return chosen;
}

void SavegamesPage::ShowButtons()
{
    const Chosen chosen = ChosenOnes();
    const auto has = [&](bool (*is)(const LevelSavegame&)) {
        return std::any_of(chosen.begin(), chosen.end(), is);
    };
    bring_->setEnabled(
        has([](const LevelSavegame& one) { return one.place != SavegamePlace::Live; }));
    export_->setEnabled(!chosen.empty());
    delete_->setEnabled(
        has([](const LevelSavegame& one) { return one.place != SavegamePlace::History; }));
    for (QPushButton* button : {free_, fill_})
        button->setEnabled(code_.has_value());
}

void SavegamesPage::ShowMenu(QPoint place)
{
    if (!code_ || session_.running.operations > 0)
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QPushButton* button : {bring_, export_, delete_, free_, fill_}) {
        if (button == free_)
            menu->addSeparator();
        QAction* action = menu->addAction(button->text(), button, &QPushButton::click);
        action->setEnabled(button->isEnabled());
    }
    menu->popup(list_->viewport()->mapToGlobal(place));
}

void SavegamesPage::Bring()
{
    Chosen chosen = ChosenOnes();
    std::erase_if(chosen,
                  [](const LevelSavegame& one) { return one.place == SavegamePlace::Live; });
    if (session_.running.operations > 0 || chosen.empty())
        return;
    begins();
    if (BringIntoSlots(session_, *code_, chosen))
        note(GetMsg(Msg::SavesRestored, {std::to_string(chosen.size())}));
}

void SavegamesPage::Export()
{
    const Chosen chosen = ChosenOnes();
    if (session_.running.operations > 0 || chosen.empty())
        return;
    begins();
    const Operation operation{session_};
    const auto folder =
        session_.host.ChooseFolder(GetMsg(Msg::ChooseExportFolder), platform::CurrentFolder());
    if (folder && ExportChosen(session_, *code_, chosen, *folder))
        note(GetMsg(Msg::SavesExported, {std::to_string(chosen.size()), TextOf(*folder)}));
}

void SavegamesPage::Delete()
{
    Chosen chosen = ChosenOnes();
    if (session_.running.operations > 0 || chosen.empty())
        return;
    std::erase_if(chosen,
                  [](const LevelSavegame& one) { return one.place == SavegamePlace::History; });
    begins();
    if (DeleteChosen(session_, *code_, chosen))
        note(GetMsg(Msg::SavesDeleted, {std::to_string(chosen.size())}));
}

void SavegamesPage::FreeSlots()
{
    command("mnu_BackupSavegame");
}

void SavegamesPage::FillSlots()
{
    command("mnu_RestoreSavegames");
}

void SavegamesPage::Import(const std::vector<Path>& files)
{
    if (!code_ || files.empty() || session_.running.operations > 0)
        return;
    begins();
    const Operation operation{session_};
    SavegameList list{session_, ListPurpose::Import};
    if (!list.Prepare(files.front().parent_path()) || !list.Import(files))
        return;
    session_.list.Select(*code_);
    note(GetMsg(Msg::SavesImported, {std::to_string(files.size())}));
}

} // namespace kestrova
