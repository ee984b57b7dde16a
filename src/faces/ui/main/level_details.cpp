#include "ui/main/level_details.h"

#include "archive/level_folders.h"
#include "core/size_words.h"
#include "core/text.h"
#include "formats/nul_list.h"
#include "publish/author_infos.h"
#include "session/operation.h"
#include "shots/shot_commands.h"
#include "ui/dialogs/shot_panes.h"
#include "ui/main/level_files_page.h"
#include "ui/main/level_list_pane.h"
#include "ui/main/level_log_page.h"
#include "ui/main/marks_box.h"
#include "ui/main/savegames_page.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/link_button.h"
#include "ui/widgets/qt_text.h"
#include "ui/widgets/wrapping_row.h"
#include "words/level_page.h"
#include "words/menus.h"
#include "words/ui_main.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr double titleScale = 1.5;
constexpr int codeDigits = 4;
constexpr int noteLines = 3;

void Enlarge(QWidget* widget, double scale)
{
    QFont font = TimesAsLarge(widget->font(), scale);
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

LevelDetails::LevelDetails(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), top_(new QBoxLayout(QBoxLayout::LeftToRight)),
      head_(new PlayHead(this)), tabs_(new QTabWidget(this)), overview_(new QWidget),
      name_(Named<ElidedLabel>(this, "Label_LevelName")),
      installed_(Named<ElidedLabel>(this, "Label_Installed")),
      note_(Named<ElidedParagraph>(this, "Label_InfoLevel")), shots_(new ShotPanes(this)),
      author_(new LinkButton(this)), sizes_(Named<ElidedLabel>(this, "Label_Size")),
      code_(Named<ElidedLabel>(this, "Label_Code")),
      place_(Named<ElidedLabel>(this, "Label_InfoDir")), buttons_(new QWidget(this)),
      moreInfo_(new QPushButton(buttons_)), authorInfo_(new QPushButton(buttons_)),
      saveGames_(new QPushButton(buttons_)), saves_(new SavegamesPage(session, this)),
      files_(new LevelFilesPage(session, FilesShown::All, this)),
      documents_(new LevelFilesPage(session, FilesShown::Documents, this)),
      log_(new LevelLogPage(session, this)), marks_(new MarksBox(this))
{
    MakeOverview();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 4, 4);
    column->addLayout(MakeHead());
    column->addWidget(head_->Line());
    tabs_->setObjectName(QStringLiteral("Tabs_Level"));
    tabs_->setAccessibleName(Words(Msg::PageFilesName));
    tabs_->setDocumentMode(true);
    // Play and the buttons stay where the screen is small.
    tabs_->addTab(new ScrollPage(overview_), Words(Msg::PageOverview));
    tabs_->addTab(saves_, Words(Msg::PageSavegames));
    tabs_->addTab(files_, Words(Msg::PageFiles));
    tabs_->addTab(documents_, Words(Msg::PageDocuments));
    tabs_->addTab(log_, Words(Msg::PageLog));
    column->addWidget(tabs_, 1);
    column->addWidget(MakeButtons());
    shots_->dropped = [this](const std::vector<Path>& files) { AddPictures(files); };
    marks_->marked = [this](LevelCode code, const LevelMarks& marks) { Mark(code, marks); };
    saves_->begins = [this] { begins(); };
    saves_->note = [this](const std::string& text) { note(text); };
    ShowNothing();
}

