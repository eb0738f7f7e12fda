// BVCountedStrings: the answer tally, with a hash index from match keys to entries in list order.
#include "BrevantCocoaExtensions/responses/BVCountedStrings.hpp"

#include "BrevantCocoaExtensions/responses/BVCountedStringInternal.hpp"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace bv {

namespace {

// Case-insensitive keys without ICU for texts written in the common alphabets (Latin, Greek, Cyrillic).
//
// The key of a text is NFD(fold(NFD(text))). For a code point whose own combining class is 0, and whose
// decomposition and key both begin with a starter (combining class 0), nothing can reorder across its
// boundaries, and case folding has no context; so the key of a text made only of such code points is
// the concatenation of their single-character keys. The table holds those keys, computed once through
// ICU; any other code unit sends the whole text to the full computation.
class FoldingTable {
  public:
    static constexpr char16_t kLimit = 0x0530;  // up to the end of the Cyrillic Supplement block

    FoldingTable() {
        for (char16_t unit = 0; unit < kLimit; ++unit) {
            Text single = Text::fromUnit(unit);
            std::u16string key = single.comparisonKey(CompareMode::CaseInsensitive).units();
            if (!startsWithStarter(std::u16string(1, unit)) ||
                !startsWithStarter(single.canonicalDecomposition().units()) || !startsWithStarter(key) ||
                key.size() > 0xFF) {
                continue;  // length 0: not folded by table
            }
            slots_[unit] =
                Slot{static_cast<std::uint16_t>(pool_.size()), static_cast<std::uint8_t>(key.size())};
            pool_ += key;
        }
    }

    // Writes the key of `text` to `out`; false (with `out` unusable) when the text needs ICU.
    bool fold(std::u16string_view text, std::u16string& out) const {
        return foldAscii(text, out) || foldByTable(text, out);
    }

  private:
    struct Slot {
        std::uint16_t offset = 0;
        std::uint8_t length = 0;
    };

    // ASCII alone, the most frequent case, in one tight pass: A-Z become a-z, nothing else changes.
    static bool foldAscii(std::u16string_view text, std::u16string& out) {
        out.resize(text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            char16_t unit = text[i];
            if (unit >= 0x80) return false;
            out[i] = (unit >= u'A' && unit <= u'Z') ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
        }
        return true;
    }

    bool foldByTable(std::u16string_view text, std::u16string& out) const {
        out.clear();
        for (char16_t unit : text) {
            if (unit >= kLimit) return false;
            Slot slot = slots_[unit];
            if (slot.length == 1) {
                out.push_back(pool_[slot.offset]);
            } else if (slot.length == 0) {
                return false;
            } else {
                out.append(pool_, slot.offset, slot.length);
            }
        }
        return true;
    }

    static bool startsWithStarter(const std::u16string& units) {
        if (units.empty()) return false;
        UChar32 first;
        std::size_t index = 0;
        U16_NEXT(units.data(), index, units.size(), first);
        return u_getCombiningClass(first) == 0;
    }

    Slot slots_[kLimit];
    std::u16string pool_;
};

const FoldingTable& foldingTable() {
    static const FoldingTable table;
    return table;
}

struct KeyHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view key) const noexcept {
        return std::hash<std::u16string_view>{}(key);
    }
};

struct KeyEqual {
    using is_transparent = void;
    bool operator()(std::u16string_view a, std::u16string_view b) const noexcept { return a == b; }
};

// A reusable buffer for lookup keys, so that a lookup of an existing answer allocates nothing.
std::u16string& scratchKey() {
    thread_local std::u16string scratch;
    return scratch;
}

}  // namespace

// For each match key, the entries having it, in list order (by sequence stamp). Usually one entry per
// key; more only after a text change or a change of the matching mode.
class BVCountedStrings::Index final : public BVCountedString::Indexer {
  public:
    using Bucket = std::vector<std::shared_ptr<BVCountedString>>;

    explicit Index(bool caseInsensitive) : caseInsensitive_(caseInsensitive) {}

    [[nodiscard]] bool caseInsensitive() const noexcept { return caseInsensitive_; }
    [[nodiscard]] std::uint64_t takeSequence() noexcept { return nextSequence_++; }

    // The key under which texts match in the current mode: the text itself (exact) or its case-insensitive
    // comparison key. The view may point into `scratch`.
    std::u16string_view keyFor(const Text& text, std::u16string& scratch) const {
        if (!caseInsensitive_) return text.view();
        if (!foldingTable().fold(text.view(), scratch))
            scratch = text.comparisonKey(CompareMode::CaseInsensitive).units();
        return scratch;
    }

    // The entries under a key, in list order; nullptr when none.
    [[nodiscard]] const Bucket* find(std::u16string_view key) const {
        auto found = buckets_.find(key);
        return found == buckets_.end() ? nullptr : &found->second;
    }

