// The library's small object graph: a store coordinator over a model, contexts that hold objects, and the
// objects themselves, saved as an XML store document (docs/OBJECT-GRAPH.md).
//
//   auto model = bv::ManagedObjectModel::modelAtPath("Quiz.mom");
//   auto coordinator = std::make_shared<bv::PersistentStoreCoordinator>(model);
//   coordinator->addXMLStoreAtURL("/home/ann/Class.quiz");     // read now, or a new store if missing
//   auto context = std::make_shared<bv::ManagedObjectContext>(coordinator);
//   auto student = context->insertNewObjectForEntityForName("Student");
//   student->setValueForKey(bv::Value("Ann"), "name");           // checked against the model
//   context->save();                                             // the whole store, written atomically
//
// What it leaves out on purpose: undo, faulting (a store is read whole), migrations, inverse relationships
// (setting one side never changes the other) and more than one store per coordinator.
//
// A context reads the coordinator's store the first time it is asked for objects or saves (objects it
// inserted before stay, after the stored ones); a save writes that context's objects as the whole store.
// The context owns its objects; an object points back to its context without owning it, and loses the
// context (null) when the context is destroyed or the object deleted. Relationships hold objects of the
// same context without owning them.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/ObjectGraphModel.hpp"
#include "BrevantCocoaExtensions/documents/ObjectGraphStore.hpp"
#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class ManagedObjectContext;

// Holds the model and at most one XML store: its file and the objects last read from or saved to it.
class PersistentStoreCoordinator {
  public:
    // A coordinator over the model (an empty model when null).
    explicit PersistentStoreCoordinator(std::shared_ptr<const ManagedObjectModel> model);

    [[nodiscard]] const std::shared_ptr<const ManagedObjectModel>& managedObjectModel() const noexcept {
        return model_;
    }
    // Adds the XML store at the address (a path or a "file:" URL). An existing document is read whole; a
    // missing file is a new empty store, written by the first save. False with *error when the address is
    // not a local file, the file cannot be read, the document does not fit the model (nothing of it is
    // kept), or the coordinator already has a store.
    bool addXMLStoreAtURL(const Text& url, Error* error = nullptr);
    // The file of the store, or nullopt before one is added.
    [[nodiscard]] const std::optional<std::string>& storePath() const noexcept { return storePath_; }

    // The objects of the store as last read or saved.
    [[nodiscard]] const StoredObjects& storedObjects() const noexcept { return stored_; }
    // Writes the objects as the store document (atomically) and keeps them as the stored objects; false
    // with *error when there is no store or the file cannot be written.
    bool writeStore(StoredObjects objects, Error* error = nullptr);

  private:
    std::shared_ptr<const ManagedObjectModel> model_;
    std::optional<std::string> storePath_;
    StoredObjects stored_;
};

// An object of an entity, inside a context. Attribute values are checked against the model's types:
// text takes a Text; integer a Number of an integer kind (not a boolean) that fits 64 signed bits; double
// any Number but a boolean (kept as a double); boolean a Number of the boolean kind; date a Date; binary
// ByteData. A relationship takes objects of its destination entity in the same context: one object (or
// null) to one, a ValueArray of them to many (repeats dropped, order kept). Null clears any property.
class ManagedObject : public Object {
  public:
    [[nodiscard]] const EntityDescription& entity() const noexcept { return *entity_; }
    // The context holding the object; null once the context is destroyed or the object deleted.
    [[nodiscard]] ManagedObjectContext* managedObjectContext() const noexcept { return context_; }

    // The value of an attribute (null when unset), the related object (null when none) of a to-one
    // relationship, the ValueArray of related objects of a to-many one; nullopt for a name the entity lacks.
    [[nodiscard]] std::optional<Value> valueForKey(const Text& key) const override;
    // Sets a property; throws InvalidArgumentException for a name the entity lacks or a value the property
    // does not take (the message names the entity, the property and the kind wanted).
    void setValueForKey(const Value& value, const Text& key) override;
    // "<Entity: name = value; ...>" with the attributes set.
    [[nodiscard]] Text description() const override;

  private:
    friend class ManagedObjectContext;
    using Related = std::vector<std::weak_ptr<ManagedObject>>;

    // Objects are made by their context.
    ManagedObject(std::shared_ptr<const ManagedObjectModel> model, const EntityDescription& entity,
                  ManagedObjectContext* context);

    [[nodiscard]] Related relatedObjects(const Value& value,
                                         const RelationshipDescription& relationship) const;
    void forget(const ManagedObject& object);

    std::shared_ptr<const ManagedObjectModel> model_;  // keeps entity_ alive as long as the object
    const EntityDescription* entity_;
    ManagedObjectContext* context_;
    std::map<Text, Value> attributes_;
    std::map<Text, Related> relationships_;
};

// A scratch pad of objects over a coordinator.
class ManagedObjectContext {
  public:
    explicit ManagedObjectContext(std::shared_ptr<PersistentStoreCoordinator> coordinator);
    ~ManagedObjectContext();
    ManagedObjectContext(const ManagedObjectContext&) = delete;
    ManagedObjectContext& operator=(const ManagedObjectContext&) = delete;

    [[nodiscard]] const std::shared_ptr<PersistentStoreCoordinator>& persistentStoreCoordinator()
        const noexcept {
        return coordinator_;
    }
    // A new object of the entity with no values set, inserted into the context; throws
    // InvalidArgumentException when the model has no such entity.
    std::shared_ptr<ManagedObject> insertNewObjectForEntityForName(const Text& entityName);
    // The objects of the entity in the order they entered the context; throws InvalidArgumentException
    // when the model has no such entity.
    [[nodiscard]] std::vector<std::shared_ptr<ManagedObject>> objectsForEntityName(const Text& entityName);
    // Every object of the context.
    [[nodiscard]] const std::vector<std::shared_ptr<ManagedObject>>& registeredObjects();
    // Removes the object from the context and from every relationship that holds it; nothing when the
    // object is not in this context.
    void deleteObject(const std::shared_ptr<ManagedObject>& object);
    // Whether objects were inserted, changed or deleted since the last save or store read.
    [[nodiscard]] bool hasChanges() const noexcept { return hasChanges_; }
    // Writes every object of the context as the whole store. True without writing when nothing changed;
    // false with *error when there is no store or the file cannot be written.
    bool save(Error* error = nullptr);

  private:
    friend class ManagedObject;
    void loadStoreIfNeeded();
    [[nodiscard]] const EntityDescription& entityNamed(const Text& entityName) const;
    [[nodiscard]] StoredObjects records() const;

    std::shared_ptr<PersistentStoreCoordinator> coordinator_;
    std::vector<std::shared_ptr<ManagedObject>> objects_;
    bool storeLoaded_ = false;
    bool hasChanges_ = false;
};

}  // namespace bv
