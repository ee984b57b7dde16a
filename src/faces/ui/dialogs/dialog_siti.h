#pragma once

#include "online/url_editor.h"
#include "session/session.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTreeView;

namespace kestrova
{

class UrlModel;

/// `Dialog_Siti`: the list of web addresses.
class SitiDialog : public QDialog
{
public:
    SitiDialog(Session& session, std::int32_t kind, QWidget* parent);

    /// `Pul_Aggiorna`: the update from the servers.
    void UpdateNow();
    void accept() override;
    void reject() override;

private:
    QLayout* MakeFilters();
    QWidget* MakeList();
    QLayout* MakeFacts();
    void Connect();
    /// One step of the person's, after which the window shows what has become of the list.
    template <class Work> void Run(Work work);
    void ShowKind();
    void ShowRows();
    /// What stands in the place of rows.
    [[nodiscard]] QString EmptyWords() const;
    void ShowRecord();

    Session& session_;
    UrlEditor editor_;
    UrlModel* model_;
    QComboBox* kinds_;
    QLineEdit* search_;
    QTreeView* list_;
    QLabel* hint_;
    QPlainTextEdit* note_;
    QLabel* url_;
    QLabel* updated_;
    QLabel* count_;
};

/// Opens it on a kind; whatever runs waits. `update`: with an update at once.
void ShowUrls(Session& session, std::int32_t kind, QWidget* parent, bool update = false);

} // namespace kestrova
