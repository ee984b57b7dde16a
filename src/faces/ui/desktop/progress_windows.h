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
    [[nodiscard]] bool Stopped() const { return stopped_; }

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

/// One of the three small windows for the length of its life. Work that is over at once never
/// shows it, so that nothing flashes.
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
