// Terminal output helpers of the brevant tool: the ranked table with a horizontal bar chart drawn with
// Unicode block characters, fitted to the terminal's width, and a progress bar for long inputs.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace brevant {

struct ChartRow {
    std::string rank;    // "1", "2", ... or "" for the "other" row
    std::string answer;  // UTF-8
    std::int64_t count = 0;
};

// The width to fit: the terminal's columns when standard output is a terminal, else $COLUMNS, else 80.
int outputWidth();

// Display width of UTF-8 text in terminal columns (East Asian wide characters count 2, combining marks 0).
int displayWidth(const std::string& utf8);

// Renders the rows as an aligned table (rank, answer, count, share of total) with a bar per row scaled to
// the largest count, fitted to `width` columns; without bars when `withBars` is false.
std::string renderRankedTable(const std::vector<ChartRow>& rows, std::int64_t total, int width,
                              bool withBars);

// A progress bar on standard error, drawn only when standard error is a terminal and the work is larger
// than `threshold` bytes; it redraws at most once per percent and erases itself when finished.
class ProgressBar {
  public:
    ProgressBar(std::string label, std::uint64_t totalBytes, std::uint64_t threshold = 50ULL * 1024 * 1024);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void update(std::uint64_t doneBytes);
    [[nodiscard]] bool enabled() const noexcept { return enabled_; }

  private:
    std::string label_;
    std::uint64_t total_;
    bool enabled_;
    int lastPercent_ = -1;
};

}  // namespace brevant
