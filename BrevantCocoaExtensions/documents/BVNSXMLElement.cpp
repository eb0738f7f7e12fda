// BVNSXMLElement: element searches, values, building and editing on the XML node model.
#include "BrevantCocoaExtensions/documents/BVNSXMLElement.hpp"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>
#include <string>

#include "BrevantCocoaExtensions/documents/BVNSXMLNode.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/text/BVNSArray.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv::BVNSXMLElement {

namespace {

constexpr const char* kFileStem = "BVNSXMLElement";
constexpr int kFirstChildLine = 567;
constexpr int kChildElementsLine = 790;
constexpr int kChildElementsWithValueLine = 838;

// Fails the argument check of an operation when the name is null or empty; answers the name otherwise.
const Text& checkedName(const XMLElement& self, const std::optional<Text>& name, const char* operation,
                        int line) {
    if (!name || name->empty()) {
        assertionFailure(operation, "<" + self.name().toUtf8() + ">", kFileStem, line,
                         std::string(operation) + " elementName is empty");
    }
    return *name;
}

std::u16string_view localNameView(const Text& qualified) {
    std::u16string_view view = qualified.view();
    std::size_t colon = view.find(u':');
    return colon == std::u16string_view::npos ? view : view.substr(colon + 1);
}

bool isInNoNamespaceWithLocalName(const XMLNode& node, std::u16string_view localName) {
    return node.kind() == XMLNodeKind::Element && node.URI().empty() &&
           localNameView(node.name()) == localName;
}

// How a requested name picks direct children: by local name for ":name", else by qualified name.
class NameMatch {
  public:
    explicit NameMatch(const Text& name)
        : name_(name),
          byLocalName_(name.view().front() == u':'),
          local_(name.view().substr(byLocalName_ ? 1 : 0)) {}

    [[nodiscard]] bool matches(const XMLNode& child) const {
        if (byLocalName_) return isInNoNamespaceWithLocalName(child, local_);
        // The element's own name, read without a virtual call: searches run this for every element.
        return child.kind() == XMLNodeKind::Element &&
               static_cast<const XMLElement&>(child).XMLElement::name() == name_;
    }
    // The second try of the first-child search: the whole name as a local name in no namespace.
    [[nodiscard]] bool matchesAsLocalName(const XMLNode& child) const {
        return !byLocalName_ && isInNoNamespaceWithLocalName(child, name_.view());
    }
    [[nodiscard]] bool isLocalNameForm() const noexcept { return byLocalName_; }
    [[nodiscard]] const Text& name() const noexcept { return name_; }

