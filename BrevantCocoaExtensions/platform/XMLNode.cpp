// The XML node model: leaves, child lists, elements with their attributes and namespaces, documents.
// Parsing lives in XMLParsing.cpp and writing in XMLWriting.cpp.
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

#include <algorithm>
#include <utility>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

namespace bv {

namespace {

const Text& emptyText() {
    static const Text empty;
    return empty;
}

const XMLNodeArray& emptyNodes() {
    static const XMLNodeArray empty;
    return empty;
}

std::size_t firstColon(const Text& name) {
    return name.view().find(u':');
}

// Text and comments: content only.
class XMLValueNode : public XMLNode {
  public:
    XMLValueNode(XMLNodeKind kind, const Text& value) : XMLNode(kind), value_(value) {}
    [[nodiscard]] Text stringValue() const override { return value_; }
    void setStringValue(const Text& value) override { value_ = value; }
    [[nodiscard]] std::shared_ptr<XMLNode> copy() const override {
        auto node = std::make_shared<XMLValueNode>(kind(), value_);
        node->setCDATA(isCDATA());
        return node;
    }

  private:
    Text value_;
};

// Attributes, namespaces and processing instructions: a name, content and (attributes) a namespace URI.
class XMLNamedValueNode final : public XMLNode {
  public:
    XMLNamedValueNode(XMLNodeKind kind, const Text& name, const Text& value, const Text& uri)
        : XMLNode(kind), name_(name), value_(value), uri_(uri) {}
    [[nodiscard]] const Text& name() const override { return name_; }
    void setName(const Text& name) override { name_ = name; }
    [[nodiscard]] const Text& URI() const override { return uri_; }
    [[nodiscard]] Text stringValue() const override { return value_; }
    void setStringValue(const Text& value) override { value_ = value; }
    [[nodiscard]] std::shared_ptr<XMLNode> copy() const override {
        return std::make_shared<XMLNamedValueNode>(kind(), name_, value_, uri_);
    }

