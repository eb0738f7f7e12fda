// BVNSApplication's sheets: a dialog shown window-modally on a window, with a block called when it ends.
// (The rest of BVNSApplication needs no windows and lives in files/BVNSApplication.hpp.)
#pragma once

#include <QDialog>
#include <QWidget>
#include <functional>

namespace bv::BVNSApplication {

// Shows the dialog as a sheet on the window (made its child and window-modal, opened without blocking)
// and, when it ends, calls the block once with the dialog's result (QDialog::Accepted, Rejected or the code
// given to done()); the block is released then. The application is Qt's one QApplication.
void beginSheetModalForWindowDidEndBlock(QDialog& sheet, QWidget& window, std::function<void(int)> block);

}  // namespace bv::BVNSApplication
