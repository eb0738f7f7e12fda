// ManagedObjectModel: the entities of an object graph, each with typed attributes and relationships to
// other entities, read from a model file (resource type "mom"; the format is in docs/OBJECT-GRAPH.md).
//
//   <objectModel>
//       <entity name="Student">
//           <attribute name="name" type="text"/>
//           <attribute name="age" type="integer"/>
//           <relationship name="school" destination="School"/>
//           <relationship name="answers" destination="Answer" toMany="true"/>
//       </entity>
//   </objectModel>
//
// A model is checked as a whole: entity names are unique, property names (attributes and relationships
// together) are unique within an entity, every attribute has one of the six types, and every relationship
// names an entity of the same model. A model that breaks a rule is refused, never half read.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

// The domain of the errors of model files and stores.
inline constexpr const char* ObjectGraphErrorDomain = "BVObjectGraphErrorDomain";
enum ObjectGraphErrorCode : std::int64_t {
    ObjectGraphModelInvalid = 1,   // a model file that cannot be read or breaks a rule
    ObjectGraphStoreDamaged = 2,   // a store document that cannot be read or does not fit the model
    ObjectGraphStoreMissing = 3,   // a save without a store, or a store address that is not a local file
    ObjectGraphStoreConflict = 4,  // a second store added to a coordinator
};

// The value kinds an attribute may hold; the names are the ones model files use.
enum class AttributeType { Text, Integer, Double, Boolean, Date, Binary };
// "text", "integer", "double", "boolean", "date" or "binary".
[[nodiscard]] const char* attributeTypeName(AttributeType type) noexcept;
// The type of a model file's type name, or nullopt for another name.
[[nodiscard]] std::optional<AttributeType> attributeTypeNamed(const Text& name) noexcept;

struct AttributeDescription {
    Text name;
    AttributeType type = AttributeType::Text;
};

struct RelationshipDescription {
    Text name;
    Text destinationEntityName;
    bool toMany = false;  // a to-many relationship holds an ordered list of distinct objects
};

struct EntityDescription {
    Text name;
    std::vector<AttributeDescription> attributes;
    std::vector<RelationshipDescription> relationships;

    // The attribute or relationship with the name, or null.
    [[nodiscard]] const AttributeDescription* attributeNamed(const Text& name) const noexcept;
    [[nodiscard]] const RelationshipDescription* relationshipNamed(const Text& name) const noexcept;
};

class ManagedObjectModel {
  public:
    ManagedObjectModel() = default;
    // A model of the entities; throws InvalidArgumentException naming the first rule broken.
    explicit ManagedObjectModel(std::vector<EntityDescription> entities);

    // The model read from a model file; null with *error (ObjectGraphModelInvalid, the reason naming the
    // file and the fault) when the file cannot be read or breaks a rule.
    [[nodiscard]] static std::shared_ptr<const ManagedObjectModel> modelAtPath(const std::string& path,
                                                                               Error* error = nullptr);
    // The entities of a model file as written (types and elements checked), without the rules above:
    // those apply to the model made of them, so files may lead to each other's entities; nullopt with
    // *error as above.
    [[nodiscard]] static std::optional<std::vector<EntityDescription>> entitiesAtPath(const std::string& path,
                                                                                      Error* error = nullptr);

    // The entities in the order the model file lists them.
    [[nodiscard]] const std::vector<EntityDescription>& entities() const noexcept { return entities_; }
    // The entity with the name, or null.
    [[nodiscard]] const EntityDescription* entityNamed(const Text& name) const noexcept;

  private:
    std::vector<EntityDescription> entities_;
};

}  // namespace bv
