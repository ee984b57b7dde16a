#pragma once

#include "session/running.h"

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <vector>

namespace kestrova
{

/// While an operation runs, what a person does with mouse and keyboard is discarded, not kept for
/// later: except in the windows of progress and in a box that the operation itself has opened.
/// Installed on the application for the length of its life.
class InputGate : public QObject
{
public:
    explicit InputGate(const Running& running);
    ~InputGate() override;

    /// The gate of this program; none in a test that has not made one.
    static InputGate* Current();

    /// Lets input through to a window, as long as no further operation begins inside it.
    class Admission
    {
    public:
        explicit Admission(QWidget& window);
        ~Admission();
        Admission(const Admission&) = delete;
        Admission& operator=(const Admission&) = delete;
    };
    /// Lets input through to a window whatever runs (a Stop button).
    void AdmitAlways(QWidget& window);

    /// Whether a person's turn it is: nothing runs, or what runs waits for a box that it opened.
    [[nodiscard]] bool Waits() const;

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct Admitted {
        QPointer<QWidget> window;
        int operations;
    };
    [[nodiscard]] bool LetsThrough(const QObject* target) const;

    const Running& running_;
    std::vector<Admitted> admitted_;
    std::vector<QPointer<QWidget>> always_;
};

} // namespace kestrova
