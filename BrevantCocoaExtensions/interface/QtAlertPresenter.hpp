// bv::QtAlertPresenter: shows the library's alerts as modal QMessageBoxes.
//
// The box's window title is the alert's title, its text the message, its buttons the alert's buttons in
// order (the first is the default; an alert without buttons gets "OK"). The answer is the index of the
// button chosen; closing the box without a button answers the default, 0. A sheet (AlertCenter::beginSheet)
// is the same box opened window-modally on its window, answering when it closes.
#pragma once

#include <QMessageBox>
#include <memory>

#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"

namespace bv::QtAlertPresenter {

// The box for an alert, ready to run; not shown.
[[nodiscard]] std::unique_ptr<QMessageBox> messageBoxForAlert(const Alert& alert, QWidget* parent = nullptr);
// Runs the alert's box modally and answers the index of the button chosen.
int present(const Alert& alert);
// Opens the alert's box window-modally on the window (a QWidget*; modally as present() when null) and calls
// done with the index of the button chosen when the box closes.
void presentSheet(const Alert& alert, void* window, AlertCenter::SheetCompletion done);
// Makes present the AlertCenter presenter and presentSheet its sheet presenter (needs a QApplication);
// answers the previous presenter.
AlertCenter::Presenter install();

}  // namespace bv::QtAlertPresenter
