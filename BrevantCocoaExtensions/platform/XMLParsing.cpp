// Reading XML into the node model: libxml2 parses, then its tree is copied into XMLNode objects and freed.
//
// libxml2 runs with XML_PARSE_NONET and its default limits (never XML_PARSE_HUGE). Entities are
// substituted (so text holds their replacement) under an entity guard: an external entity loads only a
// regular file in the document's own folder or below it, of bounded size (a document given as bytes loads
// none), the expanded entity text is bounded by the input's size, and a refusal fails the parse. No
// external DTD subset is read and the network is never reached.
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <unordered_map>

#include "BrevantCocoaExtensions/platform/XMLLibxmlSupportInternal.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv {

namespace {

using ContextPtr = std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)>;
using DocumentPtr = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

std::string_view bytesOf(const xmlChar* value) {
    return value == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(value));
}

Text textOf(const xmlChar* value) {
    return Text(bytesOf(value));
}

// Whether a text is white space that breaks a line: among markup that is layout (indentation), not content.
// White space within a line ("<b>big</b> <i>cat</i>") is content and stays.
bool isLayout(const xmlChar* content) {
    if (content == nullptr) return false;
    bool breaksLine = false;
    for (const xmlChar* at = content; *at != 0; ++at) {
        if (*at == '\n') {
            breaksLine = true;
        } else if (*at != ' ' && *at != '\t' && *at != '\r') {
            return false;
        }
    }
    return breaksLine;
}

// Whether a child list holds markup (elements, comments, processing instructions).
bool holdsMarkup(const xmlNode* first) {
    for (const xmlNode* node = first; node != nullptr; node = node->next) {
        if (node->type == XML_ELEMENT_NODE || node->type == XML_COMMENT_NODE || node->type == XML_PI_NODE ||
            node->type == XML_ENTITY_REF_NODE) {
            return true;
        }
    }
    return false;
}

Text qualifiedName(const xmlNs* ns, const xmlChar* name) {
    if (ns == nullptr || ns->prefix == nullptr) return textOf(name);
    std::string qualified(bytesOf(ns->prefix));
    qualified += ':';
    qualified += bytesOf(name);
    return Text(qualified);
}

Text attributeValue(xmlDoc* document, xmlAttr* attribute) {
    const xmlNode* only = attribute->children;
    if (only == nullptr) return Text();
    if (only->next == nullptr && only->type == XML_TEXT_NODE) return textOf(only->content);
    xmlChar* joined = xmlNodeListGetString(document, attribute->children, 1);
    Text value = textOf(joined);
    xmlFree(joined);
    return value;
}

// A parser context that loads no external subset and whose entity look-ups the guard watches.
ContextPtr newParserContext(xmlsupport::EntityGuard& guard) {
    ContextPtr context(xmlNewParserCtxt(), &xmlFreeParserCtxt);
    if (context != nullptr) {
        context->sax->externalSubset = nullptr;
        guard.watch(context.get());
    }
    return context;
}

// Whether a document type with this internal subset, written as the writer writes it, parses without
// recovery.
bool internalSubsetParses(const Text& subset) {
    xmlsupport::ErrorCapture quiet;  // the probe's complaints are not the document's
    const std::string probe = "<!DOCTYPE x [\n" + subset.toUtf8() + "]><x/>";
    xmlsupport::EntityGuard guard;  // a probe has no folder
    guard.setInputSize(probe.size());
    ContextPtr context = newParserContext(guard);
    if (context == nullptr) return false;
    if (probe.size() > static_cast<std::size_t>(INT_MAX)) return false;
    DocumentPtr document(xmlCtxtReadMemory(context.get(), probe.data(), static_cast<int>(probe.size()),
                                           nullptr, "UTF-8", XML_PARSE_NONET | XML_PARSE_NOENT),
                         &xmlFreeDoc);
    return document != nullptr && context->wellFormed != 0;
}

// Recovery keeps a misplaced XML declaration (in the body or the internal subset) as a processing
// instruction named "xml", a target no document may use; it is dropped, so the tree writes well-formed XML.
bool isMisplacedXmlDeclaration(const xmlNode* node) {
    return node->type == XML_PI_NODE && xmlStrcasecmp(node->name, BAD_CAST "xml") == 0;
}

