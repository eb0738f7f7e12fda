// Harness: reading an object-graph store document from any bytes against a fixed model.
#pragma once

#include "BrevantCocoaExtensions/documents/ObjectGraphStore.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// Every attribute type and both kinds of relationship.
inline const ManagedObjectModel& fuzzObjectModel() {
    static const ManagedObjectModel model({
        EntityDescription{
            Text("Student"),
            {{Text("name"), AttributeType::Text},
             {Text("age"), AttributeType::Integer},
             {Text("score"), AttributeType::Double},
             {Text("present"), AttributeType::Boolean},
             {Text("born"), AttributeType::Date},
             {Text("photo"), AttributeType::Binary}},
            {{Text("school"), Text("School"), false}, {Text("friends"), Text("Student"), true}}},
        EntityDescription{Text("School"), {{Text("name"), AttributeType::Text}}, {}},
    });
    return model;
}

// Any bytes read as a store or are refused, never a crash; a store that reads is written so that it reads
// back, and writing what was read back gives the very same document.
inline void objectGraphStore(const std::uint8_t* data, std::size_t size) {
    const ManagedObjectModel& model = fuzzObjectModel();
    const std::optional<StoredObjects> objects = ObjectGraphStore::readData(asChars(data, size), model);
    if (!objects) return;
    const std::string first = ObjectGraphStore::document(*objects, model)->xmlString(XMLNodePrettyPrint);
    const std::optional<StoredObjects> again = ObjectGraphStore::readData(first, model);
    check(again.has_value(), "a written store reads back");
    check(again->size() == objects->size(), "a written store keeps every object");
    check(ObjectGraphStore::document(*again, model)->xmlString(XMLNodePrettyPrint) == first,
          "writing a store read back gives the same document");
}

}  // namespace bv::fuzz
