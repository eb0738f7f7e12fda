// The object graph: the store coordinator, contexts and objects.
#include "BrevantCocoaExtensions/documents/ObjectGraph.hpp"

#include <strings.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <unordered_map>
#include <utility>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/FileURL.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv {

namespace {

std::string quoted(const Text& text) {
    return "\u201C" + text.toUtf8() + "\u201D";
}

// The local path of a store address: a "file:" URL or a plain path; nullopt for another scheme.
std::optional<std::string> storePathOf(const std::string& url) {
    if (url.size() >= 5 && strncasecmp(url.c_str(), "file:", 5) == 0) return pathOfFileURL(url);
    if (url.empty() || url.find("://") != std::string::npos) return std::nullopt;
    return url;
}

bool refuseStore(Error* error, ObjectGraphErrorCode code, const std::string& path, const Text& reason) {
    const std::string name = std::filesystem::path(path).filename().string();
    return Error::report(error,
                         Error{ObjectGraphErrorDomain, code,
                               Text("The document " + quoted(Text(name)) + " could not be opened."), reason});
}

// Whether the value is one the attribute type takes.
bool takes(AttributeType type, const Value& value) {
    const Number* number = value.number();
    const bool isBool = number && number->kind() == Number::Kind::Bool;
    const bool isFloat =
        number && (number->kind() == Number::Kind::Float || number->kind() == Number::Kind::Double);
    switch (type) {
        case AttributeType::Text:
            return value.is<Text>();
        case AttributeType::Integer:
            return number && !isBool && !isFloat &&
                   !(number->kind() == Number::Kind::UInt64 &&
                     number->uint64Value() >
                         static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()));
        case AttributeType::Double:
            return number && !isBool;
        case AttributeType::Boolean:
            return isBool;
        case AttributeType::Date:
            return value.is<Date>();
        case AttributeType::Binary:
            return value.is<ByteData>();
    }
    return false;
}

// The value in the kind the store keeps for the type (integers as 64-bit, doubles as doubles).
Value normalized(AttributeType type, const Value& value) {
    if (type == AttributeType::Integer) return Number::int64(value.number()->int64Value());
    if (type == AttributeType::Double) return Number::float64(value.number()->doubleValue());
    return value;
}

}  // namespace

// --- PersistentStoreCoordinator ---------------------------------------------------------------------

PersistentStoreCoordinator::PersistentStoreCoordinator(std::shared_ptr<const ManagedObjectModel> model)
    : model_(model ? std::move(model) : std::make_shared<const ManagedObjectModel>()) {}

bool PersistentStoreCoordinator::addXMLStoreAtURL(const Text& url, Error* error) {
    const std::optional<std::string> path = storePathOf(url.toUtf8());
    if (!path)
        return refuseStore(error, ObjectGraphStoreMissing, url.toUtf8(),
                           Text("The address is not a local file."));
    if (storePath_)
        return refuseStore(error, ObjectGraphStoreConflict, *path, Text("The context already has a store."));
    std::error_code missing;
    if (!std::filesystem::exists(*path, missing) && !missing) {  // a new document: saved there later
        storePath_ = path;
        stored_.clear();
        return true;
    }
    Error fault;
    const std::shared_ptr<XMLDocument> document =
        XMLDocument::parseFile(*path, ObjectGraphStore::kParseOptions, &fault);
    std::optional<StoredObjects> objects;
    if (document) objects = ObjectGraphStore::readDocument(*document, *model_, &fault);
    if (!objects)
        return refuseStore(error, ObjectGraphStoreDamaged, *path,
                           fault.failureReason.empty() ? fault.localizedDescription : fault.failureReason);
    storePath_ = path;
    stored_ = std::move(*objects);
    return true;
}

bool PersistentStoreCoordinator::writeStore(StoredObjects objects, Error* error) {
    if (!storePath_)
        return Error::report(error, Error{ObjectGraphErrorDomain, ObjectGraphStoreMissing,
                                          Text("The context has no store to save to."), Text()});
    if (!ObjectGraphStore::document(objects, *model_)
             ->writeToFile(*storePath_, XMLNodePrettyPrint | XMLNodeCompactEmptyElement, error))
        return false;
    stored_ = std::move(objects);
    return true;
}

