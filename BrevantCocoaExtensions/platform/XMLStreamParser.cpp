// The streaming XML parser on libxml2's SAX2 push interface, fed in growing chunks so that an abort near
// the top of a large input costs almost nothing.
#include "BrevantCocoaExtensions/platform/XMLStreamParser.hpp"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

#include "BrevantCocoaExtensions/platform/XMLLibxmlSupportInternal.hpp"

namespace bv {

void XMLStreamParserDelegate::parserDidStartElementNamespaceURIQualifiedNameAttributes(
    XMLStreamParser&, const Text&, const Text&, const Text&, const std::map<Text, Text>&) {}
void XMLStreamParserDelegate::parserFoundCharacters(XMLStreamParser&, const Text&) {}
void XMLStreamParserDelegate::parserDidEndElementNamespaceURIQualifiedName(XMLStreamParser&, const Text&,
                                                                           const Text&, const Text&) {}
bool XMLStreamParserDelegate::wantsCharacters() const {
    return true;
}

namespace {

constexpr std::size_t kFirstChunk = 4 * 1024;  // small, so that a value near the top is found at once
constexpr std::size_t kLargestChunk = 256 * 1024;

std::string_view bytesOf(const xmlChar* value) {
    return value == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(value));
}

Text qualified(const xmlChar* prefix, const xmlChar* localName) {
    if (prefix == nullptr) return Text(bytesOf(localName));
    std::string name(bytesOf(prefix));
    name += ':';
    name += bytesOf(localName);
    return Text(name);
}

bool isWhitespaceOnly(const std::string& run) {
    return std::all_of(run.begin(), run.end(),
                       [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

}  // namespace

// The SAX2 callbacks. libxml2 hands each the parser context, whose _private points to the XMLStreamParser
// (entity contents are parsed by child contexts that inherit it).
struct XMLStreamEvents {
    static XMLStreamParser& parserOf(void* context) {
        return *static_cast<XMLStreamParser*>(static_cast<xmlParserCtxtPtr>(context)->_private);
    }

    // Whether events have ended: the delegate aborted, or the entity guard refused something.
    static bool stopped(const XMLStreamParser& parser) {
        return parser.aborted_ || xmlsupport::EntityGuard::currentParseRefused();
    }

    // Reports the gathered character data: in one piece, or a white-space-only run in chunks of its own.
    static void flush(XMLStreamParser& parser) {
        if (parser.pending_.empty()) return;
        std::string run;
        run.swap(parser.pending_);
        if (!isWhitespaceOnly(run)) return deliver(parser, run);
        std::size_t from = 0;
        while (from < run.size() && !stopped(parser)) {
            std::size_t to = run[from] == '\n' ? from + 1 : run.find('\n', from);
            if (to == std::string::npos) to = run.size();
            deliver(parser, run.substr(from, to - from));
            from = to;
        }
    }

    static void deliver(XMLStreamParser& parser, const std::string& chunk) {
        if (!stopped(parser)) parser.delegate_.parserFoundCharacters(parser, Text(chunk));
    }

    static void startElement(void* context, const xmlChar* localName, const xmlChar* prefix,
                             const xmlChar* uri, int, const xmlChar**, int attributeCount, int,
                             const xmlChar** attributes) {
        XMLStreamParser& parser = parserOf(context);
        if (stopped(parser)) return;
        flush(parser);
        if (stopped(parser)) return;
        std::map<Text, Text> values;
        for (int at = 0; at < attributeCount; ++at) {
            const xmlChar** attribute =
                attributes + static_cast<std::ptrdiff_t>(at) * 5;  // name, prefix, URI, begin, end
            values[qualified(attribute[1], attribute[0])] =
                Text(std::string_view(reinterpret_cast<const char*>(attribute[3]),
                                      static_cast<std::size_t>(attribute[4] - attribute[3])));
        }
        Text name = qualified(prefix, localName);
        parser.delegate_.parserDidStartElementNamespaceURIQualifiedNameAttributes(
            parser, name, Text(bytesOf(uri)), name, values);
    }

    static void endElement(void* context, const xmlChar* localName, const xmlChar* prefix,
                           const xmlChar* uri) {
        XMLStreamParser& parser = parserOf(context);
        if (stopped(parser)) return;
        flush(parser);
        if (stopped(parser)) return;
        Text name = qualified(prefix, localName);
        parser.delegate_.parserDidEndElementNamespaceURIQualifiedName(parser, name, Text(bytesOf(uri)), name);
    }

    static void characters(void* context, const xmlChar* bytes, int length) {
        XMLStreamParser& parser = parserOf(context);
        // Text the delegate does not want is never gathered, however long it runs.
        if (!stopped(parser) && parser.delegate_.wantsCharacters())
            parser.pending_.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
    }

    static void cdata(void* context, const xmlChar* bytes, int length) {
        XMLStreamParser& parser = parserOf(context);
        if (stopped(parser)) return;
        flush(parser);
        if (parser.delegate_.wantsCharacters())
            deliver(parser,
                    std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)));
    }

    static xmlSAXHandler handler(bool resolveEntities) {
        xmlSAXHandler sax;
        std::memset(&sax, 0, sizeof sax);
        xmlSAXVersion(&sax, 2);  // the defaults keep track of the DTD's entity declarations
        sax.startElementNs = &startElement;
        sax.endElementNs = &endElement;
        sax.characters = &characters;
        sax.ignorableWhitespace = &characters;
        sax.cdataBlock = &cdata;
        sax.comment = nullptr;
        sax.processingInstruction = nullptr;
        sax.reference = nullptr;
        sax.externalSubset = nullptr;
        if (!resolveEntities) sax.entityDecl = &xmlsupport::declareEntityWithoutExternalContent;
        return sax;
    }
};

// One parse: the libxml2 push context, the capture of its errors and the entity guard.
class XMLStreamParser::Session {
  public:
    Session(XMLStreamParser& owner, const char* firstBytes, std::size_t firstLength,
            const std::string& documentPath)
        : owner_(owner), guard_(documentPath) {
        owner_.aborted_ = false;
        owner_.error_.reset();
        owner_.pending_.clear();
        xmlSAXHandler sax = XMLStreamEvents::handler(owner_.resolveExternalEntities_);
        guard_.setInputSize(firstLength);
        fed_ = firstLength;
        // An absolute name, so that libxml2 resolves entity names to absolute paths.
        const std::string absolute =
            documentPath.empty() ? documentPath : std::filesystem::absolute(documentPath).string();
        context_ = xmlCreatePushParserCtxt(&sax, nullptr, firstBytes, static_cast<int>(firstLength),
                                           absolute.empty() ? nullptr : absolute.c_str());
        if (context_ == nullptr) return;
        context_->_private = &owner_;
        guard_.watch(context_);
        xmlCtxtUseOptions(context_, XML_PARSE_NONET | XML_PARSE_NOENT);
        owner_.context_ = context_;
    }

