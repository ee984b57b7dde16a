#pragma once

#include "session/session.h"

#include <QWidget>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace kestrova
{

enum class FilesShown { All, Documents };

/// The files of the chosen level as they are stored, or the documents among them, the one of the
/// button for more info first. Documents and pictures can be opened. They are listed when the page
/// is seen, and nobody is asked for a disc.
class LevelFilesPage : public QWidget
{
public:
    LevelFilesPage(Session& session, FilesShown shown, QWidget* parent);

    void ShowLevel(LevelCode code);
    void ShowNothing();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Read();
    [[nodiscard]] std::vector<Path> Wanted(std::vector<Path> files) const;
    void ShowWords(const QString& words);
    void Open(const QTreeWidgetItem* item);

    Session& session_;
    const FilesShown shown_;
    std::optional<LevelCode> code_;
    bool read_ = true;
    Path folder_;
    QLabel* away_;
    QTreeWidget* list_;
};

} // namespace kestrova
