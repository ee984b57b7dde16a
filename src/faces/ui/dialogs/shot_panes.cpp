#include "ui/dialogs/shot_panes.h"

#include "session/telling.h"
#include "shots/shot_files.h"
#include "ui/widgets/drop_area.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "words/level_page.h"
#include "words/ui_dialogs.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

/// Of the width, beside one for the right pane.
constexpr int leftShare = 2;

std::vector<Path> PicturesAmong(const std::vector<Path>& paths)
{
    std::vector<Path> pictures;
    for (const Path& path : paths)
        if (IsShotName(path.filename().native()) && FileExists(path))
            pictures.push_back(path);
    return pictures;
}

} // namespace

ShotPanes::ShotPanes(QWidget* parent)
    : QWidget(parent), previous_(new QToolButton(this)), next_(new QToolButton(this)),
      strip_(new ShotStrip(this))
{
    setObjectName(QStringLiteral("Panes_Shots"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    auto* row = new QHBoxLayout;
    column->addLayout(row, 1);
    column->addWidget(strip_);
    const auto turner = [](QToolButton* button, Drawing drawing, const char* name) {
        button->setObjectName(QString::fromLatin1(name));
        button->setProperty("pictured", true);
        button->setIcon(DrawnIcon(drawing));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    };
    turner(previous_, Drawing::Previous, "Pul_PrimaScreenShot");
    turner(next_, Drawing::Next, "Pul_DopoScreenShot");
    row->addWidget(previous_);
    row->addLayout(MakePane(left_, 0, Msg::LeftShotName), leftShare);
    row->addLayout(MakePane(right_, 1, Msg::RightShotName), 1);
    row->addWidget(next_);
    setTabOrder(previous_, left_.zoom);
    setTabOrder(left_.zoom, right_.zoom);
    setTabOrder(right_.zoom, next_);
    connect(previous_, &QToolButton::clicked, this, [this] {
        if (shots_.Previous())
            ShowPair();
    });
    connect(next_, &QToolButton::clicked, this, [this] {
        if (shots_.Next())
            ShowPair();
    });
    strip_->picked = [this](std::ptrdiff_t index) {
        shots_.ShowPair(index - index % 2); // pairs begin at even places
        ShowPair();
    };
    strip_->menuWanted = [this](std::ptrdiff_t index, QPoint place) {
        shots_.SetTarget(index);
        menuWanted(place);
    };
    TakeDrops();
    Clear();
}

void ShotPanes::TakeDrops()
{
    auto* drops = new DropArea(this);
    drops->welcome = [this](const std::vector<Path>& paths) {
        const auto count = PicturesAmong(paths).size();
        return shown_ && count > 0 ? Words(Msg::DropPictures, {std::to_string(count)}) : QString();
    };
    drops->dropped = [this](const std::vector<Path>& paths) { dropped(PicturesAmong(paths)); };
}

QLayout* ShotPanes::MakePane(Pane& pane, int side, Message name)
{
    const QString behind = QString::number(side + 1);
    pane.view = new PictureView(this);
    pane.view->setObjectName(QStringLiteral("Image") + behind);
    pane.view->setAccessibleName(Words(name));
    constexpr int fewestLines = 6;
    pane.view->setMinimumHeight(fewestLines * fontMetrics().lineSpacing());
    pane.label = new ElidedLabel(this);
    pane.label->setObjectName(QStringLiteral("Label_InfoImage") + behind);
    pane.zoom = new QToolButton(this);
    pane.zoom->setObjectName(QStringLiteral("Pul_Zoom") + behind);
    pane.zoom->setProperty("pictured", true);
    pane.zoom->setIcon(DrawnIcon(Drawing::Zoom));
    pane.zoom->setAutoRaise(true);
    pane.zoom->setFocusPolicy(Qt::TabFocus);
    const auto open = [this, side] { zoomed(shots_.Index() + side); };
    connect(pane.zoom, &QToolButton::clicked, this, open);
    pane.view->opened = open;
    const auto commands = [this, side](QPoint place) {
        shots_.SetTarget(shots_.Index() + side);
        menuWanted(place);
    };
    pane.view->menuWanted = commands;
    // By the keyboard they are of the picture whose button has the focus.
    pane.zoom->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(pane.zoom, &QToolButton::customContextMenuRequested, this,
            [zoom = pane.zoom, commands] { commands(zoom->mapToGlobal(zoom->rect().center())); });
    auto* line = new QHBoxLayout;
    line->addWidget(pane.label, 1);
    line->addWidget(pane.zoom);
    auto* column = new QVBoxLayout;
    column->addWidget(pane.view, 1);
    column->addLayout(line);
    return column;
}

void ShotPanes::ShowLevel(Session& session, LevelCode code)
{
    if (const auto loaded = shots_.Load(session.Folders(), code); !loaded)
        TellFolderNotRead(session.host, loaded.Error());
    ShowPair();
}

void ShotPanes::Clear()
{
    ShowWords(Words(Msg::NoPicture));
}

void ShotPanes::ShowGone(Session& session, LevelCode code)
{
    (void)shots_.Load(session.Folders(),
                      code); // so that no command acts on pictures of another level
    ShowWords(Words(Msg::PicturesNotThereNow));
}

void ShotPanes::ShowWords(const QString& words)
{
    for (Pane* pane : {&left_, &right_}) {
        pane->shown.clear();
        pane->label->clear();
        pane->view->ShowWords(words);
        pane->zoom->setEnabled(false);
    }
    previous_->setEnabled(false);
    next_->setEnabled(false);
    strip_->hide();
    shown_ = false;
}

void ShotPanes::ShowPair()
{
    shown_ = true;
    strip_->ShowList(shots_);
    ShowFile(left_, shots_.Left());
    ShowFile(right_, shots_.Right());
    previous_->setEnabled(shots_.HasPrevious());
    next_->setEnabled(shots_.HasNext());
}

void ShotPanes::ShowFile(Pane& pane, const Path& file)
{
    const Path found = ResolvePath(file);
    pane.zoom->setEnabled(FileExists(found));
    if (!FileExists(found)) {
        pane.shown.clear();
        pane.label->clear();
        pane.view->ShowWords(Words(Msg::ShotNotFound, {TextOf(file)}));
        return;
    }
    const platform::FileFacts facts = platform::FactsOf(found);
    if (pane.shown == found && pane.view->HasPicture() &&
        pane.shownFacts.modifiedNs == facts.modifiedNs && pane.shownFacts.inode == facts.inode)
        return;
    pane.shown = found;
    pane.shownFacts = facts;
    pane.label->setText(ToQt(StripExtension(TextOf(found.filename()))));
    if (const auto picture = LoadPicture(found))
        pane.view->Show(*picture);
    else
        pane.view->ShowWords(Words(Msg::ShotUnreadable, {picture.Error().reason}));
}

} // namespace kestrova
