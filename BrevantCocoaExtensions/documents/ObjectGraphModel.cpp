// ManagedObjectModel: checking a model and reading one from a model file.
#include "BrevantCocoaExtensions/documents/ObjectGraphModel.hpp"

#include <array>
#include <set>
#include <utility>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv {

namespace {

constexpr std::array<std::pair<AttributeType, const char*>, 6> kTypeNames{{
    {AttributeType::Text, "text"},
    {AttributeType::Integer, "integer"},
    {AttributeType::Double, "double"},
    {AttributeType::Boolean, "boolean"},
    {AttributeType::Date, "date"},
    {AttributeType::Binary, "binary"},
}};

std::string quoted(const Text& text) {
    return "\"" + text.toUtf8() + "\"";
}

// The first rule the entities break, or the empty text.
std::string problemOf(const std::vector<EntityDescription>& entities) {
    std::set<Text> entityNames;
    for (const EntityDescription& entity : entities) {
        if (entity.name.empty()) return "an entity has no name";
        if (!entityNames.insert(entity.name).second)
            return "the entity " + quoted(entity.name) + " is defined twice";
    }
    for (const EntityDescription& entity : entities) {
        std::set<Text> propertyNames;
        const auto checkName = [&](const Text& name) -> std::string {
            if (name.empty()) return "a property of the entity " + quoted(entity.name) + " has no name";
            if (!propertyNames.insert(name).second)
                return "the property " + quoted(name) + " of the entity " + quoted(entity.name) +
                       " is defined twice";
            return {};
        };
        for (const AttributeDescription& attribute : entity.attributes)
            if (std::string problem = checkName(attribute.name); !problem.empty()) return problem;
        for (const RelationshipDescription& relationship : entity.relationships) {
            if (std::string problem = checkName(relationship.name); !problem.empty()) return problem;
            if (entityNames.count(relationship.destinationEntityName) == 0)
                return "the relationship " + quoted(relationship.name) + " of the entity " +
                       quoted(entity.name) + " leads to the unknown entity " +
                       quoted(relationship.destinationEntityName);
        }
    }
    return {};
}

Text attributeText(const XMLElement& element, const char* name) {
    const std::shared_ptr<XMLNode> attribute = element.attributeForName(Text(name));
    return attribute ? attribute->stringValue() : Text();
}

// Reads one <entity> element; throws InvalidArgumentException with the fault.
EntityDescription readEntity(const XMLElement& element) {
    EntityDescription entity{attributeText(element, "name"), {}, {}};
    for (const std::shared_ptr<XMLNode>& node : element.children()) {
        const std::shared_ptr<const XMLElement> child = std::as_const(*node).asElement();
        if (!child) continue;
        if (child->name() == Text("attribute")) {
            const Text typeName = attributeText(*child, "type");
            const std::optional<AttributeType> type = attributeTypeNamed(typeName);
            if (!type)
                throw InvalidArgumentException("the attribute " + quoted(attributeText(*child, "name")) +
                                               " of the entity " + quoted(entity.name) +
                                               " has the unknown type " + quoted(typeName));
            entity.attributes.push_back({attributeText(*child, "name"), *type});
        } else if (child->name() == Text("relationship")) {
            const Text toMany = attributeText(*child, "toMany");
            if (!toMany.empty() && toMany != Text("true") && toMany != Text("false"))
                throw InvalidArgumentException("toMany is " + quoted(toMany) + ", not \"true\" or \"false\"");
            entity.relationships.push_back({attributeText(*child, "name"),
                                            attributeText(*child, "destination"), toMany == Text("true")});
        } else {
            throw InvalidArgumentException("unknown element " + quoted(child->name()) + " in the entity " +
                                           quoted(entity.name));
        }
    }
    return entity;
}

std::nullopt_t refuse(Error* error, const std::string& reason) {
    Error::report(error, Error{ObjectGraphErrorDomain, ObjectGraphModelInvalid,
                               Text("The object model could not be read."), Text(reason)});
    return std::nullopt;
}

}  // namespace

const char* attributeTypeName(AttributeType type) noexcept {
    for (const auto& [candidate, name] : kTypeNames)
        if (candidate == type) return name;
    return "";
}

std::optional<AttributeType> attributeTypeNamed(const Text& name) noexcept {
    for (const auto& [type, candidate] : kTypeNames)
        if (name == Text(candidate)) return type;
    return std::nullopt;
}

const AttributeDescription* EntityDescription::attributeNamed(const Text& name) const noexcept {
    for (const AttributeDescription& attribute : attributes)
        if (attribute.name == name) return &attribute;
    return nullptr;
}

const RelationshipDescription* EntityDescription::relationshipNamed(const Text& name) const noexcept {
    for (const RelationshipDescription& relationship : relationships)
        if (relationship.name == name) return &relationship;
    return nullptr;
}

ManagedObjectModel::ManagedObjectModel(std::vector<EntityDescription> entities)
    : entities_(std::move(entities)) {
    if (std::string problem = problemOf(entities_); !problem.empty()) throw InvalidArgumentException(problem);
}

const EntityDescription* ManagedObjectModel::entityNamed(const Text& name) const noexcept {
    for (const EntityDescription& entity : entities_)
        if (entity.name == name) return &entity;
    return nullptr;
}

std::optional<std::vector<EntityDescription>> ManagedObjectModel::entitiesAtPath(const std::string& path,
                                                                                 Error* error) {
    Error parseError;
    const std::shared_ptr<XMLDocument> document =
        XMLDocument::parseFile(path, XMLNodeOptionsNone, &parseError);
    if (!document)
        return refuse(error, path + ": " + parseError.localizedDescription.toUtf8() + " " +
                                 parseError.failureReason.toUtf8());
    const std::shared_ptr<XMLElement> root = document->rootElement();
    if (!root || root->name() != Text("objectModel"))
        return refuse(error, path + ": the root element is not <objectModel>");
    try {
        std::vector<EntityDescription> entities;
        for (const std::shared_ptr<XMLNode>& node : root->children()) {
            const std::shared_ptr<XMLElement> element = node->asElement();
            if (!element) continue;
            if (element->name() != Text("entity"))
                throw InvalidArgumentException("unknown element " + quoted(element->name()) +
                                               " in the model");
            entities.push_back(readEntity(*element));
        }
        return entities;
    } catch (const InvalidArgumentException& exception) {
        return refuse(error, path + ": " + exception.what());
    }
}

std::shared_ptr<const ManagedObjectModel> ManagedObjectModel::modelAtPath(const std::string& path,
                                                                          Error* error) {
    std::optional<std::vector<EntityDescription>> entities = entitiesAtPath(path, error);
    if (!entities) return nullptr;
    if (std::string problem = problemOf(*entities); !problem.empty()) {
        refuse(error, path + ": " + problem);
        return nullptr;
    }
    return std::make_shared<const ManagedObjectModel>(std::move(*entities));
}

}  // namespace bv
