// ObjectGraphStore: store documents to records and back.
#include "BrevantCocoaExtensions/documents/ObjectGraphStore.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <set>
#include <stdexcept>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "BrevantCocoaExtensions/platform/Base64.hpp"

namespace bv::ObjectGraphStore {

namespace {

// A fault of the document being read; readDocument turns it into the error.
struct StoreFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string quoted(const Text& text) {
    return "\"" + text.toUtf8() + "\"";
}

Text attributeText(const XMLElement& element, const char* name) {
    const std::shared_ptr<XMLNode> attribute = element.attributeForName(Text(name));
    return attribute ? attribute->stringValue() : Text();
}

// --- Values ------------------------------------------------------------------------------------------

// Whether XML 1.0 can carry every code unit of the text as it is.
bool isXMLWritable(const Text& text) {
    const std::u16string& units = text.units();
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char16_t c = units[i];
        if (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') return false;
        if (c == 0xFFFE || c == 0xFFFF || (c >= 0xDC00 && c <= 0xDFFF)) return false;
        if (c >= 0xD800 && c <= 0xDBFF) {
            if (i + 1 == units.size() || units[i + 1] < 0xDC00 || units[i + 1] > 0xDFFF) return false;
            ++i;
        }
    }
    return true;
}

std::string utf16Base64(const Text& text) {
    ByteData bytes;
    bytes.reserve(text.length() * 2);
    for (const char16_t unit : text.units()) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return base64::encode(bytes);
}

Text textOfUtf16Base64(const Text& encoded) {
    const std::optional<ByteData> bytes = base64::decode(encoded.view(), false);
    if (!bytes || bytes->size() % 2 != 0)
        throw StoreFault("a text marked utf16-base64 is not Base64 of UTF-16");
    std::u16string units(bytes->size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<char16_t>((*bytes)[2 * i] | ((*bytes)[2 * i + 1] << 8));
    return Text(std::move(units));
}

std::string shortestDouble(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

template <class Number>
std::optional<Number> parseWhole(const std::string& text) {
    Number value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
    return value;
}

// The attribute's value written as element text; *utf16 tells that the text needs the Base64 form.
std::string formatValue(const Value& value, AttributeType type, bool* utf16) {
    *utf16 = false;
    switch (type) {
        case AttributeType::Text:
            if (isXMLWritable(*value.text())) return value.text()->toUtf8();
            *utf16 = true;
            return utf16Base64(*value.text());
        case AttributeType::Integer:
            return std::to_string(value.number()->int64Value());
        case AttributeType::Double:
            return shortestDouble(value.number()->doubleValue());
        case AttributeType::Boolean:
            return value.number()->boolValue() ? "true" : "false";
        case AttributeType::Date:
            return shortestDouble(value.get<Date>()->timeIntervalSince1970());
        case AttributeType::Binary:
            return base64::encode(*value.get<ByteData>());
    }
    return {};
}

Value parseValue(const XMLElement& element, const AttributeDescription& attribute) {
    const Text text = element.stringValue();
    const Text encoding = attributeText(element, "encoding");
    if (!encoding.empty() && (attribute.type != AttributeType::Text || encoding != Text("utf16-base64")))
        throw StoreFault("the attribute " + quoted(attribute.name) + " has the unknown encoding " +
                         quoted(encoding));
    const std::string utf8 = text.toUtf8();
    const auto fault = [&]() {
        return StoreFault("the value " + quoted(text) + " of the attribute " + quoted(attribute.name) +
                          " is not " + attributeTypeName(attribute.type));
    };
    switch (attribute.type) {
        case AttributeType::Text:
            return encoding.empty() ? Value(text) : Value(textOfUtf16Base64(text));
        case AttributeType::Integer:
            if (auto number = parseWhole<std::int64_t>(utf8)) return Value(Number::int64(*number));
            throw fault();
        case AttributeType::Double:
            if (auto number = parseWhole<double>(utf8)) return Value(Number::float64(*number));
            throw fault();
        case AttributeType::Boolean:
            if (utf8 == "true" || utf8 == "false") return Value(Number::boolean(utf8 == "true"));
            throw fault();
        case AttributeType::Date:
            if (auto seconds = parseWhole<double>(utf8))
                return Value(Date::fromTimeIntervalSince1970(*seconds));
            throw fault();
        case AttributeType::Binary:
            if (auto bytes = base64::decode(text.view(), false)) return Value(std::move(*bytes));
            throw fault();
    }
    throw fault();
}

// --- Reading -----------------------------------------------------------------------------------------

// The element children of an element, each checked to have one of the names.
std::vector<std::shared_ptr<const XMLElement>> elementChildren(const XMLElement& parent,
                                                               std::initializer_list<const char*> names) {
    std::vector<std::shared_ptr<const XMLElement>> elements;
    for (const std::shared_ptr<XMLNode>& node : parent.children()) {
        std::shared_ptr<const XMLElement> element = std::as_const(*node).asElement();
        if (!element) continue;
        if (std::none_of(names.begin(), names.end(),
                         [&](const char* name) { return element->name() == Text(name); }))
            throw StoreFault("unexpected element <" + element->name().toUtf8() + "> in <" +
                             parent.name().toUtf8() + ">");
        elements.push_back(std::move(element));
    }
    return elements;
}

std::vector<std::size_t> readReferences(const XMLElement& element,
                                        const RelationshipDescription& relationship,
                                        const std::unordered_map<std::string, std::size_t>& positions,
                                        const StoredObjects& objects) {
    std::vector<std::size_t> related;
    const std::string ids = attributeText(element, "ids").toUtf8();
    std::size_t at = ids.find_first_not_of(' ');
    while (at != std::string::npos) {
        const std::size_t end = ids.find(' ', at);
        const std::string id = ids.substr(at, end == std::string::npos ? std::string::npos : end - at);
        const auto found = positions.find(id);
        if (found == positions.end())
            throw StoreFault("the relationship " + quoted(relationship.name) + " refers to the unknown id " +
                             id);
        if (objects[found->second].entityName != relationship.destinationEntityName)
            throw StoreFault("the relationship " + quoted(relationship.name) +
                             " refers to an object of the entity " +
                             quoted(objects[found->second].entityName));
        for (const std::size_t earlier : related)
            if (earlier == found->second)
                throw StoreFault("the relationship " + quoted(relationship.name) + " refers to the id " + id +
                                 " twice");
        related.push_back(found->second);
        at = ids.find_first_not_of(' ', end);
    }
    if (!relationship.toMany && related.size() > 1)
        throw StoreFault("the to-one relationship " + quoted(relationship.name) +
                         " refers to several objects");
    return related;
}

void readProperties(const XMLElement& element, const EntityDescription& entity,
                    const std::unordered_map<std::string, std::size_t>& positions, StoredObjects& objects,
                    std::size_t position) {
    std::set<Text> seen;
    for (const std::shared_ptr<const XMLElement>& child :
         elementChildren(element, {"attribute", "relationship"})) {
        const Text name = attributeText(*child, "name");
        if (!seen.insert(name).second) throw StoreFault("the property " + quoted(name) + " occurs twice");
        const bool isAttribute = child->name() == Text("attribute");
        if (const AttributeDescription* attribute = isAttribute ? entity.attributeNamed(name) : nullptr) {
            objects[position].attributes.emplace(name, parseValue(*child, *attribute));
        } else if (const RelationshipDescription* relationship =
                       isAttribute ? nullptr : entity.relationshipNamed(name)) {
            std::vector<std::size_t> related = readReferences(*child, *relationship, positions, objects);
            if (!related.empty()) objects[position].relationships.emplace(name, std::move(related));
        } else {
            throw StoreFault("the entity " + quoted(entity.name) + " has no " + child->name().toUtf8() + " " +
                             quoted(name));
        }
    }
}

}  // namespace

std::optional<StoredObjects> readDocument(const XMLDocument& document, const ManagedObjectModel& model,
                                          Error* error) {
    try {
        const std::shared_ptr<XMLElement> root = document.rootElement();
        if (!root || root->name() != Text("objectGraph"))
            throw StoreFault("the root element is not <objectGraph>");
        const auto elements = elementChildren(*root, {"object"});
        StoredObjects objects(elements.size());
        std::unordered_map<std::string, std::size_t> positions;
        for (std::size_t i = 0; i < elements.size(); ++i) {
            objects[i].entityName = attributeText(*elements[i], "entity");
            if (!model.entityNamed(objects[i].entityName))
                throw StoreFault("the entity " + quoted(objects[i].entityName) + " is not in the model");
            const std::string id = attributeText(*elements[i], "id").toUtf8();
            if (id.empty() || id.find(' ') != std::string::npos || !positions.emplace(id, i).second)
                throw StoreFault("the object id \"" + id + "\" is empty, holds a space or occurs twice");
        }
        for (std::size_t i = 0; i < elements.size(); ++i)
            readProperties(*elements[i], *model.entityNamed(objects[i].entityName), positions, objects, i);
        return objects;
    } catch (const StoreFault& fault) {
        Error::report(error, Error{ObjectGraphErrorDomain, ObjectGraphStoreDamaged,
                                   Text("The store does not fit the object model."), Text(fault.what())});
        return std::nullopt;
    }
}

std::optional<StoredObjects> readData(std::string_view bytes, const ManagedObjectModel& model, Error* error) {
    Error parseError;
    const std::shared_ptr<XMLDocument> parsed = XMLDocument::parseData(bytes, kParseOptions, &parseError);
    if (!parsed) {
        Error::report(error,
                      Error{ObjectGraphErrorDomain, ObjectGraphStoreDamaged,
                            Text("The store is not a well-formed XML document."), parseError.failureReason});
        return std::nullopt;
    }
    return readDocument(*parsed, model, error);
}

std::shared_ptr<XMLDocument> document(const StoredObjects& objects, const ManagedObjectModel& model) {
    const std::shared_ptr<XMLElement> root = XMLElement::make(Text("objectGraph"));
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const StoredObject& object = objects[i];
        const std::shared_ptr<XMLElement> element = XMLElement::make(Text("object"));
        element->addAttribute(XMLNode::makeAttribute(Text("entity"), object.entityName));
        element->addAttribute(XMLNode::makeAttribute(Text("id"), Text(std::to_string(i + 1))));
        const EntityDescription& entity = *model.entityNamed(object.entityName);
        for (const AttributeDescription& attribute : entity.attributes) {
            const auto value = object.attributes.find(attribute.name);
            if (value == object.attributes.end() || value->second.isNull()) continue;
            bool utf16 = false;
            const std::string text = formatValue(value->second, attribute.type, &utf16);
            const std::shared_ptr<XMLElement> child =
                XMLElement::makeWithStringValue(Text("attribute"), Text(text));
            child->addAttribute(XMLNode::makeAttribute(Text("name"), attribute.name));
            if (utf16) child->addAttribute(XMLNode::makeAttribute(Text("encoding"), Text("utf16-base64")));
            element->addChild(child);
        }
        for (const RelationshipDescription& relationship : entity.relationships) {
            const auto related = object.relationships.find(relationship.name);
            if (related == object.relationships.end() || related->second.empty()) continue;
            std::string ids;
            for (const std::size_t position : related->second)
                ids += (ids.empty() ? "" : " ") + std::to_string(position + 1);
            const std::shared_ptr<XMLElement> child = XMLElement::make(Text("relationship"));
            child->addAttribute(XMLNode::makeAttribute(Text("name"), relationship.name));
            child->addAttribute(XMLNode::makeAttribute(Text("ids"), Text(ids)));
            element->addChild(child);
        }
        root->addChild(element);
    }
    return XMLDocument::make(root);
}

}  // namespace bv::ObjectGraphStore
