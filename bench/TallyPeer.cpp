// The peer of `brevant tally` in bench/retake-figures.sh: the lean C++ way to count lines, the physical
// limit for the tool's counting. It reads the file in 1 MiB chunks, splits lines at "\n" (dropping a "\r"
// before it), counts them in a std::unordered_map keyed by the line's bytes (looked up without a copy),
// and prints each distinct line with its count, most frequent first. No trimming, no Unicode, no modes.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
        return std::hash<std::string_view>{}(text);
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: TallyPeer FILE\n");
        return 2;
    }
    std::FILE* file = std::fopen(argv[1], "rb");
    if (file == nullptr) {
        std::perror(argv[1]);
        return 1;
    }
    std::unordered_map<std::string, std::uint64_t, Hash, std::equal_to<>> counts;
    auto count = [&](std::string_view line) {
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.empty()) return;
        if (auto found = counts.find(line); found != counts.end()) {
            ++found->second;
        } else {
            counts.emplace(std::string(line), 1);
        }
    };
    std::vector<char> buffer(1 << 20);
    std::string pending;
    while (std::size_t got = std::fread(buffer.data(), 1, buffer.size(), file)) {
        std::string_view chunk(buffer.data(), got);
        for (std::size_t end; (end = chunk.find('\n')) != std::string_view::npos;
             chunk.remove_prefix(end + 1)) {
            if (pending.empty()) {
                count(chunk.substr(0, end));
            } else {
                pending.append(chunk.substr(0, end));
                count(pending);
                pending.clear();
            }
        }
        pending.append(chunk);
    }
    count(pending);
    std::fclose(file);
    std::vector<std::pair<std::string_view, std::uint64_t>> ranked(counts.begin(), counts.end());
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    for (const auto& [line, n] : ranked)
        std::printf("%llu %.*s\n", static_cast<unsigned long long>(n), static_cast<int>(line.size()),
                    line.data());
    return 0;
}
