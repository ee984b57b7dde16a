#pragma once

#include "discs/disc_plan.h"
#include "session/session.h"
#include "ui/desktop/progress_windows.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

namespace kestrova
{

class DiscPlanTree;

/// Label and bar of the window, and its one button, which starts the work and stops it.
class DiscsWindowProgress : public OwnProgress
{
public:
    DiscsWindowProgress(QLabel& label, QProgressBar& bar, QPushButton& button);

    void Begin();
    void End();
    /// A press is for the work that is under way, not for a new start.
    [[nodiscard]] bool IsUnderWay() const { return underWay_; }
    void Stop();

    void SetBar(std::uint64_t done, std::uint64_t total) override;
    bool Step() override;

private:
    QLabel& label_;
    QProgressBar& bar_;
    QPushButton& button_;
    QString caption_; ///< of the button, while nothing is under way
    bool underWay_ = false;
    bool stopped_ = false;
};

/// `Dialog_MuoviSuCd`: the levels of the archive go onto discs, or into images of discs. What goes
/// where is shown before anything starts, and again with each choice.
class MuoviSuCdDialog : public QDialog
{
public:
    MuoviSuCdDialog(Session& session, QWidget* parent);

    void reject() override;

private:
    QLayout* MakeContent();
    QLayout* MakeDisc();
    QLayout* MakeButtons();
    QCheckBox* AddBox(const char* name, bool checked);
    void FillChoices();
    void Connect();
    template <class Work> void Run(Work work);
    /// The levels are looked at, once the window is on the screen.
    void Measure();
    /// A drive that knows what its discs take says so; another one leaves what a person chose.
    void TakeCapacityOfUnit();
    /// Takes what the controls say, and shows the plan of it.
    void TakeChoice();
    void ShowPlan();
    void ChooseImages();
    void StartOrStop();

    Session& session_;
    int operations_; ///< under way when the window opened
    DiscPlan plan_;
    QCheckBox* levels_ = nullptr;
    QCheckBox* trle_ = nullptr;
    QCheckBox* setup_ = nullptr;
    QCheckBox* imageFirst_ = nullptr;
    QComboBox* capacity_;
    QComboBox* speed_;
    QComboBox* unit_;
    QLineEdit* images_;
    QPushButton* browse_;
    DiscPlanTree* list_;
    QLabel* count_;
    QLabel* info_;
    QProgressBar* bar_;
    QPushButton* start_;
    DiscsWindowProgress progress_;
    bool measured_ = false;      ///< the levels
    bool unitsCapacity_ = false; ///< the capacity is the chosen drive's own
    bool extrasMeasured_ = false;
};

/// Shows it, when an archive is loaded.
void ShowDiscs(Session& session, QWidget* parent);

} // namespace kestrova