void LevelDetails::MakeOverview()
{
    auto* middle = new QVBoxLayout(overview_);
    middle->setContentsMargins({});
    middle->addWidget(note_);
    middle->addWidget(marks_);
    middle->addWidget(shots_, 1);
    middle->addLayout(MakeFacts());
    middle->addWidget(place_);
    note_->setWordWrap(true);
    // The same room for every note, so that nothing below it jumps.
    note_->setFixedHeight(noteLines * note_->fontMetrics().lineSpacing());
    note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    note_->setAlignment(Qt::AlignTop);
    note_->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

QLayout* LevelDetails::MakeHead()
{
    Enlarge(name_, titleScale);
    Enlarge(installed_, 1);
    auto* words = new QVBoxLayout;
    words->addWidget(name_);
    words->addWidget(installed_);
    words->addStretch();
    top_->addLayout(words, 1);
    top_->addWidget(head_, 0, Qt::AlignTop);
    return top_;
}

/// On a small screen the name stands above Play, and the buttons on the page that scrolls.
void LevelDetails::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const bool isLow = height() < lowLines * fontMetrics().lineSpacing();
    const bool isNarrow = width() < narrowLetters * fontMetrics().averageCharWidth();
    top_->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    QSizePolicy policy = installed_->sizePolicy();
    policy.setRetainSizeWhenHidden(!isNarrow);
    installed_->setSizePolicy(policy);
    head_->SetLow(isLow);
    QWidget* const home = isLow ? overview_ : this;
    if (buttons_->parentWidget() == home)
        return;
    buttons_->parentWidget()->layout()->removeWidget(buttons_);
    home->layout()->addWidget(buttons_);
    buttons_->show();
}

QLayout* LevelDetails::MakeFacts()
{
    auto* facts = new QFormLayout;
    facts->setLabelAlignment(Qt::AlignLeft);
    facts->setVerticalSpacing(2);
    author_->setObjectName(QStringLiteral("Link_Author"));
    connect(author_, &LinkButton::clicked, this, &LevelDetails::OpenAuthor);
    facts->addRow(Named<QLabel>(this, "Label_AuthorOf"), author_);
    facts->addRow(Named<QLabel>(this, "Label_SizeOf"), sizes_);
    facts->addRow(Named<QLabel>(this, "Label_CodeOf"), code_);
    return facts;
}

QWidget* LevelDetails::MakeButtons()
{
    auto* row = new WrappingRow(buttons_);
    row->setContentsMargins({});
    moreInfo_->setObjectName(QStringLiteral("Pul_MoreInfo"));
    row->addWidget(moreInfo_);
    authorInfo_->setObjectName(QStringLiteral("Pul_AutoreInfo"));
    row->addWidget(authorInfo_);
    saveGames_->setObjectName(QStringLiteral("Pul_SaveGames"));
    saveGames_->setToolTip(Words(Msg::MenuStartSaveGameMan));
    row->addWidget(saveGames_);
    return buttons_;
}

void LevelDetails::AllowButtons(bool allowed)
{
    for (QPushButton* button : {head_->PlayButton(), moreInfo_, authorInfo_, saveGames_})
        button->setEnabled(allowed);
}

void LevelDetails::ShowRecord(const LevelRecord& record)
{
    AllowButtons(true);
    name_->setText(ToQt(Trim(record.levelName)));
    ShowNote(ToQt(Trim(record.levelNote)));
    ShowAuthor(record);
    ShowSizes(record.filesSize, record.extrasSize);
    code_->setText(ToQt(ZeroPadded(record.levelCode, codeDigits)));
}

void LevelDetails::ShowNote(const QString& words)
{
    note_->setText(words);
    note_->setToolTip(PlainTip(words));
    note_->setVisible(!words.isEmpty());
}

void LevelDetails::ShowSizes(double files, double extras)
{
    sizes_->setText(Words(Msg::FactSizes, {SizeInWords(files), SizeInWords(extras)}));
}

/// The name leads to a page of the author's, or else to the first mail address.
void LevelDetails::ShowAuthor(const LevelRecord& record)
{
    const auto sites = SplitNulList(record.authorSites);
    const auto mails = SplitNulList(record.authorEmails);
    const QString tip = !sites.empty()   ? Words(Msg::AuthorPageTip, {sites.front()})
                        : !mails.empty() ? Words(Msg::AuthorMailTip, {mails.front()})
                                         : QString{};
    const QString name = ToQt(Trim(record.authorName));
    // A link without words could not be seen.
    author_->Show(name.isEmpty() && !tip.isEmpty() ? Words(Msg::AuthorLinkName) : name, tip);
}