    void insert(const std::shared_ptr<BVCountedString>& entry, std::u16string_view key) {
        auto found = buckets_.find(key);
        if (found == buckets_.end()) found = buckets_.emplace(std::u16string(key), Bucket{}).first;
        Bucket& bucket = found->second;
        auto position =
            std::upper_bound(bucket.begin(), bucket.end(), entry->sequence_,
                             [](std::uint64_t sequence, const std::shared_ptr<BVCountedString>& other) {
                                 return sequence < other->sequence_;
                             });
        bucket.insert(position, entry);
    }

    void insert(const std::shared_ptr<BVCountedString>& entry) {
        std::u16string scratch;
        insert(entry, keyFor(entry->string(), scratch));
    }

    void remove(const BVCountedString& entry) {
        std::u16string scratch;
        auto found = buckets_.find(keyFor(entry.string(), scratch));
        if (found == buckets_.end()) return;
        Bucket& bucket = found->second;
        std::erase_if(bucket,
                      [&](const std::shared_ptr<BVCountedString>& other) { return other.get() == &entry; });
        if (bucket.empty()) buckets_.erase(found);
    }

    // Re-keys every entry for a matching mode.
    void rebuild(const BVCountedStringList& entries, bool caseInsensitive) {
        caseInsensitive_ = caseInsensitive;
        buckets_.clear();
        for (const auto& entry : entries)
            insert(entry);
    }

    void entryTextWillChange(BVCountedString& entry) override { remove(entry); }
    void entryTextDidChange(BVCountedString& entry) override { insert(entry.shared_from_this()); }

  private:
    bool caseInsensitive_;
    std::uint64_t nextSequence_ = 0;
    std::unordered_map<std::u16string, Bucket, KeyHash, KeyEqual> buckets_;
};

// --- StringEnumerator ---------------------------------------------------------------------------------

std::optional<Text> BVCountedStrings::StringEnumerator::nextObject() {
    if (next_ >= strings_.size()) return std::nullopt;
    return strings_[next_++];
}

std::vector<Text> BVCountedStrings::StringEnumerator::allObjects() {
    std::vector<Text> rest(strings_.begin() + static_cast<std::ptrdiff_t>(std::min(next_, strings_.size())),
                           strings_.end());
    next_ = strings_.size();
    return rest;
}

// --- Construction -------------------------------------------------------------------------------------

BVCountedStrings::BVCountedStrings(bool operateWithCaseInsensitivity)
    : index_(std::make_shared<Index>(operateWithCaseInsensitivity)) {}

BVCountedStrings::BVCountedStrings(const std::vector<Text>& strings, bool operateWithCaseInsensitivity)
    : BVCountedStrings(operateWithCaseInsensitivity) {
    addStrings(strings);
}

BVCountedStrings BVCountedStrings::initByOperateWithCaseInsensitivity(bool operateWithCaseInsensitivity) {
    return BVCountedStrings(operateWithCaseInsensitivity);
}

BVCountedStrings BVCountedStrings::initWithStringsOperateWithCaseInsensitivity(
    const std::vector<Text>& strings, bool operateWithCaseInsensitivity) {
    return BVCountedStrings(strings, operateWithCaseInsensitivity);
}

BVCountedStrings::BVCountedStrings(BVCountedStrings&& other)
    : entries_(std::move(other.entries_)),
      index_(std::exchange(other.index_, std::make_shared<Index>(other.isOperatingWithCaseInsensitivity()))) {
    other.entries_.clear();
}

BVCountedStrings& BVCountedStrings::operator=(BVCountedStrings&& other) {
    if (this == &other) return *this;
    for (const auto& entry : entries_)
        entry->indexer_.reset();
    auto fresh = std::make_shared<Index>(other.isOperatingWithCaseInsensitivity());
    entries_ = std::move(other.entries_);
    index_ = std::exchange(other.index_, std::move(fresh));
    other.entries_.clear();
    return *this;
}

BVCountedStrings::~BVCountedStrings() = default;

// --- Mode and plain accessors ---------------------------------------------------------------------------

bool BVCountedStrings::isOperatingWithCaseInsensitivity() const noexcept {
    return index_->caseInsensitive();
}

void BVCountedStrings::setIsOperatingWithCaseInsensitivity(bool isOperatingWithCaseInsensitivity) {
    if (isOperatingWithCaseInsensitivity == index_->caseInsensitive()) return;
    index_->rebuild(entries_, isOperatingWithCaseInsensitivity);
}

std::vector<Text> BVCountedStrings::stringsForCountedStrings(const BVCountedStringList& countedStrings) {
    std::vector<Text> strings;
    strings.reserve(countedStrings.size());
    for (const auto& entry : countedStrings)
        strings.push_back(entry->string());
    return strings;
}

std::vector<Text> BVCountedStrings::strings() const {
    return stringsForCountedStrings(entries_);
}

BVCountedStrings::StringEnumerator BVCountedStrings::stringEnumerator() const {
    return StringEnumerator(strings());
}

