// XML benchmarks.
//
// 1. BVXMLParser pulling one value from the first kilobyte of generated 10 MB and 100 MB documents, beside
//    a full libxml2 parse (xmlReadFile) of the same files: the collecting parser stops after the value and
//    never reads the rest, so its time should not grow with the file.
// 2. childElementsNamed:recursiveSearch: over trees of up to a million elements, beside a plain loop over
//    the same tree doing the same name test and collecting raw pointers (the physical limit), and the same
//    loop collecting the shared pointers the operation must answer (what a result of owned elements costs:
//    one reference-count increment per element found, one decrement when the result goes). All linear;
//    the target is the operation within 2x of the raw-pointer loop.
//
// The documents are written once to the temporary folder and reused by later runs of the same size.
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <malloc.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/BVNSXMLElement.hpp"
#include "BrevantCocoaExtensions/documents/BVXMLParser.hpp"

namespace {

// A catalog whose <version> sits in the first kilobyte, followed by items up to the size in megabytes.
std::string generatedDocument(int megabytes) {
    auto path =
        std::filesystem::temp_directory_path() / ("bv-xml-bench-" + std::to_string(megabytes) + "MB.xml");
    const std::uintmax_t target = static_cast<std::uintmax_t>(megabytes) * 1024 * 1024;
    std::error_code ignored;
    if (std::filesystem::file_size(path, ignored) >= target && !ignored) return path.string();
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<catalog>\n"
           "  <header><version>7.3.1</version><title>Generated catalog</title></header>\n  <items>\n";
    std::uintmax_t written = 0;
    std::string item;
    for (long id = 0; written < target; ++id) {
        item = "    <item id=\"" + std::to_string(id) + "\"><name>Item " + std::to_string(id) +
               "</name><price>" + std::to_string(id % 1000) +
               ".50</price><description>A plain description of the item, long enough to look like real "
               "content &amp; to be parsed.</description></item>\n";
        out << item;
        written += item.size();
    }
    out << "  </items>\n</catalog>\n";
    return path.string();
}

void BM_BVXMLParserValueInFirstKilobyte(benchmark::State& state) {
    const bv::Text path(generatedDocument(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        auto results = bv::BVXMLParser::resultsOfDataToParseAtPathSeekingDesiredElements(path, {"version"});
        if (results.size() != 1) state.SkipWithError("version not found");
        benchmark::DoNotOptimize(results);
    }
    state.SetLabel(std::to_string(state.range(0)) + " MB file");
}
BENCHMARK(BM_BVXMLParserValueInFirstKilobyte)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

void BM_LibXml2ReadFileWholeDocument(benchmark::State& state) {
    const std::string path = generatedDocument(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        xmlDocPtr document = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET);
        if (document == nullptr) state.SkipWithError("libxml2 could not parse the file");
        xmlFreeDoc(document);
    }
    state.SetLabel(std::to_string(state.range(0)) + " MB file");
}
BENCHMARK(BM_LibXml2ReadFileWholeDocument)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

// A root holding groups of 63 items: about `elements` elements in all.
std::shared_ptr<bv::XMLElement> itemTree(long elements) {
    auto root = bv::XMLElement::make("root");
    for (long made = 1; made < elements;) {
        auto group = bv::BVNSXMLElement::createAndAddChildNamed(*root, "group");
        ++made;
        for (int i = 0; i < 63 && made < elements; ++i, ++made) {
            bv::BVNSXMLElement::createAndAddChildNamed(*group, "item");
        }
    }
    return root;
}

void BM_ChildElementsNamedRecursiveSearch(benchmark::State& state) {
    const std::size_t before = mallinfo2().uordblks;
    auto root = itemTree(state.range(0));
    const std::size_t bytes = mallinfo2().uordblks - before;
    std::size_t found = 0;
    for (auto _ : state) {
        auto items = bv::BVNSXMLElement::childElementsNamedRecursiveSearch(*root, bv::Text("item"), true);
        found = items.size();
        benchmark::DoNotOptimize(items);
    }
    state.SetComplexityN(state.range(0));
    state.counters["found"] = static_cast<double>(found);
    state.counters["bytes/element"] = static_cast<double>(bytes) / static_cast<double>(state.range(0));
}
BENCHMARK(BM_ChildElementsNamedRecursiveSearch)
    ->RangeMultiplier(4)
    ->Range(1 << 14, 1 << 20)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// The same walk as a plain loop with an explicit stack, collecting raw pointers.
void BM_PlainLoopOverTheSameTree(benchmark::State& state) {
    auto root = itemTree(state.range(0));
    const bv::Text name("item");
    for (auto _ : state) {
        std::vector<const bv::XMLNode*> items;
        std::vector<const bv::XMLNode*> pending{root.get()};
        while (!pending.empty()) {
            const bv::XMLNode* node = pending.back();
            pending.pop_back();
            for (const auto& child : node->children()) {
                if (child->kind() != bv::XMLNodeKind::Element) continue;
                if (child->name() == name) items.push_back(child.get());
                pending.push_back(child.get());
            }
        }
        benchmark::DoNotOptimize(items);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_PlainLoopOverTheSameTree)
    ->RangeMultiplier(4)
    ->Range(1 << 14, 1 << 20)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// The same loop collecting shared pointers, as the operation's result holds.
void BM_PlainLoopCollectingSharedPointers(benchmark::State& state) {
    auto root = itemTree(state.range(0));
    const bv::Text name("item");
    for (auto _ : state) {
        std::vector<std::shared_ptr<bv::XMLNode>> items;
        std::vector<const bv::XMLNode*> pending{root.get()};
        while (!pending.empty()) {
            const bv::XMLNode* node = pending.back();
            pending.pop_back();
            for (const auto& child : node->children()) {
                if (child->kind() != bv::XMLNodeKind::Element) continue;
                if (child->name() == name) items.push_back(child);
                pending.push_back(child.get());
            }
        }
        benchmark::DoNotOptimize(items);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_PlainLoopCollectingSharedPointers)
    ->RangeMultiplier(4)
    ->Range(1 << 14, 1 << 20)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace

BENCHMARK_MAIN();
