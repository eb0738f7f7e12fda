// The XML node model: the library's own tree of documents, elements, text, comments, processing
// instructions, attributes and namespaces.
//
// Every node is a std::shared_ptr, handled by identity. A parent owns its children; a child points back
// to its parent with a plain pointer that does not own it, so parent() is O(1) and a node that someone
// still holds after its parent is destroyed simply becomes parentless. index() scans the siblings.
//
// Reading: XMLDocument::parseFile / parseData / parseXMLString go through libxml2 into this tree. Never
// the network. Entities are replaced by their text. An external entity (general or parameter) is read only
// from a regular file in the document's own folder or below it (its real path: no "../" climb or link out,
// no device or FIFO; at most 1 MB); a document given as bytes or text loads none. The text all entity
// references expand to stays within 8 times the document's size plus 4 MB. A refused entity or expansion
// fails the parse with an error saying why, even with XMLDocumentTidyXML.
// Writing: xmlString() is the library's own UTF-8 writer; a parse of its output gives the same tree.
//
//   auto document = bv::XMLDocument::parseFile("Settings.xml", bv::XMLNodeOptionsNone, &error);
//   auto root = document->rootElement();
//   auto child = root->elementsForName("Volume");          // direct children named Volume
//   bv::Text text = child.front()->stringValue();          // the text below it
//   document->writeToFile("Settings.xml", bv::XMLNodePrettyPrint | bv::XMLNodeCompactEmptyElement);
//
// Pitfalls: a node with a parent cannot be added elsewhere (detach() or copy() it first); by default the
// parser drops white space that breaks a line between markup (the indentation of pretty-printed files);
// characters that XML 1.0 cannot hold (most control characters) are written as U+FFFD.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

// The kind codes of the node model.
enum class XMLNodeKind : std::uint8_t {
    Invalid = 0,
    Document = 1,
    Element = 2,
    Attribute = 3,
    Namespace = 4,
    ProcessingInstruction = 5,
    Comment = 6,
    Text = 7,
    DTD = 8,
    EntityDeclaration = 9,
    AttributeDeclaration = 10,
    ElementDeclaration = 11,
    NotationDeclaration = 12,
};

// Parse and write options; the bit values are the platform's, so stored option numbers keep working.
inline constexpr unsigned XMLNodeOptionsNone = 0;
inline constexpr unsigned XMLNodeCompactEmptyElement = 1u
                                                       << 2;  // write: <a/> for an element without children
inline constexpr unsigned XMLDocumentTidyXML = 1u << 10;    // parse: recover what it can from malformed input
inline constexpr unsigned XMLNodePrettyPrint = 1u << 17;    // write: one element a line, 4 spaces a level
inline constexpr unsigned XMLNodePreserveCDATA = 1u << 24;  // parse: keep CDATA sections as CDATA text nodes
inline constexpr unsigned XMLNodePreserveWhitespace =
    1u << 25;  // parse: keep line-breaking white space between markup

class XMLNode;
class XMLElement;
class XMLDocument;
struct XMLTreeBuilder;
using XMLNodeArray = std::vector<std::shared_ptr<XMLNode>>;
using XMLElementArray = std::vector<std::shared_ptr<XMLElement>>;

// Any node. Leaf kinds (text, comment, processing instruction, attribute, namespace) are made with the
// static factories below; elements and documents with XMLElement::make and XMLDocument::make.
class XMLNode : public Object, public std::enable_shared_from_this<XMLNode> {
  public:
    XMLNode(const XMLNode&) = delete;
    XMLNode& operator=(const XMLNode&) = delete;
    ~XMLNode() override = default;

    // A text node.
    [[nodiscard]] static std::shared_ptr<XMLNode> makeText(const Text& value);
    // A text node written as a CDATA section.
    [[nodiscard]] static std::shared_ptr<XMLNode> makeCDATA(const Text& value);
    [[nodiscard]] static std::shared_ptr<XMLNode> makeComment(const Text& value);
    [[nodiscard]] static std::shared_ptr<XMLNode> makeProcessingInstruction(const Text& target,
                                                                            const Text& value);
    // An attribute; a qualified name ("x:id") may carry the namespace URI of its prefix.
    [[nodiscard]] static std::shared_ptr<XMLNode> makeAttribute(const Text& name, const Text& value,
                                                                const Text& uri = {});
    // A namespace declaration; the empty prefix declares the default namespace.
    [[nodiscard]] static std::shared_ptr<XMLNode> makeNamespace(const Text& prefix, const Text& uri);