// --- ManagedObject -----------------------------------------------------------------------------------

ManagedObject::ManagedObject(std::shared_ptr<const ManagedObjectModel> model, const EntityDescription& entity,
                             ManagedObjectContext* context)
    : model_(std::move(model)), entity_(&entity), context_(context) {}

std::optional<Value> ManagedObject::valueForKey(const Text& key) const {
    if (entity_->attributeNamed(key)) {
        const auto found = attributes_.find(key);
        return found == attributes_.end() ? Value() : found->second;
    }
    const RelationshipDescription* relationship = entity_->relationshipNamed(key);
    if (!relationship) return std::nullopt;
    ValueArray objects;
    if (const auto found = relationships_.find(key); found != relationships_.end())
        for (const std::weak_ptr<ManagedObject>& weak : found->second)
            if (std::shared_ptr<ManagedObject> object = weak.lock()) objects.emplace_back(std::move(object));
    if (relationship->toMany) return Value(std::move(objects));
    return objects.empty() ? Value() : objects.front();
}

void ManagedObject::setValueForKey(const Value& value, const Text& key) {
    if (const AttributeDescription* attribute = entity_->attributeNamed(key)) {
        if (value.isNull()) {
            attributes_.erase(key);
        } else if (takes(attribute->type, value)) {
            attributes_[key] = normalized(attribute->type, value);
        } else {
            throw InvalidArgumentException(
                "The attribute " + quoted(key) + " of the entity " + quoted(entity_->name) + " takes a " +
                attributeTypeName(attribute->type) + " value, not " + value.description().toUtf8() + ".");
        }
    } else if (const RelationshipDescription* relationship = entity_->relationshipNamed(key)) {
        Related related = relatedObjects(value, *relationship);
        if (related.empty())
            relationships_.erase(key);
        else
            relationships_[key] = std::move(related);
    } else {
        throw InvalidArgumentException("The entity " + quoted(entity_->name) + " has no property " +
                                       quoted(key) + ".");
    }
    if (context_) context_->hasChanges_ = true;
}

ManagedObject::Related ManagedObject::relatedObjects(const Value& value,
                                                     const RelationshipDescription& relationship) const {
    const auto fault = [&]() {
        return InvalidArgumentException("The relationship " + quoted(relationship.name) + " of the entity " +
                                        quoted(entity_->name) + " takes " +
                                        (relationship.toMany ? "a list of " : "") + "objects of the entity " +
                                        quoted(relationship.destinationEntityName) + " in the same context.");
    };
    ValueArray values;
    if (relationship.toMany && value.array())
        values = *value.array();
    else if (!value.isNull() && !relationship.toMany)
        values.push_back(value);
    else if (!value.isNull())
        throw fault();
    Related related;
    for (const Value& candidate : values) {
        std::shared_ptr<ManagedObject> object = std::dynamic_pointer_cast<ManagedObject>(candidate.object());
        if (!object || !context_ || object->context_ != context_ ||
            object->entity_->name != relationship.destinationEntityName)
            throw fault();
        const bool repeated = std::any_of(related.begin(), related.end(),
                                          [&](const auto& earlier) { return earlier.lock() == object; });
        if (!repeated) related.push_back(object);
    }
    return related;
}

void ManagedObject::forget(const ManagedObject& object) {
    for (auto& [name, related] : relationships_)
        std::erase_if(related, [&](const std::weak_ptr<ManagedObject>& weak) {
            const std::shared_ptr<ManagedObject> held = weak.lock();
            return !held || held.get() == &object;
        });
    std::erase_if(relationships_, [](const auto& entry) { return entry.second.empty(); });
}

Text ManagedObject::description() const {
    std::string text = "<" + entity_->name.toUtf8() + ":";
    for (const auto& [name, value] : attributes_)
        text += " " + name.toUtf8() + " = " + value.description().toUtf8() + ";";
    return Text(text + ">");
}

// --- ManagedObjectContext ----------------------------------------------------------------------------

