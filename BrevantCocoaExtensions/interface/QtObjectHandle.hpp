// bv::QtObjectHandle: a Qt object held in the library's values (a bv::Object), as the interface-file
// loader hands out the objects it builds and receives their owner.
//
// A handle either borrows its object or owns it while the object has no Qt parent: when the last handle
// of an owned object goes, the object is deleted unless a parent has taken it over by then (the parent
// then deletes it, as Qt parents do). A handle whose object was deleted elsewhere answers null.
#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class QtObjectHandle : public Object {
  public:
    enum class Ownership { Borrowed, OwnedWhileParentless };

    QtObjectHandle(QObject* object, Ownership ownership);
    ~QtObjectHandle() override;
    QtObjectHandle(const QtObjectHandle&) = delete;
    QtObjectHandle& operator=(const QtObjectHandle&) = delete;

    // A handle that only refers to the object (for an owner given to the loader).
    [[nodiscard]] static std::shared_ptr<QtObjectHandle> borrowing(QObject* object);

    [[nodiscard]] QObject* object() const noexcept { return object_.data(); }
    // The class name and, when set, the object name in quotes: QWidget "answerPanel".
    [[nodiscard]] Text description() const override;
    // "className" and "objectName" as texts; nullopt for other keys.
    [[nodiscard]] std::optional<Value> valueForKey(const Text& key) const override;

  private:
    QPointer<QObject> object_;
    Ownership ownership_;
};

// The Qt object in a value that holds a QtObjectHandle; null otherwise.
[[nodiscard]] QObject* qObjectOf(const Value& value);
template <class T>
[[nodiscard]] T* qObjectOf(const Value& value) {
    return qobject_cast<T*>(qObjectOf(value));
}

}  // namespace bv
