// Counting, ranking and rendering of answers.
//
// Identical raw answers are grouped before they reach the tally, in first-seen order, which gives the
// same entries and counts as adding them one by one, at a fraction of the cost.
#include "Tally.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <string_view>
#include <unordered_map>

#include "BrevantCocoaExtensions/platform/TextEncoding.hpp"
#include "BrevantCocoaExtensions/responses/BVCountedStrings.hpp"
#include "BrevantCocoaExtensions/responses/BVNSCountedSet.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "CsvInput.hpp"

namespace brevant {

namespace {

// Distinct keys with their counts, in the order each was first seen.
template <class Key>
class FirstSeenCounter {
  public:
    void add(const Key& key) {
        auto [position, inserted] = index_.try_emplace(key, order_.size());
        if (inserted) {
            order_.emplace_back(key, 1);
        } else {
            ++order_[position->second].second;
        }
    }
    [[nodiscard]] const std::vector<std::pair<Key, std::uint64_t>>& entries() const { return order_; }

  private:
    std::unordered_map<Key, std::size_t> index_;
    std::vector<std::pair<Key, std::uint64_t>> order_;
};

// Distinct lines with their counts, in the order each was first seen. Each line's bytes are stored once,
// packed in large blocks; the index is an open-addressing table whose slots hold the hash, the stored bytes
// and the position, so a repeated line costs one hash, usually one probe and one comparison straight
// against its bytes, with no allocation.
class RawLineCounter {
  public:
    void add(std::string_view line, std::uint64_t occurrences = 1) {
        if (2 * (keys_.size() + 1) > slots_.size()) grow();
        const std::uint64_t hash = std::hash<std::string_view>{}(line);
        for (std::size_t slot = hash & mask_;; slot = (slot + 1) & mask_) {
            Slot& entry = slots_[slot];
            if (entry.position == kEmpty) {
                const std::string_view stored = store(line);
                entry = {hash, stored.data(),
                         static_cast<std::uint32_t>(std::min<std::size_t>(stored.size(), kLongLine)),
                         static_cast<std::uint32_t>(keys_.size())};
                keys_.push_back(stored);
                counts_.push_back(occurrences);
                return;
            }
            if (entry.hash == hash && holds(entry, line)) {
                counts_[entry.position] += occurrences;
                return;
            }
        }
    }
    [[nodiscard]] std::size_t size() const noexcept { return keys_.size(); }
    [[nodiscard]] std::string_view key(std::size_t i) const { return keys_[i]; }
    [[nodiscard]] std::uint64_t count(std::size_t i) const { return counts_[i]; }

  private:
    static constexpr std::uint32_t kEmpty = UINT32_MAX;
    static constexpr std::uint32_t kLongLine = UINT32_MAX;  // a length that does not fit the slot
    struct Slot {
        std::uint64_t hash = 0;
        const char* bytes = nullptr;
        std::uint32_t length = 0;
        std::uint32_t position = kEmpty;
    };

    // Whether the slot's line is this line; lines too long for the slot's length compare through keys_.
    [[nodiscard]] bool holds(const Slot& entry, std::string_view line) const {
        if (entry.length == kLongLine) return keys_[entry.position] == line;
        return std::string_view(entry.bytes, entry.length) == line;
    }

    void grow() {
        std::vector<Slot> old =
            std::exchange(slots_, std::vector<Slot>(std::max<std::size_t>(1024, 2 * slots_.size())));
        mask_ = slots_.size() - 1;
        for (const Slot& entry : old) {
            if (entry.position == kEmpty) continue;
            std::size_t slot = entry.hash & mask_;
            while (slots_[slot].position != kEmpty)
                slot = (slot + 1) & mask_;
            slots_[slot] = entry;
        }
    }
    std::string_view store(std::string_view line) {
        if (line.size() > capacity_ - used_) {
            capacity_ = std::max<std::size_t>(line.size(), 1 << 20);
            blocks_.emplace_back(new char[capacity_]);
            used_ = 0;
        }
        char* at = blocks_.back().get() + used_;
        std::copy(line.begin(), line.end(), at);
        used_ += line.size();
        return {at, line.size()};
    }

