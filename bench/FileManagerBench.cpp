// The file manager's batch work beside its peers, in the same run:
//   - BatchCopy: copyContentsOfDirectoryToDirectory over a folder of 20,000 small files, against `cp -r` of
//   the
//     same folder (a child process, so the peer pays one process start, under a millisecond). Both are timed
//     by the wall clock, as the child's work is not the benchmark process's CPU time.
//   - Listing and search over folders of 25,000 and 100,000 entries: the library's operations against a plain
//     readdir loop (names only) and a readdir-and-stat loop (what telling folders apart needs). The two sizes
//     show the time growing linearly with the entries.
//   - Conversion of 1,000,000 drive-letter paths against a plain loop that splits the same texts at "\" and
//     joins them with "/".
// The folders are made once per run under the temporary folder and removed at the end.
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/ChildProcess.hpp"

namespace {

namespace fs = std::filesystem;
namespace fm = bv::BVNSFileManager;

// The run's scratch folder, removed when the program ends.
struct Scratch {
    fs::path root;
    Scratch() {
        std::string pattern = (fs::temp_directory_path() / "bv-bench-files-XXXXXX").string();
        root = ::mkdtemp(pattern.data());
    }
    ~Scratch() {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }
};

Scratch& scratch() {
    static Scratch folder;
    return folder;
}

// A folder of `count` small files (some .xml, some .csv, every 50th a sub-folder), made once per size.
const fs::path& folderOf(std::size_t count) {
    static std::map<std::size_t, fs::path> made;
    auto [found, fresh] = made.try_emplace(count, scratch().root / ("entries-" + std::to_string(count)));
    if (fresh) {
        fs::create_directory(found->second);
        const std::string payload(120, 'q');
        for (std::size_t i = 0; i < count; ++i) {
            const fs::path item = found->second / ("item" + std::to_string(i) + (i % 3 ? ".xml" : ".csv"));
            if (i % 50 == 49)
                fs::create_directory(item);
            else
                std::ofstream(item) << payload;
        }
    }
    return found->second;
}

void freshTarget(const fs::path& target) {
    std::error_code ignored;
    fs::remove_all(target, ignored);
}

void BatchCopy(benchmark::State& state) {
    const fs::path& source = folderOf(20'000);
    const fs::path target = scratch().root / "copy";
    for (auto _ : state) {
        state.PauseTiming();
        freshTarget(target);
        fs::create_directory(target);
        state.ResumeTiming();
        benchmark::DoNotOptimize(fm::copyContentsOfDirectoryToDirectory(
            bv::FileManager::defaultManager(), bv::Text(source.string()), bv::Text(target.string())));
    }
    state.SetItemsProcessed(state.iterations() * 20'000);
}

void CpR(benchmark::State& state) {
    const fs::path& source = folderOf(20'000);
    const fs::path target = scratch().root / "copy";
    for (auto _ : state) {
        state.PauseTiming();
        freshTarget(target);
        state.ResumeTiming();
        benchmark::DoNotOptimize(bv::ChildProcess::run("/bin/cp", {"-r", source.string(), target.string()}));
    }
    state.SetItemsProcessed(state.iterations() * 20'000);
}

// --- Listing and search --------------------------------------------------------------------------------

bv::Text folderText(const benchmark::State& state) {
    return bv::Text(folderOf(static_cast<std::size_t>(state.range(0))).string());
}

void finish(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void FindFilesNamed(benchmark::State& state) {
    const bv::Text folder = folderText(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(fm::findFilesNamedInDirectoryFullPath("ITEM77", folder, true));
    finish(state);
}

void FileNamesWithExtensions(benchmark::State& state) {
    const bv::Text folder = folderText(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(fm::fileNamesAtPathWithExtensionsRemoveExtensions(
            bv::FileManager::defaultManager(), folder, {"CSV", "csv", "txt"}, true));
    }
    finish(state);
}

void DirectoriesAtPath(benchmark::State& state) {
    const bv::Text folder = folderText(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(fm::directoriesAtPath(bv::FileManager::defaultManager(), folder));
    finish(state);
}

// The peer of the name searches: every name read into a string, the way any listing must.
void ReaddirNames(benchmark::State& state) {
    const std::string folder = folderOf(static_cast<std::size_t>(state.range(0))).string();
    for (auto _ : state) {
        std::vector<std::string> names;
        DIR* dir = ::opendir(folder.c_str());
        while (const dirent* entry = ::readdir(dir))
            names.emplace_back(entry->d_name);
        ::closedir(dir);
        benchmark::DoNotOptimize(names);
    }
    finish(state);
}

// The peer of directoriesAtPath: every name read and stat'ed.
void ReaddirAndStat(benchmark::State& state) {
    const std::string folder = folderOf(static_cast<std::size_t>(state.range(0))).string();
    for (auto _ : state) {
        std::vector<std::string> folders;
        DIR* dir = ::opendir(folder.c_str());
        while (const dirent* entry = ::readdir(dir)) {
            std::string path = folder + "/" + entry->d_name;
            struct stat info {};
            if (::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) folders.push_back(std::move(path));
        }
        ::closedir(dir);
        benchmark::DoNotOptimize(folders);
    }
    finish(state);
}

// --- Drive-letter conversion ---------------------------------------------------------------------------

const std::vector<bv::Text>& windowsPaths() {
    static const std::vector<bv::Text> paths = [] {
        std::vector<bv::Text> made;
        made.reserve(1'000'000);
        for (int i = 0; i < 1'000'000; ++i) {
            made.emplace_back("C:\\Content\\Quizzes\\Unit " + std::to_string(i % 40) + "\\Media\\image" +
                              std::to_string(i) + ".png");
        }
        return made;
    }();
    return paths;
}

void ConvertWindowsPaths(benchmark::State& state) {
    const std::vector<bv::Text>& paths = windowsPaths();
    for (auto _ : state)
        benchmark::DoNotOptimize(fm::pathsConvertedFromMSWindowsPaths(paths));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(paths.size()));
}

// The peer: drop the drive, split at "\", join with "/", into a new list.
void SplitAndJoin(benchmark::State& state) {
    const std::vector<bv::Text>& paths = windowsPaths();
    for (auto _ : state) {
        std::vector<std::u16string> converted;
        converted.reserve(paths.size());
        for (const bv::Text& path : paths) {
            std::u16string_view rest = path.view();
            if (rest.size() > 1 && rest[1] == u':') rest.remove_prefix(2);
            std::vector<std::u16string_view> pieces;
            for (std::size_t cut; (cut = rest.find(u'\\')) != std::u16string_view::npos;) {
                pieces.push_back(rest.substr(0, cut));
                rest.remove_prefix(cut + 1);
            }
            pieces.push_back(rest);
            std::u16string joined;
            for (std::size_t i = 0; i < pieces.size(); ++i) {
                if (i != 0 && !joined.empty()) joined.push_back(u'/');
                joined.append(pieces[i]);
            }
            converted.push_back(std::move(joined));
        }
        benchmark::DoNotOptimize(converted);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(paths.size()));
}

}  // namespace

BENCHMARK(BatchCopy)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(CpR)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(FindFilesNamed)
    ->Arg(25'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(FileNamesWithExtensions)
    ->Arg(25'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(DirectoriesAtPath)
    ->Arg(25'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(ReaddirNames)->Arg(25'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(ReaddirAndStat)
    ->Arg(25'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(ConvertWindowsPaths)->Unit(benchmark::kMillisecond);
BENCHMARK(SplitAndJoin)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