  private:
    Text name_;
    Text value_;
    Text uri_;
};

void appendTextBelow(const XMLNode& node, Text& out) {
    for (const auto& child : node.children()) {
        if (child->kind() == XMLNodeKind::Text) {
            out += child->stringValue();
        } else if (child->kind() == XMLNodeKind::Element) {
            appendTextBelow(*child, out);
        }
    }
}

std::size_t positionIn(const XMLNodeArray& list, const XMLNode* node) {
    auto found =
        std::find_if(list.begin(), list.end(), [node](const auto& each) { return each.get() == node; });
    return found == list.end() ? 0 : static_cast<std::size_t>(found - list.begin());
}

[[noreturn]] void throwRange(const char* operation, std::size_t index, std::size_t count) {
    throw RangeException(std::string(operation) + ": index " + std::to_string(index) +
                         " beyond bounds [0 .. " + std::to_string(count) + ")");
}

}  // namespace

// --- XMLNode ------------------------------------------------------------------------------------------

std::shared_ptr<XMLNode> XMLNode::makeText(const Text& value) {
    return std::make_shared<XMLValueNode>(XMLNodeKind::Text, value);
}

std::shared_ptr<XMLNode> XMLNode::makeCDATA(const Text& value) {
    auto node = makeText(value);
    node->setCDATA(true);
    return node;
}

std::shared_ptr<XMLNode> XMLNode::makeComment(const Text& value) {
    return std::make_shared<XMLValueNode>(XMLNodeKind::Comment, value);
}

std::shared_ptr<XMLNode> XMLNode::makeProcessingInstruction(const Text& target, const Text& value) {
    return std::make_shared<XMLNamedValueNode>(XMLNodeKind::ProcessingInstruction, target, value, Text());
}

std::shared_ptr<XMLNode> XMLNode::makeAttribute(const Text& name, const Text& value, const Text& uri) {
    return std::make_shared<XMLNamedValueNode>(XMLNodeKind::Attribute, name, value, uri);
}

std::shared_ptr<XMLNode> XMLNode::makeNamespace(const Text& prefix, const Text& uri) {
    return std::make_shared<XMLNamedValueNode>(XMLNodeKind::Namespace, prefix, uri, Text());
}

const Text& XMLNode::name() const {
    return emptyText();
}

bool XMLNode::hasName() const noexcept {
    switch (kind_) {
        case XMLNodeKind::Element:
        case XMLNodeKind::Attribute:
        case XMLNodeKind::Namespace:
        case XMLNodeKind::ProcessingInstruction:
        case XMLNodeKind::DTD:
            return true;
        default:
            return false;
    }
}

void XMLNode::setName(const Text&) {}

Text XMLNode::localName() const {
    const Text& qualified = name();
    std::size_t colon = firstColon(qualified);
    return colon == std::u16string_view::npos ? qualified : qualified.substringFrom(colon + 1);
}

Text XMLNode::prefix() const {
    const Text& qualified = name();
    std::size_t colon = firstColon(qualified);
    return colon == std::u16string_view::npos ? Text() : qualified.substring(0, colon);
}

const Text& XMLNode::URI() const {
    return emptyText();
}

Text XMLNode::stringValue() const {
    return Text();
}

void XMLNode::setStringValue(const Text&) {}

void XMLNode::setCDATA(bool cdata) noexcept {
    cdata_ = cdata && kind_ == XMLNodeKind::Text;
}

std::shared_ptr<XMLNode> XMLNode::parent() const {
    return parent_ == nullptr ? nullptr : parent_->shared_from_this();
}

std::size_t XMLNode::index() const {
    if (parent_ == nullptr) return 0;
    if (kind_ == XMLNodeKind::Attribute)
        return positionIn(static_cast<XMLElement*>(parent_)->attributes(), this);
    if (kind_ == XMLNodeKind::Namespace)
        return positionIn(static_cast<XMLElement*>(parent_)->namespaces(), this);
    return positionIn(parent_->children(), this);
}

std::shared_ptr<XMLDocument> XMLNode::rootDocument() const {
    const XMLNode* top = this;
    while (top->parent_ != nullptr)
        top = top->parent_;
    if (top->kind_ != XMLNodeKind::Document) return nullptr;
    return std::static_pointer_cast<XMLDocument>(std::const_pointer_cast<XMLNode>(top->shared_from_this()));
}

const XMLNodeArray& XMLNode::children() const {
    return emptyNodes();
}

std::shared_ptr<XMLNode> XMLNode::childAtIndex(std::size_t index) const {
    const XMLNodeArray& list = children();
    if (index >= list.size()) throwRange("childAtIndex", index, list.size());
    return list[index];
}

void XMLNode::detach() {
    if (parent_ == nullptr) return;
    if (kind_ == XMLNodeKind::Attribute) {
        static_cast<XMLElement*>(parent_)->removeAttributeForName(name());
    } else if (kind_ == XMLNodeKind::Namespace) {
        static_cast<XMLElement*>(parent_)->removeNamespaceForPrefix(name());
    } else {
        auto* owner = static_cast<XMLParentNode*>(parent_);
        owner->removeChildAtIndex(positionIn(owner->children(), this));
    }
}

Text XMLNode::description() const {
    return Text(xmlString());
}

std::shared_ptr<XMLElement> XMLNode::asElement() {
    if (kind_ != XMLNodeKind::Element) return nullptr;
    return std::static_pointer_cast<XMLElement>(shared_from_this());
}

std::shared_ptr<const XMLElement> XMLNode::asElement() const {
    if (kind_ != XMLNodeKind::Element) return nullptr;
    return std::static_pointer_cast<const XMLElement>(shared_from_this());
}

// --- XMLParentNode ------------------------------------------------------------------------------------

XMLParentNode::~XMLParentNode() {
    // Children that only this node holds hand their own children to the list before they go, so a deep
    // chain is released in a loop instead of one destructor frame per level.
    XMLNodeArray pending = std::move(children_);
    while (!pending.empty()) {
        std::shared_ptr<XMLNode> node = std::move(pending.back());
        pending.pop_back();
        node->parent_ = nullptr;
        if (node.use_count() == 1 &&
            (node->kind() == XMLNodeKind::Element || node->kind() == XMLNodeKind::Document)) {
            auto& grandchildren = static_cast<XMLParentNode&>(*node).children_;
            std::move(grandchildren.begin(), grandchildren.end(), std::back_inserter(pending));
            grandchildren.clear();
        }
    }
}

void XMLParentNode::checkInsertable(const XMLNode& child) const {
    if (child.parent_ != nullptr) {
        throw InvalidArgumentException("Cannot add a child that has a parent; detach or copy it first");
    }
    // A parentless node can be an ancestor only as the top of this tree, which a childless one is not
    // (unless it is this node): building a deep chain leaf by leaf never walks up the chain.
    if (&child == this) throw InvalidArgumentException("Cannot add a node below itself");
    if (child.children().empty()) return;
    for (const XMLNode* ancestor = this; ancestor != nullptr; ancestor = ancestor->parent_) {
        if (ancestor == &child) throw InvalidArgumentException("Cannot add a node below itself");
    }
}

void XMLParentNode::adopt(const std::shared_ptr<XMLNode>& child) {
    if (child == nullptr) throw InvalidArgumentException("Cannot add a null child");
    checkInsertable(*child);
    child->parent_ = this;
}

void XMLParentNode::release(XMLNode& child) noexcept {
    child.parent_ = nullptr;
}

void XMLParentNode::addChild(const std::shared_ptr<XMLNode>& child) {
    adopt(child);
    children_.push_back(child);
}

void XMLParentNode::insertChild(const std::shared_ptr<XMLNode>& child, std::size_t index) {
    if (index > children_.size()) throwRange("insertChild:atIndex:", index, children_.size() + 1);
    adopt(child);
    children_.insert(children_.begin() + static_cast<std::ptrdiff_t>(index), child);
}

void XMLParentNode::removeChildAtIndex(std::size_t index) {
    if (index >= children_.size()) throwRange("removeChildAtIndex:", index, children_.size());
    release(*children_[index]);
    children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(index));
}

