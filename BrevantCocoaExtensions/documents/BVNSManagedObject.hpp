// BVNSManagedObject: inserting a new object beside an existing one, into that object's own context.
#pragma once

#include <memory>

#include "BrevantCocoaExtensions/documents/ObjectGraph.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSManagedObject {

// A new object of the entity inserted into the receiver's context; throws InvalidArgumentException when
// the model has no such entity or the receiver has no context any more (deleted, or its context gone).
std::shared_ptr<ManagedObject> createObjectForEntityNamed(const ManagedObject& self, const Text& entityName);

}  // namespace bv::BVNSManagedObject
