// Qt objects held in the library's values.
#include "BrevantCocoaExtensions/interface/QtObjectHandle.hpp"

#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace bv {

QtObjectHandle::QtObjectHandle(QObject* object, Ownership ownership)
    : object_(object), ownership_(ownership) {}

QtObjectHandle::~QtObjectHandle() {
    if (ownership_ == Ownership::OwnedWhileParentless && object_ && !object_->parent()) delete object_.data();
}

std::shared_ptr<QtObjectHandle> QtObjectHandle::borrowing(QObject* object) {
    return std::make_shared<QtObjectHandle>(object, Ownership::Borrowed);
}

Text QtObjectHandle::description() const {
    if (!object_) return Text("<deleted Qt object>");
    QString text = QString::fromLatin1(object_->metaObject()->className());
    if (!object_->objectName().isEmpty())
        text += QStringLiteral(" \"") + object_->objectName() + QStringLiteral("\"");
    return fromQString(text);
}

std::optional<Value> QtObjectHandle::valueForKey(const Text& key) const {
    if (!object_) return std::nullopt;
    if (key == Text("className")) return Value(Text(object_->metaObject()->className()));
    if (key == Text("objectName")) return Value(fromQString(object_->objectName()));
    return std::nullopt;
}

QObject* qObjectOf(const Value& value) {
    const auto handle = std::dynamic_pointer_cast<QtObjectHandle>(value.object());
    return handle ? handle->object() : nullptr;
}

}  // namespace bv