    std::vector<std::unique_ptr<char[]>> blocks_;
    std::size_t used_ = 0, capacity_ = 0;
    std::vector<Slot> slots_;
    std::size_t mask_ = 0;
    std::vector<std::string_view> keys_;
    std::vector<std::uint64_t> counts_;
};

// Adds `count` occurrences of an answer to the tally, as that many addString calls would.
void addAnswer(bv::BVCountedStrings& tally, const bv::Text& answer, std::uint64_t count) {
    auto entry = tally.addString(answer);
    if (entry && count > 1) entry->setCount(entry->count() + count - 1);
}

// Splits a stream into lines at "\n" (a "\r" before it dropped), skipping a UTF-8 byte-order mark at
// the start. Input without any "\n" is split at "\r", as the CSV reader splits such a file.
class LineSplitter {
  public:
    template <class OnLine>
    void add(std::string_view bytes, OnLine&& onLine) {
        if (atStart_) {
            pending_.append(bytes);
            if (pending_.size() < 3 &&
                std::string_view("\xEF\xBB\xBF").substr(0, pending_.size()) == pending_)
                return;  // too short yet to tell whether a mark starts the input
            atStart_ = false;
            if (pending_.compare(0, 3, "\xEF\xBB\xBF") == 0) pending_.erase(0, 3);
            const std::string head = std::exchange(pending_, std::string());
            add(head, onLine);
            return;
        }
        while (!bytes.empty()) {
            const std::size_t end = bytes.find('\n');
            if (end == std::string_view::npos) {
                pending_.append(bytes);
                return;
            }
            sawNewline_ = true;
            if (pending_.empty()) {
                emit(bytes.substr(0, end), onLine);
            } else {
                pending_.append(bytes.substr(0, end));
                emit(pending_, onLine);
                pending_.clear();
            }
            bytes.remove_prefix(end + 1);
        }
    }
    template <class OnLine>
    void finish(OnLine&& onLine) {
        if (atStart_) {
            atStart_ = false;
            const std::string head = std::exchange(pending_, std::string());
            add(head, onLine);
        }
        std::string_view rest(pending_);
        if (!sawNewline_) {  // return-only line ends
            for (std::size_t end; (end = rest.find('\r')) != std::string_view::npos;
                 rest.remove_prefix(end + 1))
                onLine(rest.substr(0, end));
        }
        emit(rest, onLine);
    }

  private:
    template <class OnLine>
    static void emit(std::string_view line, OnLine& onLine) {
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        onLine(line);
    }

    std::string pending_;
    bool atStart_ = true;
    bool sawNewline_ = false;
};

// Reads the distinct raw lines of a file or standard input with their counts, streaming; blank lines are
// skipped. Fails on bytes that are not UTF-8.
bool countLines(const std::string& path, RawLineCounter& raw, std::string* name, std::string* error) {
    InputFile input;
    if (!input.open(path, error)) return false;
    *name = input.name();
    ProgressBar progress("Counting " + *name, input.size());
    auto count = [&](std::string_view line) {
        if (!line.empty()) raw.add(line);
    };
    LineSplitter lines;
    std::vector<char> buffer(1 << 20);
    std::uint64_t doneBytes = 0;
    while (std::size_t got = input.read(buffer.data(), buffer.size())) {
        lines.add(std::string_view(buffer.data(), got), count);
        doneBytes += got;
        progress.update(doneBytes);
    }
    lines.finish(count);
    if (input.failed()) {
        *error = *name + ": read error";
        return false;
    }
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const std::string_view bytes = raw.key(i);
        const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
        if (!bv::isValidUtf8(data, bytes.size())) {
            *error = *name + ": not UTF-8 text (the answer \"" + printable(std::string(bytes)) +
                     "\" has invalid bytes)";
            return false;
        }
    }
    return true;
}

// Whether trimming white space leaves the line as it is: it starts and ends with a visible ASCII character.
[[nodiscard]] bool needsNoTrim(std::string_view line) {
    auto visible = [](char c) { return c > ' ' && c < '\x7F'; };
    return !line.empty() && visible(line.front()) && visible(line.back());
}

// The lines trimmed of white space, identical ones merged in first-seen order and blank ones dropped;
// nullopt when no line changes, so that the raw table serves as it is.
std::optional<RawLineCounter> trimmedAnswers(const RawLineCounter& raw) {
    std::size_t first = 0;
    while (first < raw.size() && needsNoTrim(raw.key(first)))
        ++first;
    if (first == raw.size()) return std::nullopt;
    std::optional<RawLineCounter> answers(std::in_place);
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const std::string_view bytes = raw.key(i);
        if (i < first || needsNoTrim(bytes)) {
            answers->add(bytes, raw.count(i));
        } else if (std::string trimmed = bv::BVNSString::trimmedString(bv::Text(bytes)).toUtf8();
                   !trimmed.empty()) {
            answers->add(trimmed, raw.count(i));
        }
    }
    return answers;
}

