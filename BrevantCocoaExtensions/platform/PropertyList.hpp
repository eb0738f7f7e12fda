// bv::PropertyList: the XML property-list format ("plist" version 1.0), written by the library itself and
// read through libxml2. User defaults, preferences files and BVNSDictionary's XML form use it.
//
// Kinds: dictionaries become <dict> with their keys in sorted (code unit) order, lists <array>, texts
// <string>, booleans <true/> and <false/>, integers <integer>, floating numbers <real> (shortest form that
// reads back the same; "nan", "+infinity", "-infinity"), dates <date> in UTC as YYYY-MM-DDTHH:MM:SSZ
// (whole seconds), byte data <data> in standard Base64. Nesting is indented with tabs. Null values,
// structures and objects have no property-list form.
//
// Reading answers dictionaries, lists, texts, booleans, 64-bit integers (unsigned 64-bit above the signed
// range), doubles, dates and byte data. The parser never touches the network, loads no external entity
// (the data has no folder to load one from) and keeps libxml2's limits on entity expansion and nesting.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::PropertyList {

// The complete UTF-8 document (XML declaration, plist document type, <plist version="1.0">). Throws
// InvalidArgumentException for a value with no property-list form (null, structure, object, a date
// outside the years 1 to 9999) and for text holding characters XML 1.0 cannot carry (control characters
// other than tab, line feed and carriage return; U+FFFE, U+FFFF).
[[nodiscard]] ByteData xmlData(const Value& root);
[[nodiscard]] ByteData xmlData(const ValueDictionary& root);

// Whether xmlData would accept the value.
[[nodiscard]] bool isValidPropertyList(const Value& root);

// Reads a document written in the XML property-list format (the <plist> wrapper may be left out). Answers
// nullopt and fills *error (domain "NSCocoaErrorDomain", code 3840, the reason in failureReason) when the
// bytes are not well-formed XML or not a property list.
[[nodiscard]] std::optional<Value> fromXmlData(std::string_view bytes, Error* error = nullptr);
[[nodiscard]] std::optional<Value> fromXmlData(const ByteData& data, Error* error = nullptr);

// What reading a property-list file gave: the dictionary, or nothing with the file missing (unreadable) or
// damaged (not a property-list dictionary; `damage` says why, ": REASON", empty when there is no reason).
struct DictionaryFile {
    std::optional<ValueDictionary> dictionary;
    bool missing = false;
    std::string damage;
};
// Reads the property-list dictionary stored in the file at `path`.
[[nodiscard]] DictionaryFile readDictionaryFile(const std::string& path);

}  // namespace bv::PropertyList
