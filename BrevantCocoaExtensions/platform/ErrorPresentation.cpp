// Error presentation through the alert center.
#include "BrevantCocoaExtensions/platform/ErrorPresentation.hpp"

#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"

namespace bv {

void presentError(const Error& error) {
    AlertCenter::show(
        Alert{AlertStyle::Critical, error.localizedDescription, error.failureReason, {Text("OK")}});
}

}  // namespace bv
