// The ranked table with bars, and the progress bar.
#include "Chart.hpp"

#include <sys/ioctl.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "Command.hpp"

namespace brevant {

namespace {

// Block characters from one eighth to a full block.
constexpr const char* kEighths[] = {"", "\u258F", "\u258E", "\u258D", "\u258C", "\u258B", "\u258A", "\u2589"};
constexpr const char* kFullBlock = "\u2588";

int terminalColumns(int descriptor) {
    winsize size{};
    if (isatty(descriptor) && ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    return 0;
}

// Cuts UTF-8 text to at most `width` columns, ending with "…" when cut.
std::string fitToWidth(const std::string& utf8, int width) {
    if (displayWidth(utf8) <= width) return utf8;
    std::string out;
    int used = 0;
    std::int32_t i = 0, length = static_cast<std::int32_t>(utf8.size());
    while (i < length) {
        std::int32_t start = i;
        UChar32 c;
        U8_NEXT(utf8.data(), i, length, c);
        int w =
            displayWidth(utf8.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(i - start)));
        if (used + w > width - 1) break;
        out.append(utf8, static_cast<std::size_t>(start), static_cast<std::size_t>(i - start));
        used += w;
    }
    return out + "\u2026";
}

std::string padRight(const std::string& utf8, int width) {
    return utf8 + std::string(static_cast<std::size_t>(std::max(0, width - displayWidth(utf8))), ' ');
}

std::string padLeft(const std::string& text, int width) {
    return std::string(static_cast<std::size_t>(std::max(0, width - displayWidth(text))), ' ') + text;
}

std::string bar(std::int64_t count, std::int64_t largest, int width) {
    if (largest <= 0 || width <= 0) return {};
    std::int64_t eighths = count * width * 8 / largest;
    if (eighths == 0 && count > 0) eighths = 1;  // every answer given at least once shows
    std::string out;
    for (std::int64_t i = 0; i < eighths / 8; ++i)
        out += kFullBlock;
    out += kEighths[eighths % 8];
    return out;
}

std::string share(std::int64_t count, std::int64_t total) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.1f%%",
                  total > 0 ? 100.0 * static_cast<double>(count) / total : 0.0);
    return buffer;
}

}  // namespace

int outputWidth() {
    if (int columns = terminalColumns(STDOUT_FILENO); columns > 0) return columns;
    if (const char* columns = std::getenv("COLUMNS")) {
        int value = std::atoi(columns);
        if (value >= 20 && value <= 1000) return value;
    }
    return 80;
}

int displayWidth(const std::string& utf8) {
    int width = 0;
    std::int32_t i = 0, length = static_cast<std::int32_t>(utf8.size());
    while (i < length) {
        if (static_cast<unsigned char>(utf8[static_cast<std::size_t>(i)]) < 0x80) {  // one column each
            ++width;
            ++i;
            continue;
        }
        UChar32 c;
        U8_NEXT(utf8.data(), i, length, c);
        if (c < 0) {
            ++width;
            continue;
        }
        auto category = u_charType(c);
        if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK || category == U_FORMAT_CHAR)
            continue;
        auto eastAsian = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
        width += (eastAsian == U_EA_WIDE || eastAsian == U_EA_FULLWIDTH) ? 2 : 1;
    }
    return width;
}

std::string renderRankedTable(const std::vector<ChartRow>& rows, std::int64_t total, int width,
                              bool withBars) {
    int rankWidth = 4, answerWidth = 6, countWidth = 5, shareWidth = 6;
    std::int64_t largest = 0;
    std::vector<std::string> answers;  // shown with their control characters escaped
    answers.reserve(rows.size());
    for (const ChartRow& row : rows) {
        answers.push_back(escapeControlCharacters(row.answer));
        answerWidth = std::max(answerWidth, displayWidth(answers.back()));
        countWidth = std::max(countWidth, static_cast<int>(std::to_string(row.count).size()));
        largest = std::max(largest, row.count);
    }
    answerWidth = std::min(answerWidth, std::max(10, width / 3));
    int fixed = rankWidth + answerWidth + countWidth + shareWidth + 8;
    int barWidth = withBars ? std::max(0, width - fixed) : 0;
    std::string out = padLeft("Rank", rankWidth) + "  " + padRight("Answer", answerWidth) + "  " +
                      padLeft("Count", countWidth) + "  " + padLeft("Share", shareWidth) + "\n";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ChartRow& row = rows[i];
        std::string line = padLeft(row.rank, rankWidth) + "  " +
                           padRight(fitToWidth(answers[i], answerWidth), answerWidth) + "  " +
                           padLeft(std::to_string(row.count), countWidth) + "  " +
                           padLeft(share(row.count, total), shareWidth);
        if (barWidth > 0) line += "  " + bar(row.count, largest, barWidth);
        out += line + "\n";
    }
    return out;
}

ProgressBar::ProgressBar(std::string label, std::uint64_t totalBytes, std::uint64_t threshold)
    : label_(std::move(label)),
      total_(totalBytes),
      enabled_(totalBytes > threshold && isatty(STDERR_FILENO)) {}

ProgressBar::~ProgressBar() {
    if (enabled_ && lastPercent_ >= 0) std::fprintf(stderr, "\r\033[K");
}

void ProgressBar::update(std::uint64_t doneBytes) {
    if (!enabled_ || total_ == 0) return;
    int percent = static_cast<int>(std::min<std::uint64_t>(100, doneBytes * 100 / total_));
    if (percent == lastPercent_) return;
    lastPercent_ = percent;
    int width =
        std::max(10, std::min(50, terminalColumns(STDERR_FILENO) - static_cast<int>(label_.size()) - 10));
    std::string filled;
    for (int i = 0; i < width * percent / 100; ++i)
        filled += kFullBlock;
    std::fprintf(stderr, "\r%s %s%*s %3d%%", label_.c_str(), filled.c_str(), width - width * percent / 100,
                 "", percent);
    std::fflush(stderr);
}

}  // namespace brevant
