// BVNSBox: enabling the controls of a QGroupBox at once.
#pragma once

#include <QGroupBox>

namespace bv::BVNSBox {

// Enables or disables every control among the box's direct child widgets. Containers among them (plain
// QWidgets and QFrames, nested group boxes) are left alone, as are the controls inside them. Qt draws a
// group box's title enabled exactly when the box itself is, and disabling the box would disable everything
// in it, so the title stays as it is.
void setEnabled(QGroupBox& self, bool enabled);

}  // namespace bv::BVNSBox
