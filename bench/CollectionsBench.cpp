// Sorting records by a key, collapsing texts to unique ones, and the XML property-list writer and reader,
// each beside the straightforward way of doing the same work in the same run:
//   - SortCaseInsensitive: sortedArrayUsingDescriptors (each record's key folded once) against
//     std::stable_sort with a comparator that looks both values up and compares them ignoring case;
//   - UniqueStrings: addUniqueStringsFromArrayCaseInsensitiveCompare (a hash of folded keys) against
//     calling addUniqueStringCaseInsensitiveCompare once per text (a scan of the list per text);
//   - PlistWrite: PropertyList::xmlData against building the same document as a libxml2 tree and
//     serialising it with xmlDocDumpFormatMemory;
//   - PlistRead: PropertyList::fromXmlData against libxml2 parsing the document alone, the floor of any
//     reader built on it.
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <random>
#include <string>

#include "BrevantCocoaExtensions/platform/KeyValue.hpp"
#include "BrevantCocoaExtensions/platform/PropertyList.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableArray.hpp"
#include "BrevantCocoaExtensions/text/BVNSSortDescriptor.hpp"

namespace {

// Names as a class list holds them: a word and a number, in mixed case, in random order.
std::vector<bv::Text> names(std::size_t count, std::size_t distinct) {
    static const char* const kWords[] = {"smith", "Jones",   "GARCIA", "M\xC3\xBCller",
                                         "Lee",   "o'brien", "Nguyen"};
    std::mt19937 random(42);
    std::vector<bv::Text> result;
    result.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t n = random() % distinct;
        std::string name = std::string(kWords[n % 7]) + " " + std::to_string(n);
        if (random() % 2 == 0) std::transform(name.begin(), name.end(), name.begin(), ::toupper);
        result.emplace_back(name);
    }
    return result;
}

bv::ValueArray records(std::size_t count) {
    bv::ValueArray rows;
    int id = 0;
    for (const bv::Text& name : names(count, count)) {
        rows.emplace_back(
            bv::ValueDictionary{{bv::Text("name"), bv::Value(name)}, {bv::Text("id"), bv::Value(id++)}});
    }
    return rows;
}

