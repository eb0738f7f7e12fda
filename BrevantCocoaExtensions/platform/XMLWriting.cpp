// Writing the node model as UTF-8 XML.
//
// Text escapes & < > and carriage returns; attribute values escape & < " and tab, line feed and carriage
// return as character references, so a parser gives back exactly the value. Characters that XML 1.0
// cannot hold (control characters other than tab, line feed and carriage return, unpaired surrogates,
// U+FFFE and U+FFFF) are written as U+FFFD. Comments and processing instructions get a space inside any
// "--" or "?>" that would end them early. A namespace URI that no declaration in scope binds gets its
// declaration on the element, so the output always parses back to the same names and URIs.
//
// Pretty printing puts each child on its own line, indented 4 spaces a level, except inside an element
// that holds text (where added white space would change the text).
#include <string>
#include <utility>
#include <vector>

#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"

namespace bv {

namespace {

enum class Escape { Text, Attribute, Raw };

// Whether a version can stand in an XML declaration ("1." and digits); a recovered document may carry
// any other, which is written as "1.0".
bool isXMLVersion(const Text& version) {
    const std::u16string_view units = version.view();
    if (units.size() < 3 || units.substr(0, 2) != u"1.") return false;
    for (char16_t unit : units.substr(2)) {
        if (unit < u'0' || unit > u'9') return false;
    }
    return true;
}

bool isXMLCharacter(char32_t c) {
    if (c < 0x20) return c == 0x9 || c == 0xA || c == 0xD;
    return (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF;
}

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

// The code point starting at `at` (advancing past a surrogate pair); unpaired halves read as U+FFFD.
char32_t nextCodePoint(std::u16string_view units, std::size_t& at) {
    char16_t unit = units[at];
    if (unit >= 0xD800 && unit <= 0xDBFF && at + 1 < units.size() && units[at + 1] >= 0xDC00 &&
        units[at + 1] <= 0xDFFF) {
        ++at;
        return 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) + (units[at] - 0xDC00);
    }
    return unit;
}

void appendEscaped(std::string& out, std::u16string_view units, Escape mode) {
    for (std::size_t at = 0; at < units.size(); ++at) {
        char32_t c = nextCodePoint(units, at);
        if (!isXMLCharacter(c)) c = 0xFFFD;
        if (mode != Escape::Raw) {
            switch (c) {
                case '&':
                    out += "&amp;";
                    continue;
                case '<':
                    out += "&lt;";
                    continue;
                case '>':
                    if (mode == Escape::Text) {
                        out += "&gt;";
                        continue;
                    }
                    break;
                case '"':
                    if (mode == Escape::Attribute) {
                        out += "&quot;";
                        continue;
                    }
                    break;
                case '\r':
                    out += "&#13;";
                    continue;
                case '\t':
                case '\n':
                    if (mode == Escape::Attribute) {
                        out += c == '\t' ? "&#9;" : "&#10;";
                        continue;
                    }
                    break;
                default:
                    break;
            }
        }
        appendUtf8(out, c);
    }
}

void appendEscaped(std::string& out, const Text& text, Escape mode) {
    appendEscaped(out, text.view(), mode);
}

// Puts a space between the two characters of every occurrence of a two-character closer.
std::u16string separated(std::u16string_view units, char16_t first, char16_t second) {
    std::u16string out;
    out.reserve(units.size());
    for (std::size_t at = 0; at < units.size(); ++at) {
        out.push_back(units[at]);
        if (units[at] == first && at + 1 < units.size() && units[at + 1] == second) out.push_back(u' ');
    }
    return out;
}

class Writer {
  public:
    Writer(std::string& out, unsigned options)
        : out_(out),
          pretty_((options & XMLNodePrettyPrint) != 0),
          compact_((options & XMLNodeCompactEmptyElement) != 0) {}

