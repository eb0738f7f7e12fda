// BVNSManagedObjectContext: short-cuts that build an object-graph context from the application's model
// files (resources of type "mom" in the main bundle), optionally over an XML store document, and insert
// new objects by entity name. The object graph itself is in ObjectGraph.hpp.
//
//   auto context = bv::BVNSManagedObjectContext::contextForModelNamedLoadDocAtURL("Quiz",
//   "/home/ann/Class.quiz"); auto student =
//   bv::BVNSManagedObjectContext::createObjectForEntityNamed(*context, "Student");
//
// A model file that cannot be read (or models whose entity names clash) gives null and a log line naming
// the file. A store that cannot be opened is presented to the user once (an alert with the error) and
// logged, and the context comes back all the same: usable, empty and without a store.
#pragma once

#include <memory>

#include "BrevantCocoaExtensions/documents/ObjectGraph.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVNSManagedObjectContext {

// A new context over one model merged from every ".mom" resource of the main bundle (in name order), with
// no store; an empty model when there are none. Null with a log line when a model cannot be read or two
// models define the same entity.
[[nodiscard]] std::shared_ptr<ManagedObjectContext> contextForAllModels();
// A new context over the model file at the path, with no store; null with a log line when the file cannot
// be read as a model.
[[nodiscard]] std::shared_ptr<ManagedObjectContext> contextForModelAtPath(const Text& path);
// contextForModelAtPath of the main bundle's resource NAME.mom; null when there is no such resource.
[[nodiscard]] std::shared_ptr<ManagedObjectContext> contextForModelNamed(const Text& name);
// contextForModelNamed, then the XML store at the address (a path or a "file:" URL) is added: an existing
// document is read, a missing one is a new empty store saved there by the first save. A store that cannot
// be opened is presented once and logged; the context is answered anyway, without a store.
[[nodiscard]] std::shared_ptr<ManagedObjectContext> contextForModelNamedLoadDocAtURL(const Text& name,
                                                                                     const Text& url);
// A new object of the entity inserted into the context; throws InvalidArgumentException when the model
// has no such entity.
std::shared_ptr<ManagedObject> createObjectForEntityNamed(ManagedObjectContext& self, const Text& entityName);

}  // namespace bv::BVNSManagedObjectContext