// Reads answers one per line into the library's tally, each trimmed of white space.
void addLines(const RawLineCounter& raw, bv::BVCountedStrings& tally) {
    for (std::size_t i = 0; i < raw.size(); ++i) {
        bv::Text answer = bv::BVNSString::trimmedString(bv::Text(raw.key(i)));
        if (!answer.empty()) addAnswer(tally, answer, raw.count(i));
    }
}

// Reads the answers of one column of a CSV file with a header; malformed lines are reported and skipped.
bool tallyColumn(const TallyOptions& options, bv::BVCountedStrings& tally, std::string* error,
                 CsvReadReport* report) {
    FirstSeenCounter<bv::Text> answers;
    bool ok = readCsvColumn(options.file, options.column, options.stopAtBlank, error, report,
                            [&](const bv::Text& value) {
                                if (!value.empty()) answers.add(value);
                            });
    if (!ok) return false;
    for (const auto& [answer, count] : answers.entries())
        addAnswer(tally, answer, count);
    if (tally.totalCount() == 0) {
        *error = (options.file == "-" ? std::string("standard input") : options.file) + ": no answers";
        return false;
    }
    return true;
}

// The popularity list (with the "other" aggregate when a rank folds the tail) as table rows, and the
// modes, from the library's counted set.
void rankCountedSet(const bv::ValueCountedSet& set, const std::optional<int>& rank, TallyResult* result) {
    bv::ValueArray popularity = rank ? bv::BVNSCountedSet::objectsByPopularityWithRank(set, *rank)
                                     : bv::BVNSCountedSet::objectsByPopularity(set);
    bool folded = rank && *rank >= 0 && static_cast<std::size_t>(*rank) < set.size();
    for (std::size_t i = 0; i < popularity.size(); ++i) {
        const bv::ValueDictionary& entry = *popularity[i].dictionary();
        bool other = folded && i + 1 == popularity.size();
        ChartRow row;
        row.rank = other ? "" : std::to_string(i + 1);
        row.answer = entry.at(bv::Text("object")).description().toUtf8();
        row.count = entry.at(bv::Text("count")).number()->int64Value();
        result->rows.push_back(std::move(row));
        result->isOther.push_back(other);
    }
    result->distinct = set.size();
    if (auto modes = bv::BVNSCountedSet::modeDictionary(set)) {
        for (const bv::Value& mode : *modes->at(bv::Text("modes")).array())
            result->modes.push_back(mode.description().toUtf8());
        result->modeCount = modes->at(bv::Text("modeCount")).number()->int64Value();
        result->modePercent = modes->at(bv::Text("modePercent")).number()->int64Value();
    }
}

// The counted-set statistics work on counts as signed 32-bit integers (the low 32 bits kept) with
// wrapping sums and products; the packed ranking does the same so that both print the same figures.
[[nodiscard]] std::int32_t low32(std::uint64_t count) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(count));
}
[[nodiscard]] std::int32_t wrapAdd(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
[[nodiscard]] std::int32_t wrapPercent(std::int32_t share, std::int32_t total) {
    const auto product = static_cast<std::int32_t>(static_cast<std::uint32_t>(share) * 100u);
    if (total == 0) return 0;
    if (total == -1) return static_cast<std::int32_t>(0u - static_cast<std::uint32_t>(product));
    return product / total;
}

// The modes of the answers: those with the highest count, in first-seen order, with their share.
void packedModes(const RawLineCounter& answers, const std::vector<std::int32_t>& counts,
                 TallyResult* result) {
    std::int32_t highest = 0;
    for (std::int32_t count : counts)
        highest = std::max(highest, count);
    if (highest == 0) return;
    std::int32_t total = 0, share = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        total = wrapAdd(total, counts[i]);
        if (counts[i] != highest) continue;
        result->modes.emplace_back(answers.key(i));
        share = wrapAdd(share, counts[i]);
    }
    result->modeCount = highest;
    result->modePercent = wrapPercent(share, total);
}