  private:
    const Text& name_;
    bool byLocalName_;
    std::u16string_view local_;
};

std::shared_ptr<XMLElement> elementOf(const std::shared_ptr<XMLNode>& node) {
    return std::static_pointer_cast<XMLElement>(node);
}

const XMLElement& asElementRef(const std::shared_ptr<XMLNode>& node) {
    return static_cast<const XMLElement&>(*node);
}

std::shared_ptr<XMLElement> firstChildMatching(const XMLElement& self, const NameMatch& match,
                                               bool recursive) {
    const XMLNodeArray& children = self.children();
    for (const auto& child : children) {
        if (match.matches(*child)) return elementOf(child);
    }
    for (const auto& child : children) {
        if (match.matchesAsLocalName(*child)) return elementOf(child);
    }
    // A result from below is accepted only under the exact name asked for, which a ':' name never is.
    if (!recursive || match.isLocalNameForm()) return nullptr;
    for (const auto& child : children) {
        if (child->kind() != XMLNodeKind::Element) continue;
        auto found = firstChildMatching(asElementRef(child), match, true);
        if (found != nullptr && found->name() == match.name()) return found;
    }
    return nullptr;
}

// Visits the elements of childElementsNamedRecursiveSearch in its order until the visitor answers true:
// the matching children, then each element child's own visit. The visitor gets the child node (an
// element) and casts it only when it keeps it; children are read without virtual calls, and elements
// without children are not entered.
template <class Visitor>
bool visitChildElements(const XMLElement& self, const NameMatch& match, bool recursive, Visitor& visit) {
    const XMLNodeArray& children = self.XMLParentNode::children();
    for (const auto& child : children) {
        if (match.matches(*child) && visit(child)) return true;
    }
    if (!recursive) return false;
    for (const auto& child : children) {
        if (child->kind() != XMLNodeKind::Element) continue;
        const XMLElement& element = asElementRef(child);
        if (!element.XMLParentNode::children().empty() && visitChildElements(element, match, true, visit))
            return true;
    }
    return false;
}

void collectWithValue(const XMLElement& self, const NameMatch& match, const Text& value, bool recursive,
                      XMLElementArray& out) {
    XMLElementArray direct;
    for (const auto& child : self.children()) {
        if (match.matches(*child)) direct.push_back(elementOf(child));
    }
    for (const auto& element : direct) {
        if (element->stringValue().compare(value, CompareMode::CaseInsensitive) == 0) out.push_back(element);
    }
    if (!recursive) return;
    for (const auto& element : direct)
        collectWithValue(*element, match, value, true, out);
}

bool hasAttributeNamed(const XMLElement& element, const Text& attributeName, bool caseInsensitive) {
    ValueArray names;
    names.reserve(element.attributes().size());
    for (const auto& attribute : element.attributes())
        names.emplace_back(attribute->name());
    return BVNSArray::containsStringCaseInsensitiveCompare(names, attributeName, caseInsensitive);
}

void collectHavingAttribute(const XMLElement& self, const Text& attributeName, bool recursive,
                            XMLElementArray& out) {
    for (const auto& child : self.children()) {
        if (child->kind() != XMLNodeKind::Element) continue;
        if (hasAttributeNamed(asElementRef(child), attributeName, false)) out.push_back(elementOf(child));
        if (recursive) collectHavingAttribute(asElementRef(child), attributeName, true, out);
    }
}

void collectTagNames(const XMLNode& self, bool dataOnly, bool recursive, std::vector<Text>& out) {
    for (const auto& child : self.children()) {
        if (dataOnly &&
            BVNSString::isEmptyStringAfterTrimmingWhitespaceAndNewlineCharacters(child->stringValue())) {
            continue;
        }
        if (child->kind() != XMLNodeKind::Element) continue;  // only elements have tag names
        out.push_back(child->name());
        if (recursive) collectTagNames(*child, false, true, out);
    }
}

// Whether a debugger (not just any tracer, such as strace) is attached to this process.
bool debuggerAttached() {
    std::ifstream status("/proc/self/status");
    std::string line;
    std::string tracer;
    while (std::getline(status, line)) {
        if (line.rfind("TracerPid:", 0) == 0) {
            std::istringstream(line.substr(10)) >> tracer;
            break;
        }
    }
    if (tracer.empty() || tracer == "0") return false;
    std::ifstream comm("/proc/" + tracer + "/comm");
    std::string name;
    std::getline(comm, name);
    return name == "gdb" || name.rfind("lldb", 0) == 0;
}

// Stops in an attached debugger so that a developer sees the bad call; does nothing without one.
void stopInDebugger() {
    if (debuggerAttached()) std::raise(SIGTRAP);
}

}  // namespace

// --- Searching -------------------------------------------------------------------------------------------

std::shared_ptr<XMLElement> firstChildElementNamedRecursiveSearch(const XMLElement& self,
                                                                  const std::optional<Text>& name,
                                                                  bool recursiveSearch) {
    const Text& checked = checkedName(self, name, "firstChildElementNamed:recursiveSearch:", kFirstChildLine);
    return firstChildMatching(self, NameMatch(checked), recursiveSearch);
}

std::shared_ptr<XMLElement> firstChildElementNamedWithStringValueRecursiveSearch(
    const XMLElement& self, const std::optional<Text>& name, const Text& value, bool recursiveSearch) {
    const Text& checked = checkedName(self, name, "childElementsNamed:recursiveSearch:", kChildElementsLine);
    std::shared_ptr<XMLElement> found;
    auto visit = [&](const std::shared_ptr<XMLNode>& element) {
        if (element->stringValue() != value) return false;
        found = elementOf(element);
        return true;
    };
    visitChildElements(self, NameMatch(checked), recursiveSearch, visit);
    return found;
}

XMLElementArray childElementsNamedRecursiveSearch(const XMLElement& self, const std::optional<Text>& name,
                                                  bool recursiveSearch) {
    const Text& checked = checkedName(self, name, "childElementsNamed:recursiveSearch:", kChildElementsLine);
    XMLElementArray found;
    auto visit = [&found](const std::shared_ptr<XMLNode>& element) {
        found.push_back(elementOf(element));
        return false;
    };
    visitChildElements(self, NameMatch(checked), recursiveSearch, visit);
    return found;
}

XMLElementArray childElementsNamedWithStringValueRecursiveSearch(const XMLElement& self,
                                                                 const std::optional<Text>& name,
                                                                 const Text& value, bool recursiveSearch) {
    const Text& checked = checkedName(
        self, name, "childElementsNamed:withStringValue:recursiveSearch:", kChildElementsWithValueLine);
    XMLElementArray found;
    collectWithValue(self, NameMatch(checked), value, recursiveSearch, found);
    return found;
}

