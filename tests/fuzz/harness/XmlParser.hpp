// Harness: the collecting XML parser (BVXMLParser) on data and on a file.
#pragma once

#include <algorithm>

#include "BrevantCocoaExtensions/documents/BVXMLParser.hpp"
#include "Common.hpp"
#include "EntityFolder.hpp"

namespace bv::fuzz {

// The first line lists the wanted element names, separated by spaces; the rest is the document. Only
// wanted names appear in the results; reading the same bytes from a file (in chunks) gives the same
// results as reading them from memory, unless the document names external entities (which only a file's
// folder can supply); a file's entities never open a file outside its folder; a second run on the same
// object keeps the first run's names.
inline void xmlParser(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = asChars(data, size);
    const std::size_t lineEnd = std::min(input.find('\n'), input.size());
    std::vector<Text> wanted;
    std::string_view names = input.substr(0, lineEnd);
    while (!names.empty()) {
        const std::size_t space = std::min(names.find(' '), names.size());
        if (space > 0) wanted.emplace_back(names.substr(0, space));
        names.remove_prefix(std::min(space + 1, names.size()));
    }
    const std::string_view document = input.substr(std::min(lineEnd + 1, input.size()));
    const ByteData bytes(document.begin(), document.end());

    const auto results = *BVXMLParser().resultsOfDataToParseSeekingDesiredElements(bytes, wanted);
    for (const auto& [name, value] : results)
        check(std::find(wanted.begin(), wanted.end(), name) != wanted.end(), "only wanted names are found");

    const EntityFolder& folder = EntityFolder::shared();
    const auto fromFile = BVXMLParser::resultsOfDataToParseAtPathSeekingDesiredElements(
        Text(folder.writeDocument(document)), wanted);
    const bool namesExternalEntities = document.find("SYSTEM") != std::string_view::npos ||
                                       document.find("PUBLIC") != std::string_view::npos;
    check(namesExternalEntities || fromFile == results,
          "a file gives the same results as the same bytes in memory");
    folder.checkNothingOutsideWasOpened();

    BVXMLParser parser;
    const auto first = *parser.resultsOfDataToParseSeekingDesiredElements(bytes, wanted);
    const auto merged = *parser.resultsOfDataToParseSeekingDesiredElements(bytes, wanted);
    check(first == results, "the instance form collects the same results");
    for (const auto& entry : first)
        check(merged.count(entry.first) == 1, "a second run keeps the first run's names");
}

}  // namespace bv::fuzz