// libxml2 drops a default value that does not fit its attribute's type ("~" for "(a|b)") but keeps the
// declaration with no default at all, which it would write as the malformed <!ATTLIST e x (a|b)>. An
// attribute without a default is #IMPLIED, so the declaration is written that way.
void repairAttributeDeclaration(xmlNode* declaration) {
    if (declaration->type != XML_ATTRIBUTE_DECL) return;
    auto* attribute = reinterpret_cast<xmlAttribute*>(declaration);
    if (attribute->def == XML_ATTRIBUTE_NONE && attribute->defaultValue == nullptr)
        attribute->def = XML_ATTRIBUTE_IMPLIED;
}

// The declarations of the internal subset as libxml2 writes them, one a line.
Text internalSubsetText(xmlDoc* document, xmlDtd* dtd) {
    std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(), &xmlBufferFree);
    if (buffer == nullptr) return Text();
    for (xmlNode* declaration = dtd->children; declaration != nullptr; declaration = declaration->next) {
        if (isMisplacedXmlDeclaration(declaration)) continue;
        repairAttributeDeclaration(declaration);
        xmlNodeDump(buffer.get(), document, declaration, 0, 0);  // each declaration ends its own line
    }
    return Text(std::string_view(reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
                                 static_cast<std::size_t>(xmlBufferLength(buffer.get()))));
}

// Parses a small probe document plainly and quietly (its complaints are not the document's); null when it
// is not well-formed.
DocumentPtr parseProbe(const std::string& probe) {
    xmlsupport::ErrorCapture quiet;
    xmlsupport::EntityGuard guard;  // a probe has no folder
    if (probe.size() > static_cast<std::size_t>(INT_MAX)) return DocumentPtr(nullptr, &xmlFreeDoc);
    return DocumentPtr(xmlReadMemory(probe.data(), static_cast<int>(probe.size()), nullptr, "UTF-8",
                                     XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
                       &xmlFreeDoc);
}

enum class AttributeReading { Namespace, PlainAttribute, Nothing };

// What a plain parse makes of an attribute NAME="..." with an empty or non-empty value. libxml2 itself is
// asked, since which characters it accepts in a prefix (its own name rules) decides the answer.
AttributeReading howAParseReads(const Text& name, bool emptyValue) {
    const DocumentPtr document = parseProbe("<x " + name.toUtf8() + (emptyValue ? "=\"\"/>" : "=\"u\"/>"));
    const xmlNode* root = document == nullptr ? nullptr : xmlDocGetRootElement(document.get());
    if (root == nullptr) return AttributeReading::PlainAttribute;
    if (root->nsDef != nullptr) return AttributeReading::Namespace;
    return root->properties != nullptr ? AttributeReading::PlainAttribute : AttributeReading::Nothing;
}

// Whether a plain parse of "<NAME/>" (an element) or "<x NAME="v"/>" (an attribute) reads NAME back as the
// same qualified name. Recovery keeps names that are none ("\u00B7", or bytes that are not UTF-8 and so
// become U+FFFD here); libxml2 itself is asked, since its own name rules decide.
bool parsesAsName(const Text& name, bool forAttribute) {
    const std::string bytes = name.toUtf8();
    const DocumentPtr document = parseProbe(forAttribute ? "<x " + bytes + "=\"v\"/>" : "<" + bytes + "/>");
    const xmlNode* root = document == nullptr ? nullptr : xmlDocGetRootElement(document.get());
    if (root == nullptr) return false;
    if (!forAttribute) return qualifiedName(root->ns, root->name) == name;
    const xmlAttr* attribute = root->properties;
    return attribute != nullptr && attribute->next == nullptr &&
           qualifiedName(attribute->ns, attribute->name) == name;
}

}  // namespace

// Copies libxml2's tree into the node model. Namespace URIs are shared between the elements that use them.
struct XMLTreeBuilder {
    xmlDoc* document;
    bool keepWhitespace;
    bool recovered;  // the document was not well-formed: names are checked before they are kept
    std::unordered_map<std::string_view, std::shared_ptr<const Text>> uris;
    std::unordered_map<std::string, bool> writableNames;  // "<" element or "@" attribute, then the name

    // Whether a name reads back as itself when written; always so in a well-formed document.
    bool isWritable(const Text& name, bool forAttribute) {
        if (!recovered) return true;
        auto [entry, added] = writableNames.try_emplace((forAttribute ? "@" : "<") + name.toUtf8());
        if (added) entry->second = parsesAsName(name, forAttribute);
        return entry->second;
    }

    std::shared_ptr<const Text> uriOf(const xmlNs* ns) {
        if (ns == nullptr || ns->href == nullptr || *ns->href == 0) return nullptr;
        auto [entry, added] = uris.try_emplace(bytesOf(ns->href));
        if (added) entry->second = std::make_shared<const Text>(textOf(ns->href));
        return entry->second;
    }

