// Alerts as modal message boxes.
#include "BrevantCocoaExtensions/interface/QtAlertPresenter.hpp"

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>

#include "BrevantCocoaExtensions/interface/BVNSApplicationSheets.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace bv::QtAlertPresenter {

namespace {
QMessageBox::Icon iconFor(AlertStyle style) {
    switch (style) {
        case AlertStyle::Informational:
            return QMessageBox::Information;
        case AlertStyle::Critical:
            return QMessageBox::Critical;
        case AlertStyle::Warning:
            break;
    }
    return QMessageBox::Warning;
}

int chosenButton(const QMessageBox& box) {
    const qsizetype chosen = box.buttons().indexOf(box.clickedButton());
    return chosen < 0 ? 0 : static_cast<int>(chosen);
}
}  // namespace

std::unique_ptr<QMessageBox> messageBoxForAlert(const Alert& alert, QWidget* parent) {
    auto box = std::make_unique<QMessageBox>(parent);
    box->setIcon(iconFor(alert.style));
    box->setWindowTitle(toQString(alert.title));
    box->setText(toQString(alert.message));
    box->setWindowModality(Qt::ApplicationModal);
    const std::vector<Text> buttons = alert.buttons.empty() ? std::vector<Text>{Text("OK")} : alert.buttons;
    for (const Text& title : buttons)
        box->addButton(toQString(title), QMessageBox::AcceptRole);
    box->setDefaultButton(qobject_cast<QPushButton*>(box->buttons().front()));
    return box;
}

int present(const Alert& alert) {
    const std::unique_ptr<QMessageBox> box = messageBoxForAlert(alert, QApplication::activeWindow());
    box->exec();
    return chosenButton(*box);
}

void presentSheet(const Alert& alert, void* window, AlertCenter::SheetCompletion done) {
    auto* parent = static_cast<QWidget*>(window);
    if (parent == nullptr) {
        const int chosen = present(alert);
        if (done) done(chosen);
        return;
    }
    QMessageBox* box = messageBoxForAlert(alert, parent).release();
    BVNSApplication::beginSheetModalForWindowDidEndBlock(*box, *parent, [box, done = std::move(done)](int) {
        const int chosen = chosenButton(*box);
        box->deleteLater();
        if (done) done(chosen);
    });
}

AlertCenter::Presenter install() {
    AlertCenter::setSheetPresenter(presentSheet);
    return AlertCenter::setPresenter(present);
}

}  // namespace bv::QtAlertPresenter