void SortCaseInsensitiveLibrary(benchmark::State& state) {
    bv::ValueArray rows = records(static_cast<std::size_t>(state.range(0)));
    auto keys =
        bv::BVNSSortDescriptor::descriptorsForKeyAscendingOrderCaseInsensitive(bv::Text("name"), true, true);
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::sortedArrayUsingDescriptors(rows, keys));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void SortCaseInsensitivePeer(benchmark::State& state) {
    bv::ValueArray rows = records(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        bv::ValueArray sorted = rows;
        std::stable_sort(sorted.begin(), sorted.end(), [](const bv::Value& a, const bv::Value& b) {
            return bv::valueForKey(a, bv::Text("name"))
                       ->text()
                       ->compare(*bv::valueForKey(b, bv::Text("name"))->text(),
                                 bv::CompareMode::CaseInsensitive) < 0;
        });
        benchmark::DoNotOptimize(sorted);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void UniqueStringsLibrary(benchmark::State& state) {
    std::vector<bv::Text> texts = names(static_cast<std::size_t>(state.range(0)), state.range(0) / 2);
    for (auto _ : state) {
        bv::ValueArray unique;
        bv::BVNSMutableArray::addUniqueStringsFromArrayCaseInsensitiveCompare(unique, texts, true);
        benchmark::DoNotOptimize(unique);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void UniqueStringsPeer(benchmark::State& state) {
    std::vector<bv::Text> texts = names(static_cast<std::size_t>(state.range(0)), state.range(0) / 2);
    for (auto _ : state) {
        bv::ValueArray unique;
        for (const bv::Text& text : texts)
            bv::BVNSMutableArray::addUniqueStringCaseInsensitiveCompare(unique, text, true);
        benchmark::DoNotOptimize(unique);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A settings-like dictionary: one entry per record with text, integer, real and boolean values.
bv::ValueDictionary settings(std::size_t count) {
    bv::ValueDictionary root;
    int i = 0;
    for (const bv::Text& name : names(count, count)) {
        root.insert_or_assign(
            name + bv::Text(" #") + bv::Text(std::to_string(i)),
            bv::Value(bv::ValueDictionary{{bv::Text("title"), bv::Value(name + bv::Text(" & co"))},
                                          {bv::Text("count"), bv::Value(i)},
                                          {bv::Text("ratio"), bv::Value(i / 7.0)},
                                          {bv::Text("on"), bv::Value(i % 2 == 0)}}));
        ++i;
    }
    return root;
}

void PlistWriteLibrary(benchmark::State& state) {
    bv::ValueDictionary root = settings(static_cast<std::size_t>(state.range(0)));
    std::size_t bytes = 0;
    for (auto _ : state) {
        bv::ByteData data = bv::PropertyList::xmlData(root);
        bytes = data.size();
        benchmark::DoNotOptimize(data);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

void addText(xmlNodePtr parent, const char* name, const std::string& content) {
    xmlNewTextChild(parent, nullptr, reinterpret_cast<const xmlChar*>(name),
                    reinterpret_cast<const xmlChar*>(content.c_str()));
}

void PlistWritePeer(benchmark::State& state) {
    bv::ValueDictionary root = settings(static_cast<std::size_t>(state.range(0)));
    std::size_t bytes = 0;
    for (auto _ : state) {
        xmlDocPtr document = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
        xmlNodePtr plist = xmlNewNode(nullptr, reinterpret_cast<const xmlChar*>("plist"));
        xmlDocSetRootElement(document, plist);
        xmlNodePtr dict = xmlNewChild(plist, nullptr, reinterpret_cast<const xmlChar*>("dict"), nullptr);
        for (const auto& [key, value] : root) {
            addText(dict, "key", key.toUtf8());
            xmlNodePtr inner = xmlNewChild(dict, nullptr, reinterpret_cast<const xmlChar*>("dict"), nullptr);
            for (const auto& [innerKey, innerValue] : *value.dictionary()) {
                addText(inner, "key", innerKey.toUtf8());
                if (const bv::Text* text = innerValue.text()) {
                    addText(inner, "string", text->toUtf8());
                } else if (innerValue.number()->isBool()) {
                    xmlNewChild(
                        inner, nullptr,
                        reinterpret_cast<const xmlChar*>(innerValue.number()->boolValue() ? "true" : "false"),
                        nullptr);
                } else {
                    addText(inner, innerValue.number()->isFloating() ? "real" : "integer",
                            innerValue.description().toUtf8());
                }
            }
        }
        xmlChar* out = nullptr;
        int size = 0;
        xmlDocDumpFormatMemory(document, &out, &size, 1);
        bytes = static_cast<std::size_t>(size);
        benchmark::DoNotOptimize(out);
        xmlFree(out);
        xmlFreeDoc(document);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

void PlistReadLibrary(benchmark::State& state) {
    bv::ByteData data = bv::PropertyList::xmlData(settings(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::PropertyList::fromXmlData(data));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * data.size()));
}

void PlistReadPeer(benchmark::State& state) {
    bv::ByteData data = bv::PropertyList::xmlData(settings(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        xmlDocPtr document = xmlReadMemory(reinterpret_cast<const char*>(data.data()),
                                           static_cast<int>(data.size()), nullptr, nullptr, XML_PARSE_NONET);
        benchmark::DoNotOptimize(document);
        xmlFreeDoc(document);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * data.size()));
}

}  // namespace

BENCHMARK(SortCaseInsensitiveLibrary)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(SortCaseInsensitivePeer)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(UniqueStringsLibrary)->Arg(1'000)->Arg(4'000)->Unit(benchmark::kMillisecond);
BENCHMARK(UniqueStringsPeer)->Arg(1'000)->Arg(4'000)->Unit(benchmark::kMillisecond);
BENCHMARK(PlistWriteLibrary)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(PlistWritePeer)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(PlistReadLibrary)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(PlistReadPeer)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
