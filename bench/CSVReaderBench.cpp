// Reading a class list: CSVReader against libcsv on the same bytes, in the same run.
//
// The file is generated once per run: 400,000 rows of 8 fields (about 30 MB), some fields quoted with
// commas and doubled quotes inside. CSVReader reads it from disk (decode, split lines, readHeaders, then
// readRecord to the end). The libcsv rows read the same file into memory and parse it:
//   - LibcsvCount: callbacks that only count fields and records (the parser's limit);
//   - LibcsvRecords: callbacks that copy each field into a std::string record, as a program that keeps
//     the fields does.
// With --peak-memory, the program instead reads the file once with CSVReader and prints the peak
// resident memory that the reading added, against the file's size.
#include <benchmark/benchmark.h>
#include <csv.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/documents/CSVReader.hpp"

namespace {

constexpr std::size_t kRows = 400'000;

// A deterministic class list; every 7th note is quoted with a comma, every 13th also with doubled quotes.
std::string generateClassList() {
    static const char* const kFirst[] = {"Ann", "Bob", "Chiara", "Dmitri", "Eve", "Farida", "George", "Hana"};
    static const char* const kLast[] = {"Smith",  "O'Brien",   "Nakamura", "Okafor",
                                        "Garcia", "Lindqvist", "Novak"};
    static const char* const kNotes[] = {"needs extra time", "left-handed", "front row", "none",
                                         "sits near door"};
    std::mt19937 random(42);
    std::string out = "Student ID,Last Name,First Name,Email,Grade,Class,Notes,Score\r\n";
    out.reserve(kRows * 80);
    for (std::size_t row = 0; row < kRows; ++row) {
        const char* first = kFirst[random() % 8];
        const char* last = kLast[random() % 7];
        out += std::to_string(100000 + row) + ',' + last + ',' + first + ',';
        out += std::string(first) + '.' + last + std::to_string(row % 1000) + "@school.org,";
        out += std::to_string(6 + random() % 7) + ",Period " + std::to_string(1 + random() % 8) + ',';
        const char* note = kNotes[random() % 5];
        if (row % 13 == 0) {
            out += "\"said \"\"";
            out += note;
            out += "\"\", then left, early\",";
        } else if (row % 7 == 0) {
            out += '"';
            out += note;
            out += ", see file\",";
        } else {
            out += note;
            out += ',';
        }
        out += std::to_string(random() % 101) + "\r\n";
    }
    return out;
}

const std::string& classListPath() {
    static const std::string path = [] {
        const std::string file = (std::filesystem::temp_directory_path() / "bv-bench-classlist.csv").string();
        std::ofstream(file, std::ios::binary) << generateClassList();
        return file;
    }();
    return path;
}

std::size_t fileSize() {
    return static_cast<std::size_t>(std::filesystem::file_size(classListPath()));
}

std::string readAll(const std::string& path) {
    std::string bytes(std::filesystem::file_size(path), '\0');
    std::FILE* file = std::fopen(path.c_str(), "rb");
    const std::size_t got = std::fread(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
    bytes.resize(got);
    return bytes;
}

void BM_CSVReader(benchmark::State& state) {
    const bv::Text path(classListPath());
    std::size_t fields = 0;
    for (auto _ : state) {
        bv::CSVReader reader(path);
        reader.readHeaders();
        std::size_t records = 0;
        while (auto record = reader.readRecord()) {
            fields += record->size();
            ++records;
        }
        if (records != kRows) state.SkipWithError("wrong record count");
    }
    benchmark::DoNotOptimize(fields);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize()));
}
BENCHMARK(BM_CSVReader)->Unit(benchmark::kMillisecond);

struct Counts {
    std::size_t fields = 0;
    std::size_t records = 0;
};

void BM_LibcsvCount(benchmark::State& state) {
    for (auto _ : state) {
        const std::string bytes = readAll(classListPath());
        csv_parser parser{};
        csv_init(&parser, CSV_APPEND_NULL);
        Counts counts;
        csv_parse(
            &parser, bytes.data(), bytes.size(),
            [](void*, std::size_t, void* data) { ++static_cast<Counts*>(data)->fields; },
            [](int, void* data) { ++static_cast<Counts*>(data)->records; }, &counts);
        csv_fini(
            &parser, [](void*, std::size_t, void* data) { ++static_cast<Counts*>(data)->fields; },
            [](int, void* data) { ++static_cast<Counts*>(data)->records; }, &counts);
        csv_free(&parser);
        if (counts.records != kRows + 1) state.SkipWithError("wrong record count");
        benchmark::DoNotOptimize(counts);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize()));
}
BENCHMARK(BM_LibcsvCount)->Unit(benchmark::kMillisecond);

struct Records {
    std::vector<std::string> current;
    std::size_t records = 0;
    std::size_t fields = 0;
};

void BM_LibcsvRecords(benchmark::State& state) {
    auto onField = [](void* field, std::size_t length, void* data) {
        static_cast<Records*>(data)->current.emplace_back(static_cast<const char*>(field), length);
    };
    auto onRecord = [](int, void* data) {
        auto* records = static_cast<Records*>(data);
        records->fields += records->current.size();
        records->current.clear();
        ++records->records;
    };
    for (auto _ : state) {
        const std::string bytes = readAll(classListPath());
        csv_parser parser{};
        csv_init(&parser, CSV_APPEND_NULL);
        Records records;
        csv_parse(&parser, bytes.data(), bytes.size(), onField, onRecord, &records);
        csv_fini(&parser, onField, onRecord, &records);
        csv_free(&parser);
        if (records.records != kRows + 1) state.SkipWithError("wrong record count");
        benchmark::DoNotOptimize(records);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize()));
}
BENCHMARK(BM_LibcsvRecords)->Unit(benchmark::kMillisecond);

long statusKilobytes(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(key, 0) == 0) return std::stol(line.substr(std::strlen(key)));
    return -1;
}

// Reads the file once and prints the peak resident memory it added, against the file's size.
int reportPeakMemory() {
    const std::string& path = classListPath();
    const double megabyte = 1024.0 * 1024.0;
    const double size = static_cast<double>(fileSize()) / megabyte;
    std::ofstream("/proc/self/clear_refs") << "5";  // resets the peak to the current resident size
    const long baseline = statusKilobytes("VmHWM:");
    std::size_t records = 0;
    {
        bv::CSVReader reader{bv::Text(path)};
        reader.readHeaders();
        while (auto record = reader.readRecord())
            ++records;
    }
    const long peak = statusKilobytes("VmHWM:");
    const double added = static_cast<double>(peak - baseline) / 1024.0;
    std::printf(
        "file %.1f MiB, %zu records; peak resident memory added by reading: %.1f MiB (%.2fx the file)\n",
        size, records, added, added / size);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "--peak-memory") == 0) return reportPeakMemory();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
