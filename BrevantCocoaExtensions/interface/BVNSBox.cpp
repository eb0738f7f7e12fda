// Enabling the controls of a QGroupBox.
#include "BrevantCocoaExtensions/interface/BVNSBox.hpp"

#include <QFrame>

#include "BrevantCocoaExtensions/interface/BVNSView.hpp"

namespace bv::BVNSBox {

namespace {
// A container holds other widgets rather than taking input itself.
bool isContainer(const QWidget& widget) {
    const QMetaObject* type = widget.metaObject();
    return type == &QWidget::staticMetaObject || type == &QFrame::staticMetaObject ||
           qobject_cast<const QGroupBox*>(&widget) != nullptr;
}
}  // namespace

void setEnabled(QGroupBox& self, bool enabled) {
    for (QWidget* child : BVNSView::subviews(self))
        if (!isContainer(*child)) child->setEnabled(enabled);
}

}  // namespace bv::BVNSBox