    std::shared_ptr<XMLElement> element(xmlNode* source) {
        auto made = XMLElement::make(qualifiedName(source->ns, source->name));
        made->uri_ = uriOf(source->ns);
        for (xmlNs* ns = source->nsDef; ns != nullptr; ns = ns->next) {
            // Recovery keeps xmlns:p="", which no document may hold (only the default namespace can be
            // undeclared); it is dropped, as a parse of the written tree would drop it.
            if (ns->prefix != nullptr && (ns->href == nullptr || *ns->href == 0)) continue;
            made->addNamespace(XMLNode::makeNamespace(textOf(ns->prefix), textOf(ns->href)));
        }
        for (xmlAttr* attribute = source->properties; attribute != nullptr; attribute = attribute->next) {
            const xmlNs* ns = attribute->ns;
            if (ns == nullptr && addRecoveredNamespace(*made, attribute)) continue;
            Text name = qualifiedName(ns, attribute->name);
            if (!isWritable(name, true)) continue;  // recovered junk that no parse would read as a name
            made->addAttribute(XMLNode::makeAttribute(std::move(name), attributeValue(document, attribute),
                                                      ns == nullptr ? Text() : textOf(ns->href)));
        }
        children(source->children, *made);
        return made;
    }

    // Recovery leaves a namespace declaration it could not take (a malformed prefix) as a plain attribute
    // named "xmlns" or "xmlns:...". It becomes what a parse of the written tree would read: a declaration,
    // nothing (a prefix without a URI), or still a plain attribute ("xmlns:2", whose prefix is no name).
    // Answers whether the attribute was taken.
    bool addRecoveredNamespace(XMLElement& into, xmlAttr* attribute) {
        const std::string_view name = bytesOf(attribute->name);
        if (name == "xmlns") {
            into.addNamespace(XMLNode::makeNamespace(Text(), attributeValue(document, attribute)));
            return true;
        }
        if (name.substr(0, 6) != "xmlns:") return false;
        const Text uri = attributeValue(document, attribute);
        switch (howAParseReads(textOf(attribute->name), uri.empty())) {
            case AttributeReading::Namespace:
                into.addNamespace(XMLNode::makeNamespace(Text(name.substr(6)), uri));
                return true;
            case AttributeReading::Nothing:
                return true;
            case AttributeReading::PlainAttribute:
                return false;
        }
        return false;
    }

    void children(xmlNode* first, XMLParentNode& into) {
        bool dropLayout = !keepWhitespace && holdsMarkup(first);
        for (xmlNode* node = first; node != nullptr; node = node->next) {
            // A recovered element whose name is none gives way to its content, which is kept. (The name is
            // only built for a recovered document: a well-formed one never needs the check.)
            if (recovered && node->type == XML_ELEMENT_NODE && node->parent != nullptr &&
                node->parent->type == XML_ELEMENT_NODE &&
                !isWritable(qualifiedName(node->ns, node->name), false)) {
                children(node->children, into);
                continue;
            }
            if (std::shared_ptr<XMLNode> made = convert(node, dropLayout)) into.addChild(made);
        }
    }

    std::shared_ptr<XMLNode> convert(xmlNode* node, bool dropLayout) {
        switch (node->type) {
            case XML_ELEMENT_NODE:
                return element(node);
            case XML_TEXT_NODE:
                if (dropLayout && isLayout(node->content)) return nullptr;
                return XMLNode::makeText(textOf(node->content));
            case XML_CDATA_SECTION_NODE:
                return XMLNode::makeCDATA(textOf(node->content));
            case XML_COMMENT_NODE:
                return XMLNode::makeComment(textOf(node->content));
            case XML_PI_NODE:
                if (isMisplacedXmlDeclaration(node)) return nullptr;
                return XMLNode::makeProcessingInstruction(textOf(node->name), textOf(node->content));
            case XML_DTD_NODE: {
                auto* dtd = reinterpret_cast<xmlDtd*>(node);
                // Recovery keeps a document type declaration without a name, which cannot be written back.
                if (dtd->name == nullptr || *dtd->name == 0) return nullptr;
                Text subset = internalSubsetText(document, dtd);
                // Recovery can keep declarations that cannot be written back well-formed (an entity value
                // holding "&#" with no number after it); such an internal subset is dropped whole.
                if (!subset.empty() && !internalSubsetParses(subset)) subset = Text();
                return XMLDTDNode::make(textOf(dtd->name), textOf(dtd->ExternalID), textOf(dtd->SystemID),
                                        std::move(subset));
            }
            default:  // an entity reference left unresolved by recovery, XInclude markers
                return nullptr;
        }
    }
};

