// bv::UiFileLoader: interface files are Qt Designer .ui files, read with QUiLoader. The interface library
// makes this loader the one BVNSBundle's topLevelNibObjects... operations use when it is loaded; install()
// does it again after another loader was set.
//
// The result holds the file's top-level object (a .ui file has one: its form widget) as a QtObjectHandle.
// The list keeps the object alive: the object is deleted when the last copy of the list (or of the value)
// goes, unless it has a Qt parent by then.
//
// The owner: when it holds a QWidget (a QtObjectHandle, see QtObjectHandle::borrowing), the form is built
// as the owner's child, so the owner's Qt tree also keeps it (and deletes it with the owner); a caller
// that wants the owner's on_<objectName>_<signal> slots connected calls QMetaObject::connectSlotsByName on
// the owner. Any other owner, or none, leaves the form without a parent.
//
// A file that is missing, damaged or no form, or a call without a QApplication, answers nullopt (the
// bundle operations then log their failure line); Qt may print its own warning as well.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "BrevantCocoaExtensions/files/BVNSBundle.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::UiFileLoader {

// Builds the form of the .ui file at the path with the owner; nullopt when it cannot.
[[nodiscard]] std::optional<ValueArray> load(const std::string& path, const std::shared_ptr<Object>& owner);
// Makes load the bundles' interface-file loader; answers the previous loader.
BVNSBundle::InterfaceFileLoader install();

}  // namespace bv::UiFileLoader