std::shared_ptr<XMLElement> firstChildElementHavingAttributeRecursiveSearch(const XMLElement& self,
                                                                            const Text& attributeName,
                                                                            bool recursiveSearch) {
    for (const auto& child : self.children()) {
        if (child->kind() != XMLNodeKind::Element) continue;
        if (hasAttributeNamed(asElementRef(child), attributeName, true)) return elementOf(child);
        if (recursiveSearch) {
            if (auto found = firstChildElementHavingAttributeRecursiveSearch(asElementRef(child),
                                                                             attributeName, true)) {
                return found;
            }
        }
    }
    return nullptr;
}

std::shared_ptr<XMLElement>
firstChildElementHavingAttributeWithStringValueCaseInsensitiveSearchRecursiveSearch(
    const XMLElement& self, const Text& attributeName, const Text& value, bool caseInsensitiveSearch,
    bool recursiveSearch) {
    for (const auto& child : self.children()) {
        if (child->kind() != XMLNodeKind::Element) continue;
        std::optional<Text> found = stringValueOfAttributeForName(asElementRef(child), attributeName);
        bool matches =
            found && (caseInsensitiveSearch ? found->compare(value, CompareMode::CaseInsensitive) == 0
                                            : *found == value);
        if (matches) return elementOf(child);
        if (recursiveSearch) {
            if (auto below =
                    firstChildElementHavingAttributeWithStringValueCaseInsensitiveSearchRecursiveSearch(
                        asElementRef(child), attributeName, value, caseInsensitiveSearch, true)) {
                return below;
            }
        }
    }
    return nullptr;
}

XMLElementArray childElementsHavingAttributeRecursiveSearch(const XMLElement& self, const Text& attributeName,
                                                            bool recursiveSearch) {
    XMLElementArray found;
    collectHavingAttribute(self, attributeName, recursiveSearch, found);
    return found;
}

std::shared_ptr<XMLElement> firstParentElementNamed(const XMLElement& self, const Text& name) {
    for (auto ancestor = self.parent(); ancestor != nullptr; ancestor = ancestor->parent()) {
        if (ancestor->kind() == XMLNodeKind::Element && ancestor->name() == name) return elementOf(ancestor);
    }
    return nullptr;
}

XMLNodeArray descendants(const XMLElement& self) {
    return BVNSXMLNode::descendants(self);
}

std::vector<Text> namesOfTagsContainingDataRecursiveSearch(const XMLElement& self, bool dataOnly,
                                                           bool recursiveSearch) {
    std::vector<Text> names;
    collectTagNames(self, dataOnly, recursiveSearch, names);
    return names;
}

std::vector<Text> namesOfTagsRecursiveSearch(const XMLElement& self, bool recursiveSearch) {
    return namesOfTagsContainingDataRecursiveSearch(self, false, recursiveSearch);
}

// --- Values and attributes ------------------------------------------------------------------------------

std::optional<Text> stringValueOfFirstChildElementNamedRecursiveSearch(const XMLElement& self,
                                                                       const std::optional<Text>& name,
                                                                       bool recursiveSearch) {
    auto element = firstChildElementNamedRecursiveSearch(self, name, recursiveSearch);
    if (element == nullptr) return std::nullopt;
    return element->stringValue();
}

std::vector<Text> stringValuesOfChildrenNamedRecursiveSearch(const XMLElement& self,
                                                             const std::optional<Text>& name,
                                                             bool recursiveSearch) {
    std::vector<Text> values;
    for (const auto& element : childElementsNamedRecursiveSearch(self, name, recursiveSearch)) {
        values.push_back(element->stringValue());
    }
    return values;
}

bool setStringValueOfFirstChildElementNamedRecursiveSearch(XMLElement& self, const Text& value,
                                                           const std::optional<Text>& name,
                                                           bool recursiveSearch) {
    auto element = firstChildElementNamedRecursiveSearch(self, name, recursiveSearch);
    if (element == nullptr) return false;
    element->setStringValue(value);
    return true;
}

void setStringValueForElements(const Text& value, const XMLElementArray& elements) {
    for (const auto& element : elements) {
        if (element != nullptr) element->setStringValue(value);
    }
}

void setCDATAStringValue(XMLElement& self, const Text& text) {
    self.addChild(XMLNode::makeCDATA(text));
}

void setAttributeWithStringValue(XMLElement& self, const std::optional<Text>& attributeName,
                                 const std::optional<Text>& stringValue) {
    if (!attributeName || !stringValue) {
        stopInDebugger();
        if (!attributeName) log("setAttribute:withStringValue: attribute is nil");
        if (!stringValue) log("setAttribute:withStringValue: stringValue is nil");
        return;
    }
    self.setAttributes({XMLNode::makeAttribute(*attributeName, *stringValue)});
}

