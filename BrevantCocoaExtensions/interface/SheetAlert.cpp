// Sheet alerts: building the alert and passing its answer on to the delegate.
#include "BrevantCocoaExtensions/interface/SheetAlert.hpp"

namespace bv {

void AlertSheetDelegate::alertDidEndReturnCodeContextInfo(const Alert& /*alert*/, int /*returnCode*/,
                                                          void* /*contextInfo*/) {}

SheetAlert alertWithMessageTextDefaultButtonAlternateButtonOtherButtonInformativeText(
    const Text& messageText, const std::optional<Text>& defaultButton,
    const std::optional<Text>& alternateButton, const std::optional<Text>& otherButton,
    const Text& informativeText) {
    SheetAlert sheet;
    sheet.alert =
        Alert{AlertStyle::Warning, messageText, informativeText, {defaultButton.value_or(Text("OK"))}};
    sheet.returnCodes = {AlertDefaultReturn};
    if (alternateButton) {
        sheet.alert.buttons.push_back(*alternateButton);
        sheet.returnCodes.push_back(AlertAlternateReturn);
    }
    if (otherButton) {
        sheet.alert.buttons.push_back(*otherButton);
        sheet.returnCodes.push_back(AlertOtherReturn);
    }
    return sheet;
}

void beginAlertSheet(const SheetAlert& sheet, QWidget* window, AlertSheetDelegate& delegate,
                     void* contextInfo) {
    AlertCenter::beginSheet(
        sheet.alert, window,
        [sheet, alive = delegate.lifetime(), target = &delegate, contextInfo](int chosen) {
            if (alive.expired()) return;
            const bool known = chosen >= 0 && static_cast<std::size_t>(chosen) < sheet.returnCodes.size();
            target->alertDidEndReturnCodeContextInfo(
                sheet.alert, known ? sheet.returnCodes[static_cast<std::size_t>(chosen)] : AlertDefaultReturn,
                contextInfo);
        });
}

}  // namespace bv
