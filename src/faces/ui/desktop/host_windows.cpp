#include "ui/desktop/host_windows.h"

#include "core/look.h"
#include "core/text.h"
#include "platform/files.h"
#include "shots/shot_files.h"
#include "ui/desktop/progress_windows.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_desktop.h"
#include "words/ui_shared.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

namespace kestrova
{

namespace
{

using Button = QMessageBox::StandardButton;

/// The pattern of every file, as the texts of filters have it.
constexpr std::string_view anyFile = "*.*";
/// Of the line that a text is typed into.
constexpr int questionWidth = 380;

struct Answer {
    Button button;
    Message words;
};

/// `safe`: what the Enter key means, and the closing of a box without Cancel.
Button ShowBox(QMessageBox::Icon icon, const std::string& text, const std::string& reason,
               const std::vector<Answer>& answers, Button safe, const std::string& details = {})
{
    QMessageBox box(icon, Words(Msg::ProgramName), ToQt(text), QMessageBox::NoButton, TopWindow());
    box.setObjectName(QStringLiteral("Box"));
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (!reason.empty())
        box.setInformativeText(ToQt(reason));
    if (!details.empty())
        box.setDetailedText(ToQt(details)); // folded away until its button is pressed
    for (const Answer& answer : answers)
        box.addButton(answer.button)->setText(QLatin1Char('&') + Words(answer.words));
    box.setDefaultButton(safe);
    auto* cancel = box.button(QMessageBox::Cancel);
    box.setEscapeButton(cancel != nullptr ? cancel : box.button(safe));
    KeepOnScreen(box);
    const InputGate::Admission admission{box};
    return static_cast<Button>(box.exec());
}

bool ShowOkCancel(const std::string& text, Button byEnter)
{
    return ShowBox(QMessageBox::Question, text, {},
                   {{QMessageBox::Ok, Msg::ButtonOk}, {QMessageBox::Cancel, Msg::ButtonCancel}},
                   byEnter) == QMessageBox::Ok;
}

Path NearestFolder(Path folder)
{
    while (!folder.empty() && platform::FactsOf(folder).kind != platform::FileKind::Folder) {
        if (folder == folder.parent_path())
            return {};
        folder = folder.parent_path();
    }
    return folder;
}

/// A chooser of folders that makes the one that was typed and is not there yet, after a question.
class FolderChooser : public QFileDialog
{
public:
    FolderChooser(Host& host, const QString& title) : QFileDialog(TopWindow(), title), host_(host)
    {
        setFileMode(QFileDialog::Directory);
        setOption(QFileDialog::ShowDirsOnly);
        // Qt disables the button for what is not there. A desktop's own chooser has no such line.
        auto* line = findChild<QLineEdit*>();
        auto* buttons = findChild<QDialogButtonBox*>();
        auto* choose = buttons == nullptr ? nullptr : buttons->button(QDialogButtonBox::Open);
        if (line == nullptr || choose == nullptr)
            return;
        connect(line, &QLineEdit::textChanged, choose, [choose](const QString& text) {
            choose->setEnabled(choose->isEnabled() || !text.isEmpty());
        });
    }

protected:
    void accept() override
    {
        const QStringList chosen = selectedFiles();
        if (!chosen.isEmpty() && !MakeIfMissing(PathFromQt(chosen.constFirst())))
            return;
        QFileDialog::accept();
    }

private:
    /// False when the person did not want it, or it cannot be made.
    bool MakeIfMissing(const Path& folder)
    {
        const auto isFree = IsFree(folder);
        if (!isFree || !*isFree)
            return true; // what stands there is judged by the chooser
        if (!host_.AskYesNo(GetMsg(Msg::AskMakeFolder, {TextOf(folder)})))
            return false;
        const auto made = MakeFolders(folder);
        if (!made)
            host_.Tell(Tone::Error, GetMsg(Msg::FolderNotMade, {TextOf(folder)}),
                       made.Error().reason);
        return static_cast<bool>(made);
    }

    Host& host_;
};

/// A list of proposals below the line takes the keyboard for a moment whenever it opens or closes,
/// and what is typed meanwhile is lost to the chooser: it puts the names of the folders on the way
/// in its place, and answers with one of them.
void WithoutProposals(QFileDialog& chooser)
{
    if (auto* line = chooser.findChild<QLineEdit*>())
        line->setCompleter(nullptr);
}

/// What the person chose; nothing when that was to cancel.
QStringList AllChosen(QFileDialog& chooser, const Path& start, const std::string& suggestion = {})
{
    const Path folder = NearestFolder(start);
    chooser.setDirectory(folder.empty() ? QDir::homePath() : PathToQt(folder));
    if (!suggestion.empty())
        chooser.selectFile(ToQt(suggestion));
    ResizeToFit(chooser, chooser.sizeHint());
    WithoutProposals(chooser);
    const InputGate::Admission admission{chooser};
    return chooser.exec() == QDialog::Accepted ? chooser.selectedFiles() : QStringList{};
}

std::optional<Path> RunChooser(QFileDialog& chooser, const Path& start,
                               const std::string& suggestion = {})
{
    const QStringList chosen = AllChosen(chooser, start, suggestion);
    return chosen.isEmpty() ? std::nullopt : std::optional{PathFromQt(chosen.constFirst())};
}

} // namespace

QWidget* TopWindow()
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    for (QWidget* window : QApplication::topLevelWidgets())
        // A window that nobody sees yet, as at the start, is nothing to be shown over.
        if (window->objectName() == QLatin1String("Principale") && window->isVisible())
            return window;
    return nullptr;
}

