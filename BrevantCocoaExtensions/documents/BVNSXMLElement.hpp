// BVNSXMLElement: finding, reading, building and editing elements of an XML tree (the node model of
// platform/XMLNode.hpp) in one call each.
//
// Free functions, receiver first: `const XMLElement&` for the operations that only read, `XMLElement&`
// for those that change the receiver. Results are elements of the receiver's own tree (never copies,
// unless a copy is named) or new lists owned by the caller.
//
// How a name matches (the first-child and child-elements searches):
//   - A name that begins with ':' matches direct children by local name in no namespace: ":item" finds
//     <item> and an <x:item> whose prefix is bound to no URI.
//   - Any other name matches direct children whose qualified name equals it. firstChildElementNamed...
//     alone tries again by local name in no namespace when that finds nothing.
//
// Search orders and quirks that callers rely on, kept on purpose:
//   - firstChildElementNamedRecursiveSearch looks at all direct children before any grandchild, then
//     searches subtree by subtree, and accepts a result from below only if its qualified name equals the
//     name asked for (so a ':'-prefixed name is never found below the first level).
//   - childElementsNamedRecursiveSearch lists the direct matches, then each child's own full result.
//   - childElementsNamedWithStringValueRecursiveSearch compares values ignoring case and descends only
//     through elements of the searched name.
//   - firstChildElementHavingAttributeRecursiveSearch compares attribute names ignoring case;
//     childElementsHavingAttributeRecursiveSearch compares them exactly.
//   - replaceFirstChildElementNamed... replaces the receiver's child at the found element's index in its
//     own parent, even when the element was found deeper.
//   - An empty or null name in the three name searches (and every operation built on them) is an
//     assertion failure: InternalInconsistencyException from file "BVNSXMLElement", line 567, 790 or 838.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv::BVNSXMLElement {

// --- Searching -------------------------------------------------------------------------------------------

// The first matching element (direct children first), or null.
[[nodiscard]] std::shared_ptr<XMLElement> firstChildElementNamedRecursiveSearch(
    const XMLElement& self, const std::optional<Text>& name, bool recursiveSearch);
// The first element of childElementsNamedRecursiveSearch whose string value equals the value exactly.
[[nodiscard]] std::shared_ptr<XMLElement> firstChildElementNamedWithStringValueRecursiveSearch(
    const XMLElement& self, const std::optional<Text>& name, const Text& value, bool recursiveSearch);
// The matching elements: direct matches, then each child element's own result in order.
[[nodiscard]] XMLElementArray childElementsNamedRecursiveSearch(const XMLElement& self,
                                                                const std::optional<Text>& name,
                                                                bool recursiveSearch);
// The matching elements whose string value equals the value ignoring case; the recursion goes down only
// through elements of the searched name.
[[nodiscard]] XMLElementArray childElementsNamedWithStringValueRecursiveSearch(
    const XMLElement& self, const std::optional<Text>& name, const Text& value, bool recursiveSearch);
// The first element (depth-first, pre-order) having the attribute, its name compared ignoring case.
[[nodiscard]] std::shared_ptr<XMLElement> firstChildElementHavingAttributeRecursiveSearch(
    const XMLElement& self, const Text& attributeName, bool recursiveSearch);
// The first element (depth-first, pre-order) whose attribute has the value: ignoring case when asked,
// else exactly. A missing attribute never matches.
[[nodiscard]] std::shared_ptr<XMLElement>
firstChildElementHavingAttributeWithStringValueCaseInsensitiveSearchRecursiveSearch(
    const XMLElement& self, const Text& attributeName, const Text& value, bool caseInsensitiveSearch,
    bool recursiveSearch);
// The elements (depth-first, pre-order) having the attribute, its name compared exactly.
[[nodiscard]] XMLElementArray childElementsHavingAttributeRecursiveSearch(const XMLElement& self,
                                                                          const Text& attributeName,
                                                                          bool recursiveSearch);
// The nearest ancestor, starting with the parent, whose name equals the name exactly; null if none.
[[nodiscard]] std::shared_ptr<XMLElement> firstParentElementNamed(const XMLElement& self, const Text& name);
// Every node below the receiver: all children, then the first child's descendants, then the second's...
[[nodiscard]] XMLNodeArray descendants(const XMLElement& self);
// Element names in pre-order (not made unique). With dataOnly, the receiver's own children whose string
// value is empty after trimming white space and line ends are skipped; deeper levels are never filtered.
// Other node kinds have no tag name and are not listed.
[[nodiscard]] std::vector<Text> namesOfTagsContainingDataRecursiveSearch(const XMLElement& self,
                                                                         bool dataOnly, bool recursiveSearch);
