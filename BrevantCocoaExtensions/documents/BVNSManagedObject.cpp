// BVNSManagedObject: new objects inserted into an object's context.
#include "BrevantCocoaExtensions/documents/BVNSManagedObject.hpp"

#include "BrevantCocoaExtensions/documents/BVNSManagedObjectContext.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv::BVNSManagedObject {

std::shared_ptr<ManagedObject> createObjectForEntityNamed(const ManagedObject& self, const Text& entityName) {
    ManagedObjectContext* context = self.managedObjectContext();
    if (!context)
        throw InvalidArgumentException("The object " + self.description().toUtf8() +
                                       " is in no context, so " + entityName.toUtf8() +
                                       " cannot be inserted beside it.");
    return BVNSManagedObjectContext::createObjectForEntityNamed(*context, entityName);
}

}  // namespace bv::BVNSManagedObject
