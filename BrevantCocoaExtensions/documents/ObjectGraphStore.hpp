// ObjectGraphStore: the XML store document of an object graph, read into plain records and written from
// them (the format is in docs/OBJECT-GRAPH.md).
//
//   <objectGraph>
//       <object entity="Student" id="1">
//           <attribute name="name">Ann</attribute>
//           <attribute name="age">12</attribute>
//           <relationship name="school" ids="2"/>
//       </object>
//       <object entity="School" id="2"/>
//   </objectGraph>
//
// Values are written so that reading gives them back exactly: integers in decimal, doubles and dates
// (seconds since 1970) in the shortest decimal form that reads back to the same double ("inf", "-inf" and
// "nan" included), booleans as "true" or "false", binary data as Base64, and texts as they are, or, when a
// text holds a character XML cannot carry (most control characters, an unpaired surrogate), as Base64 of
// its UTF-16 code units (little-endian) with encoding="utf16-base64". An attribute without a value has no
// element. Reading is strict: a document that does not fit the model is refused as a whole.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "BrevantCocoaExtensions/documents/ObjectGraphModel.hpp"
#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv {

// One object of a store: its entity, its attribute values (Text, Number, Date or ByteData as the model's
// type says; unset attributes are absent) and, per relationship, the positions of the related objects in
// the list of records.
struct StoredObject {
    Text entityName;
    std::map<Text, Value> attributes;
    std::map<Text, std::vector<std::size_t>> relationships;

    friend bool operator==(const StoredObject&, const StoredObject&) = default;
};
using StoredObjects = std::vector<StoredObject>;

namespace ObjectGraphStore {

// The records of a store document; nullopt with *error (ObjectGraphStoreDamaged, the reason saying what
// is wrong) for another root element, an unknown entity, attribute or relationship, a value that does not
// read as its type, a duplicate id or a reference to no object or to one of the wrong entity.
[[nodiscard]] std::optional<StoredObjects> readDocument(const XMLDocument& document,
                                                        const ManagedObjectModel& model,
                                                        Error* error = nullptr);
// The same for the bytes of a document; a document that is not well-formed XML is damaged too.
[[nodiscard]] std::optional<StoredObjects> readData(std::string_view bytes, const ManagedObjectModel& model,
                                                    Error* error = nullptr);
// The store document of the records (objects numbered from 1 in their order). The records must fit the
// model (as readDocument's results and a context's objects do).
[[nodiscard]] std::shared_ptr<XMLDocument> document(const StoredObjects& objects,
                                                    const ManagedObjectModel& model);
// The parse options a store document is read with: white space inside values is kept.
inline constexpr unsigned kParseOptions = XMLNodePreserveWhitespace;

}  // namespace ObjectGraphStore

}  // namespace bv