namespace {

// Parses a document; documentPath names the file it was read from (its folder is where external entities
// may come from), or is empty for a document given as bytes.
std::shared_ptr<XMLDocument> parseBytes(std::string_view bytes, unsigned options,
                                        const std::string& documentPath, const char* forcedEncoding,
                                        Error* error) {
    xmlsupport::initializeLibxml();
    if (bytes.size() > static_cast<std::size_t>(INT_MAX)) {
        Error::report(error, xmlsupport::parseError(std::nullopt, "The document is larger than 2 GB."));
        return nullptr;
    }
    xmlsupport::ErrorCapture capture;
    xmlsupport::EntityGuard guard(documentPath);
    guard.setInputSize(bytes.size());
    ContextPtr context = newParserContext(guard);
    if (context == nullptr) {
        Error::report(error, xmlsupport::parseError(std::nullopt, "Out of memory."));
        return nullptr;
    }
    bool tidy = (options & XMLDocumentTidyXML) != 0;
    int parseOptions = XML_PARSE_NONET | XML_PARSE_NOENT;
    if (tidy) parseOptions |= XML_PARSE_RECOVER;
    if ((options & XMLNodePreserveCDATA) == 0) parseOptions |= XML_PARSE_NOCDATA;
    DocumentPtr document(xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()),
                                           documentPath.empty() ? nullptr : documentPath.c_str(),
                                           forcedEncoding, parseOptions),
                         &xmlFreeDoc);
    if (guard.refusal()) {  // even a tidied document is refused: its entities were not all read
        Error::report(error, xmlsupport::parseError(guard.refusal(), ""));
        return nullptr;
    }
    bool usable = document != nullptr && (tidy || context->wellFormed != 0);
    if (!usable || xmlDocGetRootElement(document.get()) == nullptr) {
        Error::report(error,
                      xmlsupport::parseError(capture.mostRelevant(), "The document has no root element."));
        return nullptr;
    }
    auto made = XMLDocument::make();
    if (document->version != nullptr) made->setVersion(textOf(document->version));
    if (document->encoding != nullptr) made->setCharacterEncoding(textOf(document->encoding));
    made->setStandalone(document->standalone == 1);
    XMLTreeBuilder builder{
        document.get(), (options & XMLNodePreserveWhitespace) != 0, context->wellFormed == 0, {}, {}};
    const xmlNode* root = xmlDocGetRootElement(document.get());
    if (!builder.isWritable(qualifiedName(root->ns, root->name), false)) {
        Error::report(error,
                      xmlsupport::parseError(capture.mostRelevant(), "The root element has no valid name."));
        return nullptr;
    }
    builder.children(document->children, *made);
    return made;
}

}  // namespace

std::shared_ptr<XMLDocument> XMLDocument::parseData(std::string_view bytes, unsigned options, Error* error) {
    return parseBytes(bytes, options, {}, nullptr, error);
}

std::shared_ptr<XMLDocument> XMLDocument::parseXMLString(const Text& xml, unsigned options, Error* error) {
    std::string bytes = xml.toUtf8();
    return parseBytes(bytes, options, {}, "UTF-8", error);
}

std::shared_ptr<XMLDocument> XMLDocument::parseFile(const std::string& path, unsigned options, Error* error) {
    std::error_code ignored;
    bool isFolder = std::filesystem::is_directory(path, ignored);
    std::ifstream file;
    errno = 0;
    if (!isFolder) file.open(path, std::ios::binary);
    if (!file.is_open()) {
        int code = isFolder ? EISDIR : (errno != 0 ? errno : EIO);
        Error failure;
        failure.domain = "NSPOSIXErrorDomain";
        failure.code = code;
        failure.localizedDescription =
            Text("The file \u201C" + std::filesystem::path(path).filename().string() +
                 "\u201D couldn\u2019t be opened.");
        failure.failureReason = Text(std::string(std::strerror(static_cast<int>(code))));
        Error::report(error, std::move(failure));
        return nullptr;
    }
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    // An absolute name, so that libxml2 resolves entity names to absolute paths.
    return parseBytes(bytes, options, std::filesystem::absolute(path).string(), nullptr, error);
}

}  // namespace bv
