// BVNSDocument: sheet alerts on a document's sheet window.
//
// bv::Document is the document of the Qt programs of the suite, as far as alerts need one: the window its
// sheets attach to (a QWidget, not owned; the application's active window when none is set) and the answers
// of the sheet alerts shown on it (see SheetAlert.hpp).
#pragma once

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <optional>

#include "BrevantCocoaExtensions/interface/SheetAlert.hpp"

namespace bv {

class Document : public AlertSheetDelegate {
  public:
    explicit Document(QWidget* window = nullptr) : window_(window) {}
    // The window sheets attach to: the one set, else the application's active window (null when none).
    [[nodiscard]] virtual QWidget* windowForSheet() const {
        return window_ ? window_.data() : QApplication::activeWindow();
    }
    void setWindowForSheet(QWidget* window) { window_ = window; }

  private:
    QPointer<QWidget> window_;
};

namespace BVNSDocument {

// Formats the informative text and shows the alert (titled with the message text; buttons default, "OK"
// when null, alternate and other when given) as a sheet on the document's sheet window. When it ends the
// document's alertDidEndReturnCodeContextInfo gets the return code and the context.
template <class... Args>
void displayAlertWithMessageTextContextDefaultButtonAlternateButtonOtherButtonInformativeTextWithFormat(
    Document& self, const Text& messageText, void* context, const std::optional<Text>& defaultButton,
    const std::optional<Text>& alternateButton, const std::optional<Text>& otherButton, const Text& format,
    const Args&... arguments) {
    beginFormattedAlertSheet(self, self.windowForSheet(), messageText, context, defaultButton,
                             alternateButton, otherButton, format, arguments...);
}

}  // namespace BVNSDocument

}  // namespace bv