void LevelDetails::OpenAuthor()
{
    const std::ptrdiff_t index = shown_ ? FindLevel(session_.archive, *shown_) : -1;
    if (index < 0 || session_.running.operations > 0)
        return;
    const Operation operation{session_};
    AuthorInfos author{session_, static_cast<std::size_t>(index)};
    if (!author.sites.items.empty())
        author.VisitSite();
    else
        author.SendMail();
}

void LevelDetails::CountSavegames(int live, int archived)
{
    tabs_->setTabText(
        tabs_->indexOf(saves_),
        live + archived == 0
            ? Words(Msg::PageSavegames)
            : Words(Msg::PageSavegamesCount, {std::to_string(live), std::to_string(archived)}));
}

void LevelDetails::ShowFacts(Session& session, const LevelFacts& facts)
{
    ShowRecord(facts.record);
    shown_ = facts.record.levelCode;
    stands_ = facts.current;
    ShowSizes(facts.record.filesSize, facts.extras);
    installed_->setVisible(facts.current);
    place_->setText(ToQt(facts.info));
    place_->SetElidedPart(ToQt(TextOf(facts.folder)));
    if (facts.folderGone)
        shots_->ShowGone(session, facts.record.levelCode);
    else
        shots_->ShowLevel(session, facts.record.levelCode);
    const LevelNote noted = noteOf(facts.record.levelCode);
    marks_->Show(facts.record.levelCode, noted);
    CountSavegames(facts.liveSavegames, facts.archivedSavegames);
    saves_->ShowLevel(facts.record.levelCode);
    files_->ShowLevel(facts.record.levelCode);
    documents_->ShowLevel(facts.record.levelCode);
    log_->ShowLevel(facts.record.levelCode, noted);
    // The files are there, so what goes on is the start.
    if (playing_.step == PlayNow::Step::Installs && facts.current)
        playing_.step = PlayNow::Step::Starts;
    ShowPlay(playing_);
}

void LevelDetails::ShowNothing()
{
    shown_.reset();
    stands_ = false;
    name_->setText(Words(Msg::NothingChosen));
    for (QLabel* label : {sizes_, code_, place_})
        label->clear();
    ShowNote({});
    author_->Show({}, {});
    installed_->hide();
    AllowButtons(false);
    shots_->Clear();
    marks_->Clear();
    CountSavegames(0, 0);
    saves_->ShowNothing();
    files_->ShowNothing();
    documents_->ShowNothing();
    log_->ShowNothing();
    ShowPlay(playing_);
}

void LevelDetails::ShowActivity(const QString& text)
{
    ShowNote(text);
    note_->repaint();
}

void LevelDetails::ShowPlay(const PlayNow& now)
{
    playing_ = now;
    // A level that is being put there is the chosen one.
    head_->Show(now, stands_ || now.step == PlayNow::Step::Installs);
}

void LevelDetails::OpenSavegames()
{
    tabs_->setCurrentWidget(saves_);
    saves_->setFocus();
}

void LevelDetails::EndTyping()
{
    marks_->EndTyping();
}

void LevelDetails::Mark(LevelCode code, const LevelMarks& marks)
{
    if (FindLevel(session_.archive, code) < 0)
        return; // it went while somebody typed
    begins();
    {
        const Operation operation{session_};
        (void)MarkLevels(session_, {code}, marks); // a failure was told
    }
    ends();
}

void LevelDetails::AddPictures(const std::vector<Path>& files)
{
    if (!shown_ || session_.running.operations > 0)
        return;
    begins();
    const Operation operation{session_};
    int added = 0;
    for (const Path& file : files)
        added += AddShotFile(session_, shots_->List(), file) ? 1 : 0;
    shots_->ShowPair();
    if (added > 0)
        note(GetMsg(Msg::PicturesAdded, {std::to_string(added)}));
}

} // namespace kestrova