    [[nodiscard]] XMLNodeKind kind() const noexcept { return kind_; }
    [[nodiscard]] int kindCode() const noexcept { return static_cast<int>(kind_); }

    // The qualified name of an element or attribute, the target of a processing instruction, the prefix
    // of a namespace, the root name of a DTD; the empty text for text, comments and documents.
    [[nodiscard]] virtual const Text& name() const;
    // Whether the kind has a name (text, comments and documents have none).
    [[nodiscard]] bool hasName() const noexcept;
    // Renames a named node; ignored by nameless kinds.
    virtual void setName(const Text& name);
    // The part of the name after the first ':', or the whole name.
    [[nodiscard]] Text localName() const;
    // The part of the name before the first ':', or the empty text.
    [[nodiscard]] Text prefix() const;
    // The namespace URI of an element or attribute; the empty text when it has none.
    [[nodiscard]] virtual const Text& URI() const;

    // An element's or document's string value is all text below it (text and CDATA, comments excluded);
    // a leaf's is its content; a namespace's is its URI.
    [[nodiscard]] virtual Text stringValue() const;
    // Sets a leaf's content. Elements replace all their children by one text node (none for the empty text).
    virtual void setStringValue(const Text& value);

    // Whether a text node is written as a CDATA section; false for every other kind.
    [[nodiscard]] bool isCDATA() const noexcept { return cdata_; }
    // Makes a text node write itself as CDATA (or not); ignored by other kinds.
    void setCDATA(bool cdata) noexcept;

    // The parent (an element or document; the element of an attribute or namespace), or null. O(1).
    [[nodiscard]] std::shared_ptr<XMLNode> parent() const;
    [[nodiscard]] bool hasParent() const noexcept { return parent_ != nullptr; }
    // The position among the parent's children counting every kind (among its attributes for an
    // attribute); 0 without a parent. Scans the siblings.
    [[nodiscard]] std::size_t index() const;
    // The document at the top of the tree, or null when the tree has none.
    [[nodiscard]] std::shared_ptr<XMLDocument> rootDocument() const;

    // The child nodes (empty for leaves).
    [[nodiscard]] virtual const XMLNodeArray& children() const;
    [[nodiscard]] std::size_t childCount() const { return children().size(); }
    // The child at an index; throws RangeException past the end.
    [[nodiscard]] std::shared_ptr<XMLNode> childAtIndex(std::size_t index) const;

    // Removes the node from its parent (children, attributes or namespaces); nothing without a parent.
    void detach();
    // A deep copy without a parent.
    [[nodiscard]] virtual std::shared_ptr<XMLNode> copy() const = 0;

    // The node written as UTF-8 XML (a document with its XML declaration).
    [[nodiscard]] std::string xmlString(unsigned options = XMLNodeCompactEmptyElement) const;
    // The compact XML of the node as text.
    [[nodiscard]] Text description() const override;

    // The node as an element, or null when it is another kind.
    [[nodiscard]] std::shared_ptr<XMLElement> asElement();
    [[nodiscard]] std::shared_ptr<const XMLElement> asElement() const;

  protected:
    explicit XMLNode(XMLNodeKind kind) noexcept : kind_(kind) {}

  private:
    friend class XMLParentNode;
    friend class XMLElement;

    XMLNode* parent_ = nullptr;  // not owning: a parent outlives its attached children
    XMLNodeKind kind_;
    bool cdata_ = false;
};

// A node that holds children: an element or a document.
class XMLParentNode : public XMLNode {
  public:
    // Unparents every child still held elsewhere; deep trees are taken apart without recursion.
    ~XMLParentNode() override;

    [[nodiscard]] const XMLNodeArray& children() const override { return children_; }