std::optional<Text> stringValueOfAttributeForName(const XMLElement& self, const Text& attributeName) {
    auto attribute = self.attributeForName(attributeName);
    if (attribute == nullptr) return std::nullopt;
    return attribute->stringValue();
}

std::optional<Text> stringValueOfAttributeForNameOfFirstChildNamedRecursiveSearch(
    const XMLElement& self, const Text& attributeName, const std::optional<Text>& elementName,
    bool recursiveSearch) {
    auto element = firstChildElementNamedRecursiveSearch(self, elementName, recursiveSearch);
    if (element == nullptr) return std::nullopt;
    return stringValueOfAttributeForName(*element, attributeName);
}

std::vector<Text> stringValuesOfAttributesNamedOfChildrenNamedRecursiveSearch(
    const XMLElement& self, const Text& attributeName, const std::optional<Text>& elementName,
    bool recursiveSearch) {
    std::vector<Text> values;
    for (const auto& element : childElementsNamedRecursiveSearch(self, elementName, recursiveSearch)) {
        if (auto value = stringValueOfAttributeForName(*element, attributeName))
            values.push_back(std::move(*value));
    }
    return values;
}

ValueDictionary attributesDictionary(const XMLElement& self) {
    ValueDictionary dictionary;
    for (const auto& attribute : self.attributes())
        dictionary[attribute->name()] = attribute->stringValue();
    return dictionary;
}

ValueDictionary attributesOfFirstChildElementNamedRecursiveSearch(const XMLElement& self,
                                                                  const std::optional<Text>& name,
                                                                  bool recursiveSearch) {
    auto element = firstChildElementNamedRecursiveSearch(self, name, recursiveSearch);
    if (element == nullptr) return {};
    return attributesDictionary(*element);
}

std::vector<ValueDictionary> attributesOfChildrenNamedRecursiveSearch(const XMLElement& self,
                                                                      const std::optional<Text>& name,
                                                                      bool recursiveSearch) {
    std::vector<ValueDictionary> dictionaries;
    for (const auto& element : childElementsNamedRecursiveSearch(self, name, recursiveSearch)) {
        dictionaries.push_back(attributesDictionary(*element));
    }
    return dictionaries;
}

XMLNodeArray childrenOfFirstChildElementNamedRecursiveSearch(const XMLElement& self,
                                                             const std::optional<Text>& name,
                                                             bool recursiveSearch) {
    auto element = firstChildElementNamedRecursiveSearch(self, name, recursiveSearch);
    if (element == nullptr) return {};
    return element->children();
}

// --- Building ---------------------------------------------------------------------------------------------

std::shared_ptr<XMLElement> createAndAddChildNamed(XMLElement& self, const Text& name) {
    auto element = XMLElement::make(name);
    self.addChild(element);
    return element;
}

std::shared_ptr<XMLElement> createAndAddChildNamedWithStringValue(XMLElement& self, const Text& name,
                                                                  const Text& value) {
    return createAndAddChildNamedWithStringValueAsCDATA(self, name, value, false);
}

std::shared_ptr<XMLElement> createAndAddChildNamedWithStringValueAsCDATA(XMLElement& self, const Text& name,
                                                                         const Text& value, bool asCDATA) {
    return createAndAddChildNamedWithStringValueAsCDATAAndAttributes(self, name, value, asCDATA, {});
}

std::shared_ptr<XMLElement> createAndAddChildNamedWithAttributes(XMLElement& self, const Text& name,
                                                                 const ValueDictionary& attributes) {
    auto element = XMLElement::make(name);
    element->setAttributesAsDictionary(attributes);
    self.addChild(element);
    return element;
}

std::shared_ptr<XMLElement> createAndAddChildNamedWithStringValueAndAttributes(
    XMLElement& self, const Text& name, const Text& value, const ValueDictionary& attributes) {
    return createAndAddChildNamedWithStringValueAsCDATAAndAttributes(self, name, value, false, attributes);
}

std::shared_ptr<XMLElement> createAndAddChildNamedWithStringValueAsCDATAAndAttributes(
    XMLElement& self, const Text& name, const Text& value, bool asCDATA, const ValueDictionary& attributes) {
    auto element = XMLElement::make(name);
    if (asCDATA) {
        setCDATAStringValue(*element, value);
    } else {
        element->setStringValue(value);
    }
    if (!attributes.empty()) element->setAttributesAsDictionary(attributes);
    self.addChild(element);
    return element;
}