// The same ranking as the counted set's popularity list, straight from the packed table: highest count
// first, ties in first-seen order, the tail past the rank folded into "other"; only the rows printed
// become strings.
void rankPacked(const RawLineCounter& answers, const std::optional<int>& rank, TallyResult* result) {
    const std::size_t size = answers.size();
    std::vector<std::int32_t> counts(size);
    for (std::size_t i = 0; i < size; ++i)
        counts[i] = low32(answers.count(i));
    std::vector<std::uint32_t> order(size);
    std::iota(order.begin(), order.end(), 0u);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return counts[a] > counts[b]; });
    const bool folded = rank && *rank >= 0 && static_cast<std::size_t>(*rank) < size;
    const std::size_t shown = folded ? static_cast<std::size_t>(*rank) : size;
    result->rows.reserve(shown + 1);
    for (std::size_t i = 0; i < shown; ++i)
        result->rows.push_back(
            ChartRow{std::to_string(i + 1), std::string(answers.key(order[i])), counts[order[i]]});
    result->isOther.assign(shown, false);
    if (folded) {
        std::int32_t other = 0;
        for (std::size_t i = shown; i < size; ++i)
            other = wrapAdd(other, counts[order[i]]);
        result->rows.push_back(ChartRow{"", "other", other});
        result->isOther.push_back(true);
    }
    result->distinct = size;
    packedModes(answers, counts, result);
}

// Plain answers: counted exactly, they are ranked from the packed table; ignoring case, through the
// library's tally (the folding rules live there). BREVANT_TALLY_THROUGH_LIBRARY=1 sends every tally
// through the library, so that the two paths can be compared.
bool tallyPlain(const TallyOptions& options, TallyResult* result, std::string* error) {
    RawLineCounter raw;
    std::string name;
    if (!countLines(options.file, raw, &name, error)) return false;
    const char* through = std::getenv("BREVANT_TALLY_THROUGH_LIBRARY");
    if (options.ignoreCase || (through != nullptr && std::string_view(through) == "1")) {
        bv::ValueCountedSet set;
        {  // the tally is released before the ranking is built, which keeps the peak lower
            bv::BVCountedStrings tally(options.ignoreCase);
            addLines(raw, tally);
            raw = RawLineCounter();
            for (const auto& entry : tally.countedStrings())
                set.add(bv::Value(entry->string()), entry->count());
            result->total = tally.totalCount();
        }
        rankCountedSet(set, options.rank, result);
    } else {
        std::optional<RawLineCounter> trimmed = trimmedAnswers(raw);
        const RawLineCounter& answers = trimmed ? *trimmed : raw;
        for (std::size_t i = 0; i < answers.size(); ++i)
            result->total += answers.count(i);
        rankPacked(answers, options.rank, result);
    }
    if (result->total == 0) {
        *error = name + ": no answers";
        return false;
    }
    return true;
}

}  // namespace

bool tallyAnswers(const TallyOptions& options, TallyResult* result, std::string* error) {
    if (options.column.empty()) return tallyPlain(options, result, error);
    bv::ValueCountedSet set;
    {  // the tally is released before the ranking is built, which keeps the peak lower
        bv::BVCountedStrings tally(options.ignoreCase);
        if (!tallyColumn(options, tally, error, &result->csv)) return false;
        for (const auto& entry : tally.countedStrings())
            set.add(bv::Value(entry->string()), entry->count());
        result->total = tally.totalCount();
    }
    rankCountedSet(set, options.rank, result);
    return true;
}

