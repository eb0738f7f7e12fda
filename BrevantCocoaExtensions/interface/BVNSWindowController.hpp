// BVNSWindowController: sheet alerts on a window controller's window.
//
// bv::WindowController is the window controller of the Qt programs of the suite: it manages one window (a
// QWidget, not owned) and receives the answers of the sheet alerts shown on it (see SheetAlert.hpp).
#pragma once

#include <QPointer>
#include <QWidget>
#include <optional>

#include "BrevantCocoaExtensions/interface/SheetAlert.hpp"

namespace bv {

class WindowController : public AlertSheetDelegate {
  public:
    explicit WindowController(QWidget* window = nullptr) : window_(window) {}
    // The managed window; null when none was given or it was destroyed.
    [[nodiscard]] QWidget* window() const { return window_; }
    void setWindow(QWidget* window) { window_ = window; }

  private:
    QPointer<QWidget> window_;
};

namespace BVNSWindowController {

// Formats the informative text and shows the alert (titled with the message text; buttons default, "OK"
// when null, alternate and other when given) as a sheet on the controller's window. When it ends the
// controller's alertDidEndReturnCodeContextInfo gets the return code and the context.
template <class... Args>
void displayAlertWithMessageTextContextDefaultButtonAlternateButtonOtherButtonInformativeTextWithFormat(
    WindowController& self, const Text& messageText, void* context, const std::optional<Text>& defaultButton,
    const std::optional<Text>& alternateButton, const std::optional<Text>& otherButton, const Text& format,
    const Args&... arguments) {
    beginFormattedAlertSheet(self, self.window(), messageText, context, defaultButton, alternateButton,
                             otherButton, format, arguments...);
}

}  // namespace BVNSWindowController

}  // namespace bv