std::uint64_t BVCountedStrings::totalCount() const noexcept {
    std::uint64_t total = 0;
    for (const auto& entry : entries_)
        total += entry->count();
    return total;
}

// --- Lookups --------------------------------------------------------------------------------------------

BVCountedString* BVCountedStrings::firstMatch(const Text& string) const {
    const Index::Bucket* bucket = index_->find(index_->keyFor(string, scratchKey()));
    return bucket == nullptr ? nullptr : bucket->front().get();
}

std::shared_ptr<BVCountedString> BVCountedStrings::countedStringHavingString(
    const std::optional<Text>& string) const {
    if (!string) return nullptr;
    BVCountedString* entry = firstMatch(*string);
    return entry == nullptr ? nullptr : entry->shared_from_this();
}

BVCountedStringList BVCountedStrings::countedStringsNotHavingString(const std::optional<Text>& string) const {
    if (!string) return {};
    const Index::Bucket* matching = index_->find(index_->keyFor(*string, scratchKey()));
    if (matching == nullptr) return entries_;
    // Both lists are in sequence order, so one merge-like pass drops the matching entries.
    BVCountedStringList rest;
    rest.reserve(entries_.size() - std::min(entries_.size(), matching->size()));
    auto skip = matching->begin();
    for (const auto& entry : entries_) {
        if (skip != matching->end() && skip->get() == entry.get()) {
            ++skip;
            continue;
        }
        rest.push_back(entry);
    }
    return rest;
}

std::uint64_t BVCountedStrings::countForString(const std::optional<Text>& string) const {
    if (!string) return 0;
    BVCountedString* entry = firstMatch(*string);
    return entry == nullptr ? 0 : entry->count();
}

BVCountedStringList BVCountedStrings::countedStringsWithHighestCount() const {
    // A stable highest-first sort followed by taking the leading run of the top count gives exactly the
    // top-count entries in list order, which one pass finds as well.
    std::uint64_t highest = 0;
    for (const auto& entry : entries_)
        highest = std::max(highest, entry->count());
    BVCountedStringList result;
    for (const auto& entry : entries_) {
        if (entry->count() >= highest) result.push_back(entry);
    }
    return result;
}

// --- Changes --------------------------------------------------------------------------------------------

std::shared_ptr<BVCountedString> BVCountedStrings::addString(const std::optional<Text>& string) {
    return addStringWithUserInfo(string, Value());
}

std::shared_ptr<BVCountedString> BVCountedStrings::addStringWithUserInfo(const std::optional<Text>& string,
                                                                         const Value& userInfo) {
    if (!string) return nullptr;
    std::u16string_view key = index_->keyFor(*string, scratchKey());
    if (const Index::Bucket* bucket = index_->find(key)) {
        const std::shared_ptr<BVCountedString>& first = bucket->front();
        first->incrementCount();
        return first;
    }
    auto entry = std::make_shared<BVCountedString>(*string, userInfo);
    entry->sequence_ = index_->takeSequence();
    entry->indexer_ = index_;
    entries_.push_back(entry);
    index_->insert(entry, key);
    return entry;
}

void BVCountedStrings::addStrings(const std::vector<Text>& strings) {
    for (const Text& string : strings)
        addString(string);
}

void BVCountedStrings::removeString(const std::optional<Text>& string) {
    if (!string) return;
    BVCountedString* entry = firstMatch(*string);
    if (entry == nullptr) return;
    if (entry->decrementCount() == 0) erase(*entry);
}

void BVCountedStrings::erase(BVCountedString& entry) {
    std::shared_ptr<BVCountedString> keep = entry.shared_from_this();
    index_->remove(*keep);
    keep->indexer_.reset();
    auto position = std::lower_bound(entries_.begin(), entries_.end(), keep->sequence_,
                                     [](const std::shared_ptr<BVCountedString>& other,
                                        std::uint64_t sequence) { return other->sequence_ < sequence; });
    if (position != entries_.end() && position->get() == keep.get()) entries_.erase(position);
}

std::shared_ptr<BVCountedString> BVCountedStrings::replaceStringWithString(const std::optional<Text>& string,
                                                                           const Text& newString) {
    if (!string) return nullptr;
    BVCountedString* entry = firstMatch(*string);
    if (entry == nullptr) return nullptr;
    entry->setString(newString);
    return entry->shared_from_this();
}

// --- Sorted copies --------------------------------------------------------------------------------------

BVCountedStringList BVCountedStrings::countedStringsSortedByCountInAscendingOrder() const {
    BVCountedStringList sorted = entries_;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a->sortByCountAscending(*b) < 0; });
    return sorted;
}

BVCountedStringList BVCountedStrings::countedStringsSortedByCountInDescendingOrder() const {
    BVCountedStringList sorted = entries_;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a->sortByCountDescending(*b) < 0; });
    return sorted;
}

}  // namespace bv