namespace {

// The rows that set the table's columns and bar scale for all rows: the widest answer, the largest count
// and the count with the most digits.
std::vector<ChartRow> widthSetters(const std::vector<ChartRow>& rows) {
    ChartRow widest{"", "", 0}, longest{"", "", 0};
    int widestWidth = -1;
    for (const ChartRow& row : rows) {
        if (const int width = displayWidth(escapeControlCharacters(row.answer)); width > widestWidth) {
            widestWidth = width;
            widest.answer = row.answer;
        }
        widest.count = std::max(widest.count, row.count);
        if (std::to_string(row.count).size() > std::to_string(longest.count).size())
            longest.count = row.count;
    }
    return {widest, longest};
}

// Appends the ranked table to `out` a slice of rows at a time, so that a long ranking never holds a
// second copy of every answer: each slice is rendered with the width-setting rows, whose lines (and every
// header after the first) are then dropped.
void appendRankedTable(const std::vector<ChartRow>& rows, std::int64_t total, int width, bool withBars,
                       std::string& out) {
    constexpr std::size_t kSlice = 4096;
    if (rows.size() <= kSlice) {
        out += renderRankedTable(rows, total, width, withBars);
        return;
    }
    const std::vector<ChartRow> setters = widthSetters(rows);
    std::vector<ChartRow> slice;
    for (std::size_t start = 0; start < rows.size(); start += kSlice) {
        const std::size_t end = std::min(rows.size(), start + kSlice);
        slice.assign(rows.begin() + static_cast<std::ptrdiff_t>(start),
                     rows.begin() + static_cast<std::ptrdiff_t>(end));
        slice.insert(slice.end(), setters.begin(), setters.end());
        const std::string part = renderRankedTable(slice, total, width, withBars);
        std::size_t cut = part.size() - 1;
        for (std::size_t i = 0; i < setters.size(); ++i)
            cut = part.rfind('\n', cut - 1);
        const std::size_t from = start == 0 ? 0 : part.find('\n') + 1;
        if (start == 0) out.reserve(out.size() + (cut + 1) * (rows.size() / kSlice + 1));
        out.append(part, from, cut + 1 - from);
    }
}

}  // namespace

std::string renderTallyText(const TallyResult& result, const TallyOptions& options, int width) {
    std::string out = std::to_string(result.total) + (result.total == 1 ? " answer, " : " answers, ") +
                      std::to_string(result.distinct) + " distinct" +
                      (options.ignoreCase ? " (ignoring case)" : "") + "\n";
    if (result.distinct == 0) return out;
    appendRankedTable(result.rows, static_cast<std::int64_t>(result.total), width, !options.noChart, out);
    const std::vector<std::string>& texts = result.modes;
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    out += (texts.size() == 1 ? "Mode: " : "Modes: ") + escapeControlCharacters(joined) + " (" +
           std::to_string(result.modeCount) + (texts.size() == 1 ? " answers" : " answers each") + ", " +
           std::to_string(result.modePercent) + "% of all answers)\n";
    return out;
}

std::string renderTallyJson(const TallyResult& result, const TallyOptions& options) {
    nlohmann::ordered_json document;
    document["source"] = options.file == "-" ? "standard input" : options.file;
    if (!options.column.empty()) document["column"] = options.column;
    document["ignoreCase"] = options.ignoreCase;
    document["totalCount"] = result.total;
    document["distinctCount"] = result.distinct;
    document["modes"] = result.modes.empty() ? nlohmann::json::array() : nlohmann::json(result.modes);
    document["modeCount"] = result.modeCount;
    document["modePercent"] = result.modePercent;
    nlohmann::ordered_json entries = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < result.rows.size(); ++i) {
        const ChartRow& row = result.rows[i];
        nlohmann::ordered_json entry;
        entry["rank"] = result.isOther[i] ? nlohmann::ordered_json(nullptr) : nlohmann::ordered_json(i + 1);
        entry["answer"] = row.answer;
        entry["count"] = row.count;
        entry["share"] =
            result.total > 0 ? static_cast<double>(row.count) / static_cast<double>(result.total) : 0.0;
        if (result.isOther[i]) entry["other"] = true;
        entries.push_back(std::move(entry));
    }
    document["entries"] = std::move(entries);
    document["malformedLines"] = result.csv.malformedLines;
    return document.dump(2) + "\n";
}

}  // namespace brevant
