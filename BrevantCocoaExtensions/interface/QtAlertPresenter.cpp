// Alerts as modal message boxes.
#include "BrevantCocoaExtensions/interface/QtAlertPresenter.hpp"

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>

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
    const qsizetype chosen = box->buttons().indexOf(box->clickedButton());
    return chosen < 0 ? 0 : static_cast<int>(chosen);
}

AlertCenter::Presenter install() {
    return AlertCenter::setPresenter(present);
}

}  // namespace bv::QtAlertPresenter