    ~Session() {
        owner_.context_ = nullptr;
        if (context_ == nullptr) return;
        if (context_->myDoc != nullptr) xmlFreeDoc(context_->myDoc);
        context_->myDoc = nullptr;
        xmlFreeParserCtxt(context_);
    }

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Parses more input; false once the parse has ended (abort or fatal error) and input is no longer wanted.
    bool feed(const char* bytes, std::size_t length) {
        if (!goesOn()) return false;
        fed_ += length;
        guard_.setInputSize(fed_);
        xmlParseChunk(context_, bytes, static_cast<int>(length), 0);
        return goesOn();
    }

    // Ends the input and answers whether the whole document was well-formed.
    bool finish() {
        if (goesOn()) {
            xmlParseChunk(context_, nullptr, 0, 1);
            if (!owner_.aborted_) XMLStreamEvents::flush(owner_);
        }
        if (guard_.refusal()) {
            owner_.error_ = xmlsupport::parseError(guard_.refusal(), "");
            return false;
        }
        bool wellFormed = context_ != nullptr && context_->wellFormed != 0 && !owner_.aborted_;
        if (!wellFormed && !owner_.aborted_) {
            owner_.error_ = xmlsupport::parseError(capture_.mostRelevant(), "The document is empty.");
        }
        return wellFormed;
    }

  private:
    bool goesOn() const {
        return context_ != nullptr && !owner_.aborted_ && !guard_.refusal() && context_->disableSAX == 0 &&
               context_->instate != XML_PARSER_EOF;
    }

    XMLStreamParser& owner_;
    xmlsupport::ErrorCapture capture_;
    xmlsupport::EntityGuard guard_;
    xmlParserCtxtPtr context_ = nullptr;
    std::uint64_t fed_ = 0;
};

bool XMLStreamParser::parse(const std::uint8_t* bytes, std::size_t length) {
    const char* data = reinterpret_cast<const char*>(bytes);
    std::size_t first = std::min<std::size_t>(length, 4);  // enough to detect the encoding
    Session session(*this, data, first, {});
    std::size_t chunk = kFirstChunk;
    for (std::size_t at = first; at < length; at += chunk, chunk = std::min(chunk * 2, kLargestChunk)) {
        if (!session.feed(data + at, std::min(chunk, length - at))) break;
    }
    return session.finish();
}

bool XMLStreamParser::parseFile(const std::string& path) {
    std::error_code ignored;
    errno = 0;
    std::unique_ptr<std::FILE, decltype(&std::fclose)> file(
        std::filesystem::is_directory(path, ignored) ? nullptr : std::fopen(path.c_str(), "rb"),
        &std::fclose);
    if (file == nullptr) {
        int code = errno != 0 ? errno : EISDIR;
        aborted_ = false;
        error_ = Error{"NSPOSIXErrorDomain", code, Text("The file could not be opened."),
                       Text(path + ": " + std::strerror(code))};
        return false;
    }
    return parseStream(file.get(), path);
}

bool XMLStreamParser::parseStream(std::FILE* stream, const std::string& documentPath) {
    std::vector<char> buffer(kLargestChunk);
    std::size_t first = std::fread(buffer.data(), 1, 4, stream);
    Session session(*this, buffer.data(), first, documentPath);
    std::size_t chunk = kFirstChunk;
    while (first == 4) {
        std::size_t got = std::fread(buffer.data(), 1, chunk, stream);
        if (got == 0 || !session.feed(buffer.data(), got)) break;
        chunk = std::min(chunk * 2, kLargestChunk);
    }
    bool wellFormed = session.finish();
    if (std::ferror(stream) != 0 && !aborted_) {
        int code = errno != 0 ? errno : EIO;
        error_ = Error{"NSPOSIXErrorDomain", code, Text("The file could not be read."),
                       Text(std::string(std::strerror(code)))};
        return false;
    }
    return wellFormed;
}

void XMLStreamParser::abortParsing() noexcept {
    aborted_ = true;
    if (context_ != nullptr) xmlStopParser(static_cast<xmlParserCtxtPtr>(context_));
}

}  // namespace bv