std::optional<XMLElementArray> createAndAddElementsNamedForStringValues(
    XMLElement& self, const std::optional<Text>& name, const std::optional<std::vector<Text>>& values) {
    return createAndAddElementsNamedForStringValuesAsCDATA(self, name, values, false);
}

std::optional<XMLElementArray> createAndAddElementsNamedForStringValuesAsCDATA(
    XMLElement& self, const std::optional<Text>& name, const std::optional<std::vector<Text>>& values,
    bool asCDATA) {
    if (!name || !values) return std::nullopt;
    XMLElementArray added;
    added.reserve(values->size());
    for (const Text& value : *values) {
        added.push_back(createAndAddChildNamedWithStringValueAsCDATA(self, *name, value, asCDATA));
    }
    return added;
}

std::shared_ptr<XMLElement> createAndInsertChildNamedAtIndex(XMLElement& self, const Text& name,
                                                             std::size_t index) {
    auto element = XMLElement::make(name);
    self.insertChild(element, index);
    return element;
}

std::shared_ptr<XMLElement> createAndAddChildNamedWithRawXMLError(XMLElement& self, const Text& name,
                                                                  const Text& xml, Error* error) {
    auto parsed = XMLElement::parse(xml, error);
    if (parsed == nullptr) return nullptr;
    auto wrapper = XMLElement::make(name);
    wrapper->addChild(parsed);
    self.addChild(wrapper);
    return wrapper;
}

void addChildren(XMLElement& self, const XMLNodeArray& children) {
    for (const auto& child : children)
        self.addChild(child);
}

void addObjectsAsElementsFromArray(XMLElement& self, const ValueArray& array) {
    for (const Value& value : array) {
        if (const Text* name = value.text()) createAndAddChildNamed(self, *name);
    }
}

// --- Editing ----------------------------------------------------------------------------------------------

void moveChildElementAtIndexToIndex(XMLElement& self, std::size_t sourceIndex, std::size_t targetIndex) {
    if (sourceIndex == targetIndex) return;
    auto child = self.childAtIndex(sourceIndex);
    self.removeChildAtIndex(sourceIndex);
    self.insertChild(child, std::min(targetIndex, self.childCount()));
}

void replaceElementWithElement(XMLElement& self, const std::shared_ptr<XMLElement>& oldElement,
                               const std::shared_ptr<XMLElement>& newElement) {
    if (oldElement == nullptr || newElement == nullptr) return;
    self.replaceChildAtIndex(oldElement->index(), newElement->copy());
}

void replaceFirstChildElementNamedWithElementRecursiveSearch(XMLElement& self,
                                                             const std::optional<Text>& name,
                                                             const std::shared_ptr<XMLElement>& element,
                                                             bool recursiveSearch) {
    replaceFirstChildElementNamedWithElementRecursiveSearchAddIfDoesNotExist(self, name, element,
                                                                             recursiveSearch, false);
}

void replaceFirstChildElementNamedWithElementRecursiveSearchAddIfDoesNotExist(
    XMLElement& self, const std::optional<Text>& name, const std::shared_ptr<XMLElement>& element,
    bool recursiveSearch, bool addIfDoesNotExist) {
    auto found = firstChildElementNamedRecursiveSearch(self, name, recursiveSearch);
    if (element == nullptr) return;
    if (found != nullptr) {
        self.replaceChildAtIndex(found->index(), element->copy());
    } else if (addIfDoesNotExist) {
        self.addChild(element->copy());
    }
}

void removeAllChildElements(XMLElement& self) {
    self.removeAllChildren();
}

void removeElement(XMLElement&, const std::shared_ptr<XMLNode>& element) {
    if (element != nullptr) element->detach();
}

void removeFirstChildElementNamedRecursiveSearch(XMLElement& self, const std::optional<Text>& name,
                                                 bool recursiveSearch) {
    removeElement(self, firstChildElementNamedRecursiveSearch(self, name, recursiveSearch));
}

void removeFirstChildNamedWithStringValueRecursiveSearch(XMLElement& self, const std::optional<Text>& name,
                                                         const Text& value, bool recursiveSearch) {
    removeElement(self,
                  firstChildElementNamedWithStringValueRecursiveSearch(self, name, value, recursiveSearch));
}

void removeChildElementsNamedRecursively(XMLElement& self, const std::optional<Text>& name,
                                         bool recursively) {
    XMLElementArray found = childElementsNamedRecursiveSearch(self, name, recursively);
    for (auto element = found.rbegin(); element != found.rend(); ++element)
        removeElement(self, *element);
}

}  // namespace bv::BVNSXMLElement