void XMLParentNode::replaceChildAtIndex(std::size_t index, const std::shared_ptr<XMLNode>& node) {
    if (index >= children_.size()) throwRange("replaceChildAtIndex:withNode:", index, children_.size());
    if (node == children_[index]) return;
    // The old child leaves first, so that a document can take a new root element in its place.
    std::shared_ptr<XMLNode> old = children_[index];
    auto slot = children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(index));
    try {
        adopt(node);
    } catch (...) {
        children_.insert(slot, old);  // leave the tree as it was
        throw;
    }
    release(*old);
    children_.insert(children_.begin() + static_cast<std::ptrdiff_t>(index), node);
}

void XMLParentNode::setChildren(const XMLNodeArray& children) {
    removeAllChildren();
    for (const auto& child : children)
        addChild(child);
}

void XMLParentNode::removeAllChildren() {
    while (!children_.empty()) {
        release(*children_.back());
        children_.pop_back();
    }
}

Text XMLParentNode::stringValue() const {
    Text out;
    appendTextBelow(*this, out);
    return out;
}

void XMLParentNode::setStringValue(const Text& value) {
    removeAllChildren();
    if (!value.empty()) addChild(makeText(value));
}

// --- XMLElement ---------------------------------------------------------------------------------------

struct XMLElement::MakeShared : XMLElement {
    MakeShared(const Text& name, const Text& uri) : XMLElement(name, uri) {}
};

XMLElement::XMLElement(const Text& name, const Text& uri) : XMLParentNode(XMLNodeKind::Element), name_(name) {
    setURI(uri);
}

XMLElement::~XMLElement() {
    if (extras_ == nullptr) return;
    for (auto& node : extras_->attributes)
        node->parent_ = nullptr;
    for (auto& node : extras_->namespaces)
        node->parent_ = nullptr;
}

std::shared_ptr<XMLElement> XMLElement::make(const Text& name, const Text& uri) {
    return std::make_shared<MakeShared>(name, uri);
}

std::shared_ptr<XMLElement> XMLElement::makeWithStringValue(const Text& name, const Text& value) {
    auto element = make(name);
    element->setStringValue(value);
    return element;
}

