#pragma once

#include "help/help_reader.h"
#include "session/session.h"

#include <QDialog>
#include <QTimer>
#include <functional>

class QLineEdit;
class QPlainTextEdit;

namespace kestrova
{

/// `Dialog_Testo`: the help, read by searching, by picking words and by its index.
class HelpDialog : public QDialog
{
public:
    using Load = std::function<std::optional<std::string>()>;

    /// `help` is shown at `tag`; `load` reads the text again for the index, and tells its failure.
    HelpDialog(Session& session, std::string help, std::string tag, Load load, QWidget* parent);

    /// A tag or a topic.
    void Jump(const std::string& what);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void MakeText();
    QLayout* MakeSearch();
    QLayout* MakeButtons();
    void MakeKeys();
    /// What a button of the search does to the reader, with what the line holds; the hit is shown.
    void Search(void (HelpReader::*step)());
    void ShowHit();
    void Pick();
    void ShowIndex();

    Session& session_;
    HelpReader reader_;
    Load load_;
    QPlainTextEdit* text_;
    QLineEdit* wanted_;
    QTimer first_; ///< jumps when the window is on the screen
};

} // namespace kestrova
