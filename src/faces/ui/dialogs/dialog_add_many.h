#pragma once

#include "intake/add_queue.h"
#include "ui/desktop/progress_windows.h"

#include <QDialog>
#include <functional>

class QLabel;
class QLayout;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace kestrova
{

class ElidedLabel;

/// `Dialog_AddMany`: several levels that are added one after the other. Packages and folders may
/// be dropped on it before it begins.
class AddManyDialog : public QDialog
{
public:
    /// Adds a source in the window of a single level, over this one; the level's code, or nothing.
    using AddAlone = std::function<std::optional<LevelCode>(const Path& source, QWidget* over)>;

    AddManyDialog(Session& session, AddAlone addAlone, QWidget* parent);

    /// Until the person leaves it. With sources it begins with them at once.
    void Show(const std::vector<QueueSource>& sources);
    [[nodiscard]] const AddQueue& Queue() const { return queue_; }

    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void MakeList();
    QLayout* MakeButtons();
    void Connect();
    void Take(const std::vector<Path>& given);
    void Start();
    void Retry();
    /// The item's row has changed.
    void ShowItem(std::size_t index);
    void FillRow(QTreeWidgetItem& row, const QueueItem& item) const;
    /// All rows anew: once the queue has ended, what needs the person stands first.
    void ShowRows();
    void ShowState();
    [[nodiscard]] std::optional<std::size_t> Selected() const;
    [[nodiscard]] bool MayRetry() const;

    Session& session_;
    AddAlone addAlone_;
    AddQueue queue_;
    ElidedLabel* count_;
    ElidedLabel* name_;
    QTreeWidget* list_;
    QLabel* hint_;
    QLabel* begin_; ///< what will be done
    QLabel* end_;
    QLabel* info_;
    QProgressBar* bar_;
    QPushButton* stop_;
    QPushButton* addFile_;
    QPushButton* addFolder_;
    QPushButton* start_;
    QPushButton* retry_;
    QPushButton* copy_;
    QPushButton* close_;
    StoppableProgress progress_;
    std::vector<QTreeWidgetItem*> rows_; ///< by item; the list owns them
    bool running_ = false;
};

} // namespace kestrova
