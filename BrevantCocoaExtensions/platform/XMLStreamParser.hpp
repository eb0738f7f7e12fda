// XMLStreamParser: the streaming (event) XML parser, on libxml2's SAX2 push parser.
//
// It reports element starts, character data and element ends to a delegate, in document order, and stops
// as soon as the delegate calls abortParsing(): a file is read in chunks, so what follows the point of
// the abort is never read. Character data between two pieces of markup is gathered and reported in one
// piece, except that a run made only of white space is reported in chunks of its own: each line feed
// alone, and each stretch of other white space together (so "\n    " arrives as "\n" and "    ").
// Comments and processing instructions are not reported (the text around them joins up); CDATA sections
// are reported as character data of their own.
//
// Safety: never any network access (XML_PARSE_NONET); libxml2's own limits stay on. Internal entities are
// expanded (their markup too), but the text all references expand to is bounded by the input read so far
// (8 times its size plus 4 MB): an amplification is refused at once, as a parse error. With external-entity
// resolution on, an external entity (general or parameter) loads only a regular file in the document's own
// folder or below it (its real path: a symbolic link cannot lead out), of at most 1 MB; never an absolute
// path elsewhere, a "../" climb, a device, a FIFO or a URL of another scheme. A document given as bytes or
// read from a stream has no folder and loads none. A refused entity ends the parse with an error saying
// why. With resolution off, external entities are empty. The external DTD subset is never read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <optional>
#include <string>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class XMLStreamParser;

// The receiver of the parser's events. Names are qualified ("x:item"); the URI is empty outside namespaces.
class XMLStreamParserDelegate {
  public:
    virtual ~XMLStreamParserDelegate() = default;
    virtual void parserDidStartElementNamespaceURIQualifiedNameAttributes(
        XMLStreamParser& parser, const Text& elementName, const Text& namespaceURI, const Text& qualifiedName,
        const std::map<Text, Text>& attributes);
    virtual void parserFoundCharacters(XMLStreamParser& parser, const Text& characters);
    virtual void parserDidEndElementNamespaceURIQualifiedName(XMLStreamParser& parser,
                                                              const Text& elementName,
                                                              const Text& namespaceURI,
                                                              const Text& qualifiedName);
    // Whether character data is wanted now. While it answers false, text is dropped as it is read and
    // never gathered (a huge text node costs no memory); it is asked again for every piece of text, so an
    // answer may change at element starts and ends. True by default.
    [[nodiscard]] virtual bool wantsCharacters() const;
};

class XMLStreamParser {
  public:
    // The delegate must outlive every parse.
    explicit XMLStreamParser(XMLStreamParserDelegate& delegate) : delegate_(delegate) {}
    XMLStreamParser(const XMLStreamParser&) = delete;
    XMLStreamParser& operator=(const XMLStreamParser&) = delete;

    // Whether external entities are read (confined to the document's folder, see above). Off by default:
    // they are then empty. Entities declared in the document itself are always replaced by their content.
    void setShouldResolveExternalEntities(bool resolve) noexcept { resolveExternalEntities_ = resolve; }
    [[nodiscard]] bool shouldResolveExternalEntities() const noexcept { return resolveExternalEntities_; }

    // Parses bytes to the end of the document, to an error or to an abort; true when the whole document
    // was parsed without error (an abort answers false).
    bool parse(const std::uint8_t* bytes, std::size_t length);
    // Reads a file in chunks and parses it as parse() does; external entities may come from its folder.
    // A file that cannot be opened or read answers false with parserError() in the POSIX domain.
    bool parseFile(const std::string& path);
    // Reads an open stream (standard input, a pipe) in chunks until the document ends, as parseFile()
    // does. documentPath names the file it reads, if any: without one the document has no folder and
    // loads no external entity. The stream is not closed.
    bool parseStream(std::FILE* stream, const std::string& documentPath = {});
    // Stops the parse in progress: no event follows the one being delivered, and no more input is read.
    void abortParsing() noexcept;

    // The error that ended the last parse (domain "BVXMLErrorDomain"), or nullopt.
    [[nodiscard]] const std::optional<Error>& parserError() const noexcept { return error_; }
    [[nodiscard]] bool wasAborted() const noexcept { return aborted_; }

  private:
    friend struct XMLStreamEvents;
    class Session;

    XMLStreamParserDelegate& delegate_;
    bool resolveExternalEntities_ = false;
    bool aborted_ = false;
    void* context_ = nullptr;  // the libxml2 parser context of the parse in progress
    std::string pending_;      // character data not yet reported (UTF-8)
    std::optional<Error> error_;
};

}  // namespace bv
