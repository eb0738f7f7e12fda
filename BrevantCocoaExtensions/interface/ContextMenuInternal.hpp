// Right clicks on widgets with a standard menu or a menu delegate: one event filter per widget (on the
// viewport of a scroll area) that asks the widget's menuForEvent and pops the answer up.
#pragma once

#include <QWidget>

namespace bv::internal {

// Installs the filter once; later calls do nothing.
void ensureContextMenuFilter(QWidget& widget);

}  // namespace bv::internal