    // Appends a child. Throws InvalidArgumentException when the node already has a parent (detach or
    // copy it first), is this node or one of its ancestors, or is of a kind this node cannot hold.
    void addChild(const std::shared_ptr<XMLNode>& child);
    // Inserts a child at an index (0 to childCount); throws RangeException past that, else as addChild.
    void insertChild(const std::shared_ptr<XMLNode>& child, std::size_t index);
    // Removes the child at an index; throws RangeException past the end.
    void removeChildAtIndex(std::size_t index);
    // Puts a node in place of the child at an index; throws RangeException past the end.
    void replaceChildAtIndex(std::size_t index, const std::shared_ptr<XMLNode>& node);
    // Replaces all children by the nodes given, in order.
    void setChildren(const XMLNodeArray& children);
    // Removes every child, from the last to the first.
    void removeAllChildren();

    // All text below the node, in document order.
    [[nodiscard]] Text stringValue() const override;
    // Replaces all children by one text node holding the value (no child for the empty text).
    void setStringValue(const Text& value) override;

  protected:
    using XMLNode::XMLNode;
    // Throws InvalidArgumentException when the node cannot become a child here.
    virtual void checkInsertable(const XMLNode& child) const;

    XMLNodeArray children_;

  private:
    void adopt(const std::shared_ptr<XMLNode>& child);
    void release(XMLNode& child) noexcept;
};

// An element: a qualified name, an optional namespace URI, attributes, namespace declarations and children.
class XMLElement : public XMLParentNode {
  public:
    // A new element without parent; the name may be qualified ("x:item").
    [[nodiscard]] static std::shared_ptr<XMLElement> make(const Text& name, const Text& uri = {});
    // A new element holding the text as its only child (none for the empty text).
    [[nodiscard]] static std::shared_ptr<XMLElement> makeWithStringValue(const Text& name, const Text& value);
    // Parses a text holding one element ("<a x='1'>b</a>"); null with *error when it is not well-formed.
    [[nodiscard]] static std::shared_ptr<XMLElement> parse(const Text& xml, Error* error = nullptr);
    ~XMLElement() override;

    [[nodiscard]] const Text& name() const override { return name_; }
    void setName(const Text& name) override { name_ = name; }
    [[nodiscard]] const Text& URI() const override;
    void setURI(const Text& uri);

    // The child elements whose qualified name equals the name, in document order.
    [[nodiscard]] XMLElementArray elementsForName(const Text& name) const;
    // The child elements with the local name and namespace URI (the empty URI: elements in no namespace).
    [[nodiscard]] XMLElementArray elementsForLocalNameURI(const Text& localName, const Text& uri) const;

    // The attributes in their order.
    [[nodiscard]] const XMLNodeArray& attributes() const;
    // The attribute with exactly this qualified name, or null.
    [[nodiscard]] std::shared_ptr<XMLNode> attributeForName(const Text& name) const;
    // Adds an attribute node without parent; one of the same name is replaced in place.
    void addAttribute(const std::shared_ptr<XMLNode>& attribute);
    void removeAttributeForName(const Text& name);
    // Replaces every attribute by the nodes given.
    void setAttributes(const XMLNodeArray& attributes);
    // Replaces every attribute by one per entry (name to the value's text; other values by their
    // description), in key order.
    void setAttributesAsDictionary(const ValueDictionary& attributes);

    // The namespace declarations made on this element.
    [[nodiscard]] const XMLNodeArray& namespaces() const;
    // Adds a namespace node without parent; one with the same prefix is replaced.
    void addNamespace(const std::shared_ptr<XMLNode>& namespaceNode);
    void removeNamespaceForPrefix(const Text& prefix);

    [[nodiscard]] std::shared_ptr<XMLNode> copy() const override { return copyElement(); }
    [[nodiscard]] std::shared_ptr<XMLElement> copyElement() const;

  private:
    friend struct XMLTreeBuilder;
    struct MakeShared;
    struct Extras {  // most elements have neither, so they cost one pointer until used
        XMLNodeArray attributes;
        XMLNodeArray namespaces;
    };
    XMLElement(const Text& name, const Text& uri);
    void checkInsertable(const XMLNode& child) const override;
    Extras& extras();
    void setOwnedNode(XMLNodeArray& list, const std::shared_ptr<XMLNode>& node, XMLNodeKind kind);
    void removeOwnedNodes(XMLNodeArray& list, std::size_t at);

