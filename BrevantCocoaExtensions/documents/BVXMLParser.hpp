// BVXMLParser: pulls the text of a few named elements out of an XML document in one streaming pass,
// stopping as soon as every wanted element has been seen, so a value near the top of a large file costs
// almost nothing (a file is read in chunks and what follows the last wanted element is never read).
//
//   auto values = bv::BVXMLParser::resultsOfDataToParseAtPathSeekingDesiredElements(
//       "Content.xml", {"version", "title"});          // {"title": "...", "version": "..."}
//   auto fromBytes = bv::BVXMLParser().resultsOfDataToParseSeekingDesiredElements(bytes, {"version"});
//
// The class form of the data operation (a new parser object each time) is the member called on a
// temporary, as above: the result dictionary it answers outlives the parser object.
//
// What an element's text is, kept on purpose:
//   - The collected text is emptied at every element start and not at element ends, so the value of an
//     element with children is the text of its last descendant that began, followed by the text after
//     that descendant: <a>lost<b>x</b>y</a> gives "xy" for a.
//   - A chunk of character data that is exactly one line feed is dropped. The streaming parser reports
//     white space between markup in chunks of its own (each line feed alone), so the line breaks of a
//     pretty-printed document never reach a value, while the indentation after them does.
//   - The first occurrence of a wanted element wins; a name given twice is wanted twice, and then the
//     second occurrence replaces the first.
//   - Names compare exactly, as written in the document (qualified: "x:item").
//   - Running the same object again merges the new values into the old results.
//   - A missing or unreadable file, empty data or a document without the names gives no entries; a
//     malformed document gives the values found before the fault.
//   - External entities are resolved, but only from regular files in the document's own folder or below
//     it (at most 1 MB each; never the network, a "../" climb, a link out of the folder, a device or a
//     FIFO); data given as bytes loads none. Entity expansion is bounded by the document's size. A refused
//     entity ends the parse there: the values found before it are kept.
//   - Text outside every wanted element is never kept, so a huge text node elsewhere costs no memory.
//
// The three accessors and their setters are atomic (a read or a replacement of the held object is safe
// from any thread); the setters keep the object given.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"
#include "BrevantCocoaExtensions/platform/XMLStreamParser.hpp"

namespace bv {

class BVXMLParser : public XMLStreamParserDelegate {
  public:
    // Element name to collected text.
    using ResultsDictionary = std::map<Text, Text>;

    BVXMLParser();

    // The values of the wanted elements found in the file (read only as far as needed); empty when the
    // file cannot be read.
    [[nodiscard]] static ResultsDictionary resultsOfDataToParseAtPathSeekingDesiredElements(
        const Text& path, const std::vector<Text>& desiredElements);
    // Replaces the contents of desiredElements by the names, parses the data, and answers the object's
    // own resultsData (not a copy; earlier results stay).
    std::shared_ptr<ResultsDictionary> resultsOfDataToParseSeekingDesiredElements(
        const ByteData& data, const std::vector<Text>& desiredElements);

    // Streaming parser events. An element start empties elementData; character data is appended to it;
    // an element end stores elementData under the first still-wanted name equal to the element's, and
    // aborts the parse once nothing is wanted any more.
    void parserDidStartElementNamespaceURIQualifiedNameAttributes(
        XMLStreamParser& parser, const Text& elementName, const Text& namespaceURI, const Text& qualifiedName,
        const std::map<Text, Text>& attributes) override;
    void parserFoundCharacters(XMLStreamParser& parser, const Text& characters) override;
    void parserDidEndElementNamespaceURIQualifiedName(XMLStreamParser& parser, const Text& elementName,
                                                      const Text& namespaceURI,
                                                      const Text& qualifiedName) override;
    // Appends the text to elementData, unless it is exactly "\n", which is dropped.
    void appendElementData(const Text& text);
    // Character data is wanted only while an element that was wanted when it began is open: text outside
    // them is emptied by the next element start before any wanted element can end.
    [[nodiscard]] bool wantsCharacters() const override;

    // The character data collected since the most recent element start.
    [[nodiscard]] std::shared_ptr<Text> elementData() const;
    void setElementData(std::shared_ptr<Text> elementData);
    // The element names still wanted, in the caller's order.
    [[nodiscard]] std::shared_ptr<std::vector<Text>> desiredElements() const;
    void setDesiredElements(std::shared_ptr<std::vector<Text>> desiredElements);
    // Element name to collected text, for each wanted element found.
    [[nodiscard]] std::shared_ptr<ResultsDictionary> resultsData() const;
    void setResultsData(std::shared_ptr<ResultsDictionary> resultsData);

  private:
    template <class Parse>
    std::shared_ptr<ResultsDictionary> collect(const std::vector<Text>& desiredElements, Parse parse);

    std::vector<bool> openElementWasWanted_;  // per open element, innermost last
    std::size_t openWantedElements_ = 0;
    mutable std::mutex mutex_;  // guards the three references, not the objects they hold
    std::shared_ptr<Text> elementData_;
    std::shared_ptr<std::vector<Text>> desiredElements_;
    std::shared_ptr<ResultsDictionary> resultsData_;
};

}  // namespace bv
