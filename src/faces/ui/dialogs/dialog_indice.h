#pragma once

#include "help/help_index.h"
#include "session/session.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QListView;
class QStringListModel;

namespace kestrova
{

/// `Dialog_Indice`: the help's topics, to choose one.
class HelpIndexDialog : public QDialog
{
public:
    HelpIndexDialog(Session& session, std::string_view help, QWidget* parent);

    /// The topic, with its brackets, once the dialog was accepted.
    [[nodiscard]] const std::string& Chosen() const { return chosen_; }

    void accept() override;

private:
    QLayout* MakeKinds();
    QLayout* MakeSearch();
    QLayout* MakeAnswers();
    /// The list anew, of the kind that is chosen.
    void ShowItems();
    void ShowSelected();

    HelpIndex index_;
    std::string chosen_;
    QListView* list_;
    QStringListModel* items_;
    QLineEdit* wanted_;
    QLabel* info_;
};

} // namespace kestrova
