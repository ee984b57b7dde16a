#pragma once

#include "session/host.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>

class QPushButton;

namespace kestrova
{

/// Keeps the windows painted during long work; what a person does meanwhile is the gate's matter.
/// Cheap when called often.
class Pump
{
public:
    void Turn();

private:
    QElapsedTimer sinceLast_;
};

/// `Dialog_Progress`, `Dialog_Wait`, `Dialog_Zip`, `Dialog_Download`, and `Dialog_ConvertiMp3` with
/// a second bar.
class ProgressDialog : public QDialog
{
public:
    ProgressDialog(ProgressWindow window, QWidget* parent);

    void SetLabel(const QString& text);
    void SetBar(std::uint64_t done, std::uint64_t total);
    void SetPart(std::uint64_t done, std::uint64_t total);
    void AllowStop();
    /// As before somebody offered a Stop, and pressed it.
    void ForgetStop();
    [[nodiscard]] bool Stopped() const { return stopped_; }
    [[nodiscard]] bool HasParts() const { return part_ != nullptr; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Stop();

    QLabel* label_;
    QProgressBar* part_ = nullptr; ///< of the step under way
    QProgressBar* bar_;
    QPushButton* stop_;
    bool stopped_ = false;
};

/// One of the small windows for the length of its life. Work that is over at once never shows it,
/// so that nothing flashes. Work inside of other work speaks through the window that is there
/// already, so that a person sees one bar and one Stop; where that cannot be, as when a question
/// stands between them, the outer window hides meanwhile.
class WindowProgress : public ProgressScope
{
public:
    WindowProgress(ProgressWindow window, const std::string& text, QWidget* parent);
    ~WindowProgress() override;

    void SetLabel(const std::string& text) override;
    void SetBar(std::uint64_t done, std::uint64_t total) override;
    void SetPart(std::uint64_t done, std::uint64_t total) override;
    void AllowStop() override;
    bool Step() override;

private:
    [[nodiscard]] bool CanShare(ProgressWindow window, const QWidget* parent) const;
    /// The window is this work's again.
    void TakeBack();
    void ShowState();

    WindowProgress* outer_; ///< what goes on around this; none for the outermost
    bool shares_ = false;   ///< its window
    bool mayStop_ = false;
    std::string label_;
    std::uint64_t done_ = 0;
    std::uint64_t total_ = 0;
    QPointer<ProgressDialog> dialog_;
    QElapsedTimer age_;
    Pump pump_;
};

/// A label and a bar of a window that is there already.
class OwnProgress : public ProgressScope
{
public:
    OwnProgress(QLabel& label, QProgressBar& bar) : label_(&label), bar_(&bar) {}

    void SetLabel(const std::string& text) override;
    void SetBar(std::uint64_t done, std::uint64_t total) override;
    void AllowStop() override {}
    bool Step() override;

private:
    QPointer<QLabel> label_;
    QPointer<QProgressBar> bar_;
    Pump pump_;
};

/// The same with a Stop button of that window, which only this may be pressed while work goes on.
class StoppableProgress : public OwnProgress
{
public:
    StoppableProgress(QLabel& label, QProgressBar& bar, QPushButton& stop);

    /// Around each piece of work: an old Stop counts no more, and the bar goes with the work.
    void Begin();
    void End();

    void SetBar(std::uint64_t done, std::uint64_t total) override;
    void AllowStop() override;
    bool Step() override;

private:
    QPointer<QProgressBar> bar_;
    QPointer<QPushButton> stop_;
    bool stopped_ = false;
};

/// Sets a bar to `done` of `total`; paints only when it shows a difference.
void ShowShare(QProgressBar& bar, std::uint64_t done, std::uint64_t total);

} // namespace kestrova