// namesOfTagsContainingDataRecursiveSearch without the data-only filter.
[[nodiscard]] std::vector<Text> namesOfTagsRecursiveSearch(const XMLElement& self, bool recursiveSearch);

// --- Values and attributes ------------------------------------------------------------------------------

// The string value of firstChildElementNamedRecursiveSearch, or null when there is no such element.
[[nodiscard]] std::optional<Text> stringValueOfFirstChildElementNamedRecursiveSearch(
    const XMLElement& self, const std::optional<Text>& name, bool recursiveSearch);
// The string values of childElementsNamedRecursiveSearch, in the same order.
[[nodiscard]] std::vector<Text> stringValuesOfChildrenNamedRecursiveSearch(const XMLElement& self,
                                                                           const std::optional<Text>& name,
                                                                           bool recursiveSearch);
// Sets the string value of the first match; true when there was one.
bool setStringValueOfFirstChildElementNamedRecursiveSearch(XMLElement& self, const Text& value,
                                                           const std::optional<Text>& name,
                                                           bool recursiveSearch);
// Sets the string value of each element (null entries are skipped).
void setStringValueForElements(const Text& value, const XMLElementArray& elements);
// Appends one new CDATA text node holding the text; the existing children stay.
void setCDATAStringValue(XMLElement& self, const Text& text);
// Replaces the whole attribute set by this one attribute. A null name or value changes nothing: it stops
// in an attached debugger, then logs "setAttribute:withStringValue: attribute is nil" and/or
// "setAttribute:withStringValue: stringValue is nil", in that order.
void setAttributeWithStringValue(XMLElement& self, const std::optional<Text>& attributeName,
                                 const std::optional<Text>& stringValue);
// The attribute's value, or null when the receiver has no attribute of exactly that name.
[[nodiscard]] std::optional<Text> stringValueOfAttributeForName(const XMLElement& self,
                                                                const Text& attributeName);
// The attribute's value on firstChildElementNamedRecursiveSearch; null when either is missing.
[[nodiscard]] std::optional<Text> stringValueOfAttributeForNameOfFirstChildNamedRecursiveSearch(
    const XMLElement& self, const Text& attributeName, const std::optional<Text>& elementName,
    bool recursiveSearch);
// The attribute's values over childElementsNamedRecursiveSearch; elements without it are skipped.
[[nodiscard]] std::vector<Text> stringValuesOfAttributesNamedOfChildrenNamedRecursiveSearch(
    const XMLElement& self, const Text& attributeName, const std::optional<Text>& elementName,
    bool recursiveSearch);
// Attribute name to attribute value (a Text), one entry per attribute.
[[nodiscard]] ValueDictionary attributesDictionary(const XMLElement& self);
// The first match's attributesDictionary; empty when there is no match.
[[nodiscard]] ValueDictionary attributesOfFirstChildElementNamedRecursiveSearch(
    const XMLElement& self, const std::optional<Text>& name, bool recursiveSearch);
// The attributesDictionary of each element of childElementsNamedRecursiveSearch, in the same order.
[[nodiscard]] std::vector<ValueDictionary> attributesOfChildrenNamedRecursiveSearch(
    const XMLElement& self, const std::optional<Text>& name, bool recursiveSearch);
// The child nodes of the first match, or an empty list.
[[nodiscard]] XMLNodeArray childrenOfFirstChildElementNamedRecursiveSearch(const XMLElement& self,
                                                                           const std::optional<Text>& name,
                                                                           bool recursiveSearch);

// --- Building: each new element is appended as the last child (unless an index is given) and returned ---

std::shared_ptr<XMLElement> createAndAddChildNamed(XMLElement& self, const Text& name);
// A new element holding the value as its text.
std::shared_ptr<XMLElement> createAndAddChildNamedWithStringValue(XMLElement& self, const Text& name,
                                                                  const Text& value);
// A new element holding the value as its text, or as one CDATA child when asCDATA is set.
std::shared_ptr<XMLElement> createAndAddChildNamedWithStringValueAsCDATA(XMLElement& self, const Text& name,
                                                                         const Text& value, bool asCDATA);
