// BVXMLParser: the collecting streaming parser.
#include "BrevantCocoaExtensions/documents/BVXMLParser.hpp"

#include <algorithm>
#include <utility>

namespace bv {

BVXMLParser::BVXMLParser()
    : elementData_(std::make_shared<Text>()),
      desiredElements_(std::make_shared<std::vector<Text>>()),
      resultsData_(std::make_shared<ResultsDictionary>()) {}

template <class Parse>
std::shared_ptr<BVXMLParser::ResultsDictionary> BVXMLParser::collect(const std::vector<Text>& desiredElements,
                                                                     Parse parse) {
    if (auto wanted = this->desiredElements()) *wanted = desiredElements;
    openElementWasWanted_.clear();
    openWantedElements_ = 0;
    XMLStreamParser parser(*this);
    parser.setShouldResolveExternalEntities(true);
    parse(parser);  // whether the document was well-formed does not matter: what was found is kept
    return resultsData();
}

BVXMLParser::ResultsDictionary BVXMLParser::resultsOfDataToParseAtPathSeekingDesiredElements(
    const Text& path, const std::vector<Text>& desiredElements) {
    BVXMLParser collector;
    auto results = collector.collect(
        desiredElements, [&path](XMLStreamParser& parser) { return parser.parseFile(path.toUtf8()); });
    return std::move(*results);
}

std::shared_ptr<BVXMLParser::ResultsDictionary> BVXMLParser::resultsOfDataToParseSeekingDesiredElements(
    const ByteData& data, const std::vector<Text>& desiredElements) {
    return collect(desiredElements,
                   [&data](XMLStreamParser& parser) { return parser.parse(data.data(), data.size()); });
}

void BVXMLParser::parserDidStartElementNamespaceURIQualifiedNameAttributes(XMLStreamParser&,
                                                                           const Text& elementName,
                                                                           const Text&, const Text&,
                                                                           const std::map<Text, Text>&) {
    if (auto data = elementData()) data->units().clear();
    auto wanted = desiredElements();
    bool isWanted =
        wanted != nullptr && std::find(wanted->begin(), wanted->end(), elementName) != wanted->end();
    openElementWasWanted_.push_back(isWanted);
    if (isWanted) ++openWantedElements_;
}

bool BVXMLParser::wantsCharacters() const {
    return openWantedElements_ > 0;
}

void BVXMLParser::parserFoundCharacters(XMLStreamParser&, const Text& characters) {
    appendElementData(characters);
}

void BVXMLParser::appendElementData(const Text& text) {
    if (text.units() == u"\n") return;
    if (auto data = elementData()) data->append(text);
}

void BVXMLParser::parserDidEndElementNamespaceURIQualifiedName(XMLStreamParser& parser,
                                                               const Text& elementName, const Text&,
                                                               const Text&) {
    if (!openElementWasWanted_.empty()) {
        if (openElementWasWanted_.back()) --openWantedElements_;
        openElementWasWanted_.pop_back();
    }
    auto wanted = desiredElements();
    if (wanted == nullptr) return;
    auto entry = std::find(wanted->begin(), wanted->end(), elementName);
    if (entry == wanted->end()) return;
    auto data = elementData();
    if (auto results = resultsData()) (*results)[elementName] = data != nullptr ? *data : Text();
    wanted->erase(entry);
    if (wanted->empty()) parser.abortParsing();
}

std::shared_ptr<Text> BVXMLParser::elementData() const {
    std::lock_guard lock(mutex_);
    return elementData_;
}

void BVXMLParser::setElementData(std::shared_ptr<Text> elementData) {
    std::lock_guard lock(mutex_);
    elementData_ = std::move(elementData);
}

std::shared_ptr<std::vector<Text>> BVXMLParser::desiredElements() const {
    std::lock_guard lock(mutex_);
    return desiredElements_;
}

void BVXMLParser::setDesiredElements(std::shared_ptr<std::vector<Text>> desiredElements) {
    std::lock_guard lock(mutex_);
    desiredElements_ = std::move(desiredElements);
}

std::shared_ptr<BVXMLParser::ResultsDictionary> BVXMLParser::resultsData() const {
    std::lock_guard lock(mutex_);
    return resultsData_;
}

void BVXMLParser::setResultsData(std::shared_ptr<ResultsDictionary> resultsData) {
    std::lock_guard lock(mutex_);
    resultsData_ = std::move(resultsData);
}

}  // namespace bv
