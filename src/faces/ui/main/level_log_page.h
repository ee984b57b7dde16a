#pragma once

#include "formats/library_note.h"
#include "session/session.h"

#include <QWidget>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace kestrova
{

/// What happened to the chosen level, the newest first. It is read when the page is seen, and the
/// lines of a log when it is opened.
class LevelLogPage : public QWidget
{
public:
    LevelLogPage(Session& session, QWidget* parent);

    void ShowLevel(LevelCode code, const LevelNote& note);
    void ShowNothing();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Read();
    void ReadLines(QTreeWidgetItem& item);

    Session& session_;
    std::optional<LevelCode> code_;
    LevelNote note_;
    bool read_ = true;
    QLabel* empty_;
    QTreeWidget* list_;
};

} // namespace kestrova
