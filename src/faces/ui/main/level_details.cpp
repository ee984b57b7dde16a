#include "ui/main/level_details.h"

#include "core/text.h"
#include "ui/dialogs/shot_panes.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "words/menus.h"
#include "words/ui_main.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr double titleScale = 1.5;
constexpr double playScale = 1.25;
constexpr int codeDigits = 4;
constexpr int noteLines = 3;

void Enlarge(QWidget* widget, double scale)
{
    QFont font = widget->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(true);
    widget->setFont(font);
}

template <class Label> Label* Named(QWidget* parent, const char* name)
{
    auto* label = new Label(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

LevelDetails::LevelDetails(QWidget* parent)
    : QWidget(parent), name_(Named<ElidedLabel>(this, "Label_LevelName")),
      play_(new QPushButton(this)), installed_(Named<ElidedLabel>(this, "Label_Installed")),
      note_(Named<ElidedParagraph>(this, "Label_InfoLevel")), shots_(new ShotPanes(this)),
      author_(Named<ElidedLabel>(this, "Label_Author")),
      sizes_(Named<ElidedLabel>(this, "Label_Size")), code_(Named<ElidedLabel>(this, "Label_Code")),
      place_(Named<ElidedLabel>(this, "Label_InfoDir")), moreInfo_(new QPushButton(this)),
      authorInfo_(new QPushButton(this)), saveGames_(new QPushButton(this))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 4, 4);
    column->addLayout(MakeHead());
    // Play and the buttons stay where the screen is small.
    auto* page = new QWidget;
    auto* middle = new QVBoxLayout(page);
    middle->setContentsMargins({});
    middle->addWidget(note_);
    middle->addWidget(shots_, 1);
    middle->addLayout(MakeFacts());
    // Its counts stand behind the path.
    place_->SetElide(Qt::ElideMiddle);
    middle->addWidget(place_);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(MakeButtons());
    note_->setWordWrap(true);
    // The same room for every level, so that nothing below it jumps.
    note_->setFixedHeight(noteLines * note_->fontMetrics().lineSpacing());
    note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    note_->setAlignment(Qt::AlignTop);
    note_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ShowNothing();
}

QLayout* LevelDetails::MakeHead()
{
    Enlarge(name_, titleScale);
    play_->setObjectName(QStringLiteral("Pul_Play"));
    Enlarge(play_, playScale);
    play_->setIcon(DrawnIcon(Drawing::Play));
    play_->setIconSize(QSize(22, 22));
    play_->setMinimumSize(132, 52);
    play_->setToolTip(Words(Msg::PlayTip));
    QPalette marked = installed_->palette();
    marked.setColor(QPalette::WindowText, marked.color(QPalette::Link));
    installed_->setPalette(marked);
    QSizePolicy keepsRoom = installed_->sizePolicy();
    keepsRoom.setRetainSizeWhenHidden(true);
    installed_->setSizePolicy(keepsRoom);

    auto* words = new QVBoxLayout;
    words->addWidget(name_);
    words->addWidget(installed_);
    auto* row = new QHBoxLayout;
    row->addLayout(words, 1);
    row->addWidget(play_, 0, Qt::AlignTop);
    return row;
}

QLayout* LevelDetails::MakeFacts()
{
    auto* facts = new QFormLayout;
    facts->setLabelAlignment(Qt::AlignLeft);
    facts->setVerticalSpacing(2);
    facts->addRow(Named<QLabel>(this, "Label_AuthorOf"), author_);
    facts->addRow(Named<QLabel>(this, "Label_SizeOf"), sizes_);
    facts->addRow(Named<QLabel>(this, "Label_CodeOf"), code_);
    return facts;
}

QLayout* LevelDetails::MakeButtons()
{
    auto* row = new QHBoxLayout;
    moreInfo_->setObjectName(QStringLiteral("Pul_MoreInfo"));
    row->addWidget(moreInfo_);
    authorInfo_->setObjectName(QStringLiteral("Pul_AutoreInfo"));
    row->addWidget(authorInfo_);
    saveGames_->setObjectName(QStringLiteral("Pul_SaveGames"));
    saveGames_->setToolTip(Words(Msg::MenuStartSaveGameMan));
    row->addWidget(saveGames_);
    row->addStretch();
    return row;
}

void LevelDetails::ShowRecord(const LevelRecord& record)
{
    play_->setEnabled(true);
    moreInfo_->setEnabled(true);
    authorInfo_->setEnabled(true);
    saveGames_->setEnabled(true);
    name_->setText(ToQt(Trim(record.levelName)));
    note_->setText(ToQt(Trim(record.levelNote)));
    note_->setToolTip(note_->text().toHtmlEscaped());
    author_->setText(ToQt(Trim(record.authorName)));
    sizes_->setText(
        Words(Msg::FactSizes, {FormatSize(record.filesSize), FormatSize(record.extrasSize)}));
    code_->setText(ToQt(ZeroPadded(record.levelCode, codeDigits)));
}

void LevelDetails::ShowFacts(Session& session, const LevelFacts& facts)
{
    ShowRecord(facts.record);
    installed_->setVisible(facts.current);
    place_->setText(ToQt(facts.info));
    if (facts.folderGone)
        shots_->ShowGone(session, facts.record.levelCode);
    else
        shots_->ShowLevel(session, facts.record.levelCode);
}

void LevelDetails::ShowNothing()
{
    name_->setText(Words(Msg::NothingChosen));
    for (QLabel* label : std::initializer_list<QLabel*>{note_, author_, sizes_, code_, place_})
        label->clear();
    installed_->hide();
    play_->setEnabled(false);
    moreInfo_->setEnabled(false);
    authorInfo_->setEnabled(false);
    saveGames_->setEnabled(false);
    shots_->Clear();
}

void LevelDetails::ShowActivity(const QString& text)
{
    note_->setText(text);
    note_->repaint();
}

} // namespace kestrova