std::shared_ptr<XMLElement> XMLElement::parse(const Text& xml, Error* error) {
    auto document = XMLDocument::parseXMLString(xml, XMLNodeOptionsNone, error);
    if (document == nullptr) return nullptr;
    auto root = document->rootElement();
    root->detach();
    return root;
}

const Text& XMLElement::URI() const {
    return uri_ == nullptr ? emptyText() : *uri_;
}

void XMLElement::setURI(const Text& uri) {
    uri_ = uri.empty() ? nullptr : std::make_shared<const Text>(uri);
}

XMLElementArray XMLElement::elementsForName(const Text& name) const {
    XMLElementArray found;
    for (const auto& child : children_) {
        if (child->kind() == XMLNodeKind::Element && child->name() == name) {
            found.push_back(std::static_pointer_cast<XMLElement>(child));
        }
    }
    return found;
}

XMLElementArray XMLElement::elementsForLocalNameURI(const Text& localName, const Text& uri) const {
    XMLElementArray found;
    for (const auto& child : children_) {
        if (child->kind() == XMLNodeKind::Element && child->URI() == uri && child->localName() == localName) {
            found.push_back(std::static_pointer_cast<XMLElement>(child));
        }
    }
    return found;
}

void XMLElement::checkInsertable(const XMLNode& child) const {
    switch (child.kind()) {
        case XMLNodeKind::Element:
        case XMLNodeKind::Text:
        case XMLNodeKind::Comment:
        case XMLNodeKind::ProcessingInstruction:
            XMLParentNode::checkInsertable(child);
            return;
        default:
            throw InvalidArgumentException("An element cannot hold a node of kind " +
                                           std::to_string(child.kindCode()));
    }
}

XMLElement::Extras& XMLElement::extras() {
    if (extras_ == nullptr) extras_ = std::make_unique<Extras>();
    return *extras_;
}

const XMLNodeArray& XMLElement::attributes() const {
    return extras_ == nullptr ? emptyNodes() : extras_->attributes;
}

const XMLNodeArray& XMLElement::namespaces() const {
    return extras_ == nullptr ? emptyNodes() : extras_->namespaces;
}

std::shared_ptr<XMLNode> XMLElement::attributeForName(const Text& name) const {
    for (const auto& attribute : attributes()) {
        if (attribute->name() == name) return attribute;
    }
    return nullptr;
}

void XMLElement::setOwnedNode(XMLNodeArray& list, const std::shared_ptr<XMLNode>& node, XMLNodeKind kind) {
    if (node == nullptr || node->kind() != kind) {
        throw InvalidArgumentException("Expected a node of kind " + std::to_string(static_cast<int>(kind)));
    }
    if (node->parent_ != nullptr) {
        throw InvalidArgumentException("Cannot add a node that has a parent; detach or copy it first");
    }
    node->parent_ = this;
    for (auto& existing : list) {
        if (existing->name() == node->name()) {
            existing->parent_ = nullptr;
            existing = node;
            return;
        }
    }
    list.push_back(node);
}

void XMLElement::removeOwnedNodes(XMLNodeArray& list, std::size_t at) {
    list[at]->parent_ = nullptr;
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(at));
}

void XMLElement::addAttribute(const std::shared_ptr<XMLNode>& attribute) {
    setOwnedNode(extras().attributes, attribute, XMLNodeKind::Attribute);
}

void XMLElement::removeAttributeForName(const Text& name) {
    if (extras_ == nullptr) return;
    auto& list = extras_->attributes;
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (list[at]->name() == name) return removeOwnedNodes(list, at);
    }
}

void XMLElement::setAttributes(const XMLNodeArray& attributes) {
    if (extras_ != nullptr) {
        while (!extras_->attributes.empty())
            removeOwnedNodes(extras_->attributes, extras_->attributes.size() - 1);
    }
    for (const auto& attribute : attributes)
        addAttribute(attribute);
}

void XMLElement::setAttributesAsDictionary(const ValueDictionary& attributes) {
    XMLNodeArray nodes;
    nodes.reserve(attributes.size());
    for (const auto& [name, value] : attributes) {
        const Text* text = value.text();
        nodes.push_back(makeAttribute(name, text != nullptr ? *text : value.description()));
    }
    setAttributes(nodes);
}