    void write(const XMLNode& node, int depth) {
        switch (node.kind()) {
            case XMLNodeKind::Document:
                return document(node);
            case XMLNodeKind::Element:
                return element(static_cast<const XMLElement&>(node), depth);
            case XMLNodeKind::Text:
                return node.isCDATA() ? cdata(node.stringValue())
                                      : appendEscaped(out_, node.stringValue(), Escape::Text);
            case XMLNodeKind::Comment:
                return comment(node.stringValue());
            case XMLNodeKind::ProcessingInstruction:
                return processingInstruction(node);
            case XMLNodeKind::Attribute:
                return attribute(node.name(), node.stringValue());
            case XMLNodeKind::Namespace:
                return namespaceDeclaration(node.name(), node.stringValue());
            case XMLNodeKind::DTD:
                return dtd(static_cast<const XMLDTDNode&>(node));
            default:
                return;
        }
    }

  private:
    void document(const XMLNode& node) {
        const auto& document = static_cast<const XMLDocument&>(node);
        out_ += "<?xml version=\"";
        appendEscaped(out_, isXMLVersion(document.version()) ? document.version() : Text("1.0"),
                      Escape::Attribute);
        out_ += "\" encoding=\"UTF-8\"";
        if (document.isStandalone()) out_ += " standalone=\"yes\"";
        out_ += "?>";
        for (const auto& child : document.children()) {
            out_ += '\n';
            write(*child, 0);
        }
        if (pretty_) out_ += '\n';
    }

    void element(const XMLElement& element, int depth) {
        std::size_t scopeMark = scope_.size();
        elementScope_ = scopeMark;
        out_ += '<';
        appendEscaped(out_, element.name(), Escape::Raw);
        for (const auto& declaration : element.namespaces()) {
            out_ += ' ';
            namespaceDeclaration(declaration->name(), declaration->stringValue());
            scope_.emplace_back(declaration->name(), declaration->stringValue());
        }
        bindPrefix(element.prefix(), element.URI(), true);
        for (const auto& each : element.attributes()) {
            if (!each->URI().empty()) bindPrefix(each->prefix(), each->URI(), false);
        }
        for (const auto& each : element.attributes()) {
            out_ += ' ';
            attribute(each->name(), each->stringValue());
        }
        const XMLNodeArray& children = element.children();
        if (children.empty()) {
            if (compact_) {
                out_ += "/>";
            } else {
                out_ += "></";
                appendEscaped(out_, element.name(), Escape::Raw);
                out_ += '>';
            }
        } else {
            out_ += '>';
            bool indent = pretty_ && !holdsText(children);
            for (const auto& child : children) {
                if (indent) newLine(depth + 1);
                write(*child, depth + 1);
            }
            if (indent) newLine(depth);
            out_ += "</";
            appendEscaped(out_, element.name(), Escape::Raw);
            out_ += '>';
        }
        scope_.resize(scopeMark);
    }

    // Declares the prefix for the URI when the declarations in scope bind it to something else. An
    // element in no namespace under a default namespace undeclares the default. A prefix the element
    // already declares is left alone: a second declaration of it would not be well-formed XML.
    void bindPrefix(const Text& prefix, const Text& uri, bool forElement) {
        if (prefix == Text("xml") || prefix == Text("xmlns")) return;
        for (std::size_t at = elementScope_; at < scope_.size(); ++at) {
            if (scope_[at].first == prefix) return;
        }
        const Text* bound = lookup(prefix);
        if (uri.empty()) {
            if (!forElement || !prefix.empty() || bound == nullptr || bound->empty()) return;
        } else if (bound != nullptr && *bound == uri) {
            return;
        } else if (prefix.empty() && !forElement) {
            return;  // an unprefixed attribute is in no namespace whatever the default
        }
        out_ += ' ';
        namespaceDeclaration(prefix, uri);
        scope_.emplace_back(prefix, uri);
    }

    const Text* lookup(const Text& prefix) const {
        for (auto at = scope_.rbegin(); at != scope_.rend(); ++at) {
            if (at->first == prefix) return &at->second;
        }
        return nullptr;
    }

