// Sheet alerts: an alert attached to a window that reports its answer to a delegate when it ends.
//
// The alert goes through bv::AlertCenter::beginSheet: the Qt presenter (QtAlertPresenter::install) opens a
// window-modal message box and returns at once; an AlertRecorder records it and ends it at once; without
// either it is shown through AlertCenter::show. The answer reaches the delegate's
// alertDidEndReturnCodeContextInfo as a return code: AlertDefaultReturn for the default button,
// AlertAlternateReturn for the alternate one, AlertOtherReturn for the other one. A delegate destroyed
// before its sheet ends is not called.
#pragma once

#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Format.hpp"

namespace bv {

inline constexpr int AlertDefaultReturn = 1;
inline constexpr int AlertAlternateReturn = 0;
inline constexpr int AlertOtherReturn = -1;

// Receives the answers of sheet alerts.
class AlertSheetDelegate {
  public:
    AlertSheetDelegate() = default;
    AlertSheetDelegate(const AlertSheetDelegate&) : AlertSheetDelegate() {}
    AlertSheetDelegate& operator=(const AlertSheetDelegate&) { return *this; }
    virtual ~AlertSheetDelegate() = default;

    // Called once when a sheet alert ends; does nothing here. Subclasses override it to act on the answer.
    virtual void alertDidEndReturnCodeContextInfo(const Alert& alert, int returnCode, void* contextInfo);

    // Tells whether the delegate still lives; sheets hold it while they are open.
    [[nodiscard]] std::weak_ptr<const bool> lifetime() const { return alive_; }

  private:
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

// An alert with its buttons' return codes.
struct SheetAlert {
    Alert alert;
    std::vector<int> returnCodes;  // one per button, in the buttons' order
};

// The alert titled with the message text, holding the informative text, with the default button ("OK"
// when null), then the alternate and the other button when they are given.
[[nodiscard]] SheetAlert alertWithMessageTextDefaultButtonAlternateButtonOtherButtonInformativeText(
    const Text& messageText, const std::optional<Text>& defaultButton,
    const std::optional<Text>& alternateButton, const std::optional<Text>& otherButton,
    const Text& informativeText);

// Shows the alert as a sheet on the window (an application-modal alert when the window is null) and, when it
// ends, calls the delegate with the return code and the context passed through.
void beginAlertSheet(const SheetAlert& alert, QWidget* window, AlertSheetDelegate& delegate,
                     void* contextInfo);

// The sheet alerts of window controllers and documents: formats the informative text, builds the alert and
// shows it on the window with the delegate.
template <class... Args>
void beginFormattedAlertSheet(AlertSheetDelegate& delegate, QWidget* window, const Text& messageText,
                              void* context, const std::optional<Text>& defaultButton,
                              const std::optional<Text>& alternateButton,
                              const std::optional<Text>& otherButton, const Text& format,
                              const Args&... arguments) {
    beginAlertSheet(
        alertWithMessageTextDefaultButtonAlternateButtonOtherButtonInformativeText(
            messageText, defaultButton, alternateButton, otherButton, stringWithFormat(format, arguments...)),
        window, delegate, context);
}

}  // namespace bv
