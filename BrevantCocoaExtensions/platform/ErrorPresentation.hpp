// Presenting an error object to the person using the application, the way an interactive application
// reports a document it could not open or save.
#pragma once

#include "BrevantCocoaExtensions/platform/Error.hpp"

namespace bv {

// Shows the error as one modal alert through AlertCenter: critical style, the localized description as
// the title, the failure reason as the message, and the single button "OK".
void presentError(const Error& error);

}  // namespace bv
