#pragma once

#include "shots/shot_list.h"

#include <QDialog>

namespace kestrova
{

class ZoomView;

/// `Dialog_ScreenShot`: one picture as large as the window; the arrow keys go through the list.
class ScreenShotDialog : public QDialog
{
public:
    /// A place outside the list shows the default picture.
    ScreenShotDialog(const ShotList& shots, std::ptrdiff_t index, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ShowShot();
    void Step(std::ptrdiff_t step);

    const ShotList& shots_;
    std::ptrdiff_t index_;
    ZoomView* view_;
};

} // namespace kestrova