    static bool holdsText(const XMLNodeArray& children) {
        for (const auto& child : children) {
            if (child->kind() == XMLNodeKind::Text) return true;
        }
        return false;
    }

    void newLine(int depth) {
        out_ += '\n';
        out_.append(static_cast<std::size_t>(depth) * 4, ' ');
    }

    void attribute(const Text& name, const Text& value) {
        appendEscaped(out_, name, Escape::Raw);
        out_ += "=\"";
        appendEscaped(out_, value, Escape::Attribute);
        out_ += '"';
    }

    void namespaceDeclaration(const Text& prefix, const Text& uri) {
        out_ += "xmlns";
        if (!prefix.empty()) {
            out_ += ':';
            appendEscaped(out_, prefix, Escape::Raw);
        }
        out_ += "=\"";
        appendEscaped(out_, uri, Escape::Attribute);
        out_ += '"';
    }

    // A CDATA section; "]]>" inside is split across two sections, and a carriage return (which a parser
    // would turn into a line feed) goes between sections as a character reference.
    void cdata(const Text& value) {
        std::u16string_view units = value.view();
        out_ += "<![CDATA[";
        std::size_t from = 0;
        for (std::size_t at = 0; at < units.size(); ++at) {
            if (units[at] == u'\r') {
                appendEscaped(out_, units.substr(from, at - from), Escape::Raw);
                out_ += "]]>&#13;<![CDATA[";
                from = at + 1;
            } else if (units.substr(at, 3) == u"]]>") {
                appendEscaped(out_, units.substr(from, at + 2 - from), Escape::Raw);
                out_ += "]]><![CDATA[";
                from = at + 2;
            }
        }
        appendEscaped(out_, units.substr(from), Escape::Raw);
        out_ += "]]>";
    }

    void comment(const Text& value) {
        std::u16string content = separated(value.view(), u'-', u'-');
        if (!content.empty() && content.back() == u'-') content.push_back(u' ');
        out_ += "<!--";
        appendEscaped(out_, std::u16string_view(content), Escape::Raw);
        out_ += "-->";
    }

    void processingInstruction(const XMLNode& node) {
        out_ += "<?";
        appendEscaped(out_, node.name(), Escape::Raw);
        Text value = node.stringValue();
        if (!value.empty()) {
            out_ += ' ';
            appendEscaped(out_, std::u16string_view(separated(value.view(), u'?', u'>')), Escape::Raw);
        }
        out_ += "?>";
    }

    void dtd(const XMLDTDNode& node) {
        out_ += "<!DOCTYPE ";
        appendEscaped(out_, node.name(), Escape::Raw);
        if (!node.publicID().empty()) {
            out_ += " PUBLIC \"";
            appendEscaped(out_, node.publicID(), Escape::Raw);
            out_ += "\" \"";
            appendEscaped(out_, node.systemID(), Escape::Raw);
            out_ += '"';
        } else if (!node.systemID().empty()) {
            out_ += " SYSTEM \"";
            appendEscaped(out_, node.systemID(), Escape::Raw);
            out_ += '"';
        }
        if (!node.internalSubset().empty()) {
            out_ += " [\n";
            appendEscaped(out_, node.internalSubset(), Escape::Raw);
            out_ += ']';
        }
        out_ += '>';
    }

    std::string& out_;
    bool pretty_;
    bool compact_;
    std::vector<std::pair<Text, Text>> scope_;  // prefix to URI, innermost last
    std::size_t elementScope_ = 0;              // where the declarations of the element being written start
};

}  // namespace

std::string XMLNode::xmlString(unsigned options) const {
    std::string out;
    Writer(out, options).write(*this, 0);
    return out;
}

bool XMLDocument::writeToFile(const std::string& path, unsigned options, Error* error) const {
    std::string bytes = xmlString(options);
    return writeBytesToFile(path, bytes.data(), bytes.size(), true, error);
}

}  // namespace bv