QString ChooserFilter(const std::string& filter)
{
    const std::vector<std::string> parts = Split(filter, '|');
    QStringList rows;
    bool hasAll = false;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        const QString words = ToQt(parts[i]).section(QLatin1String(" ("), 0, 0);
        if (parts[i + 1] == anyFile) {
            rows.append(words + QLatin1String(" (*)"));
            hasAll = true;
            continue;
        }
        QString patterns = ToQt(parts[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' ')).toLower();
        if (const QString upper = patterns.toUpper(); upper != patterns)
            patterns += QLatin1Char(' ') + upper;
        rows.append(words + QLatin1String(" (") + patterns + QLatin1Char(')'));
    }
    if (!hasAll)
        rows.append(Words(Msg::AllFiles) + QLatin1String(" (*)"));
    return rows.join(QLatin1String(";;"));
}

void WindowHost::Tell(Tone tone, const std::string& text, const std::string& reason,
                      const std::string& details)
{
    const auto icon = tone == Tone::Error     ? QMessageBox::Critical
                      : tone == Tone::Warning ? QMessageBox::Warning
                                              : QMessageBox::Information;
    ShowBox(icon, text, reason, {{QMessageBox::Ok, Msg::ButtonOk}}, QMessageBox::Ok, details);
}

bool WindowHost::AskYesNo(const std::string& text, Consent consent)
{
    return ShowBox(QMessageBox::Question, text, {},
                   {{QMessageBox::Yes, Msg::ButtonYes}, {QMessageBox::No, Msg::ButtonNo}},
                   consent == Consent::YesKeeps ? QMessageBox::Yes : QMessageBox::No) ==
           QMessageBox::Yes;
}

bool WindowHost::AskOkCancel(const std::string& text)
{
    return ShowOkCancel(text, QMessageBox::Cancel);
}

bool WindowHost::AskToGoOn(const std::string& text)
{
    return ShowOkCancel(text, QMessageBox::Ok);
}

YesNoCancel WindowHost::AskYesNoCancel(const std::string& text)
{
    return AskEither(text, Msg::ButtonYes, Msg::ButtonNo, YesNoCancel::Cancel);
}

YesNoCancel WindowHost::AskEither(const std::string& text, Message first, Message second,
                                  YesNoCancel safe)
{
    const Button byEnter = safe == YesNoCancel::Yes  ? QMessageBox::Yes
                           : safe == YesNoCancel::No ? QMessageBox::No
                                                     : QMessageBox::Cancel;
    switch (ShowBox(QMessageBox::Question, text, {},
                    {{QMessageBox::Yes, first},
                     {QMessageBox::No, second},
                     {QMessageBox::Cancel, Msg::ButtonCancel}},
                    byEnter)) {
    case QMessageBox::Yes:
        return YesNoCancel::Yes;
    case QMessageBox::No:
        return YesNoCancel::No;
    default:
        return YesNoCancel::Cancel;
    }
}

std::optional<std::string> WindowHost::AskText(const std::string& text,
                                               const std::string& suggestion,
                                               const std::string& title)
{
    QInputDialog box(TopWindow());
    box.setObjectName(QStringLiteral("Box"));
    box.setWindowTitle(title.empty() ? Words(Msg::ProgramName) : ToQt(title));
    box.setLabelText(ToQt(text));
    box.setTextValue(ToQt(suggestion));
    box.setOkButtonText(Words(Msg::ButtonOk));
    box.setCancelButtonText(Words(Msg::ButtonCancel));
    // A question that wraps keeps the box within the screen, and a name has room to be read.
    for (auto* label : box.findChildren<QLabel*>())
        label->setWordWrap(true);
    if (auto* line = box.findChild<QLineEdit*>())
        line->setMinimumWidth(questionWidth);
    // Typing over a picture's name leaves its ending, without which no list would show it.
    if (IsShotName(suggestion))
        QTimer::singleShot(0, &box, [&box, stem = ToQt(StripExtension(suggestion)).size()] {
            if (auto* line = box.findChild<QLineEdit*>())
                line->setSelection(0, static_cast<int>(stem));
        });
    const InputGate::Admission admission{box};
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;
    return FromQt(box.textValue());
}

std::optional<Path> WindowHost::ChooseFolder(const std::string& title, const Path& start)
{
    FolderChooser chooser(*this, ToQt(title));
    return RunChooser(chooser, start);
}

std::optional<Path> WindowHost::ChooseOpenFile(const std::string& title, const std::string& filter,
                                               const Path& start)
{
    QFileDialog chooser(TopWindow(), ToQt(title), {}, ChooserFilter(filter));
    chooser.setFileMode(QFileDialog::ExistingFile);
    return RunChooser(chooser, start);
}

std::vector<Path> WindowHost::ChooseOpenFiles(const std::string& title, const std::string& filter,
                                              const Path& start)
{
    QFileDialog chooser(TopWindow(), ToQt(title), {}, ChooserFilter(filter));
    chooser.setFileMode(QFileDialog::ExistingFiles);
    std::vector<Path> files;
    for (const QString& file : AllChosen(chooser, start))
        files.push_back(PathFromQt(file));
    return files;
}

std::optional<Path> WindowHost::ChooseSaveFile(const std::string& title, const std::string& filter,
                                               const Path& start, const std::string& suggestion)
{
    QFileDialog chooser(TopWindow(), ToQt(title), {}, ChooserFilter(filter));
    chooser.setAcceptMode(QFileDialog::AcceptSave);
    if (const std::string ending = ExtensionOf(filter); ending.size() > 1)
        chooser.setDefaultSuffix(ToQt(ending.substr(1)));
    return RunChooser(chooser, start, suggestion);
}

std::unique_ptr<ProgressScope> WindowHost::BeginProgress(ProgressWindow window,
                                                         const std::string& text)
{
    return std::make_unique<WindowProgress>(window, text, TopWindow());
}

} // namespace kestrova