// A new element whose attributes are set from the dictionary (name to string value).
std::shared_ptr<XMLElement> createAndAddChildNamedWithAttributes(XMLElement& self, const Text& name,
                                                                 const ValueDictionary& attributes);
std::shared_ptr<XMLElement> createAndAddChildNamedWithStringValueAndAttributes(
    XMLElement& self, const Text& name, const Text& value, const ValueDictionary& attributes);
// Text or CDATA as createAndAddChildNamedWithStringValueAsCDATA, then the attributes.
std::shared_ptr<XMLElement> createAndAddChildNamedWithStringValueAsCDATAAndAttributes(
    XMLElement& self, const Text& name, const Text& value, bool asCDATA, const ValueDictionary& attributes);
// One new element per value, in order; null when the name or the list is null.
std::optional<XMLElementArray> createAndAddElementsNamedForStringValues(
    XMLElement& self, const std::optional<Text>& name, const std::optional<std::vector<Text>>& values);
std::optional<XMLElementArray> createAndAddElementsNamedForStringValuesAsCDATA(
    XMLElement& self, const std::optional<Text>& name, const std::optional<std::vector<Text>>& values,
    bool asCDATA);
// A new empty element inserted at the index; throws RangeException past childCount.
std::shared_ptr<XMLElement> createAndInsertChildNamedAtIndex(XMLElement& self, const Text& name,
                                                             std::size_t index);
// Parses the XML text as one element and appends a new element of the name holding it as its only
// child; returns the new named element (the wrapper). On a parse failure: null, *error set, nothing added.
std::shared_ptr<XMLElement> createAndAddChildNamedWithRawXMLError(XMLElement& self, const Text& name,
                                                                  const Text& xml, Error* error);
// Appends each node in order (each must have no parent).
void addChildren(XMLElement& self, const XMLNodeArray& children);
// createAndAddChildNamed for each Text of the list; other values are skipped.
void addObjectsAsElementsFromArray(XMLElement& self, const ValueArray& array);

// --- Editing ----------------------------------------------------------------------------------------------

// Removes the child at the source index and inserts it at the target index clamped to the child count
// after the removal (the target is not adjusted for the removal). Nothing when both are equal; throws
// RangeException for a source past the end.
void moveChildElementAtIndexToIndex(XMLElement& self, std::size_t sourceIndex, std::size_t targetIndex);
// Replaces the receiver's child at the old element's index (its position in its own parent) by a copy of
// the new element. Nothing when either is null.
void replaceElementWithElement(XMLElement& self, const std::shared_ptr<XMLElement>& oldElement,
                               const std::shared_ptr<XMLElement>& newElement);
// replaceFirstChildElementNamedWithElementRecursiveSearchAddIfDoesNotExist without adding.
void replaceFirstChildElementNamedWithElementRecursiveSearch(XMLElement& self,
                                                             const std::optional<Text>& name,
                                                             const std::shared_ptr<XMLElement>& element,
                                                             bool recursiveSearch);
// Replaces the receiver's child at the first match's index in its own parent by a copy of the element;
// with no match, appends a copy when addIfDoesNotExist is set. Nothing for a null element.
void replaceFirstChildElementNamedWithElementRecursiveSearchAddIfDoesNotExist(
    XMLElement& self, const std::optional<Text>& name, const std::shared_ptr<XMLElement>& element,
    bool recursiveSearch, bool addIfDoesNotExist);
// Removes every child node of every kind, from the last to the first.
void removeAllChildElements(XMLElement& self);
// Removes the node from its own parent, which need not be the receiver; null does nothing.
void removeElement(XMLElement& self, const std::shared_ptr<XMLNode>& element);
void removeFirstChildElementNamedRecursiveSearch(XMLElement& self, const std::optional<Text>& name,
                                                 bool recursiveSearch);
void removeFirstChildNamedWithStringValueRecursiveSearch(XMLElement& self, const std::optional<Text>& name,
                                                         const Text& value, bool recursiveSearch);
// Removes every element of childElementsNamedRecursiveSearch from its own parent, the last first.
void removeChildElementsNamedRecursively(XMLElement& self, const std::optional<Text>& name, bool recursively);

}  // namespace bv::BVNSXMLElement
