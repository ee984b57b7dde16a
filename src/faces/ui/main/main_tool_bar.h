#pragma once

class QMainWindow;

namespace kestrova
{

/// The bar of buttons under the menu: commands of the menu bar, which must be there already.
void AddToolBar(QMainWindow& window);

} // namespace kestrova
