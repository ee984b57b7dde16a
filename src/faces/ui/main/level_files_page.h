#pragma once

#include "session/session.h"

#include <QWidget>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace kestrova
{

/// The files of the chosen level as they are stored; documents and pictures can be opened. They are
/// listed when the page is seen, and nobody is asked for a disc.
class LevelFilesPage : public QWidget
{
public:
    LevelFilesPage(Session& session, QWidget* parent);

    void ShowLevel(LevelCode code);
    void ShowNothing();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Read();
    void Open(const QTreeWidgetItem* item);

    Session& session_;
    std::optional<LevelCode> code_;
    bool read_ = true;
    Path folder_;
    QLabel* away_;
    QTreeWidget* list_;
};

} // namespace kestrova