void XMLElement::addNamespace(const std::shared_ptr<XMLNode>& namespaceNode) {
    setOwnedNode(extras().namespaces, namespaceNode, XMLNodeKind::Namespace);
}

void XMLElement::removeNamespaceForPrefix(const Text& prefix) {
    if (extras_ == nullptr) return;
    auto& list = extras_->namespaces;
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (list[at]->name() == prefix) return removeOwnedNodes(list, at);
    }
}

std::shared_ptr<XMLElement> XMLElement::copyElement() const {
    auto copied = std::make_shared<MakeShared>(name_, Text());
    copied->uri_ = uri_;
    for (const auto& attribute : attributes())
        copied->addAttribute(attribute->copy());
    for (const auto& namespaceNode : namespaces())
        copied->addNamespace(namespaceNode->copy());
    copied->children_.reserve(children_.size());
    for (const auto& child : children_)
        copied->addChild(child->copy());
    return copied;
}

// --- XMLDTDNode ---------------------------------------------------------------------------------------

struct XMLDTDNode::MakeShared : XMLDTDNode {};

std::shared_ptr<XMLDTDNode> XMLDTDNode::make(const Text& name, const Text& publicID, const Text& systemID,
                                             const Text& internalSubset) {
    std::shared_ptr<XMLDTDNode> node = std::make_shared<MakeShared>();
    node->name_ = name;
    node->publicID_ = publicID;
    node->systemID_ = systemID;
    node->internalSubset_ = internalSubset;
    return node;
}

std::shared_ptr<XMLNode> XMLDTDNode::copy() const {
    return make(name_, publicID_, systemID_, internalSubset_);
}

// --- XMLDocument --------------------------------------------------------------------------------------

struct XMLDocument::MakeShared : XMLDocument {};

std::shared_ptr<XMLDocument> XMLDocument::make() {
    return std::make_shared<MakeShared>();
}

std::shared_ptr<XMLDocument> XMLDocument::make(const std::shared_ptr<XMLElement>& root) {
    auto document = make();
    document->setRootElement(root);
    return document;
}

std::shared_ptr<XMLElement> XMLDocument::rootElement() const {
    for (const auto& child : children_) {
        if (child->kind() == XMLNodeKind::Element) return std::static_pointer_cast<XMLElement>(child);
    }
    return nullptr;
}

void XMLDocument::setRootElement(const std::shared_ptr<XMLElement>& root) {
    for (std::size_t at = 0; at < children_.size(); ++at) {
        if (children_[at]->kind() != XMLNodeKind::Element) continue;
        if (root == nullptr) return removeChildAtIndex(at);
        return replaceChildAtIndex(at, root);
    }
    if (root != nullptr) addChild(root);
}

void XMLDocument::checkInsertable(const XMLNode& child) const {
    bool hasElement = rootElement() != nullptr;
    bool hasDTD = std::any_of(children_.begin(), children_.end(),
                              [](const auto& node) { return node->kind() == XMLNodeKind::DTD; });
    switch (child.kind()) {
        case XMLNodeKind::Element:
            if (hasElement) throw InvalidArgumentException("A document has only one root element");
            break;
        case XMLNodeKind::DTD:
            if (hasDTD || hasElement) {
                throw InvalidArgumentException("A document has one DTD, before its root element");
            }
            break;
        case XMLNodeKind::Comment:
        case XMLNodeKind::ProcessingInstruction:
            break;
        default:
            throw InvalidArgumentException("A document cannot hold a node of kind " +
                                           std::to_string(child.kindCode()));
    }
    XMLParentNode::checkInsertable(child);
}

std::shared_ptr<XMLDocument> XMLDocument::copyDocument() const {
    auto copied = make();
    copied->version_ = version_;
    copied->characterEncoding_ = characterEncoding_;
    copied->standalone_ = standalone_;
    for (const auto& child : children_)
        copied->addChild(child->copy());
    return copied;
}

}  // namespace bv