    Text name_;
    std::shared_ptr<const Text> uri_;  // shared by every element of a parse in the same namespace
    std::unique_ptr<Extras> extras_;
};

// A document type declaration: the root name, the public and system identifiers and the internal subset
// as written.
class XMLDTDNode : public XMLNode {
  public:
    [[nodiscard]] static std::shared_ptr<XMLDTDNode> make(const Text& name, const Text& publicID,
                                                          const Text& systemID, const Text& internalSubset);
    [[nodiscard]] const Text& name() const override { return name_; }
    void setName(const Text& name) override { name_ = name; }
    [[nodiscard]] const Text& publicID() const noexcept { return publicID_; }
    [[nodiscard]] const Text& systemID() const noexcept { return systemID_; }
    [[nodiscard]] const Text& internalSubset() const noexcept { return internalSubset_; }
    // The internal subset.
    [[nodiscard]] Text stringValue() const override { return internalSubset_; }
    void setStringValue(const Text& value) override { internalSubset_ = value; }
    [[nodiscard]] std::shared_ptr<XMLNode> copy() const override;

  private:
    struct MakeShared;
    XMLDTDNode() : XMLNode(XMLNodeKind::DTD) {}
    Text name_, publicID_, systemID_, internalSubset_;
};

// A document: at most one DTD, one root element, and comments and processing instructions around them.
class XMLDocument : public XMLParentNode {
  public:
    [[nodiscard]] static std::shared_ptr<XMLDocument> make();
    // A document whose root is the element (which must have no parent).
    [[nodiscard]] static std::shared_ptr<XMLDocument> make(const std::shared_ptr<XMLElement>& root);

    // Parses bytes in the encoding they declare (UTF-8 by default). XMLDocumentTidyXML recovers what it
    // can from malformed input; XMLNodePreserveCDATA and XMLNodePreserveWhitespace keep those nodes.
    // Null with *error (domain "BVXMLErrorDomain", failure reason "Line L, column C: ...") on failure.
    [[nodiscard]] static std::shared_ptr<XMLDocument> parseData(std::string_view bytes, unsigned options,
                                                                Error* error = nullptr);
    // Parses a text; an encoding named in its XML declaration is ignored.
    [[nodiscard]] static std::shared_ptr<XMLDocument> parseXMLString(const Text& xml, unsigned options,
                                                                     Error* error = nullptr);
    // Reads and parses a file; external entities may come from its folder (see the top of this file). A
    // file that cannot be read fails with domain "NSPOSIXErrorDomain".
    [[nodiscard]] static std::shared_ptr<XMLDocument> parseFile(const std::string& path, unsigned options,
                                                                Error* error = nullptr);

    // The root element, or null.
    [[nodiscard]] std::shared_ptr<XMLElement> rootElement() const;
    // Replaces the root element (and nothing else); null removes it.
    void setRootElement(const std::shared_ptr<XMLElement>& root);

    [[nodiscard]] const Text& version() const noexcept { return version_; }
    void setVersion(const Text& version) { version_ = version; }
    // The encoding the source declared; the writer always writes UTF-8.
    [[nodiscard]] const Text& characterEncoding() const noexcept { return characterEncoding_; }
    void setCharacterEncoding(const Text& encoding) { characterEncoding_ = encoding; }
    [[nodiscard]] bool isStandalone() const noexcept { return standalone_; }
    void setStandalone(bool standalone) noexcept { standalone_ = standalone; }

    // Writes xmlString(options) to the file atomically; false with *error on failure.
    bool writeToFile(const std::string& path,
                     unsigned options = XMLNodePrettyPrint | XMLNodeCompactEmptyElement,
                     Error* error = nullptr) const;

    [[nodiscard]] std::shared_ptr<XMLNode> copy() const override { return copyDocument(); }
    [[nodiscard]] std::shared_ptr<XMLDocument> copyDocument() const;

  private:
    struct MakeShared;
    XMLDocument() : XMLParentNode(XMLNodeKind::Document) {}
    void checkInsertable(const XMLNode& child) const override;

    Text version_ = "1.0";
    Text characterEncoding_ = "UTF-8";
    bool standalone_ = false;
};

}  // namespace bv