ManagedObjectContext::ManagedObjectContext(std::shared_ptr<PersistentStoreCoordinator> coordinator)
    : coordinator_(coordinator ? std::move(coordinator)
                               : std::make_shared<PersistentStoreCoordinator>(nullptr)) {}

ManagedObjectContext::~ManagedObjectContext() {
    for (const std::shared_ptr<ManagedObject>& object : objects_)
        object->context_ = nullptr;
}

const EntityDescription& ManagedObjectContext::entityNamed(const Text& entityName) const {
    const EntityDescription* entity = coordinator_->managedObjectModel()->entityNamed(entityName);
    if (!entity)
        throw InvalidArgumentException("The object model has no entity named " + quoted(entityName) + ".");
    return *entity;
}

std::shared_ptr<ManagedObject> ManagedObjectContext::insertNewObjectForEntityForName(const Text& entityName) {
    const EntityDescription& entity = entityNamed(entityName);
    std::shared_ptr<ManagedObject> object(
        new ManagedObject(coordinator_->managedObjectModel(), entity, this));
    objects_.push_back(object);
    hasChanges_ = true;
    return object;
}

std::vector<std::shared_ptr<ManagedObject>> ManagedObjectContext::objectsForEntityName(
    const Text& entityName) {
    const EntityDescription& entity = entityNamed(entityName);
    loadStoreIfNeeded();
    std::vector<std::shared_ptr<ManagedObject>> found;
    for (const std::shared_ptr<ManagedObject>& object : objects_)
        if (object->entity_ == &entity) found.push_back(object);
    return found;
}

const std::vector<std::shared_ptr<ManagedObject>>& ManagedObjectContext::registeredObjects() {
    loadStoreIfNeeded();
    return objects_;
}

void ManagedObjectContext::deleteObject(const std::shared_ptr<ManagedObject>& object) {
    const auto found = std::find(objects_.begin(), objects_.end(), object);
    if (found == objects_.end()) return;
    objects_.erase(found);
    for (const std::shared_ptr<ManagedObject>& other : objects_)
        other->forget(*object);
    object->context_ = nullptr;
    object->relationships_.clear();
    hasChanges_ = true;
}

bool ManagedObjectContext::save(Error* error) {
    loadStoreIfNeeded();
    if (!hasChanges_) return true;
    if (!coordinator_->writeStore(records(), error)) return false;
    hasChanges_ = false;
    return true;
}

void ManagedObjectContext::loadStoreIfNeeded() {
    if (storeLoaded_ || !coordinator_->storePath()) return;
    storeLoaded_ = true;
    const StoredObjects& stored = coordinator_->storedObjects();
    const std::shared_ptr<const ManagedObjectModel>& model = coordinator_->managedObjectModel();
    std::vector<std::shared_ptr<ManagedObject>> loaded;
    for (const StoredObject& record : stored) {
        loaded.emplace_back(new ManagedObject(model, *model->entityNamed(record.entityName), this));
        loaded.back()->attributes_ = record.attributes;
    }
    for (std::size_t i = 0; i < stored.size(); ++i)
        for (const auto& [name, positions] : stored[i].relationships)
            for (const std::size_t position : positions)
                loaded[i]->relationships_[name].push_back(loaded[position]);
    objects_.insert(objects_.begin(), loaded.begin(), loaded.end());
}

StoredObjects ManagedObjectContext::records() const {
    std::unordered_map<const ManagedObject*, std::size_t> positions;
    for (std::size_t i = 0; i < objects_.size(); ++i)
        positions.emplace(objects_[i].get(), i);
    StoredObjects records(objects_.size());
    for (std::size_t i = 0; i < objects_.size(); ++i) {
        records[i].entityName = objects_[i]->entity_->name;
        records[i].attributes = objects_[i]->attributes_;
        for (const auto& [name, related] : objects_[i]->relationships_)
            for (const std::weak_ptr<ManagedObject>& weak : related)
                if (const auto found = positions.find(weak.lock().get()); found != positions.end())
                    records[i].relationships[name].push_back(found->second);
    }
    return records;
}

}  // namespace bv
